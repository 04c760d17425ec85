#include "logquery/log_tool.h"
#include "main_window/interactive_log_runner.h"
#include "main_window/window_harness.h"
#include "platform/notification_center.h"
#include "platform/process_activity.h"
#include "platform/tick_count.h"
#include "platform/user_defaults.h"
#include "prefs/stored_lists.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QTextBlock>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::choose;
using test::items;
using test::Window;

TEST(MainWindow, FirstStartWithNoPreferences) {
  Window w;
  EXPECT_EQ(items(w->procsPopup), QStringList{"all"});
  EXPECT_EQ(items(w->filterPopup), QStringList{"none"});
  EXPECT_EQ(items(w->stylePopup), QStringList{"syslog"});
  EXPECT_EQ(items(w->periodPopup), QStringList{"variable"});
  EXPECT_EQ(items(w->sourceLogPopup), QStringList{"all"});
  EXPECT_EQ(w->barsNumBox->text(), QStringLiteral("50"));
  EXPECT_EQ(w->barsStepper->value(), 50);
  EXPECT_FALSE(w->showEventsCheckbox->isChecked());
  EXPECT_FALSE(w->fullAnalysisCheckbox->isChecked());
  EXPECT_FALSE(w->allLogCheckbox->isChecked());
  EXPECT_TRUE(w->theFileArray.isEmpty());
  EXPECT_EQ(entryCount(w->theJSONDictionaries), 0u);
}

TEST(MainWindow, StoredListsFillTheMenusAtStart) {
  test::clearUserDefaults();
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("kernel")});
  UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("0h 9 10")});
  ViewController controller;
  EXPECT_EQ(items(controller.procsPopup), (QStringList{"all", "kernel"}));
  EXPECT_EQ(items(controller.stylePopup), (QStringList{"syslog", "0h 9 10"}));
  EXPECT_EQ(items(controller.filterPopup), QStringList{"none"});
}

TEST(MainWindow, BarCountIsClampedToFiveAndTwoHundred) {
  Window w;
  for (const auto& [typed, shown] : std::vector<std::pair<const char*, int>>{{"3", 5}, {"500", 200}, {"120", 120}, {"abc", 5}, {"77x", 77}}) {
    w->barsNumBox->setText(QString::fromLatin1(typed));
    emit w->barsNumBox->editingFinished();
    EXPECT_EQ(w->barsNumBox->text(), QString::number(shown)) << typed;
    EXPECT_EQ(w->barsStepper->value(), shown) << typed;
    EXPECT_EQ(w->theChartView->theBarsNum, shown) << typed;
  }
}

TEST(MainWindow, StepperCopiesItsValue) {
  Window w;
  w->barsStepper->stepUp();
  EXPECT_EQ(w->barsNumBox->text(), QStringLiteral("51"));
  EXPECT_EQ(w->theChartView->theBarsNum, 51);
}

TEST(MainWindow, SameProcessNameTwiceIsStoredAndListedTwice) {
  Window w;
  w->procsEditText->setText(QStringLiteral("kernel"));
  emit w->procsEditText->returnPressed();
  emit w->procsEditText->returnPressed();
  EXPECT_EQ(*UserDefaults::standard().stringArray(kExtraProcsKey), (QStringList{"kernel", "kernel"}));
  EXPECT_EQ(items(w->procsPopup), (QStringList{"all", "kernel", "kernel"}));
  EXPECT_EQ(w->procsEditText->text(), QStringLiteral("kernel"));
}

TEST(MainWindow, EmptyProcessFieldDoesNothing) {
  Window w;
  emit w->procsEditText->returnPressed();
  EXPECT_FALSE(UserDefaults::standard().stringArray(kExtraProcsKey));
}

TEST(MainWindow, UserStyleWithNoEntriesLeavesTheOutput) {
  test::clearUserDefaults();
  UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("10")});
  Window w;
  UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("10")});
  NotificationCenter::defaultCenter().post(kStylesChanged);
  w->replaceOutputText(QStringLiteral("kept"));
  choose(w->stylePopup, 1);
  EXPECT_EQ(w.output(), QStringLiteral("kept"));
}

TEST(MainWindow, ProcsChangedListsExtrasFirstThenFoundProcessesSorted) {
  Window w;
  w->theProcsSet = {QStringLiteral("trustd"), QStringLiteral("kernel"), QStringLiteral("WindowServer")};
  UserDefaults::standard().setStringArray(kExtraProcsKey, {QStringLiteral("zeta"), QStringLiteral("kernel")});
  NotificationCenter::defaultCenter().post(kProcsChanged);
  EXPECT_EQ(items(w->procsPopup), (QStringList{"all", "zeta", "kernel", "WindowServer", "kernel", "trustd"}));
}

