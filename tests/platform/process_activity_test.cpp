#include "platform/process_activity.h"

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

TEST(ProcessActivity, BeginsAndEndsWithItsReason) {
  QStringList events;
  ProcessActivity::setObserver([&](const QString& e) { events << e; });
  {
    ProcessActivity activity(QStringLiteral("opening logarchive"));
    EXPECT_EQ(events, QStringList{QStringLiteral("begin:opening logarchive")});
  }
  EXPECT_EQ(events.last(), QStringLiteral("end:opening logarchive"));
  ProcessActivity::setObserver(nullptr);
}

}  // namespace
}  // namespace tarnbeck
