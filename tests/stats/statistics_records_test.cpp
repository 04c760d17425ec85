#include "stats/statistics_records.h"
#include "support/test_support.h"
#include "tools/sample_writer.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using sample::ProcessShare;

std::vector<ProcessShare> processes(int count) {
  std::vector<ProcessShare> list;
  for (int i = 0; i < count; ++i) {
    list.push_back({1000 - i, QStringLiteral("/Applications/App %1.app/Contents/MacOS/App %1").arg(i)});
  }
  return list;
}

QString text(const QByteArray& bytes) { return QString::fromUtf8(bytes); }

TEST(StatisticsRecords, FileRotateRecordInTheRealLayout) {
  StatisticsTables tables;
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Persist/0000000000000019.tracev3"),
                                                   QStringLiteral("2019-02-24 19:35:47-0800"), 36658976,
                                                   {{11785357, QStringLiteral("/Applications/Xcode.app/Contents/MacOS/Xcode")},
                                                    {3807688, QStringLiteral("/kernel")}})),
                     tables);
  // Two process lines make a 9-line record, which is too short: nothing is kept.
  EXPECT_TRUE(tables.fileArray.isEmpty());
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Persist/0000000000000019.tracev3"),
                                                   QStringLiteral("2019-02-24 19:35:47-0800"), 36658976, processes(20))),
                     tables);
  ASSERT_EQ(tables.fileArray.size(), 1);
  const StatsEntry& entry = tables.fullStatsDict.value(QStringLiteral("Persist/0000000000000019.tracev3"));
  EXPECT_EQ(entry.date, QStringLiteral("2019-02-24"));
  EXPECT_EQ(entry.time, QStringLiteral("19:35:47"));
  EXPECT_EQ(entry.total, QStringLiteral("36658976"));
  EXPECT_EQ(entry.procs.size(), 20);
  EXPECT_EQ(entry.procs.value(QStringLiteral("App 0")).load, QStringLiteral("1000"));
  EXPECT_EQ(entry.procs.value(QStringLiteral("App 0")).percent, QStringLiteral("0.0"));
  EXPECT_TRUE(tables.procsSet.contains(QStringLiteral("App 19")));
}

TEST(StatisticsRecords, ShortRecordOfTenLinesIsIgnored) {
  StatisticsTables tables;
  // 6 header lines, 3 process lines, the empty terminator line and the empty rest: 10 lines.
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"),
                                                   100, processes(3))),
                     tables);
  EXPECT_TRUE(tables.fileArray.isEmpty());
}

TEST(StatisticsRecords, RecordOfElevenLinesIsReadWithItsProcessLines) {
  StatisticsTables tables;
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"),
                                                   100, processes(4))),
                     tables);
  ASSERT_EQ(tables.fileArray.size(), 1);
  // Line 4 ("procs :") is not read; lines 5 to 8 are the four processes.
  EXPECT_EQ(tables.fullStatsDict.value(QStringLiteral("Persist/1.tracev3")).procs.size(), 4);
}

TEST(StatisticsRecords, FortyLineRecordGivesOnlyLinesFiveToTwentyFour) {
  StatisticsTables tables;
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"),
                                                   100, processes(34))),
                     tables);
  const auto procs = tables.fullStatsDict.value(QStringLiteral("Persist/1.tracev3")).procs;
  EXPECT_EQ(procs.size(), 20);
  EXPECT_TRUE(procs.contains(QStringLiteral("App 19")));
  EXPECT_FALSE(procs.contains(QStringLiteral("App 20")));
}

TEST(StatisticsRecords, SpecialIsReadLikePersist) {
  StatisticsTables persist, special;
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Persist/7.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"),
                                                   500, processes(20))),
                     persist);
  readStatisticsText(text(sample::fileRotateRecord(QStringLiteral("Special/7.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"),
                                                   500, processes(20))),
                     special);
  ASSERT_EQ(special.fileArray, QStringList{QStringLiteral("Special/7.tracev3")});
  const StatsEntry a = persist.fullStatsDict.value(QStringLiteral("Persist/7.tracev3"));
  const StatsEntry b = special.fullStatsDict.value(QStringLiteral("Special/7.tracev3"));
  EXPECT_EQ(a.date, b.date);
  EXPECT_EQ(a.total, b.total);
  EXPECT_EQ(a.procs, b.procs);
}