TEST(MainWindow, FilterAndStyleNotificationsReloadTheirMenus) {
  Window w;
  UserDefaults::standard().setStringArray(kExtraFiltersKey, {QStringLiteral("error")});
  UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("0h 10"), QStringLiteral("9r")});
  NotificationCenter::defaultCenter().post(kFiltersChanged);
  EXPECT_EQ(items(w->filterPopup), (QStringList{"none", "error"}));
  EXPECT_EQ(items(w->stylePopup), QStringList{"syslog"});
  NotificationCenter::defaultCenter().post(kStylesChanged);
  EXPECT_EQ(items(w->stylePopup), (QStringList{"syslog", "0h 10", "9r"}));
}

TEST(MainWindow, OutputTextReplaceAndAppendArePlain) {
  Window w;
  w->replaceOutputText(QStringLiteral("one\n"));
  w->appendOutputText(QStringLiteral("two"));
  EXPECT_EQ(w.output(), QStringLiteral("one\ntwo"));
  const QTextCharFormat format = w->outputText->document()->begin().begin().fragment().charFormat();
  EXPECT_FALSE(format.hasProperty(QTextFormat::ForegroundBrush));
}

TEST(MainWindow, TwoWindowsHaveDifferentUuids) {
  Window a, b;
  EXPECT_NE(a->theUUID, b->theUUID);
  EXPECT_TRUE(isUuidText(a->theUUID));
}

// --- the excerpt query through the fake log tool ---

class ExcerptTest : public testing::Test {
 protected:
  void SetUp() override {
    test::clearUserDefaults();
    UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("0h 9 4g 10"), QStringLiteral("10")});
    UserDefaults::standard().setStringArray(kExtraFiltersKey, {QStringLiteral("\u00AE^com\\.")});
    w = std::make_unique<Window>();
    UserDefaults::standard().setStringArray(kExtraStylesKey, {QStringLiteral("0h 9 4g 10"), QStringLiteral("10")});
    UserDefaults::standard().setStringArray(kExtraFiltersKey, {QStringLiteral("\u00AE^com\\.")});
    NotificationCenter::defaultCenter().post(kStylesChanged);
    NotificationCenter::defaultCenter().post(kFiltersChanged);
    (*w)->sourceFileText->setText(QStringLiteral("/data/Test.logarchive"));
    (*w)->procsPopup->addItem(QStringLiteral("com.example.thing"));
    (*w)->procsPopup->setCurrentIndex(1);
  }
  QStringList expected(const char* style, bool predicate = true) const {
    QStringList args{"show", "--file", "/data/Test.logarchive/Persist/0000000000000001.tracev3"};
    if (predicate) args << "--predicate" << processPredicate(QStringLiteral("com.example.thing"));
    args << "--style" << QString::fromLatin1(style) << "--info" << "--start" << "2018-03-04 05:06:07" << "--end"
         << "2018-03-04 05:06:09";
    return args;
  }
  void excerpt() {
    (*w)->excerptTraceV3(QStringLiteral(" Persist/0000000000000001.tracev3 \n"), Date{541829167.75}, Date{541829168.9}.addingSeconds(1));
  }
  test::ScopedTimeZone zone{"Europe/Berlin"};
  test::FakeLogTool tool;
  std::unique_ptr<Window> w;
};

const QByteArray kJson = R"([{
  "timestamp" : "2018-03-04 05:06:07.123456+0100",
  "processID" : 412,
  "subsystem" : "com.example.thing",
  "eventMessage" : "com.example: started",
  "traceID" : 18446744073709551615
},{
  "timestamp" : "2018-03-04 05:06:08.000001+0100",
  "processID" : 413,
  "subsystem" : "com.example.thing",
  "eventMessage" : "other message"
}])";

TEST_F(ExcerptTest, SyslogStyleShowsTheToolText) {
  tool.expectRun(1, expected("syslog"), "2018-03-04 05:06:07.123456+0100  localhost thing[412]: hello\n");
  excerpt();
  EXPECT_EQ(tool.calls().size(), 1);
  EXPECT_EQ((*w).output(), QStringLiteral("2018-03-04 05:06:07.123456+0100  localhost thing[412]: hello\n"));
}

TEST_F(ExcerptTest, WholeLogHasNoPredicateAndDoesNotReadTheProcessMenu) {
  (*w)->allLogCheckbox->setChecked(true);
  (*w)->procsPopup->setCurrentIndex(-1);
  tool.expectRun(1, expected("syslog", false), "x\n");
  excerpt();
  EXPECT_EQ((*w).output(), QStringLiteral("x\n"));
}

