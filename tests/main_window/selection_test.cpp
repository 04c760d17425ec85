#include "logquery/log_tool.h"
#include "main_window/window_harness.h"
#include "platform/notification_center.h"
#include "platform/process_activity.h"
#include "platform/user_defaults.h"
#include "prefs/stored_lists.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::choose;
using test::items;
using test::Window;

const QString kPersist1 = QStringLiteral("Persist/0000000000000001.tracev3");

// Entries one second apart over 100 seconds from 2019-02-21 18:00:00 UTC.
std::vector<Date> entryMoments(int count = 101, double step = 1.0) {
  std::vector<Date> moments;
  for (int i = 0; i < count; ++i) moments.push_back(Date{572464800.0 + i * step});
  return moments;
}

class SelectionTest : public testing::Test {
 protected:
  void SetUp() override {
    w = std::make_unique<Window>();
    (*w)->openSource(bundle.path);
    kernel = (*w)->procsPopup->findText(QStringLiteral("kernel"));
    ASSERT_GT(kernel, 0);
  }
  QStringList entryRun(const QString& term, const QString& file = kPersist1) const {
    return wholeFileArguments(bundle.path + QStringLiteral("/") + file, processPredicate(term));
  }
  QStringList eventsRun(const QString& file = kPersist1) const {
    return wholeFileArguments(bundle.path + QStringLiteral("/") + file, eventsPredicate());
  }
  ViewController& vc() { return *w->controller; }
  QString title() { return vc().window()->windowTitle(); }

  test::ScopedTimeZone zone{"UTC"};
  test::FakeLogTool tool;
  test::Bundle bundle;
  std::unique_ptr<Window> w;
  int kernel = 0;
};

TEST_F(SelectionTest, AllProcessesShowTheFullReportAndTitleAllAll) {
  const QString opened = w->output();
  QStringList activities;
  ProcessActivity::setObserver([&](const QString& e) { activities << e; });
  choose(vc().procsPopup, 0);
  ProcessActivity::setObserver(nullptr);
  EXPECT_EQ(title(), QStringLiteral("all - all"));
  EXPECT_EQ(activities, (QStringList{"begin:running log command", "end:running log command"}));
  EXPECT_EQ(w->output(), opened.section(QStringLiteral("\n\nCatalogue"), 0, 0) + QStringLiteral("\n"));
  EXPECT_EQ(vc().theChartView->theChartHeights.size(), 3u);
  EXPECT_TRUE(tool.calls().isEmpty());
}

TEST_F(SelectionTest, StatisticsProcessShowsItsPartialReport) {
  choose(vc().procsPopup, kernel);
  const QString text = w->output();
  EXPECT_TRUE(text.startsWith(QStringLiteral("date,time,totalsize,filename,size,percent,process\n")));
  const QStringList rows = text.split(u'\n', Qt::SkipEmptyParts).mid(1);
  ASSERT_FALSE(rows.isEmpty());
  for (const QString& row : rows) EXPECT_TRUE(row.endsWith(QStringLiteral(",kernel")));
  EXPECT_EQ(vc().theChartView->theChartHeights.size(), static_cast<std::size_t>(rows.size()));
  EXPECT_EQ(title(), QStringLiteral("all - kernel"));
  EXPECT_TRUE(vc().theSourceLogFile.isEmpty());
}

TEST_F(SelectionTest, OneRecordOnlyRetitles) {
  test::Bundle single(1);
  vc().openSource(single.path);
  const QString opened = w->output();
  choose(vc().procsPopup, vc().procsPopup->count() - 1);
  EXPECT_EQ(w->output(), opened);
  EXPECT_EQ(title(), QStringLiteral("all - ") + vc().procsPopup->currentText());
  EXPECT_TRUE(tool.calls().isEmpty());
}

