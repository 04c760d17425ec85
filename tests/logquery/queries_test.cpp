#include "logquery/queries.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

const QString kFolder = QStringLiteral("/data/S.logarchive");

QStringList entryRun(const QString& file, const QString& predicate) {
  return wholeFileArguments(kFolder + QStringLiteral("/") + file, predicate);
}

TEST(Summary, CountsBytesNotCharacters) {
  test::FakeLogTool tool;
  tool.expectRun(1, entryRun("Persist/a.tracev3", processPredicate("kernel")), "caf\xc3\xa9 \xe2\x82\xac\n");
  BlockingLogToolRunner runner;
  QString failure;
  EXPECT_EQ(summariseBytes(runner, kFolder, QStringLiteral(" Persist/a.tracev3\n"), QStringLiteral("kernel"), &failure), 10);
  EXPECT_TRUE(failure.isEmpty());
  EXPECT_EQ(tool.calls().size(), 1);
}

TEST(Summary, FailingRunGivesZeroAndTheMessage) {
  test::FakeLogTool tool;
  tool.expectRun(1, entryRun("Persist/a.tracev3", processPredicate("all")), "partial output", 65);
  BlockingLogToolRunner runner;
  QString failure;
  EXPECT_EQ(summariseBytes(runner, kFolder, QStringLiteral("Persist/a.tracev3"), QStringLiteral("all"), &failure), 0);
  EXPECT_EQ(failure, QStringLiteral("log command returned error number 65"));
}

TEST(Summary, SameArgumentsAsTheEntryRun) {
  test::FakeLogTool tool;
  const QStringList expected = entryRun("Special/b.tracev3", processPredicate("powerd"));
  tool.expectEveryRun(expected, "x");
  BlockingLogToolRunner runner;
  summariseBytes(runner, kFolder, QStringLiteral("Special/b.tracev3"), QStringLiteral("powerd"), nullptr);
  readTraceV3Dates(runner, kFolder, QStringLiteral("Special/b.tracev3"), QStringLiteral("powerd"), false);
  ASSERT_EQ(tool.calls().size(), 2);
  EXPECT_EQ(tool.calls()[0], tool.calls()[1]);
  EXPECT_EQ(tool.calls()[0], expected);
}

TEST(Runner, MissingToolFailsToStartWithAClearMessage) {
  const QByteArray saved = qgetenv("TARNBECK_LOG_TOOL");
  qputenv("TARNBECK_LOG_TOOL", "/nonexistent/bin/log");
  BlockingLogToolRunner runner;
  ByteBuffer out;
  const LogRunOutcome outcome = runner.run({QStringLiteral("show")}, out, QString());
  if (saved.isEmpty()) qunsetenv("TARNBECK_LOG_TOOL"); else qputenv("TARNBECK_LOG_TOOL", saved);
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_TRUE(outcome.failureMessage.startsWith(QStringLiteral("log command could not be started: /nonexistent/bin/log: ")))
      << outcome.failureMessage.toStdString();
}

TEST(Runner, TwoHundredMegabytesArriveWhole) {
  test::FakeLogTool tool;
  tool.expectRun(1, {QStringLiteral("show")});
  tool.generateBytes(1, 200LL * 1000 * 1000);
  BlockingLogToolRunner runner;
  ByteBuffer out;
  const LogRunOutcome outcome = runner.run({QStringLiteral("show")}, out, QString());
  EXPECT_TRUE(outcome.succeeded);
  EXPECT_EQ(out.size(), 200u * 1000 * 1000);
  EXPECT_EQ(out.view().substr(0, 26), "2018-03-04 05:06:07.123456");
  EXPECT_LE(out.capacity(), out.size() + out.size() / 8 + (2u << 20));
}

}  // namespace
}  // namespace tarnbeck
