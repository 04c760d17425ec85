#include "logquery/log_entries.h"
#include "logquery/styling.h"
#include "logquery/text_match.h"
#include "support/test_support.h"

#include <QDir>
#include <unicode/locid.h>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace tarnbeck {
namespace {

QString styled(const char* json, const QString& style, std::optional<QString> filter = std::nullopt) {
  LogEntries entries = parseLogEntries(json);
  return plainText(styleLogEntries(*entries, style, filter));
}

// Entries in the shape the tool prints: two-space indent, "key" : value, "/" as "\/".
const char* const kToolEntries = R"([{
  "traceID" : 9223372036854775809,
  "eventMessage" : "com.apple.xpc: started \/usr\/libexec\/xpcproxy",
  "machTimestamp" : 18446744073709551615,
  "timestamp" : "2018-03-04 05:06:07.123456+0000",
  "processImagePath" : "\/usr\/libexec\/xpcproxy",
  "processID" : 412,
  "senderProgramCounter" : 12345678901234567890,
  "subsystem" : "com.apple.xpc",
  "threadID" : 7788,
  "processUniqueID" : 99,
  "timezoneName" : ""
},{
  "timezoneName" : "",
  "messageType" : "Default",
  "eventType" : "logEvent",
  "source" : null,
  "formatString" : "%{public}s",
  "userID" : 2863311530,
  "backtrace" : {"frames" : [{"imageOffset" : 1, "imageUUID" : "X"}]},
  "bootUUID" : "",
  "subsystem" : "com.apple.network",
  "processImagePath" : "\/usr\/libexec\/trustd",
  "timestamp" : "2025-07-27 15:47:10.504275-0400",
  "eventMessage" : "Error: connection failed",
  "traceID" : 1,
  "processID" : 530
}])";

TEST(Styling, MessageOfFiveCharactersGetsSpaceAndLineBreak) {
  EXPECT_EQ(styled(R"([{"eventMessage":"hello"}])", QStringLiteral("10")), QStringLiteral("hello \n"));
}

TEST(Styling, FileNameLetterKeepsThePartAfterTheLastSlash) {
  EXPECT_EQ(styled(R"([{"processImagePath":"\/usr\/libexec\/xpcproxy"}])", QStringLiteral("11f")), QStringLiteral("xpcproxy \n"));
  EXPECT_EQ(styled(R"([{"processImagePath":"\/usr\/libexec\/"}])", QStringLiteral("11f")), QStringLiteral(" \n"));
}

TEST(Styling, HeadKeepsFirst21AndTailKeepsLast20) {
  const char* json = R"([{"eventMessage":"abcdefghijklmnopqrstuvwxyz0123"}])";
  EXPECT_EQ(styled(json, QStringLiteral("10t")), QStringLiteral("abcdefghijklmnopqrstu \n"));
  EXPECT_EQ(styled(json, QStringLiteral("10T")), QStringLiteral("klmnopqrstuvwxyz0123 \n"));
  const char* twenty = R"([{"eventMessage":"abcdefghijklmnopqrst"}])";
  EXPECT_EQ(styled(twenty, QStringLiteral("10t")), QStringLiteral("abcdefghijklmnopqrst \n"));
  EXPECT_EQ(styled(twenty, QStringLiteral("10T")), QStringLiteral("abcdefghijklmnopqrst \n"));
}

TEST(Styling, TailOfExactly21DropsTheFirstCharacter) {
  EXPECT_EQ(styled(R"([{"eventMessage":"abcdefghijklmnopqrstu"}])", QStringLiteral("10T")), QStringLiteral("bcdefghijklmnopqrstu \n"));
}

TEST(Styling, TimeOfDayAndDateLetters) {
  const char* json = R"([{"timestamp":"2018-03-04 05:06:07.123456+0000"}])";
  EXPECT_EQ(styled(json, QStringLiteral("0h")), QStringLiteral("05:06:07.123456 \n"));
  EXPECT_EQ(styled(json, QStringLiteral("0d")), QStringLiteral("2018-03-04 05:06:07.123456 \n"));
  EXPECT_EQ(styled(json, QStringLiteral("0hd")), QStringLiteral("05:06:07.123456 \n"));
  EXPECT_EQ(styled(json, QStringLiteral("0t")), QStringLiteral("2018-03-04 05:06:07.123456+0000 \n"));
}

TEST(Styling, FirstColourLetterWinsAndColoursTheTrailingSpace) {
  LogEntries entries = parseLogEntries(R"([{"processID":412,"eventMessage":"m"}])");
  auto runs = styleLogEntries(*entries, QStringLiteral("9rgb 10"), std::nullopt);
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].text, QStringLiteral("412 "));
  EXPECT_EQ(runs[0].colour, RunColour::Red);
  EXPECT_EQ(runs[1].text, QStringLiteral("m \n"));
  EXPECT_EQ(runs[1].colour, RunColour::None);
  auto green = styleLogEntries(*entries, QStringLiteral("9gb"), std::nullopt);
  EXPECT_EQ(green[0].colour, RunColour::Green);
  auto blue = styleLogEntries(*entries, QStringLiteral("9b"), std::nullopt);
  EXPECT_EQ(blue[0].colour, RunColour::Blue);
}

