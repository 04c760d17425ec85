#include "stats/chart_values.h"
#include "stats/reports.h"

#include <gtest/gtest.h>

#include <random>

namespace tarnbeck {
namespace {

QHash<QString, StatsEntry> twoRecords() {
  QHash<QString, StatsEntry> dict;
  StatsEntry first{QStringLiteral("2019-02-24"), QStringLiteral("19:35:47"), QStringLiteral("5000"), {}};
  first.procs.insert(QStringLiteral("kernel"), {QStringLiteral("900"), QStringLiteral("18.0")});
  first.procs.insert(QStringLiteral("trustd"), {QStringLiteral("1200"), QStringLiteral("24.0")});
  StatsEntry second{QStringLiteral("2019-02-19"), QStringLiteral("16:27:24"), QStringLiteral("800"), {}};
  second.procs.insert(QStringLiteral("kernel"), {QStringLiteral("80"), QStringLiteral("10.0")});
  dict.insert(QStringLiteral("Persist/0000000000000002.tracev3"), first);
  dict.insert(QStringLiteral("memory000001"), second);
  return dict;
}

TEST(FullReport, RowsInTextOrderWithLoadsComparedAsText) {
  QStringList keys{QStringLiteral("memory000001"), QStringLiteral("Persist/0000000000000002.tracev3")};
  const Report report = displayFullStats(keys, twoRecords(), {QStringLiteral("Persist/0000000000000002.tracev3")});
  EXPECT_EQ(keys, (QStringList{"Persist/0000000000000002.tracev3", "memory000001"}));
  EXPECT_EQ(report.text,
            QStringLiteral("2019-02-19,16:27:24,800,memory000001,80,10.0,kernel\n"
                           "2019-02-24,19:35:47,5000,Persist/0000000000000002.tracev3,1200,24.0,trustd\n"
                           "2019-02-24,19:35:47,5000,Persist/0000000000000002.tracev3,900,18.0,kernel\n"));
  // One bar: only row 0 is sampled (records are taken to give 20 rows each).
  ASSERT_EQ(report.chart.heights.size(), 1u);
  EXPECT_EQ(report.chart.heights[0], 800.0);
  EXPECT_EQ(report.chart.labels[0], QStringLiteral("800, 2019-02-19 16:27:24, memory000001"));
  EXPECT_EQ(report.chart.types[0], kMemoryRollover);
}

// The whole rows sorted as text: what the full report must equal.
QString sortedRows(const QStringList& keys, const QHash<QString, StatsEntry>& dict) {
  QStringList rows;
  for (const QString& key : keys) {
    if (!dict.contains(key)) continue;
    const StatsEntry entry = dict.value(key);
    for (auto it = entry.procs.begin(); it != entry.procs.end(); ++it) {
      rows << QStringList{entry.date, entry.time, entry.total, key, it->load, it->percent, it.key()}.join(u',') + u'\n';
    }
  }
  std::sort(rows.begin(), rows.end());
  return rows.join(QString());
}

TEST(FullReport, EqualsSortingTheWholeRows) {
  std::mt19937 random(9);
  QHash<QString, StatsEntry> dict;
  QStringList keys;
  for (int r = 0; r < 300; ++r) {
    // Totals of different lengths, repeated times, keys read twice, and keys with commas.
    StatsEntry entry{QStringLiteral("2019-02-2%1").arg(random() % 3), QStringLiteral("10:00:0%1").arg(random() % 2),
                     QString::number(random() % 3 ? 100 : 1000 + random() % 3), {}};
    for (int p = 0; p < 20; ++p) {
      entry.procs.insert(QStringLiteral("p%1").arg(random() % 40),
                         {QString::number(random() % 2000), QString::number(random() % 100) + QStringLiteral(".0")});
    }
    const QString key = r % 50 == 7 ? QStringLiteral("Persist/a,b") : QStringLiteral("Persist/%1").arg(random() % 120);
    dict.insert(key, entry);
    keys << key;
  }
  QStringList commaFree;
  for (const QString& key : keys) {
    if (!key.contains(u',')) commaFree << key;
  }
  for (QStringList* list : {&commaFree, &keys}) {
    const QString expected = sortedRows(*list, dict);
    QStringList copy = *list;
    EXPECT_EQ(displayFullStats(copy, dict, {}).text, expected);
  }
  // "Persist/a," makes one head begin with another: the report falls back to sorting rows.
  QHash<QString, StatsEntry> prefixed;
  StatsEntry one{QStringLiteral("d"), QStringLiteral("t"), QStringLiteral("1"), {}};
  one.procs.insert(QStringLiteral("x"), {QStringLiteral("9"), QStringLiteral("1.0")});
  prefixed.insert(QStringLiteral("Persist/a"), one);
  prefixed.insert(QStringLiteral("Persist/a,0"), one);
  QStringList two{QStringLiteral("Persist/a,0"), QStringLiteral("Persist/a")};
  EXPECT_EQ(displayFullStats(two, prefixed, {}).text, sortedRows(two, prefixed));
}

TEST(FullReport, KeyWithoutEntryIsSkipped) {
  QStringList keys{QStringLiteral("Persist/missing.tracev3")};
  EXPECT_TRUE(displayFullStats(keys, twoRecords(), {}).text.isEmpty());
}

TEST(PartialReport, RowsOfTheRecordsNamingTheProcess) {
  QStringList keys{QStringLiteral("Persist/0000000000000002.tracev3"), QStringLiteral("memory000001")};
  const Report report = displayPartialStats(keys, twoRecords(), QStringLiteral("kernel"), {});
  EXPECT_EQ(report.text, QStringLiteral("2019-02-19,16:27:24,800,memory000001,80,10.0,kernel\n"
                                        "2019-02-24,19:35:47,5000,Persist/0000000000000002.tracev3,900,18.0,kernel\n"));
  ASSERT_EQ(report.chart.heights, (std::vector<double>{10.0, 18.0}));
  EXPECT_EQ(report.chart.types, (std::vector<int>{kMemoryRollover, kPersistGone}));
  EXPECT_EQ(report.chart.labels[1], QStringLiteral("18.0, 2019-02-24 19:35:47, Persist/0000000000000002.tracev3"));
}

TEST(PartialReport, ProcessInNoRecordGivesNothing) {
  QStringList keys{QStringLiteral("Persist/0000000000000002.tracev3")};
  const Report report = displayPartialStats(keys, twoRecords(), QStringLiteral("Kernel"), {});
  EXPECT_TRUE(report.text.isEmpty());
  EXPECT_TRUE(report.chart.heights.empty());
}

TEST(GatheredReport, PercentOfTheFileSizeWithProgress) {
  QHash<QString, HeldFileInfo> info;
  info.insert(QStringLiteral("Persist/a.tracev3"), {QStringLiteral("2019-02-24"), QStringLiteral("10:00:00"), 2048});
  info.insert(QStringLiteral("Special/b.tracev3"), {QStringLiteral("2019-02-23"), QStringLiteral("09:00:00"), 0});
  QStringList progress;
  const Report report = displayGatheredStats(
      {QStringLiteral("Persist/a.tracev3"), QStringLiteral("Special/b.tracev3"), QStringLiteral("/unknown.tracev3")}, info,
      QStringLiteral("kernel"), [](const QString& file) { return file.startsWith(u'P') ? 512 : 7; },
      [&](const QString& text) { progress << text; });
  EXPECT_EQ(progress, (QStringList{", Persist/a.tracev3", ", Special/b.tracev3", ", /unknown.tracev3"}));
  EXPECT_EQ(report.text, QStringLiteral("2019-02-23,09:00:00,0,Special/b.tracev3,7,0.0,kernel\n"
                                        "2019-02-24,10:00:00,2048,Persist/a.tracev3,512,25.0,kernel\n"));
  EXPECT_EQ(report.chart.heights, (std::vector<double>{0.0, 25.0}));
}

TEST(PercentText, RoundsAsTheCFormatDoes) {
  EXPECT_EQ(percentText(512, 2048), QStringLiteral("25.0"));
  EXPECT_EQ(percentText(1, 3), QStringLiteral("33.3"));
  EXPECT_EQ(percentText(5, 0), QStringLiteral("0.0"));
}

TEST(ChartValues, FortyFiveRowsGiveThreeBars) {
  QStringList rows;
  for (int i = 0; i < 45; ++i) {
    rows << QStringLiteral("2019-02-24,10:00:%1,%2,Persist/%3.tracev3,1,1.0,p\n").arg(i % 60, 2, 10, QLatin1Char('0')).arg(1000 + i).arg(i);
  }
  const ChartArrays chart = makeChartValsAll(rows, {QStringLiteral("Persist/20.tracev3")});
  EXPECT_EQ(chart.heights, (std::vector<double>{1000, 1020, 1040}));
  EXPECT_EQ(chart.types, (std::vector<int>{kPersistGone, kPersistHeld, kPersistGone}));
  EXPECT_EQ(chart.labels[1], QStringLiteral("1020, 2019-02-24 10:00:20, Persist/20.tracev3"));
}

TEST(ChartValues, NoRowsEmptyTheLists) {
  EXPECT_EQ(makeChartValsAll({}, {}), ChartArrays{});
  EXPECT_EQ(makeChartValsPart({}, {}), ChartArrays{});
}

TEST(ChartValues, MalformedRowsAreSkipped) {
  const ChartArrays chart = makeChartValsPart({QStringLiteral("a,b,c\n"), QStringLiteral("d,t,1,Special/x,9,NaNish,p\n"),
                                               QStringLiteral("d,t,1,Special/x,9,4.5,p\n")},
                                              {QStringLiteral("Special/x")});
  EXPECT_EQ(chart.heights, std::vector<double>{4.5});
  EXPECT_EQ(chart.types, std::vector<int>{kSpecialHeld});
}

TEST(ChartColour, TypeCodesByKey) {
  const QStringList held{QStringLiteral("Persist/0000000000000001.tracev3"), QStringLiteral("Special/0000000000000002.tracev3")};
  EXPECT_EQ(getChartColour(QStringLiteral("Persist/0000000000000001.tracev3"), held), 1);
  EXPECT_EQ(getChartColour(QStringLiteral("Persist/0000000000000009.tracev3"), held), 2);
  EXPECT_EQ(getChartColour(QStringLiteral("Special/0000000000000002.tracev3"), held), 3);
  EXPECT_EQ(getChartColour(QStringLiteral("Special/0000000000000009.tracev3"), held), 4);
  EXPECT_EQ(getChartColour(QStringLiteral("memory000003"), held), 10);
  EXPECT_EQ(getChartColour(QStringLiteral("Persist/0000000000000001.tracev3"), {}), 2);
}

}  // namespace
}  // namespace tarnbeck
