#include "main_window/window_harness.h"
#include "platform/process_activity.h"
#include "platform/property_list.h"
#include "tools/sample_writer.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::items;
using test::Window;

TEST(OpenButton, CancellingThePanelChangesNothing) {
  Window w;
  w->replaceOutputText(QStringLiteral("as it was"));
  w.panels->answers.push_back(std::nullopt);
  w->openButtonControl->click();
  EXPECT_EQ(w.panels->asked, QStringList{"logarchive"});
  EXPECT_EQ(w.output(), QStringLiteral("as it was"));
  EXPECT_TRUE(w->sourceFileText->text().isEmpty());
  EXPECT_EQ(w->theMemoryCount, 0);
}

TEST(OpenButton, OpensTheBundleAndFillsEverything) {
  Window w;
  test::Bundle bundle;
  QStringList activities;
  ProcessActivity::setObserver([&](const QString& e) { activities << e; });
  w.panels->answers.push_back(bundle.path);
  w->openButtonControl->click();
  ProcessActivity::setObserver(nullptr);
  EXPECT_EQ(activities, (QStringList{"begin:opening logarchive", "end:opening logarchive"}));
  EXPECT_EQ(w->sourceFileText->text(), bundle.path);
  EXPECT_EQ(items(w->sourceLogPopup), (QStringList{"all", "Persist/0000000000000001.tracev3", "Persist/0000000000000002.tracev3",
                                                    "Special/0000000000000001.tracev3"}));
  EXPECT_EQ(w->sourceLogPopup->currentIndex(), 0);
  EXPECT_TRUE(w->theSourceLogFile.isEmpty());
  EXPECT_EQ(w->theFileArray.size(), 3);
  EXPECT_EQ(w->theMemoryCount, 1);
  const QString text = w.output();
  EXPECT_TRUE(text.startsWith(QStringLiteral("date,time,totalsize,filename,size,percent,process\n")));
  EXPECT_TRUE(text.contains(QStringLiteral("\n\nCatalogue listing of ") + bundle.path + QStringLiteral(" :\nPersist/0000000000000001.tracev3\t")));
  EXPECT_EQ(text.count(u'\n'), 1 + 60 + 2 + 3);
  EXPECT_EQ(w->procsPopup->itemText(0), QStringLiteral("all"));
  EXPECT_GT(w->procsPopup->count(), 20);
  // The chart shows one bar per record.
  EXPECT_TRUE(w->theChartView->isLogarchive);
  EXPECT_EQ(w->theChartView->theChartHeights, (std::vector<double>{1000000, 2000000, 3000000}));
  EXPECT_EQ(w->theChartView->theChartTypes, (std::vector<int>{1, 1, 2}));
}

TEST(OpenButton, ExtraProcessNamedInStatisticsIsListedTwice) {
  Window w;
  test::Bundle bundle;
  w->theExtraProcs = {QStringLiteral("kernel")};
  w->openSource(bundle.path);
  EXPECT_EQ(items(w->procsPopup).count(QStringLiteral("kernel")), 2);
  EXPECT_EQ(w->procsPopup->itemText(1), QStringLiteral("kernel"));
}

TEST(OpenButton, MissingSpecialFolderMessageDoesNotSurvive) {
  Window w;
  test::Bundle bundle(3, false);
  w->openSource(bundle.path);
  EXPECT_FALSE(w.output().contains(QStringLiteral("doesn\u2019t exist")));
  EXPECT_TRUE(w.output().contains(QStringLiteral("Persist/0000000000000002.tracev3\t")));
}

TEST(MakeButton, WritesSourceAndDestinationLinesAndTheBundle) {
  Window w;
  QTemporaryDir dir;
  const QString store = dir.filePath(QStringLiteral("store"));
  ASSERT_TRUE(sample::writeSampleStore(store));
  const QString dest = dir.filePath(QStringLiteral("New.logarchive"));
  w.panels->answers = {store, dest};
  QStringList activities;
  ProcessActivity::setObserver([&](const QString& e) { activities << e; });
  w->makeButtonControl->click();
  ProcessActivity::setObserver(nullptr);
  EXPECT_EQ(w.panels->asked, (QStringList{"store", "bundle"}));
  EXPECT_EQ(w.output(), QStringLiteral("Source: ") + store + QStringLiteral("\nDestination:") + dest + QStringLiteral("\n"));
  EXPECT_EQ(activities, (QStringList{"begin:making logarchive", "end:making logarchive"}));
  EXPECT_TRUE(readPlistDictionary(dest + QStringLiteral("/Info.plist")));
}

TEST(MakeButton, CancellingTheDestinationKeepsTheSourceLine) {
  Window w;
  w.panels->answers = {QStringLiteral("/var/db/diagnostics-store"), std::nullopt};
  w->makeButtonControl->click();
  EXPECT_EQ(w.output(), QStringLiteral("Source: /var/db/diagnostics-store\n"));
}

TEST(SaveButton, EmptyOutputSavesAnEmptyFile) {
  Window w;
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("out.txt"));
  test::writeFile(path, "old");
  w.panels->answers = {path};
  w->saveButtonControl->click();
  EXPECT_EQ(w.panels->asked, QStringList{"text"});
  EXPECT_EQ(test::readFile(path), QByteArray());
}

TEST(SaveButton, SavesPlainTextWithItsLineEnds) {
  Window w;
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("out.text"));
  w->outputText->setHtml(QStringLiteral("<span style='color:#ff0000'>red</span> plain"));
  w->appendOutputText(QStringLiteral("\nline two\n"));
  w.panels->answers = {path};
  w->saveButtonControl->click();
  EXPECT_EQ(test::readFile(path), QByteArray("red plain\nline two\n"));
}

TEST(SaveButton, FailedWriteKeepsTheTextAndAddsTheMessage) {
  Window w;
  w->replaceOutputText(QStringLiteral("report\n"));
  w.panels->answers = {QStringLiteral("/nonexistent/folder/out.txt")};
  w->saveButtonControl->click();
  EXPECT_EQ(w.output(), QStringLiteral("report\nThe folder \u201Cfolder\u201D doesn\u2019t exist."));
}

}  // namespace
}  // namespace tarnbeck
