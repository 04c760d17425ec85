#include "logquery/extract_dates.h"
#include "support/test_support.h"

#include <QDir>

#include <gtest/gtest.h>

#include <random>

namespace tarnbeck {
namespace {

TEST(ExtractDates, ReadsEntryLinesAndSkipsHeaders) {
  const std::string text =
      "Filtering the log data using \"subsystem ==[c] \"kernel\" OR ...\"\n"
      "Skipping debug messages, pass --debug to include.\n"
      "Timestamp                       (process)[PID]\n"
      "2018-10-24 17:23:33.842651+0200  localhost sudo[2002]:   MacBook_ERNW : 2 incorrect password attempts\n"
      "\tcontinued message line\n"
      "2023-05-21 00:16:34.987156-0700  localhost kernel[0]: (AppleACPIPlatform) Wake reason: RTC\n";
  auto dates = extractDates(text);
  ASSERT_EQ(dates.size(), 2u);
  EXPECT_EQ(dates[0], *parseToolTimestampWithIcu("2018-10-24 17:23:33.842651+0200"));
  EXPECT_NEAR(dates[1].sinceReference, *parseDateUtf8("2023-05-21 00:16:34.987-0700", date_pattern::kPeriod) - Date{}, 1e-6);
}

TEST(ExtractDates, FourWordsGiveNoDateFiveWordsGiveOne) {
  EXPECT_TRUE(extractDates("2018-03-04 05:06:07.123456+0100 a b\n").empty());
  EXPECT_EQ(extractDates("2018-03-04 05:06:07.123456+0100 a b c\n").size(), 1u);
}

TEST(ExtractDates, InvalidUtf8GivesNothing) {
  EXPECT_TRUE(extractDates("2018-03-04 05:06:07.123456+0100 a b c\n\xff\xfe broken\n").empty());
}

TEST(ExtractDates, LastLineWithoutLineBreakCounts) {
  EXPECT_EQ(extractDates("2018-03-04 05:06:07.123456+0100  localhost x[1]: y").size(), 1u);
}

TEST(ExtractDates, StreamedInTinyPiecesGivesTheSameDates) {
  std::string text;
  for (int i = 0; i < 500; ++i) {
    text += "2018-03-04 05:06:" + std::to_string(10 + i % 50) + ".123456+0100  localhost kernel[0]: line " +
            std::to_string(i) + " \xc3\xa9\n";
  }
  const auto whole = extractDates(text);
  DateExtractor extractor;
  std::mt19937 random(7);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t n = std::min<std::size_t>(1 + random() % 13, text.size() - at);
    auto space = extractor.prepare(n);
    std::memcpy(space.data(), text.data() + at, n);
    extractor.commit(n);
    at += n;
  }
  EXPECT_EQ(extractor.finish(), whole);
  EXPECT_EQ(whole.size(), 500u);
}

// The hand-written reading must give exactly what ICU gives, for canonical stamps and for
// every mutation of them, valid or not.
TEST(ExtractDates, FastReadingEqualsIcuOnGeneratedAndMutatedStamps) {
  std::mt19937 random(20181024);
  auto pick = [&](int lo, int hi) { return lo + static_cast<int>(random() % static_cast<unsigned>(hi - lo + 1)); };
  const std::string alphabet = "0123456789-:.+ Tx";
  int compared = 0, valid = 0;
  for (int i = 0; i < 60000; ++i) {
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%06d%c%02d%02d", pick(1590, 2100), pick(0, 13),
                  pick(0, 32), pick(0, 25), pick(0, 61), pick(0, 61), pick(0, 999999), random() % 2 ? '+' : '-',
                  pick(0, 25), pick(0, 61));
    std::string text = stamp;
    const int mutations = i % 3 == 0 ? 0 : pick(1, 2);
    for (int m = 0; m < mutations; ++m) {
      const std::size_t at = random() % text.size();
      switch (random() % 3) {
        case 0: text[at] = alphabet[random() % alphabet.size()]; break;
        case 1: text.erase(at, 1); break;
        default: text.insert(at, 1, alphabet[random() % alphabet.size()]); break;
      }
    }
    const auto fast = parseToolTimestamp(text);
    const auto icu = parseToolTimestampWithIcu(text);
    ASSERT_EQ(fast.has_value(), icu.has_value()) << text;
    if (fast) {
      ASSERT_EQ(fast->sinceReference, icu->sinceReference) << text;
      ++valid;
    }
    ++compared;
  }
  EXPECT_EQ(compared, 60000);
  EXPECT_GT(valid, 5000);
}

TEST(ExtractDates, RealSyslogExcerptsGiveTheirEntryLines) {
  auto folder = test::realDataPath(QStringLiteral("logshow_text_excerpts"));
  if (!folder) GTEST_SKIP() << "real samples not present";
  const QByteArray sudo = test::readFile(*folder + QStringLiteral("/A_syslog_sudo_2018_ernw.txt"));
  auto dates = extractDates(std::string_view(sudo.constData(), static_cast<std::size_t>(sudo.size())));
  ASSERT_EQ(dates.size(), 1u);
  EXPECT_EQ(dates[0], *parseToolTimestampWithIcu("2018-10-24 17:23:33.842651+0200"));
  const QByteArray wake = test::readFile(*folder + QStringLiteral("/E_syslog_wake_reason_2023.txt"));
  int stamped = 0;
  for (const QByteArray& line : wake.split('\n')) {
    if (line.size() > 31 && line[4] == '-' && line[10] == ' ' && line[26] != ' ') ++stamped;
  }
  EXPECT_EQ(extractDates(std::string_view(wake.constData(), static_cast<std::size_t>(wake.size()))).size(),
            static_cast<std::size_t>(stamped));
  EXPECT_GT(stamped, 0);
}

}  // namespace
}  // namespace tarnbeck
