#include "app/app_delegate.h"
#include "app/document.h"
#include "app/tb_window.h"
#include "main_window/interactive_log_runner.h"
#include "main_window/view_controller.h"
#include "platform/tick_count.h"
#include "platform/user_defaults.h"
#include "prefs/stored_lists.h"
#include "support/test_support.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTextEdit>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

TEST(AppShell, SaveReportsAnErrorInsteadOfWriting) {
  test::clearUserDefaults();
  AppDelegate delegate;
  Document* document = delegate.newDocument();
  document->window()->show();
  QAction* save = document->window()->findChild<QAction*>(QStringLiteral("saveDocumentAction"));
  ASSERT_NE(save, nullptr);
  save->trigger();
  QMessageBox* alert = document->window()->findChild<QMessageBox*>();
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->text(), QStringLiteral("The operation couldn\u2019t be completed. (OSStatus error -4.)"));
  auto error = document->dataOfType(QStringLiteral("text"));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->domain, QStringLiteral("NSOSStatusErrorDomain"));
  EXPECT_EQ(error->code, -4);
  EXPECT_TRUE(document->readFrom(QStringLiteral("/tmp/x"), QString()));
  EXPECT_FALSE(Document::autosavesInPlace);
}

TEST(AppShell, NormalQuitRemovesRememberedPeriodsAndKeepsTheLists) {
  test::clearUserDefaults();
  UserDefaults& defaults = UserDefaults::standard();
  defaults.setStringArray(kExtraProcsKey, {QStringLiteral("kernel")});
  defaults.setStringArray(kExtraFiltersKey, {});
  defaults.setStringArray(kExtraStylesKey, {QStringLiteral("10")});
  defaults.setDictionary(newUuidString(), {{QStringLiteral("file"), QString()}, {QStringLiteral("start"), 1.0}, {QStringLiteral("end"), 2.0}});
  defaults.setDictionary(newUuidString().toLower(), {{QStringLiteral("file"), QString()}});
  AppDelegate delegate;
  delegate.applicationWillTerminate();
  const QStringList keys = defaults.dictionaryRepresentation().keys();
  EXPECT_EQ(keys, (QStringList{"ExtraFilters", "ExtraProcs", "ExtraStyles"}));
  // A new start lists no remembered period.
  ViewController controller;
  controller.theSourceLogFile = QString();
  controller.loadPeriodMenu();
  EXPECT_EQ(controller.periodPopup->count(), 1);
}

TEST(AppShell, EachNewWindowHasItsOwnControllerAndUuid) {
  AppDelegate delegate;
  Document* first = delegate.newDocument();
  Document* second = delegate.newDocument();
  ASSERT_NE(first->window()->contentViewController(), second->window()->contentViewController());
  EXPECT_NE(first->window()->contentViewController()->theUUID, second->window()->contentViewController()->theUUID);
  EXPECT_EQ(delegate.documents().size(), 2u);
}

TEST(AppShell, FileNewOpensAnotherWindow) {
  AppDelegate delegate;
  Document* first = delegate.newDocument();
  QAction* newAction = nullptr;
  for (QAction* action : first->window()->findChildren<QAction*>()) {
    if (action->shortcut() == QKeySequence(QKeySequence::New)) newAction = action;
  }
  ASSERT_NE(newAction, nullptr);
  newAction->trigger();
  EXPECT_EQ(delegate.documents().size(), 2u);
  EXPECT_TRUE(delegate.documents().back()->window()->isVisible());
}

TEST(AppShell, ClosingAWindowDuringARunStopsTheRunInstead) {
  test::FakeLogTool tool;
  AppDelegate delegate;
  Document* document = delegate.newDocument();
  document->window()->show();
  ViewController* controller = document->window()->contentViewController();
  controller->sourceFileText->setText(QStringLiteral("/data/T.logarchive"));
  controller->allLogCheckbox->setChecked(true);
  tool.expectRun(1, {"show", "--file", "/data/T.logarchive/a.tracev3", "--style", "syslog", "--info", "--start",
                     formatDate(Date{0}, date_pattern::kToolArgument), "--end", formatDate(Date{1}, date_pattern::kToolArgument)},
                 "late\n");
  tool.sleepBeforeOutput(1, 20000);
  controller->logToolRunner().progressDelayMs = 50;
  bool closed = true;
  controller->logToolRunner().onProgressShown = [&](QProgressDialog&) { closed = document->window()->close(); };
  controller->excerptTraceV3(QStringLiteral("a.tracev3"), Date{0}, Date{1});
  EXPECT_FALSE(closed);
  EXPECT_TRUE(document->window()->isVisible());
  EXPECT_EQ(controller->outputText->toPlainText(), QStringLiteral("log command cancelled"));
  EXPECT_FALSE(controller->logToolRunner().running());
  EXPECT_TRUE(document->window()->close());
}

}  // namespace
}  // namespace tarnbeck
