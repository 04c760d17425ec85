#include "platform/date_text.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::ScopedTimeZone;

// 2018-03-04 04:06:07.123 UTC, in seconds since 2001-01-01.
constexpr double kSample = 541829167.123;

TEST(DateText, FormatsPeriodTextEastOfUtc) {
  ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(formatDate(Date{kSample}, date_pattern::kPeriod), QStringLiteral("2018-03-04 05:06:07.123+0100"));
}

TEST(DateText, FormatsPeriodTextWestOfUtc) {
  ScopedTimeZone zone("America/New_York");
  EXPECT_EQ(formatDate(Date{kSample}, date_pattern::kPeriod), QStringLiteral("2018-03-03 23:06:07.123-0500"));
}

TEST(DateText, ToolArgumentDropsFractions) {
  ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(formatDate(Date{kSample + 0.8}, date_pattern::kToolArgument), QStringLiteral("2018-03-04 05:06:07"));
}

TEST(DateText, RoundTripsInTwoZones) {
  for (const char* name : {"Europe/Berlin", "America/Los_Angeles"}) {
    ScopedTimeZone zone(name);
    const QString text = formatDate(Date{kSample}, date_pattern::kPeriod);
    auto parsed = parseDate(text, date_pattern::kPeriod);
    ASSERT_TRUE(parsed) << name;
    EXPECT_NEAR(parsed->sinceReference, kSample, 1e-6) << name;
  }
}

TEST(DateText, ParsesExplicitOffsetWhateverTheLocalZone) {
  ScopedTimeZone zone("Asia/Tokyo");
  auto parsed = parseDate(QStringLiteral("2018-03-04 05:06:07.123+0100"), date_pattern::kPeriod);
  ASSERT_TRUE(parsed);
  EXPECT_NEAR(parsed->sinceReference, kSample, 1e-6);
}

TEST(DateText, ParsesToolTimestampTruncatingToMilliseconds) {
  auto parsed = parseDate(QStringLiteral("2018-03-04 05:06:07.123999+0100"), date_pattern::kToolTimestamp);
  ASSERT_TRUE(parsed);
  EXPECT_NEAR(parsed->sinceReference, kSample, 1e-6);
}

TEST(DateText, RejectsTrailingTextAndNonsense) {
  EXPECT_FALSE(parseDate(QStringLiteral("2018-03-04 05:06:07.123+0100 extra"), date_pattern::kPeriod));
  EXPECT_FALSE(parseDate(QStringLiteral("not a date"), date_pattern::kPeriod));
  EXPECT_FALSE(parseDate(QString(), date_pattern::kPeriod));
}

TEST(DateText, NoticesChangedTzWithoutReset) {
  ScopedTimeZone zone("UTC");
  EXPECT_EQ(formatDate(Date{kSample}, date_pattern::kPeriod), QStringLiteral("2018-03-04 04:06:07.123+0000"));
  qputenv("TZ", "Asia/Kolkata");
  EXPECT_EQ(formatDate(Date{kSample}, date_pattern::kPeriod), QStringLiteral("2018-03-04 09:36:07.123+0530"));
}

TEST(DateText, UtcTextOfFileTimes) {
  ScopedTimeZone zone("America/New_York");
  EXPECT_EQ(utcDateTimeText(1514869445000LL + 999), QStringLiteral("2018-01-02 05:04:05"));
}

}  // namespace
}  // namespace tarnbeck
