#include "chart/chart_painter.h"
#include "logquery/log_tool.h"
#include "main_window/window_harness.h"
#include "stats/reports.h"

#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::barMiddle;
using test::click;
using test::Window;

constexpr int kWidth = 420;
constexpr int kHeight = 200;

// Renders a view into an image of a fixed size, through its own drawing.
QImage render(ChartView& chart) {
  QImage image(kWidth, kHeight, QImage::Format_ARGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  chart.drawInto(painter, QSizeF(kWidth, kHeight));
  return image;
}

QColor at(const QImage& image, double x, double yFromBottom) {
  return image.pixelColor(static_cast<int>(x), static_cast<int>(kHeight - 1 - yFromBottom));
}

TEST(ChartDrawing, AllZeroHeightsDrawOnlyTheBaseLineAndLabels) {
  ChartView chart;
  chart.setArrays({0, 0, 0}, {1, 1, 1}, {"a", "b", "c"});
  chart.theChartLegStr = QStringLiteral("Total 0 entries\n  max 0");
  const QImage image = render(chart);
  EXPECT_TRUE(chart.theTooltipTags.empty());
  EXPECT_TRUE(chart.theTooltipList.empty());
  // The base line 10 px above the bottom edge, light grey, across the whole width.
  EXPECT_EQ(image.pixelColor(2, kHeight - 10), chart_colour::kLightGray);
  EXPECT_EQ(image.pixelColor(kWidth - 2, kHeight - 10), chart_colour::kLightGray);
  EXPECT_EQ(at(image, kWidth / 2, 40), QColor(Qt::white));
}

TEST(ChartDrawing, SingleBarSpansTheWidthLessMarginsAndReachesTheTop) {
  ChartView chart;
  chart.setArrays({7}, {1}, {"only"});
  const QImage image = render(chart);
  ASSERT_EQ(chart.theTooltipRects.size(), 1u);
  const QRectF bar = chart.theTooltipRects[0].second;
  EXPECT_DOUBLE_EQ(bar.left(), 10);
  EXPECT_DOUBLE_EQ(bar.right(), kWidth - 10);
  EXPECT_DOUBLE_EQ(bar.top(), 30);               // Ht - 30 from the bottom
  EXPECT_DOUBLE_EQ(bar.bottom(), kHeight - 10);  // standing on the base line
  EXPECT_EQ(at(image, 11, 12), chart_colour::kBlue);
  EXPECT_EQ(at(image, kWidth - 11, kHeight - 32), chart_colour::kBlue);
  EXPECT_EQ(at(image, 5, 50), QColor(Qt::white));
  EXPECT_EQ(at(image, kWidth - 5, 50), QColor(Qt::white));
}

TEST(ChartDrawing, ColoursByTypeAndZeroBarsKeepTheirTooltips) {
  ChartView chart;
  chart.setArrays({5, 0, 5, 5, 5, 5, 5}, {0, 1, 2, 3, 4, -3, 7}, {"t0", "t1", "t2", "t3", "t4", "t5", "t6"});
  const QImage image = render(chart);
  const double width = (kWidth - 20.0) / 7;
  auto middle = [&](int i) { return 10 + (i + 0.5) * width; };
  EXPECT_EQ(at(image, middle(0), 50), chart_colour::kBlue);
  EXPECT_EQ(at(image, middle(1), 50), QColor(Qt::white));
  EXPECT_EQ(at(image, middle(2), 50), chart_colour::kCyan);
  EXPECT_EQ(at(image, middle(3), 50), chart_colour::kRed);
  EXPECT_EQ(at(image, middle(4), 50), chart_colour::kYellow);
  EXPECT_EQ(at(image, middle(5), 50), chart_colour::kBlue);
  EXPECT_EQ(at(image, middle(6), 50), chart_colour::kLightGray);
  ASSERT_EQ(chart.theTooltipTags.size(), 7u);
  EXPECT_EQ(chart.theTooltipRects[1].second.height(), 0);
  EXPECT_EQ(chart.toolTipAt(QPointF(middle(1), kHeight - 10)), QStringLiteral("t1"));
  EXPECT_EQ(chart.toolTipAt(QPointF(middle(3), 100)), QStringLiteral("t3"));
  EXPECT_FALSE(chart.toolTipAt(QPointF(middle(3), 5)));
}

TEST(ChartDrawing, RedrawingReplacesTheTooltips) {
  ChartView chart;
  chart.setArrays({1, 2}, {1, 1}, {"a", "b"});
  render(chart);
  render(chart);
  EXPECT_EQ(chart.theTooltipList.size(), 2u);
  EXPECT_NE(chart.theTooltipTags[0], chart.theTooltipTags[1]);
}

class ChartWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    w = std::make_unique<Window>();
    chart = (*w)->theChartView;
  }
  // Puts the chart into log-file mode with entries one second apart over 100 s.
  void logFileMode(std::vector<Date> events = {}) {
    std::vector<Date> dates;
    for (int i = 0; i <= 100; ++i) dates.push_back(Date{1000.0 + i});
    chart->setDateArray(dates, events);
  }
  test::ScopedTimeZone zone{"UTC"};
  std::unique_ptr<Window> w;
  ChartView* chart = nullptr;
};

