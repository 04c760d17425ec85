#include "logquery/log_tool.h"
#include "main_window/view_controller.h"
#include "support/test_support.h"
#include "tools/sample_writer.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::runCli;

// The checked-in expected outputs; scripts/refresh-golden rewrites them when a change is meant.
QByteArray golden(const char* name) {
  return test::readFile(QStringLiteral(GOLDEN_DIR) + QStringLiteral("/") + QString::fromLatin1(name));
}

// Runs the command line in a folder, so that relative bundle names print the same everywhere.
test::CliResult runIn(const QString& folder, const QStringList& arguments) {
  QProcess process;
  process.setWorkingDirectory(folder);
  process.start(QStringLiteral(TARNBECK_CLI_PATH), arguments);
  process.waitForFinished(120000);
  return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

class CliSample : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder = new QTemporaryDir;
    ASSERT_TRUE(sample::writeSampleBundle(folder->filePath(QStringLiteral("Sample.logarchive"))));
  }
  static void TearDownTestSuite() { delete folder; }
  static QString bundle() { return folder->filePath(QStringLiteral("Sample.logarchive")); }
  static QTemporaryDir* folder;
  test::ScopedTimeZone zone{"UTC"};
};
QTemporaryDir* CliSample::folder = nullptr;

TEST(Cli, HelpVersionAndBadUsage) {
  auto help = runCli({QStringLiteral("--help")});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.contains("Usage: tarnbeck-cli SUBCOMMAND"));
  auto version = runCli({QStringLiteral("--version")});
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(version.out.startsWith("tarnbeck-cli "));
  auto chartHelp = runCli({QStringLiteral("chart"), QStringLiteral("--help")});
  EXPECT_EQ(chartHelp.status, 0);
  EXPECT_TRUE(chartHelp.out.contains("--period"));
  auto unknown = runCli({QStringLiteral("frobnicate")});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_TRUE(unknown.err.contains("--help"));
  auto badOption = runCli({QStringLiteral("open"), QStringLiteral("x"), QStringLiteral("--colour")});
  EXPECT_EQ(badOption.status, 2);
  EXPECT_EQ(badOption.err.count('\n'), 1);
  auto missing = runCli({QStringLiteral("stats"), QStringLiteral("x.logarchive")});
  EXPECT_EQ(missing.status, 2);
  EXPECT_TRUE(missing.err.contains("--process"));
  EXPECT_EQ(runCli({}).status, 2);
}

