#include "chart/binning.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tarnbeck {
namespace {

using test::ScopedTimeZone;

const Date kStart{541829167.0};  // 2018-03-04 04:06:07 UTC
const Date kEnd{541829267.0};    // 100 s later

ChartBinning bin(const std::vector<Date>& dates, int bars, Date start = kStart, Date end = kEnd,
                 const std::vector<Date>& events = {}) {
  auto result = binDates(dates, events, bars, start, end);
  EXPECT_TRUE(std::holds_alternative<ChartBinning>(result));
  return std::get<ChartBinning>(result);
}

TEST(Binning, EntriesAtStartAndEndFallInFirstAndLastBars) {
  const ChartBinning chart = bin({kStart, kEnd}, 50);
  ASSERT_EQ(chart.heights.size(), 50u);
  EXPECT_EQ(chart.heights[0], 1.0);
  EXPECT_EQ(chart.heights[49], 1.0);
  EXPECT_EQ(std::count(chart.heights.begin(), chart.heights.end(), 0.0), 48);
  EXPECT_EQ(chart.legend, QStringLiteral("Total 2 entries\n  max 1"));
  EXPECT_EQ(chart.types, std::vector<int>(50, 1));
}

TEST(Binning, OutsideEntriesAreNotCountedButSharesDivideByAll) {
  const ChartBinning chart = bin({kStart.addingSeconds(-1), kStart.addingSeconds(10), kStart.addingSeconds(10.5), kEnd.addingSeconds(0.001)}, 10);
  EXPECT_EQ(chart.total, 2.0);
  EXPECT_EQ(chart.heights[1], 2.0);
  EXPECT_TRUE(chart.labels[1].startsWith(QStringLiteral("50.0%, 2\n")));
  EXPECT_TRUE(chart.summary.contains(QStringLiteral(" total log entries 2\n")));
}

TEST(Binning, EmptyOrZeroPeriodFails) {
  EXPECT_EQ(std::get<BinningFailure>(binDates({}, {}, 5, kStart, kEnd)), BinningFailure::NoEntries);
  EXPECT_EQ(std::get<BinningFailure>(binDates({kStart}, {}, 5, kStart, kStart)), BinningFailure::PeriodTooSmall);
  EXPECT_EQ(std::get<BinningFailure>(binDates({kStart}, {}, 5, kEnd, kStart)), BinningFailure::PeriodTooSmall);
}

TEST(Binning, BarPeriodsLabelsAndSummary) {
  ScopedTimeZone zone("Europe/Berlin");
  const ChartBinning chart = bin({kStart, kStart.addingSeconds(30), kStart.addingSeconds(31), kEnd}, 4);
  ASSERT_EQ(chart.barDates.size(), 4u);
  EXPECT_EQ(chart.barDates[1].start, kStart.addingSeconds(25));
  EXPECT_EQ(chart.barDates[1].end, kStart.addingSeconds(50));
  EXPECT_EQ(chart.labels[1], QStringLiteral("50.0%, 2\n2018-03-04 05:06:32.000+0100\n2018-03-04 05:06:57.000+0100"));
  EXPECT_EQ(chart.summary,
            QStringLiteral("Overall:\n2018-03-04 05:06:07.000+0100 - 2018-03-04 05:07:47.000+0100 total log entries 4\n"
                           "2018-03-04 05:06:07.000+0100 - 2018-03-04 05:06:32.000+0100 25.0%, 1\n"
                           "2018-03-04 05:06:32.000+0100 - 2018-03-04 05:06:57.000+0100 50.0%, 2\n"
                           "2018-03-04 05:06:57.000+0100 - 2018-03-04 05:07:22.000+0100 0.0%, 0\n"
                           "2018-03-04 05:07:22.000+0100 - 2018-03-04 05:07:47.000+0100 25.0%, 1\n"));
}

TEST(Binning, EventsBecomeFractionsOfThePeriod) {
  const ChartBinning chart = bin({kStart}, 5, kStart, kEnd, {kStart, kStart.addingSeconds(25), kEnd, kEnd.addingSeconds(1)});
  EXPECT_EQ(chart.eventTimes, (std::vector<double>{0.0, 0.25, 1.0}));
}

TEST(Binning, FootLabelsEastOfUtcDropTheZone) {
  ScopedTimeZone zone("Europe/Berlin");
  const ChartBinning chart = bin({kStart}, 5);
  EXPECT_EQ(chart.startChartStr, QStringLiteral("05:06:07.000\n2018-03-04"));
  EXPECT_EQ(chart.endChartStr, QStringLiteral("05:07:47.000\n2018-03-04"));
}

TEST(Binning, FootLabelsWestOfUtcKeepTheZone) {
  ScopedTimeZone zone("EST5EDT");
  const ChartBinning chart = bin({kStart}, 5);
  EXPECT_EQ(chart.startChartStr, QStringLiteral("23:06:07.000-0500\n2018-03-03"));
}

TEST(Binning, FootLabelsInUtc) {
  ScopedTimeZone zone("UTC");
  EXPECT_EQ(bin({kStart}, 5).startChartStr, QStringLiteral("04:06:07.000\n2018-03-04"));
}

TEST(Binning, RoundingPastTheLastBarCountsInTheLastBar) {
  const Date start{0.1};
  const Date end{0.3};
  const ChartBinning chart = bin({end, Date{0.29999999999999999}}, 3, start, end);
  EXPECT_EQ(chart.heights[2], 2.0);
}

TEST(Binning, EqualsTheDirectDivisionForShuffledSortedAndBoundaryDates) {
  std::mt19937 random(11);
  const Date start{1000.0};
  const Date end{1000.0 + 0.3};
  std::vector<Date> dates;
  for (int i = 0; i < 20000; ++i) {
    // Many dates exactly on bar boundaries, where multiplying and dividing can disagree.
    const double at = (i % 3 == 0) ? 0.3 * (random() % 71) / 70.0 : 0.3 * std::uniform_real_distribution<double>(-0.1, 1.1)(random);
    dates.push_back(start.addingSeconds(at));
  }
  for (int bars : {5, 7, 50, 70, 200}) {
    std::vector<double> expected(static_cast<std::size_t>(bars), 0.0);
    const double width = (end - start) / bars;
    for (const Date& d : dates) {
      if (d < start || d > end) continue;
      long long i = static_cast<long long>((d - start) / width);
      i = std::clamp<long long>(i, 0, bars - 1);
      expected[static_cast<std::size_t>(i)] += 1.0;
    }
    EXPECT_EQ(bin(dates, bars, start, end).heights, expected) << bars;
    std::vector<Date> sorted = dates;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(bin(sorted, bars, start, end).heights, expected) << bars << " sorted";
  }
}

}  // namespace
}  // namespace tarnbeck
