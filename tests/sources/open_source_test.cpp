#include "sources/open_source.h"
#include "support/test_support.h"
#include "tools/sample_writer.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

QByteArray twentyProcessRecord(const QString& file, const QString& time) {
  return sample::fileRotateRecord(file, time, 1000000, sample::typicalProcesses(1000000, 3));
}

TEST(OpenSource, BundleWithoutLogFilesGivesHeaderStatisticsAndHeading) {
  QTemporaryDir dir;
  const QString bundle = dir.filePath(QStringLiteral("Empty.logarchive"));
  test::writeFile(bundle + QStringLiteral("/Extra/logdata.statistics.0.txt"),
                  twentyProcessRecord(QStringLiteral("Persist/0000000000000001.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800")));
  QDir().mkpath(bundle + QStringLiteral("/Persist"));
  const OpenedSource opened = openSource(bundle, {});
  EXPECT_TRUE(opened.outputText.startsWith(QStringLiteral("date,time,totalsize,filename,size,percent,process\n2019-02-24,19:35:47,1000000,")));
  EXPECT_TRUE(opened.outputText.endsWith(QStringLiteral("\n\nCatalogue listing of ") + bundle + QStringLiteral(" :\n")));
  EXPECT_EQ(opened.outputText.count(u'\n'), 1 + 20 + 2);
  EXPECT_EQ(opened.sourceLogMenu, QStringList{QStringLiteral("all")});
}

TEST(OpenSource, MissingSpecialMessageIsWipedByTheHeader) {
  QTemporaryDir dir;
  const QString bundle = dir.filePath(QStringLiteral("Plain.logarchive"));
  test::writeFile(bundle + QStringLiteral("/Persist/0000000000000001.tracev3"), "x");
  const OpenedSource opened = openSource(bundle, {});
  EXPECT_TRUE(opened.wipedMessages.contains(QStringLiteral("The folder \u201CSpecial\u201D doesn\u2019t exist.")));
  EXPECT_FALSE(opened.outputText.contains(QStringLiteral("Special")));
  EXPECT_TRUE(opened.outputText.contains(QStringLiteral("Persist/0000000000000001.tracev3\t")));
}

TEST(OpenSource, CatalogueInTextOrderMenuInScanOrder) {
  QTemporaryDir dir;
  const QString bundle = dir.filePath(QStringLiteral("Order.logarchive"));
  test::writeFile(bundle + QStringLiteral("/Special/0000000000000001.tracev3"), "s");
  test::writeFile(bundle + QStringLiteral("/Persist/0000000000000002.tracev3"), "p");
  test::writeFile(bundle + QStringLiteral("/logdata.LiveData.tracev3"), "l");
  const OpenedSource opened = openSource(bundle, {});
  EXPECT_EQ(opened.sourceLogMenu, (QStringList{"all", "/logdata.LiveData.tracev3", "Persist/0000000000000002.tracev3",
                                               "Special/0000000000000001.tracev3"}));
  const QStringList lines = opened.outputText.section(QStringLiteral(" :\n"), 1).split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 3);
  EXPECT_TRUE(lines[0].startsWith(u'/'));
  EXPECT_TRUE(lines[1].startsWith(QStringLiteral("Persist/")));
  EXPECT_TRUE(lines[2].startsWith(QStringLiteral("Special/")));
}

TEST(OpenSource, ProcessNamedTwiceIsListedTwice) {
  QTemporaryDir dir;
  const QString bundle = dir.filePath(QStringLiteral("Twice.logarchive"));
  test::writeFile(bundle + QStringLiteral("/Extra/logdata.statistics.0.txt"),
                  twentyProcessRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800")) +
                      twentyProcessRecord(QStringLiteral("Persist/2.tracev3"), QStringLiteral("2019-02-24 20:35:47-0800")));
  const OpenedSource opened = openSource(bundle, {QStringLiteral("kernel"), QStringLiteral("mine")});
  EXPECT_EQ(opened.processMenu.mid(0, 3), (QStringList{"all", "kernel", "mine"}));
  EXPECT_EQ(opened.processMenu.count(QStringLiteral("kernel")), 2);
  QStringList found = opened.processMenu.mid(3);
  QStringList sorted = found;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(found, sorted);
  EXPECT_EQ(opened.stats.memoryCount, 1);
}

TEST(OpenSource, RealArchiveSample) {
  auto real = test::realDataPath(QStringLiteral("iquiz_2019_logarchive"));
  if (!real) GTEST_SKIP() << "real samples not present";
  const OpenedSource opened = openSource(*real, {});
  EXPECT_EQ(opened.scan.heldTracev3Files, QStringList{QStringLiteral("Special/0000000000000017.tracev3")});
  EXPECT_TRUE(opened.outputText.contains(QStringLiteral("2019-02-24,19:35:47,36658976,Persist/0000000000000019.tracev3,11785357,32.1,Xcode\n")));
  EXPECT_EQ(opened.fullReport.chart.heights.size(), 9u);
}

}  // namespace
}  // namespace tarnbeck
