#include "logquery/periods.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::ScopedTimeZone;

TEST(Periods, TitleCarriesMillisecondsAndZone) {
  ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(periodTitle(Date{541829167.123456}, Date{541829170.5}),
            QStringLiteral("2018-03-04 05:06:07.123+0100 - 2018-03-04 05:06:10.500+0100"));
}

TEST(Periods, TitleReadsBackToTheMillisecond) {
  ScopedTimeZone zone("America/Chicago");
  const QString title = periodTitle(Date{541829167.123456}, Date{541829170.5});
  auto period = parsePeriodTitle(title);
  ASSERT_TRUE(period);
  EXPECT_NEAR(period->first.sinceReference, 541829167.123, 1e-6);
  EXPECT_NEAR(period->second.sinceReference, 541829170.5, 1e-6);
}

TEST(Periods, MalformedTitlesChartNothing) {
  EXPECT_FALSE(parsePeriodTitle(QStringLiteral("variable")));
  EXPECT_FALSE(parsePeriodTitle(QStringLiteral("2018-03-04 05:06:07.123+0100 - ")));
  EXPECT_FALSE(parsePeriodTitle(QStringLiteral("a - b - c")));
  EXPECT_FALSE(parsePeriodTitle(QStringLiteral("2018-03-04 05:06:07.123+0100 - tomorrow")));
}

TEST(Periods, ListsOnlyUuidKeysOfTheFile) {
  ScopedTimeZone zone("UTC");
  QVariantMap all{
      {QStringLiteral("ExtraProcs"), QStringList{QStringLiteral("kernel")}},
      {QStringLiteral("11111111-1111-1111-1111-111111111111"), rememberedPeriod(QStringLiteral("Persist/a.tracev3"), Date{0}, Date{1})},
      {QStringLiteral("22222222-2222-2222-2222-222222222222"), rememberedPeriod(QStringLiteral("Persist/b.tracev3"), Date{2}, Date{3})},
  };
  EXPECT_EQ(rememberedPeriodTitles(all, QStringLiteral("Persist/a.tracev3")),
            QStringList{QStringLiteral("2001-01-01 00:00:00.000+0000 - 2001-01-01 00:00:01.000+0000")});
  EXPECT_TRUE(rememberedPeriodTitles(all, QStringLiteral("Special/c.tracev3")).isEmpty());
}

TEST(PeriodsDeathTest, UuidEntryOfAnotherShapeStops) {
  QVariantMap all{{QStringLiteral("11111111-1111-1111-1111-111111111111"), QStringLiteral("not a dictionary")}};
  EXPECT_DEATH(rememberedPeriodTitles(all, QString()), "not a dictionary");
  QVariantMap noStart{{QStringLiteral("11111111-1111-1111-1111-111111111111"),
                       QVariantMap{{QStringLiteral("file"), QStringLiteral("f")}}}};
  EXPECT_DEATH(rememberedPeriodTitles(noStart, QStringLiteral("f")), "start or end");
}

}  // namespace
}  // namespace tarnbeck