TEST_F(ExcerptTest, JsonStyleIsParsedHeldAndStyled) {
  (*w)->stylePopup->setCurrentIndex(1);
  tool.expectRun(1, expected("json"), kJson);
  excerpt();
  EXPECT_EQ(entryCount((*w)->theJSONDictionaries), 2u);
  EXPECT_EQ((*w).output(), QStringLiteral("05:06:07.123456 412 com.example.thing com.example: started \n"
                                          "05:06:08.000001 413 com.example.thing other message \n"));
  // The subsystem field is green, with its trailing space.
  QTextCursor cursor((*w)->outputText->document());
  cursor.setPosition(QStringLiteral("05:06:07.123456 412 ").size() + 1);
  EXPECT_EQ(cursor.charFormat().foreground().color().greenF(), QColor::fromRgbF(0.0, 0.603261, 0.035142).greenF());
}

TEST_F(ExcerptTest, StyleAndFilterRestyleTheHeldEntries) {
  (*w)->stylePopup->setCurrentIndex(1);
  tool.expectRun(1, expected("json"), kJson);
  excerpt();
  choose((*w)->stylePopup, 2);
  EXPECT_EQ((*w).output(), QStringLiteral("com.example: started \nother message \n"));
  choose((*w)->filterPopup, 1);
  EXPECT_EQ((*w).output(), QStringLiteral("com.example: started \n"));
  EXPECT_EQ(tool.calls().size(), 1);
}

TEST_F(ExcerptTest, AfterAPlainRunARestyleFindsNoEntries) {
  (*w)->stylePopup->setCurrentIndex(1);
  tool.expectRun(1, expected("json"), kJson);
  excerpt();
  (*w)->stylePopup->setCurrentIndex(0);
  tool.expectRun(2, expected("syslog"), "plain text\n");
  excerpt();
  EXPECT_EQ(entryCount((*w)->theJSONDictionaries), 0u);
  choose((*w)->stylePopup, 2);
  EXPECT_EQ((*w).output(), QStringLiteral("plain text\n"));
}

TEST_F(ExcerptTest, ExitStatusOneShowsTheErrorText) {
  (*w)->stylePopup->setCurrentIndex(1);
  tool.expectRun(1, expected("json"), kJson);
  excerpt();
  tool.expectRun(2, expected("json"), "ignored", 1);
  excerpt();
  EXPECT_EQ((*w).output(), QStringLiteral("log command returned error number 1"));
  EXPECT_EQ(entryCount((*w)->theJSONDictionaries), 2u);
}

TEST_F(ExcerptTest, InvalidUtf8LeavesTheOutput) {
  (*w)->replaceOutputText(QStringLiteral("before"));
  tool.expectRun(1, expected("syslog"), "\xff\xfe\xfd");
  excerpt();
  EXPECT_EQ((*w).output(), QStringLiteral("before"));
}

TEST_F(ExcerptTest, MissingToolSaysWhichProgramAndWhy) {
  qputenv("TARNBECK_LOG_TOOL", "/nonexistent/log");
  excerpt();
  EXPECT_TRUE((*w).output().startsWith(QStringLiteral("log command could not be started: /nonexistent/log: ")));
  qputenv("TARNBECK_LOG_TOOL", FAKE_LOG_PATH);
}

TEST_F(ExcerptTest, CancelEndsALongRun) {
  tool.expectRun(1, expected("syslog"), "late\n");
  tool.sleepBeforeOutput(1, 20000);
  (*w)->logToolRunner().progressDelayMs = 100;
  bool shown = false;
  QString label;
  (*w)->logToolRunner().onProgressShown = [&](QProgressDialog& dialog) {
    shown = true;
    label = dialog.labelText();
    QPushButton* cancel = dialog.findChild<QPushButton*>();
    ASSERT_NE(cancel, nullptr);
    EXPECT_EQ(cancel->text(), QStringLiteral("Cancel"));
    cancel->click();
  };
  excerpt();
  (*w)->logToolRunner().onProgressShown = nullptr;
  EXPECT_TRUE(shown);
  EXPECT_TRUE(label.contains(QStringLiteral("Persist/0000000000000001.tracev3")));
  EXPECT_EQ((*w).output(), QStringLiteral("log command cancelled"));
}

TEST_F(ExcerptTest, TwoHundredMegabytesOfTextArrive) {
  tool.expectRun(1, expected("syslog"));
  tool.generateBytes(1, 200LL * 1000 * 1000);
  (*w)->logToolRunner().progressDelayMs = 100000;
  excerpt();
  EXPECT_EQ((*w)->outputText->document()->characterCount(), 200 * 1000 * 1000 + 1);
}

}  // namespace
}  // namespace tarnbeck