TEST(StatisticsRecords, MemoryRecordsAreNumberedAcrossFiles) {
  QTemporaryDir dir;
  const QByteArray memory = sample::memoryRolloverRecord(QStringLiteral("2019-02-19 16:27:24-0800"), 44882582, processes(20));
  test::writeFile(dir.filePath(QStringLiteral("logdata.statistics.0.txt")), memory + memory);
  test::writeFile(dir.filePath(QStringLiteral("logdata.statistics.1.txt")), memory);
  StatisticsTables tables;
  tables.memoryCount = 1;
  EXPECT_FALSE(runStatsCheck(dir.path(), tables));
  EXPECT_EQ(tables.fileArray, (QStringList{"memory000001", "memory000002", "memory000003"}));
  EXPECT_EQ(tables.memoryCount, 4);
  EXPECT_EQ(tables.fullStatsDict.value(QStringLiteral("memory000002")).time, QStringLiteral("16:27:24"));
  EXPECT_EQ(tables.fullStatsDict.value(QStringLiteral("memory000002")).total, QStringLiteral("44882582"));
}

TEST(StatisticsRecords, TextBeforeTheFirstSeparatorAndOtherRecordsAreIgnored) {
  StatisticsTables tables;
  const QByteArray file = "type  : File Rotate\nfile  : Persist/0.tracev3\n" + sample::purgeRecords(QStringLiteral("2019-02-24 18:39:13-0800")) +
                          sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(20)) +
                          sample::purgeRecords(QStringLiteral("2019-02-24 18:39:13-0800"));
  readStatisticsText(text(file), tables);
  EXPECT_EQ(tables.fileArray, QStringList{QStringLiteral("Persist/1.tracev3")});
}