TEST_F(SelectionTest, ExtraProcessIndicesComeBeforeStatisticsProcesses) {
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("mine"), QStringLiteral("yours")});
  NotificationCenter::defaultCenter().post(kProcsChanged);
  const std::vector<double> chartBefore = vc().theChartView->theChartHeights;
  const QStringList sourcesBefore = items(vc().sourceLogPopup);
  choose(vc().procsPopup, 2);
  EXPECT_EQ(w->output(), QStringLiteral("The selected process is not included in the statistics available for this logarchive. Please "
                                        "select an individual log file for statistics covering that period, or turn on Full analysis "
                                        "using the Checkbox above.\n"));
  EXPECT_EQ(vc().theChartView->theChartHeights, chartBefore);
  EXPECT_EQ(items(vc().sourceLogPopup), sourcesBefore);
  EXPECT_EQ(title(), QStringLiteral("all - yours"));
  choose(vc().procsPopup, 3);
  EXPECT_TRUE(w->output().startsWith(QStringLiteral("date,time,totalsize,filename,size,percent,process\n")));
  EXPECT_TRUE(w->output().endsWith(QStringLiteral(",") + vc().procsPopup->itemText(3) + QStringLiteral("\n")));
}

TEST_F(SelectionTest, GatheredReportRunsTheToolOverEveryFile) {
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("mine")});
  NotificationCenter::defaultCenter().post(kProcsChanged);
  vc().fullAnalysisCheckbox->setChecked(true);
  tool.expectRun(1, entryRun(QStringLiteral("mine"), kPersist1), QByteArray(1024, 'a'));
  tool.expectRun(2, entryRun(QStringLiteral("mine"), QStringLiteral("Persist/0000000000000002.tracev3")), QByteArray(512, 'b'));
  tool.expectRun(3, entryRun(QStringLiteral("mine"), QStringLiteral("Special/0000000000000001.tracev3")), "", 3);
  choose(vc().procsPopup, 1);
  ASSERT_EQ(tool.calls().size(), 3);
  const QString text = w->output();
  EXPECT_TRUE(text.startsWith(QStringLiteral("date,time,totalsize,filename,size,percent,process\n")));
  EXPECT_TRUE(text.contains(QStringLiteral(",4096,Persist/0000000000000001.tracev3,1024,25.0,mine\n")));
  EXPECT_TRUE(text.contains(QStringLiteral(",2048,Persist/0000000000000002.tracev3,512,25.0,mine\n")));
  EXPECT_TRUE(text.contains(QStringLiteral(",1024,Special/0000000000000001.tracev3,0,0.0,mine\n")));
  EXPECT_EQ(vc().theChartView->theChartHeights.size(), 3u);
}

TEST_F(SelectionTest, GatheredFromTheSourceMenuKeepsTheChart) {
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("mine")});
  NotificationCenter::defaultCenter().post(kProcsChanged);
  vc().procsPopup->setCurrentIndex(1);
  vc().fullAnalysisCheckbox->setChecked(true);
  tool.expectRun(1, entryRun(QStringLiteral("mine"), kPersist1), "12345");
  tool.expectRun(2, entryRun(QStringLiteral("mine"), QStringLiteral("Persist/0000000000000002.tracev3")), "");
  tool.expectRun(3, entryRun(QStringLiteral("mine"), QStringLiteral("Special/0000000000000001.tracev3")), "");
  const std::vector<double> chartBefore = vc().theChartView->theChartHeights;
  vc().theSourceLogFile = QStringLiteral("kept");
  choose(vc().sourceLogPopup, 0);
  EXPECT_EQ(tool.calls().size(), 3);
  EXPECT_TRUE(w->output().contains(QStringLiteral(",4096,Persist/0000000000000001.tracev3,5,0.1,mine\n")));
  EXPECT_EQ(vc().theChartView->theChartHeights, chartBefore);
  EXPECT_EQ(vc().theSourceLogFile, QStringLiteral("kept"));
}

TEST_F(SelectionTest, LogFileWithProcessAllOnlyRetitles) {
  const QString opened = w->output();
  choose(vc().sourceLogPopup, 1);
  EXPECT_EQ(title(), kPersist1 + QStringLiteral(" - all"));
  EXPECT_EQ(w->output(), opened);
  EXPECT_TRUE(tool.calls().isEmpty());
}