TEST(Styling, FieldNumbersAreClamped) {
  const char* json = R"([{"timestamp":"T","timezoneName":"Z"}])";
  EXPECT_EQ(styled(json, QStringLiteral("-3")), QStringLiteral("T \n"));
  EXPECT_EQ(styled(json, QStringLiteral("42")), QStringLiteral("Z \n"));
  EXPECT_EQ(styled(json, QStringLiteral("99999999999999999999999")), QStringLiteral("Z \n"));
  EXPECT_EQ(styled(json, QStringLiteral("r")), QStringLiteral("T \n"));
}

TEST(Styling, DoubleSpaceGivesAnEmptyTokenThatShowsFieldZero) {
  EXPECT_EQ(styled(R"([{"timestamp":"T","processID":5}])", QStringLiteral("9  9")), QStringLiteral("5 T 5 \n"));
}

TEST(Styling, LenientIntegerReading) {
  EXPECT_EQ(lenientInteger(QStringLiteral("  12abc")), 12);
  EXPECT_EQ(lenientInteger(QStringLiteral("-4")), -4);
  EXPECT_EQ(lenientInteger(QStringLiteral("+7")), 7);
  EXPECT_EQ(lenientInteger(QStringLiteral("abc")), 0);
  EXPECT_EQ(lenientInteger(QString()), 0);
}

TEST(Styling, MissingKeyAndNonDictionaryGiveSingleSpaces) {
  EXPECT_EQ(styled(R"([{"eventMessage":"x"}, 17])", QStringLiteral("4 10")), QStringLiteral(" x \n  \n"));
}

TEST(Styling, BigUnsignedNumbersPrintExactly) {
  const QString text = styled(kToolEntries, QStringLiteral("7 1 8 5"));
  EXPECT_TRUE(text.startsWith(QStringLiteral("9223372036854775809 18446744073709551615 12345678901234567890 99 \n"))) << text.toStdString();
  // The second entry (a newer key set) lacks processUniqueID and machTimestamp.
  EXPECT_TRUE(text.endsWith(QStringLiteral("\n1    \n"))) << text.toStdString();
}

TEST(Styling, RealToolShapeStylesEveryEntry) {
  EXPECT_EQ(styled(kToolEntries, QStringLiteral("0h 9 4g 10")),
            QStringLiteral("05:06:07.123456 412 com.apple.xpc com.apple.xpc: started /usr/libexec/xpcproxy \n"
                           "15:47:10.504275 530 com.apple.network Error: connection failed \n"));
}

TEST(Filter, RegularExpressionAnchorsAtTheStart) {
  const char* json = R"([{"eventMessage":"com.apple.x"},{"eventMessage":"comXapple"},{"eventMessage":"see com.apple"}])";
  EXPECT_EQ(styled(json, QStringLiteral("10"), QStringLiteral("\u00AE^com\\.")), QStringLiteral("com.apple.x \n"));
}

TEST(Filter, PlainTextIsCaseInsensitive) {
  const char* json = R"([{"eventMessage":"An Error here"},{"eventMessage":"ERROR!"},{"eventMessage":"fine"},{"eventMessage":"err"}])";
  EXPECT_EQ(styled(json, QStringLiteral("10"), QStringLiteral("error")), QStringLiteral("An Error here \nERROR! \n"));
}

TEST(Filter, InvalidExpressionFallsBackToPlainText) {
  const char* json = R"([{"eventMessage":"array[3]"},{"eventMessage":"no bracket"}])";
  EXPECT_EQ(styled(json, QStringLiteral("10"), QStringLiteral("\u00AE[")), QStringLiteral("array[3] \n"));
}

TEST(Filter, EverythingFilteredOutGivesNothing) {
  EXPECT_EQ(styled(R"([{"eventMessage":"a"},{"eventMessage":"b"}])", QStringLiteral("10"), QStringLiteral("zzz")), QString());
}

TEST(Filter, EntriesWithoutMessageAreDroppedWhenFiltering) {
  EXPECT_EQ(styled(R"([{"processID":1}, 5, {"eventMessage":"keep"}])", QStringLiteral("10"), QStringLiteral("keep")),
            QStringLiteral("keep \n"));
}

TEST(Filter, PrecomposedAndDecomposedAccentsMatchEachOther) {
  const QString precomposed = QStringLiteral("Caf\u00E9 ouvert");
  const QString decomposed = QStringLiteral("Cafe\u0301 ouvert");
  EXPECT_TRUE(localizedCaseInsensitiveContains(precomposed, QStringLiteral("CAFE\u0301")));
  EXPECT_TRUE(localizedCaseInsensitiveContains(decomposed, QStringLiteral("caf\u00C9")));
  // "cafe" alone would end inside the combining sequence of "é".
  EXPECT_FALSE(localizedCaseInsensitiveContains(decomposed, QStringLiteral("cafe")));
  EXPECT_FALSE(localizedCaseInsensitiveContains(precomposed, QStringLiteral("cafe")));
  EXPECT_TRUE(localizedCaseInsensitiveContains(QStringLiteral("STRASSE"), QStringLiteral("stra\u00DFe")));
}

