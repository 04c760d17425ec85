#include "platform/tick_count.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

TEST(TickCount, NeverGoesBackwards) {
  const auto first = machAbsoluteTime();
  const auto second = machAbsoluteTime();
  EXPECT_GT(first, 0u);
  EXPECT_GE(second, first);
}

TEST(Uuid, TextIsUpperCaseCanonical) {
  const QString uuid = newUuidString();
  static const QRegularExpression canonical(QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"));
  EXPECT_TRUE(canonical.match(uuid).hasMatch()) << uuid.toStdString();
  EXPECT_NE(uuid, newUuidString());
  EXPECT_TRUE(isUuidText(uuid));
}

TEST(Uuid, RecognisesOnlyCanonicalText) {
  EXPECT_TRUE(isUuidText(QStringLiteral("6f9619ff-8b86-d011-b42d-00c04fc964ff")));
  EXPECT_FALSE(isUuidText(QStringLiteral("ExtraProcs")));
  EXPECT_FALSE(isUuidText(QStringLiteral("6F9619FF8B86-D011-B42D-00C04FC964FF0")));
  EXPECT_FALSE(isUuidText(QStringLiteral("{6F9619FF-8B86-D011-B42D-00C04FC964FF}")));
  EXPECT_FALSE(isUuidText(QStringLiteral("6F9619FF-8B86-D011-B42D-00C04FC964FG")));
}

}  // namespace
}  // namespace tarnbeck