TEST_F(SelectionTest, LogFileOfAProcessChartsItsEntries) {
  vc().procsPopup->setCurrentIndex(kernel);
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  QStringList activities;
  ProcessActivity::setObserver([&](const QString& e) { activities << e; });
  choose(vc().sourceLogPopup, 1);
  ProcessActivity::setObserver(nullptr);
  EXPECT_EQ(activities, (QStringList{"begin:running log commands", "end:running log commands"}));
  ASSERT_EQ(tool.calls().size(), 1);
  EXPECT_FALSE(vc().theChartView->isLogarchive);
  EXPECT_EQ(vc().theChartView->theFilename, kPersist1);
  EXPECT_EQ(vc().theSourceLogFile, kPersist1);
  EXPECT_EQ(vc().theChartView->theChartHeights.size(), 50u);
  EXPECT_TRUE(w->output().startsWith(QStringLiteral("Overall:\n2019-02-21 18:00:00.000+0000 - 2019-02-21 18:01:40.000+0000 total log entries 101\n")));
  EXPECT_EQ(title(), kPersist1 + QStringLiteral(" - kernel"));
}

TEST_F(SelectionTest, EventsOffRunsTheToolOnce) {
  vc().procsPopup->setCurrentIndex(kernel);
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  vc().openTraceV3(kPersist1);
  EXPECT_EQ(tool.calls().size(), 1);
  EXPECT_TRUE(vc().theChartView->theEventDates.empty());
}

TEST_F(SelectionTest, EventsOnRunsTheSameArgumentsWithTheEventsPredicate) {
  vc().procsPopup->setCurrentIndex(kernel);
  vc().showEventsCheckbox->setChecked(true);
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  tool.expectRun(2, eventsRun(), test::syslogLines({Date{572464850.0}}, "kernel[0]: PMRD: System Wake"));
  vc().openTraceV3(kPersist1);
  ASSERT_EQ(tool.calls().size(), 2);
  QStringList first = tool.calls()[0], second = tool.calls()[1];
  EXPECT_EQ(first.size(), second.size());
  first[4] = second[4] = QString();
  EXPECT_EQ(first, second);
  EXPECT_EQ(vc().theChartView->theEventDates, std::vector<Date>{Date{572464850.0}});
  EXPECT_EQ(vc().theChartView->theEventTimes, std::vector<double>{0.5});
}

TEST_F(SelectionTest, NoEntriesStillRunsTheEventsRun) {
  vc().procsPopup->setCurrentIndex(kernel);
  vc().showEventsCheckbox->setChecked(true);
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), "Timestamp                       (process)[PID]\n");
  tool.expectRun(2, eventsRun(), test::syslogLines({Date{572464850.0}}));
  vc().openTraceV3(kPersist1);
  EXPECT_EQ(tool.calls().size(), 2);
  EXPECT_EQ(w->output(), QStringLiteral("No log entries were found for the selected process in this log file.\n"));
}

TEST_F(SelectionTest, FileNameIsTrimmedInThePathAndTheCurrentFile) {
  vc().procsPopup->setCurrentIndex(kernel);
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  vc().openTraceV3(QStringLiteral("  ") + kPersist1 + QStringLiteral(" \n"));
  EXPECT_EQ(vc().theSourceLogFile, kPersist1);
  EXPECT_EQ(vc().sourceLogPopup->currentText(), kPersist1);
}

TEST_F(SelectionTest, FailingEntryRunChangesNothing) {
  vc().procsPopup->setCurrentIndex(kernel);
  vc().theSourceLogFile = QStringLiteral("earlier");
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), "", 64);
  vc().openTraceV3(kPersist1);
  EXPECT_EQ(w->output(), QStringLiteral("log command returned error number 64"));
  EXPECT_EQ(vc().theSourceLogFile, QStringLiteral("earlier"));
  EXPECT_TRUE(vc().theChartView->isLogarchive);
}

TEST_F(SelectionTest, FailingEventsRunStillChartsAndKeepsEarlierEvents) {
  vc().procsPopup->setCurrentIndex(kernel);
  vc().showEventsCheckbox->setChecked(true);
  tool.expectRun(1, entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  tool.expectRun(2, eventsRun(), test::syslogLines({Date{572464810.0}}));
  vc().openTraceV3(kPersist1);
  tool.expectRun(3, entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments(51)));
  tool.expectRun(4, eventsRun(), "", 5);
  vc().openTraceV3(kPersist1);
  EXPECT_EQ(vc().theChartView->theDates.size(), 51u);
  EXPECT_EQ(vc().theChartView->theEventDates, std::vector<Date>{Date{572464810.0}});
  EXPECT_TRUE(w->output().startsWith(QStringLiteral("Overall:\n")));
}

// --- remembered periods ---

TEST_F(SelectionTest, FirstRunListsOnlyVariable) {
  EXPECT_EQ(items(vc().periodPopup), QStringList{"variable"});
}