TEST_F(ChartWindowTest, EventMarkersOnlyWithTheBoxOnInLogFileMode) {
  logFileMode({Date{1000.0}, Date{1100.0}, Date{1050.0}});
  ASSERT_EQ(chart->theEventTimes, (std::vector<double>{0.0, 1.0, 0.5}));
  QImage off = render(*chart);
  EXPECT_NE(at(off, 10, kHeight / 2), chart_colour::kRed);
  (*w)->showEventsCheckbox->setChecked(true);
  QImage on = render(*chart);
  EXPECT_EQ(on.pixelColor(10, 2), chart_colour::kRed);
  EXPECT_EQ(on.pixelColor(kWidth - 10, kHeight - 2), chart_colour::kRed);
  EXPECT_EQ(on.pixelColor(10 + (kWidth - 20) / 2, kHeight / 2), chart_colour::kRed);
  // In statistics mode the marks are not drawn even though the times are held.
  chart->isLogarchive = true;
  QImage statistics = render(*chart);
  EXPECT_NE(statistics.pixelColor(10 + (kWidth - 20) / 2, 2), chart_colour::kRed);
}

TEST_F(ChartWindowTest, SetDateArrayWithoutEventsKeepsTheEarlierEvents) {
  logFileMode({Date{1020.0}});
  logFileMode({});
  EXPECT_EQ(chart->theEventDates, std::vector<Date>{Date{1020.0}});
  EXPECT_EQ(chart->theViewDates.size(), 1u);
}

TEST_F(ChartWindowTest, EmptyDatesOnlyShowTheMessage) {
  logFileMode();
  const auto heights = chart->theChartHeights;
  chart->setDateArray({}, {Date{1.0}});
  EXPECT_EQ(w->output(), QStringLiteral("No log entries were found for the selected process in this log file.\n"));
  EXPECT_EQ(chart->theChartHeights, heights);
  EXPECT_TRUE(chart->theEventDates.empty());
}

TEST_F(ChartWindowTest, ZeroPeriodKeepsThePreviousChart) {
  logFileMode();
  const auto heights = chart->theChartHeights;
  const auto labels = chart->theChartLabels;
  chart->chartDates(50, Date{1010.0}, Date{1010.0}, true);
  EXPECT_EQ(w->output(), QStringLiteral("The time period has become too small."));
  EXPECT_EQ(chart->theChartHeights, heights);
  EXPECT_EQ(chart->theChartLabels, labels);
}