TEST(StatisticsRecords, PurgeLinesAfterAShortRecordAreNotProcesses) {
  StatisticsTables tables;
  const QByteArray file =
      sample::fileRotateRecord(QStringLiteral("Special/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(5)) +
      sample::purgeRecords(QStringLiteral("2019-02-24 18:39:13-0800"));
  readStatisticsText(text(file), tables);
  ASSERT_EQ(tables.fileArray.size(), 1);
  const auto procs = tables.fullStatsDict.value(QStringLiteral("Special/1.tracev3")).procs;
  EXPECT_EQ(procs.size(), 5);
  EXPECT_FALSE(tables.procsSet.contains(QStringLiteral(" 192096")));
}

TEST(StatisticsRecords, MalformedRecordIsDroppedWholeAndReadingGoesOn) {
  StatisticsTables tables;
  QByteArray broken = sample::fileRotateRecord(QStringLiteral("Persist/2.tracev3"), QStringLiteral("2019-02-24T19:35:47-0800"), 100, processes(20));
  QByteArray noColon = sample::fileRotateRecord(QStringLiteral("Persist/3.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(20));
  noColon.replace("total : 100", "total = 100");
  const QByteArray file =
      sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(20)) +
      broken + noColon +
      sample::fileRotateRecord(QStringLiteral("Persist/4.tracev3"), QStringLiteral("2019-02-24 20:35:47-0800"), 100, processes(20));
  readStatisticsText(text(file), tables);
  EXPECT_EQ(tables.fileArray, (QStringList{"Persist/1.tracev3", "Persist/4.tracev3"}));
}

TEST(StatisticsRecords, DuplicateKeyStandsTwiceAndTheLaterWins) {
  StatisticsTables tables;
  const QByteArray file =
      sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(20)) +
      sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-25 08:00:00-0800"), 200, processes(20));
  readStatisticsText(text(file), tables);
  EXPECT_EQ(tables.fileArray, (QStringList{"Persist/1.tracev3", "Persist/1.tracev3"}));
  EXPECT_EQ(tables.fullStatsDict.value(QStringLiteral("Persist/1.tracev3")).total, QStringLiteral("200"));
}

TEST(StatisticsFolder, NoTxtFilesLeavesTheTablesAsTheyWere) {
  QTemporaryDir dir;
  const QByteArray record =
      sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(20));
  test::writeFile(dir.filePath(QStringLiteral("logdata.statistics.0.TXT")), record);
  test::writeFile(dir.filePath(QStringLiteral("notes.log")), record);
  StatisticsTables tables;
  tables.fileArray << QStringLiteral("earlier");
  tables.memoryCount = 5;
  EXPECT_FALSE(runStatsCheck(dir.path(), tables));
  EXPECT_EQ(tables.fileArray, QStringList{QStringLiteral("earlier")});
  EXPECT_EQ(tables.memoryCount, 5);
}

TEST(StatisticsFolder, MissingFolderGivesItsMessage) {
  StatisticsTables tables;
  auto message = runStatsCheck(QStringLiteral("/nonexistent/Extra"), tables);
  ASSERT_TRUE(message);
  EXPECT_EQ(*message, QStringLiteral("The folder \u201CExtra\u201D doesn\u2019t exist."));
}

TEST(StatisticsFolder, FileThatIsNotUtf8IsReportedAndLaterFilesAreRead) {
  QTemporaryDir dir;
  test::writeFile(dir.filePath(QStringLiteral("a.txt")), "\xff\xfe\xfd not text");
  test::writeFile(dir.filePath(QStringLiteral("b.txt")),
                  sample::fileRotateRecord(QStringLiteral("Persist/1.tracev3"), QStringLiteral("2019-02-24 19:35:47-0800"), 100, processes(20)));
  StatisticsTables tables;
  auto message = runStatsCheck(dir.path(), tables);
  ASSERT_TRUE(message);
  EXPECT_TRUE(message->contains(QStringLiteral("a.txt")));
  EXPECT_EQ(tables.fileArray, QStringList{QStringLiteral("Persist/1.tracev3")});
}

TEST(StatisticsFolder, RealStatisticsFileWithPurgeRecords) {
  auto path = test::realDataPath(QStringLiteral("iquiz_2019_logarchive/Extra"));
  if (!path) GTEST_SKIP() << "real samples not present";
  StatisticsTables tables;
  tables.memoryCount = 1;
  EXPECT_FALSE(runStatsCheck(*path, tables));
  // Nine statistics records, all with 20 process lines, among the purge records.
  EXPECT_EQ(tables.fileArray.size(), 9);
  EXPECT_TRUE(tables.fileArray.contains(QStringLiteral("Persist/0000000000000019.tracev3")));
  EXPECT_TRUE(tables.fileArray.contains(QStringLiteral("memory000001")));
  const StatsEntry entry = tables.fullStatsDict.value(QStringLiteral("Persist/0000000000000019.tracev3"));
  EXPECT_EQ(entry.date, QStringLiteral("2019-02-24"));
  EXPECT_EQ(entry.time, QStringLiteral("19:35:47"));
  EXPECT_EQ(entry.total, QStringLiteral("36658976"));
  EXPECT_EQ(entry.procs.value(QStringLiteral("Xcode")), (ProcessLoad{QStringLiteral("11785357"), QStringLiteral("32.1")}));
  EXPECT_EQ(entry.procs.value(QStringLiteral("kernel")), (ProcessLoad{QStringLiteral("3807688"), QStringLiteral("10.4")}));
  // Process lines are read from line 5 in both kinds of record, so a memory record, whose
  // process lines start one line higher, loses its first (largest) process.
  for (auto it = tables.fullStatsDict.begin(); it != tables.fullStatsDict.end(); ++it) {
    EXPECT_EQ(it->procs.size(), it.key().startsWith(QStringLiteral("memory")) ? 19 : 20) << it.key().toStdString();
  }
  EXPECT_FALSE(tables.fullStatsDict.value(QStringLiteral("memory000001")).procs.contains(QStringLiteral("WindowServer")));
  EXPECT_TRUE(tables.fullStatsDict.value(QStringLiteral("memory000001")).procs.contains(QStringLiteral("mDNSResponder")));
  for (const QString& name : tables.procsSet) {
    EXPECT_FALSE(name.contains(u'/'));
    EXPECT_FALSE(name.endsWith(u']'));
  }
}

TEST(AnalyseStats, FullPathGivesTheNameAndTheLaterLineWins) {
  const auto procs = analyseStats({QStringLiteral("    - [     900,   1.5, /usr/libexec/trustd ]"), QString(),
                                   QStringLiteral("    - [    1200,   2.5, /other/place/trustd ]"),
                                   QStringLiteral("too,short")});
  ASSERT_EQ(procs.size(), 1);
  EXPECT_EQ(procs.value(QStringLiteral("trustd")), (ProcessLoad{QStringLiteral("1200"), QStringLiteral("2.5")}));
}

}  // namespace
}  // namespace tarnbeck
