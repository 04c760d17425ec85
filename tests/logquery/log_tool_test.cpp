#include "logquery/log_tool.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

using test::ScopedTimeZone;

TEST(ProcessPredicate, ThreeClausesWithTheTermInDoubleQuotes) {
  EXPECT_EQ(processPredicate(QStringLiteral("com.example.thing")),
            QStringLiteral("subsystem ==[c] \"com.example.thing\" OR processImagePath CONTAINS[c] \"com.example.thing\" OR "
                           "senderImagePath CONTAINS[c] \"com.example.thing\""));
}

TEST(ProcessPredicate, QuoteInTheTermIsPassedUnescaped) {
  EXPECT_EQ(processPredicate(QStringLiteral("a\"b")),
            QStringLiteral("subsystem ==[c] \"a\"b\" OR processImagePath CONTAINS[c] \"a\"b\" OR senderImagePath CONTAINS[c] \"a\"b\""));
}

TEST(EventsPredicate, Is127CharactersOfThreeClauses) {
  const QString predicate = eventsPredicate();
  EXPECT_EQ(predicate.size(), 127);
  EXPECT_EQ(predicate, QStringLiteral("eventMessage CONTAINS[c] \"system boot:\" OR eventMessage CONTAINS[c] \"BOOT_TIME\" OR "
                                      "eventMessage CONTAINS[c] \"PMRD: System Wake\""));
}

TEST(LogToolPath, DefaultsToTheSystemTool) {
  const QByteArray saved = qgetenv("TARNBECK_LOG_TOOL");
  qunsetenv("TARNBECK_LOG_TOOL");
  EXPECT_EQ(logToolPath(), QStringLiteral("/usr/bin/log"));
  qputenv("TARNBECK_LOG_TOOL", "/opt/other/log");
  EXPECT_EQ(logToolPath(), QStringLiteral("/opt/other/log"));
  if (saved.isEmpty()) qunsetenv("TARNBECK_LOG_TOOL"); else qputenv("TARNBECK_LOG_TOOL", saved);
}

ExcerptRequest request() {
  ExcerptRequest r;
  r.sourceFolder = QStringLiteral("/data/Sample.logarchive");
  r.filename = QStringLiteral("  Persist/0000000000000001.tracev3\n");
  r.processTerm = QStringLiteral("kernel");
  // 2018-03-04 05:06:07.8 in Berlin (+0100)
  r.start = Date{541829167.8};
  r.end = Date{541829168.9};
  return r;
}

TEST(ExcerptArguments, SyslogStyleWithPredicate) {
  ScopedTimeZone zone("Europe/Berlin");
  EXPECT_EQ(excerptArguments(request()),
            (QStringList{"show", "--file", "/data/Sample.logarchive/Persist/0000000000000001.tracev3", "--predicate",
                         processPredicate("kernel"), "--style", "syslog", "--info", "--start", "2018-03-04 05:06:07",
                         "--end", "2018-03-04 05:06:08"}));
}

TEST(ExcerptArguments, WholeLogHasNoPredicatePair) {
  ScopedTimeZone zone("Europe/Berlin");
  ExcerptRequest r = request();
  r.wholeLog = true;
  const QStringList args = excerptArguments(r);
  EXPECT_FALSE(args.contains(QStringLiteral("--predicate")));
  EXPECT_EQ(args.size(), 10);
}

TEST(ExcerptArguments, AnyStyleIndexButZeroGivesJsonAndInfoIsAlwaysThere) {
  ScopedTimeZone zone("Europe/Berlin");
  for (int index : {1, 2, 7}) {
    ExcerptRequest r = request();
    r.styleIndex = index;
    const QStringList args = excerptArguments(r);
    EXPECT_EQ(args[args.indexOf(QStringLiteral("--style")) + 1], QStringLiteral("json"));
    EXPECT_TRUE(args.contains(QStringLiteral("--info")));
  }
}

TEST(ExcerptArguments, DoubledSeparatorIsKept) {
  ScopedTimeZone zone("UTC");
  ExcerptRequest r = request();
  r.sourceFolder = QStringLiteral("/data/Sample.logarchive/");
  r.filename = QStringLiteral("/top.tracev3");
  EXPECT_EQ(excerptArguments(r)[2], QStringLiteral("/data/Sample.logarchive///top.tracev3"));
}

TEST(ErrorMessages, StatusFollowsTheFinalSpace) {
  EXPECT_EQ(errorNumberMessage(1), QStringLiteral("log command returned error number 1"));
  EXPECT_EQ(errorNumberMessage(64), QStringLiteral("log command returned error number 64"));
}

}  // namespace
}  // namespace tarnbeck