TEST_F(ChartWindowTest, SetTopLevelWithOneLevelOrNoneDoesNothing) {
  chart->setTopLevel();
  EXPECT_TRUE(chart->theViewDates.empty());
  logFileMode();
  chart->setTopLevel();
  EXPECT_EQ(chart->theViewDates.size(), 1u);
  click(chart, barMiddle(chart, 2, 50));
  click(chart, barMiddle(chart, 2, 50));
  EXPECT_EQ(chart->theViewDates.size(), 3u);
  chart->setTopLevel();
  EXPECT_EQ(chart->theViewDates.size(), 1u);
}

TEST_F(ChartWindowTest, ClicksInTheMarginsPickTheFirstAndLastBars) {
  logFileMode();
  click(chart, 2);
  EXPECT_EQ(chart->theViewDates.back().start, Date{1000.0});
  chart->setTopLevel();
  chart->chartDates(50, Date{1000.0}, Date{1100.0}, true);
  click(chart, chart->width() - 2);
  EXPECT_EQ(chart->theViewDates.back().end, Date{1100.0});
}

TEST_F(ChartWindowTest, ZoomStackRoundTripReturnsToTheStatisticsChart) {
  test::Bundle bundle;
  (*w)->openSource(bundle.path);
  const std::vector<double> statistics = chart->theChartHeights;
  const int kernel = (*w)->procsPopup->findText(QStringLiteral("kernel"));
  ASSERT_GT(kernel, 0);
  (*w)->procsPopup->setCurrentIndex(kernel);
  logFileMode();
  (*w)->sourceLogPopup->setCurrentIndex(1);
  (*w)->theSourceLogFile = QStringLiteral("Persist/0000000000000001.tracev3");
  click(chart, barMiddle(chart, 10, 50));
  click(chart, barMiddle(chart, 10, 50));
  ASSERT_EQ(chart->theViewDates.size(), 3u);
  click(chart, 100, Qt::RightButton);
  click(chart, 100, Qt::RightButton);
  EXPECT_EQ(chart->theViewDates.size(), 1u);
  EXPECT_FALSE(chart->isLogarchive);
  EXPECT_TRUE(w->output().startsWith(QStringLiteral("Overall:\n2001-01-01 00:16:40.000+0000 - 2001-01-01 00:18:20.000+0000")));
  click(chart, 100, Qt::RightButton);
  EXPECT_TRUE(chart->isLogarchive);
  EXPECT_EQ(chart->theChartHeights, statistics);
  EXPECT_TRUE(chart->theChartLegStr.isEmpty());
  EXPECT_TRUE((*w)->theSourceLogFile.isEmpty());
  EXPECT_EQ((*w)->sourceLogPopup->currentIndex(), 0);
  EXPECT_TRUE(w->output().startsWith(kStatisticsHeader));
  EXPECT_TRUE(w->output().endsWith(QStringLiteral(",kernel\n")));
  // The partial report refilled the window's chart lists for the next return.
  EXPECT_EQ((*w)->theChartHeights.size(), static_cast<std::size_t>(w->output().count(u'\n') - 1));
}

