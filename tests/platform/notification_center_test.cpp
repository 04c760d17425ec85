#include "platform/notification_center.h"

#include <QObject>

#include <gtest/gtest.h>

#include <memory>

namespace tarnbeck {
namespace {

TEST(NotificationCenter, DeliversSynchronouslyInRegistrationOrder) {
  NotificationCenter center;
  QObject first, second;
  QStringList heard;
  center.addObserver(&first, QStringLiteral("Procs-Changed"), [&](const QString& n) { heard << QStringLiteral("first ") + n; });
  center.addObserver(&second, QStringLiteral("Procs-Changed"), [&](const QString& n) { heard << QStringLiteral("second ") + n; });
  center.addObserver(&second, QStringLiteral("Styles-Changed"), [&](const QString& n) { heard << QStringLiteral("second ") + n; });
  center.post(QStringLiteral("Procs-Changed"));
  EXPECT_EQ(heard, (QStringList{QStringLiteral("first Procs-Changed"), QStringLiteral("second Procs-Changed")}));
  center.post(QStringLiteral("Styles-Changed"));
  EXPECT_EQ(heard.last(), QStringLiteral("second Styles-Changed"));
  EXPECT_EQ(heard.size(), 3);
}

TEST(NotificationCenter, UnknownNameReachesNobody) {
  NotificationCenter center;
  QObject observer;
  int count = 0;
  center.addObserver(&observer, QStringLiteral("Period-Changed"), [&](const QString&) { ++count; });
  center.post(QStringLiteral("Filters-Changed"));
  EXPECT_EQ(count, 0);
}

TEST(NotificationCenter, DestroyedObserverHearsNothing) {
  NotificationCenter center;
  int count = 0;
  {
    auto observer = std::make_unique<QObject>();
    center.addObserver(observer.get(), QStringLiteral("Period-Changed"), [&](const QString&) { ++count; });
    center.post(QStringLiteral("Period-Changed"));
  }
  center.post(QStringLiteral("Period-Changed"));
  EXPECT_EQ(count, 1);
}

TEST(NotificationCenter, HandlerMayPostAnother) {
  NotificationCenter center;
  QObject observer;
  QStringList heard;
  center.addObserver(&observer, QStringLiteral("A"), [&](const QString& n) {
    heard << n;
    center.post(QStringLiteral("B"));
  });
  center.addObserver(&observer, QStringLiteral("B"), [&](const QString& n) { heard << n; });
  center.post(QStringLiteral("A"));
  EXPECT_EQ(heard, (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
}

}  // namespace
}  // namespace tarnbeck