TEST(Filter, EmojiCountAsOneCharacterEach) {
  EXPECT_EQ(graphemeCount(QStringLiteral("ok \U0001F44D\U0001F3FD!")), 5);
  EXPECT_EQ(graphemeSlice(QStringLiteral("a\U0001F468\u200D\U0001F469\u200D\U0001F467b"), 1, 2),
            QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467"));
  EXPECT_TRUE(localizedCaseInsensitiveContains(QStringLiteral("launch \U0001F680 Done"), QStringLiteral("\U0001F680 done")));
}

TEST(Filter, ExpressionMatchPastTheCharacterCountIsMissed) {
  // Two emoji are 4 UTF-16 units but 2 characters: the search range ends at unit 6 of 8.
  const char* json = R"([{"eventMessage":"\ud83d\ude80\ud83d\ude80 end"},{"eventMessage":"plain end"}])";
  EXPECT_EQ(styled(json, QStringLiteral("10"), QStringLiteral("\u00AEend$")), QStringLiteral("plain end \n"));
  EXPECT_EQ(styled(json, QStringLiteral("10"), QStringLiteral("\u00AE\\s")), QStringLiteral("\U0001F680\U0001F680 end \nplain end \n"));
}

TEST(Filter, TurkishDotlessIUnderTurkishLocale) {
  icu::Locale saved = icu::Locale::getDefault();
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale::setDefault(icu::Locale("tr", "TR"), status);
  const bool dotted = localizedCaseInsensitiveContains(QStringLiteral("\u0130STANBUL"), QStringLiteral("istanbul"));
  icu::Locale::setDefault(saved, status);
  EXPECT_TRUE(dotted);
}

TEST(Ansi, ColoursAsTwentyFourBitSequences) {
  LogEntries entries = parseLogEntries(R"([{"processID":1,"subsystem":"s","eventMessage":"m"}])");
  const QString text = ansiText(styleLogEntries(*entries, QStringLiteral("9r 4g 10b"), std::nullopt), true);
  EXPECT_EQ(text, QStringLiteral("\x1b[38;2;172;11;12m1 \x1b[0m\x1b[38;2;0;154;9ms \x1b[0m\x1b[38;2;17;11;255mm \x1b[0m\n"));
  EXPECT_EQ(ansiText(styleLogEntries(*entries, QStringLiteral("9r"), std::nullopt), false), QStringLiteral("1 \n"));
}

TEST(Styling, RealJsonExcerptsFromMacOS15) {
  auto folder = test::realDataPath(QStringLiteral("json_excerpts/nlscott_macos-unifiedlogs_2025"));
  if (!folder) GTEST_SKIP() << "real samples not present";
  int styledObjects = 0;
  for (const QString& name : QDir(*folder).entryList({QStringLiteral("*.md")})) {
    const QString text = QString::fromUtf8(test::readFile(*folder + QStringLiteral("/") + name));
    static const QRegularExpression object(QStringLiteral("\\{\\s*\\n\\s*\"[\\s\\S]*?\\n\\s*\\}(?=\\s*\\n```)"));
    for (auto it = object.globalMatch(text); it.hasNext();) {
      const QByteArray json = "[" + it.next().captured(0).toUtf8() + "]";
      nlohmann::json parsed = nlohmann::json::parse(json.begin(), json.end(), nullptr, false);
      if (parsed.is_discarded() || !parsed[0].contains("eventMessage")) continue;
      LogEntries entries = parseLogEntries(std::string_view(json.constData(), static_cast<std::size_t>(json.size())));
      const QString out = plainText(styleLogEntries(*entries, QStringLiteral("0h 7 9 11f 10"), std::nullopt));
      const QString message = QString::fromStdString((*entries)[0]["eventMessage"].get<std::string>());
      EXPECT_TRUE(out.contains(message)) << name.toStdString();
      EXPECT_TRUE(out.endsWith(QStringLiteral(" \n")));
      ++styledObjects;
    }
  }
  EXPECT_GT(styledObjects, 0);
}

using StylingDeathTest = testing::Test;

TEST(StylingDeathTest, NonArrayJsonStops) {
  EXPECT_DEATH(parseLogEntries(R"({"eventMessage":"x"})"), "not an array");
  EXPECT_DEATH(parseLogEntries("not json"), "does not parse");
}

TEST(StylingDeathTest, WrongKindsStop) {
  EXPECT_DEATH(styled(R"([{"processID":"twelve"}])", QStringLiteral("9")), "not an integer");
  EXPECT_DEATH(styled(R"([{"subsystem":5}])", QStringLiteral("4")), "not text");
  EXPECT_DEATH(styled(R"([{"eventMessage":5}])", QStringLiteral("9"), QStringLiteral("x")), "eventMessage");
  EXPECT_DEATH(styled(R"([{"timestamp":"2018-03-04"}])", QStringLiteral("0h")), "shorter than 26");
  EXPECT_DEATH(styled(R"([{}])", QStringLiteral("0d")), "shorter than 26");
}

}  // namespace
}  // namespace tarnbeck