TEST_F(CliSample, OpenMatchesTheCheckedInOutput) {
  auto result = runIn(folder->path(), {QStringLiteral("open"), QStringLiteral("Sample.logarchive")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, golden("open_sample.txt"));
}

TEST_F(CliSample, PartialStatsMatchTheCheckedInOutput) {
  auto result = runIn(folder->path(), {QStringLiteral("stats"), QStringLiteral("Sample.logarchive"), QStringLiteral("--process"),
                                       QStringLiteral("kernel")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, golden("stats_kernel.txt"));
}

TEST_F(CliSample, StatsDrawTheProcessChart) {
  const QString png = folder->filePath(QStringLiteral("stats.png"));
  auto result = runCli({QStringLiteral("stats"), bundle(), QStringLiteral("--process"), QStringLiteral("kernel"), QStringLiteral("--png"), png});
  EXPECT_EQ(result.status, 0);
  QImage image(png);
  ASSERT_EQ(image.size(), QSize(900, 240));
  // The rows are the bars: count the bars' left edges along a line just above the base line.
  const int rows = static_cast<int>(result.out.count('\n')) - 1;
  ASSERT_GT(rows, 1);
  EXPECT_NE(image.pixelColor(10 + (880 / rows) / 2, 240 - 12), QColor(Qt::white));
}

TEST_F(CliSample, OpenPrintsWhatTheWindowShows) {
  ViewController window;
  window.openSource(bundle());
  auto result = runCli({QStringLiteral("open"), bundle()});
  EXPECT_EQ(QString::fromUtf8(result.out), window.outputText->toPlainText());
}

TEST_F(CliSample, OpenDrawsTheStatisticsChart) {
  const QString png = folder->filePath(QStringLiteral("open.png"));
  auto result = runCli({QStringLiteral("open"), bundle(), QStringLiteral("--png"), png, QStringLiteral("--size"), QStringLiteral("600x200")});
  EXPECT_EQ(result.status, 0);
  QImage image(png);
  ASSERT_EQ(image.size(), QSize(600, 200));
  // Some bar pixel of a known colour stands just above the base line.
  int coloured = 0;
  for (int x = 10; x < 590; ++x) {
    const QColor c = image.pixelColor(x, 200 - 12);
    if (c == QColor(0, 0, 255) || c == QColor(0, 255, 255) || c == QColor(255, 0, 0) || c == QColor(255, 255, 0)) ++coloured;
  }
  EXPECT_GT(coloured, 300);
}

TEST_F(CliSample, GatheredStatsRunTheToolPerFile) {
  test::FakeLogTool tool;
  const QString predicate = processPredicate(QStringLiteral("mine"));
  QStringList files = QDir(bundle() + QStringLiteral("/Persist")).entryList({QStringLiteral("*.tracev3")}, QDir::Files, QDir::Name);
  int run = 0;
  tool.expectRun(++run, wholeFileArguments(bundle() + QStringLiteral("//logdata.LiveData.tracev3"), predicate), QByteArray(100, 'x'));
  for (const QString& name : files) {
    tool.expectRun(++run, wholeFileArguments(bundle() + QStringLiteral("/Persist/") + name, predicate), "");
  }
  for (const QString& name : QDir(bundle() + QStringLiteral("/Special")).entryList({QStringLiteral("*.tracev3")}, QDir::Files, QDir::Name)) {
    tool.expectRun(++run, wholeFileArguments(bundle() + QStringLiteral("/Special/") + name, predicate), "");
  }
  auto result = runCli({QStringLiteral("stats"), bundle(), QStringLiteral("--process"), QStringLiteral("mine"), QStringLiteral("--gathered")});
  EXPECT_EQ(result.status, 0) << result.err.toStdString();
  EXPECT_EQ(tool.calls().size(), run);
  EXPECT_TRUE(result.out.startsWith("date,time,totalsize,filename,size,percent,process\n"));
  EXPECT_TRUE(result.out.contains(",65536,/logdata.LiveData.tracev3,100,0.2,mine\n"));
  EXPECT_TRUE(result.err.startsWith(", /logdata.LiveData.tracev3, Persist/"));
}

TEST_F(CliSample, ChartPrintsTheSummaryAndClampsTheBarCount) {
  test::FakeLogTool tool;
  const QString file = QStringLiteral("Persist/0000000000000003.tracev3");
  QByteArray lines;
  for (int i = 0; i < 10; ++i) lines += QStringLiteral("2019-02-21 18:00:%1.000000+0000  localhost kernel[0]: x\n").arg(i * 6, 2, 10, QLatin1Char('0')).toUtf8();
  tool.expectRun(1, wholeFileArguments(bundle() + QStringLiteral("/") + file, processPredicate(QStringLiteral("kernel"))), lines);
  tool.expectRun(2, wholeFileArguments(bundle() + QStringLiteral("/") + file, eventsPredicate()),
                 "2019-02-21 18:00:27.000000+0000  localhost kernel[0]: PMRD: System Wake\n");
  const QString png = folder->filePath(QStringLiteral("chart.png"));
  auto result = runCli({QStringLiteral("chart"), bundle(), QStringLiteral("--file"), file, QStringLiteral("--process"),
                        QStringLiteral("kernel"), QStringLiteral("--events"), QStringLiteral("--bars"), QStringLiteral("2"),
                        QStringLiteral("--png"), png});
  EXPECT_EQ(result.status, 0) << result.err.toStdString();
  const QStringList out = QString::fromUtf8(result.out).split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(out.size(), 2 + 5);
  EXPECT_EQ(out[1], QStringLiteral("2019-02-21 18:00:00.000+0000 - 2019-02-21 18:00:54.000+0000 total log entries 10"));
  EXPECT_EQ(out[2], QStringLiteral("2019-02-21 18:00:00.000+0000 - 2019-02-21 18:00:10.800+0000 20.0%, 2"));
  QImage image(png);
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.pixelColor(10 + static_cast<int>(880 * 0.5), 120), QColor(255, 0, 0));
}

TEST_F(CliSample, ChartOfAPeriodUsesFiftyBars) {
  test::FakeLogTool tool;
  const QString file = QStringLiteral("Persist/0000000000000003.tracev3");
  tool.expectRun(1, wholeFileArguments(bundle() + QStringLiteral("/") + file, processPredicate(QStringLiteral("kernel"))),
                 "2019-02-21 18:00:00.000000+0000  localhost kernel[0]: a\n2019-02-21 18:01:40.000000+0000  localhost kernel[0]: b\n");
  auto result = runCli({QStringLiteral("chart"), bundle(), QStringLiteral("--file"), file, QStringLiteral("--process"), QStringLiteral("kernel"),
                        QStringLiteral("--bars"), QStringLiteral("7"), QStringLiteral("--period"),
                        QStringLiteral("2019-02-21 18:00:00.000+0000 - 2019-02-21 18:00:50.000+0000")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(QString::fromUtf8(result.out).count(u'\n'), 2 + 50);
  auto bad = runCli({QStringLiteral("chart"), bundle(), QStringLiteral("--file"), file, QStringLiteral("--process"), QStringLiteral("kernel"),
                     QStringLiteral("--period"), QStringLiteral("yesterday")});
  EXPECT_EQ(bad.status, 2);
}

TEST_F(CliSample, ChartFailureOfTheToolIsAFailure) {
  test::FakeLogTool tool;
  tool.expectRun(1, wholeFileArguments(bundle() + QStringLiteral("/x.tracev3"), processPredicate(QStringLiteral("kernel"))), "", 70);
  auto result = runCli({QStringLiteral("chart"), bundle(), QStringLiteral("--file"), QStringLiteral("x.tracev3"), QStringLiteral("--process"),
                        QStringLiteral("kernel")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "log command returned error number 70\n");
}

TEST_F(CliSample, ExcerptStylesAndColoursTheEntries) {
  test::FakeLogTool tool;
  tool.expectRun(1, {"show", "--file", bundle() + QStringLiteral("/Special/0000000000000002.tracev3"), "--predicate",
                     processPredicate(QStringLiteral("powerd")), "--style", "json", "--info", "--start", "2019-02-21 18:00:00",
                     "--end", "2019-02-21 18:00:05"},
                 R"([{"processID":530,"subsystem":"com.apple.powerd","eventMessage":"Sleep"},{"processID":530,"eventMessage":"Wake"}])");
  auto result = runCli({QStringLiteral("excerpt"), bundle(), QStringLiteral("--file"), QStringLiteral("Special/0000000000000002.tracev3"),
                        QStringLiteral("--start"), QStringLiteral("2019-02-21 18:00:00"), QStringLiteral("--end"),
                        QStringLiteral("2019-02-21 18:00:05"), QStringLiteral("--process"), QStringLiteral("powerd"),
                        QStringLiteral("--style"), QStringLiteral("9r 10"), QStringLiteral("--filter"), QStringLiteral("wake"),
                        QStringLiteral("--color"), QStringLiteral("always")});
  EXPECT_EQ(result.status, 0) << result.err.toStdString();
  EXPECT_EQ(result.out, "\x1b[38;2;172;11;12m530 \x1b[0mWake \n");
}

TEST_F(CliSample, ExcerptWholeLogInSyslogStyle) {
  test::FakeLogTool tool;
  tool.expectRun(1, {"show", "--file", bundle() + QStringLiteral("/Persist/0000000000000003.tracev3"), "--style", "syslog", "--info",
                     "--start", "2019-02-21 18:00:00", "--end", "2019-02-21 18:00:05"},
                 "text as the tool prints it\n");
  auto result = runCli({QStringLiteral("excerpt"), bundle(), QStringLiteral("--file"), QStringLiteral("Persist/0000000000000003.tracev3"),
                        QStringLiteral("--start"), QStringLiteral("2019-02-21 18:00:00"), QStringLiteral("--end"),
                        QStringLiteral("2019-02-21 18:00:05"), QStringLiteral("--all")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "text as the tool prints it\n");
  auto both = runCli({QStringLiteral("excerpt"), bundle(), QStringLiteral("--file"), QStringLiteral("x"), QStringLiteral("--start"),
                      QStringLiteral("2019-02-21 18:00:00"), QStringLiteral("--end"), QStringLiteral("2019-02-21 18:00:05")});
  EXPECT_EQ(both.status, 2);
}

TEST(Cli, StyleReadsStandardInput) {
  auto result = runCli({QStringLiteral("style"), QStringLiteral("--style"), QStringLiteral("0h 11f"), QStringLiteral("--color"),
                        QStringLiteral("never")},
                       R"([{"timestamp":"2018-03-04 05:06:07.123456+0000","processImagePath":"\/usr\/libexec\/trustd"}])");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "05:06:07.123456 trustd \n");
}

TEST(Cli, DatesPrintsOneLinePerEntry) {
  test::ScopedTimeZone zone("UTC");
  auto result = runCli({QStringLiteral("dates")},
                       "Timestamp                       (process)[PID]\n"
                       "2018-03-04 05:06:07.123456+0100  localhost kernel[0]: a\n"
                       "2018-03-04 05:06:08.5+0100  localhost kernel[0]: b\n"
                       "\tcontinued\n");
  EXPECT_EQ(result.status, 0);
  // ICU reads a one-digit fraction too; the continuation line gives nothing.
  EXPECT_EQ(result.out, "2018-03-04 04:06:07.123+0000\n2018-03-04 04:06:08.500+0000\n");
}

TEST(Cli, MakeAssemblesAndPrintsItsLines) {
  QTemporaryDir dir;
  const QString store = dir.filePath(QStringLiteral("store"));
  ASSERT_TRUE(sample::writeSampleStore(store));
  const QString dest = dir.filePath(QStringLiteral("Made.logarchive"));
  auto result = runCli({QStringLiteral("make"), store, dest});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(QString::fromUtf8(result.out), QStringLiteral("Source: ") + store + QStringLiteral("\nDestination:") + dest + QStringLiteral("\n"));
  EXPECT_TRUE(QFileInfo::exists(dest + QStringLiteral("/Info.plist")));
}

TEST(Cli, MissingToolIsNamed) {
  const QByteArray saved = qgetenv("TARNBECK_LOG_TOOL");
  qputenv("TARNBECK_LOG_TOOL", "/nonexistent/log");
  auto result = runCli({QStringLiteral("chart"), QStringLiteral("/tmp/x.logarchive"), QStringLiteral("--file"), QStringLiteral("a.tracev3"),
                        QStringLiteral("--process"), QStringLiteral("kernel")});
  if (saved.isEmpty()) qunsetenv("TARNBECK_LOG_TOOL"); else qputenv("TARNBECK_LOG_TOOL", saved);
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.startsWith("log command could not be started: /nonexistent/log: "));
}

}  // namespace
}  // namespace tarnbeck