TEST_F(ChartWindowTest, ShiftClickRedrawsTheCurrentLevelWithoutPushing) {
  logFileMode();
  click(chart, barMiddle(chart, 5, 50));
  const auto level = chart->theViewDates.back();
  (*w)->replaceOutputText(QStringLiteral("x"));
  click(chart, barMiddle(chart, 40, 50), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(chart->theViewDates.size(), 2u);
  EXPECT_EQ(chart->theBarDates.front().start, level.start);
  EXPECT_TRUE(w->output().startsWith(QStringLiteral("Overall:")));
}

TEST_F(ChartWindowTest, BarsOfAMillisecondOrLessCannotBeZoomed) {
  std::vector<Date> dates{Date{1000.0}, Date{1000.04}};
  chart->setDateArray(dates, {});
  ASSERT_EQ(chart->theBarDates.size(), 50u);
  click(chart, barMiddle(chart, 0, 50));
  EXPECT_EQ(chart->theViewDates.size(), 1u);
}

TEST_F(ChartWindowTest, CommandClickExcerptsToOneSecondPastTheBar) {
  test::FakeLogTool tool;
  (*w)->sourceFileText->setText(QStringLiteral("/data/T.logarchive"));
  (*w)->procsPopup->addItem(QStringLiteral("kernel"));
  (*w)->procsPopup->setCurrentIndex(1);
  logFileMode();
  chart->theFilename = QStringLiteral("Persist/0000000000000001.tracev3");
  // Bar 10 of 50 over 100 s covers 1020 s to 1022 s after the reference date.
  tool.expectRun(1, {"show", "--file", "/data/T.logarchive/Persist/0000000000000001.tracev3", "--predicate",
                     processPredicate(QStringLiteral("kernel")), "--style", "syslog", "--info", "--start",
                     "2001-01-01 00:17:00", "--end", "2001-01-01 00:17:03"},
                 "entries of the slice\n");
  click(chart, barMiddle(chart, 10, 50), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(tool.calls().size(), 1);
  EXPECT_EQ(w->output(), QStringLiteral("entries of the slice\n"));
  EXPECT_EQ(chart->theViewDates.size(), 2u);
  EXPECT_EQ(chart->theBarDates.front().start, Date{1020.0});
}

TEST_F(ChartWindowTest, TooltipShowsTheThreeLineLabel) {
  logFileMode();
  render(*chart);
  const QRectF bar = chart->theTooltipRects[0].second;
  EXPECT_EQ(chart->toolTipAt(bar.center()),
            QStringLiteral("2.0%, 2\n2001-01-01 00:16:40.000+0000\n2001-01-01 00:16:42.000+0000"));
}

TEST_F(ChartWindowTest, StatisticsClickUsesTheBarCountAsGreatestWidth) {
  test::FakeLogTool tool;
  test::Bundle bundle;
  (*w)->openSource(bundle.path);
  (*w)->fullAnalysisCheckbox->setChecked(true);
  // Three bars: each would be (W - 20) / 3 wide, but statistics clicks cap the width at 50.
  ASSERT_EQ(chart->theChartHeights.size(), 3u);
  const double capped = 10 + 2.5 * 50;
  tool.expectRun(1, wholeFileArguments(bundle.path + QStringLiteral("/Persist/0000000000000002.tracev3"), processPredicate(QStringLiteral("all"))),
                 "");
  click(chart, chart->width() * 0.8);
  EXPECT_EQ(chart->theFilename, QStringLiteral(" Persist/0000000000000003.tracev3"));
  EXPECT_TRUE(tool.calls().isEmpty());
  click(chart, capped - 50);
  EXPECT_EQ(chart->theFilename, QStringLiteral(" Persist/0000000000000002.tracev3"));
  ASSERT_EQ(tool.calls().size(), 1);
  // The file was opened (trimmed): its run found no entries of the process.
  EXPECT_EQ(w->output(), QStringLiteral("No log entries were found for the selected process in this log file.\n"));
}

TEST_F(ChartWindowTest, StatisticsBarsOfOtherTypesOpenNothing) {
  test::FakeLogTool tool;
  (*w)->fullAnalysisCheckbox->setChecked(true);
  (*w)->theChartHeights = {1, 1, 1};
  chart->setArrays({1, 1, 1}, {2, 4, 5}, {"1, d t, Persist/gone", "1, d t, Special/gone", "1, d t, memory000001"});
  for (int i = 0; i < 3; ++i) {
    click(chart, 10 + i * 50 + 25);
    const QStringList files{"Persist/gone", "Special/gone", "memory000001"};
    EXPECT_EQ(chart->theFilename, QStringLiteral(" ") + files[i]);
  }
  EXPECT_TRUE(tool.calls().isEmpty());
}

TEST_F(ChartWindowTest, StatisticsClickNeedsAStatisticsProcessOrFullAnalysis) {
  chart->setArrays({1}, {1}, {"1, d t, Persist/x"});
  click(chart, 30);
  EXPECT_TRUE(chart->theFilename.isEmpty());
}

}  // namespace
}  // namespace tarnbeck