TEST_F(SelectionTest, PeriodsAreRememberedPerWindowAndSharedBetweenWindows) {
  vc().procsPopup->setCurrentIndex(kernel);
  tool.expectEveryRun(entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  choose(vc().sourceLogPopup, 1);
  ChartView* chart = vc().theChartView;
  test::click(chart, test::barMiddle(chart, 10, 50));
  EXPECT_EQ(vc().periodPopup->count(), 2);
  test::click(chart, test::barMiddle(chart, 25, 50));
  ASSERT_EQ(vc().periodPopup->count(), 2);
  const QString second = vc().periodPopup->itemText(1);

  Window other(false);
  other->openSource(bundle.path);
  other->procsPopup->setCurrentIndex(kernel);
  choose(other->sourceLogPopup, 1);
  test::click(other->theChartView, test::barMiddle(other->theChartView, 40, 50));
  EXPECT_EQ(other->periodPopup->count(), 3);
  EXPECT_EQ(vc().periodPopup->count(), 3);
  EXPECT_TRUE(items(vc().periodPopup).contains(second));
}

TEST_F(SelectionTest, PeriodsOfAnotherFileAreNotListed) {
  UserDefaults::standard().setDictionary(QStringLiteral("11111111-2222-3333-4444-555555555555"),
                                         {{QStringLiteral("file"), QStringLiteral("Special/0000000000000001.tracev3")},
                                          {QStringLiteral("start"), 1.0},
                                          {QStringLiteral("end"), 2.0}});
  vc().theSourceLogFile = kPersist1;
  vc().loadPeriodMenu();
  EXPECT_EQ(items(vc().periodPopup), QStringList{"variable"});
  vc().theSourceLogFile = QStringLiteral("Special/0000000000000001.tracev3");
  vc().loadPeriodMenu();
  EXPECT_EQ(vc().periodPopup->count(), 2);
}

TEST_F(SelectionTest, ChoosingAPeriodWithSourceAllDoesNothing) {
  vc().theSourceLogFile = kPersist1;
  vc().insertDefaults(Date{572464800.0}, Date{572464810.0});
  vc().procsPopup->setCurrentIndex(kernel);
  ASSERT_EQ(vc().periodPopup->count(), 2);
  const std::vector<double> before = vc().theChartView->theChartHeights;
  choose(vc().periodPopup, 1);
  EXPECT_EQ(vc().theChartView->theChartHeights, before);
  EXPECT_TRUE(vc().theChartView->isLogarchive);
}

TEST_F(SelectionTest, ChosenPeriodIsChartedWithFiftyBarsToTheMillisecond) {
  vc().procsPopup->setCurrentIndex(kernel);
  tool.expectEveryRun(entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  choose(vc().sourceLogPopup, 1);
  vc().barsNumBox->setText(QStringLiteral("20"));
  emit vc().barsNumBox->editingFinished();
  vc().insertDefaults(Date{572464800.123456}, Date{572464850.0});
  const int listed = vc().periodPopup->findText(QStringLiteral("2019-02-21 18:00:00.123+0000 - 2019-02-21 18:00:50.000+0000"));
  ASSERT_GT(listed, 0);
  choose(vc().periodPopup, listed);
  EXPECT_EQ(vc().theChartView->theChartHeights.size(), 50u);
  EXPECT_NEAR(vc().theChartView->theBarDates.front().start.sinceReference, 572464800.123, 1e-6);
  EXPECT_TRUE(w->output().startsWith(QStringLiteral("Overall:\n2019-02-21 18:00:00.123+0000 - 2019-02-21 18:00:50.000+0000")));
}

TEST_F(SelectionTest, VariableReturnsTheChartToItsTopLevel) {
  vc().procsPopup->setCurrentIndex(kernel);
  tool.expectEveryRun(entryRun(QStringLiteral("kernel")), test::syslogLines(entryMoments()));
  choose(vc().sourceLogPopup, 1);
  test::click(vc().theChartView, test::barMiddle(vc().theChartView, 3, 50));
  EXPECT_EQ(vc().theChartView->theViewDates.size(), 2u);
  choose(vc().periodPopup, 0);
  EXPECT_EQ(vc().theChartView->theViewDates.size(), 1u);
}

}  // namespace
}  // namespace tarnbeck
