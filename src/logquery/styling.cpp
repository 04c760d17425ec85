#include "logquery/styling.h"

#include "logquery/text_match.h"
#include "platform/fatal.h"

#include <QStringList>

#include <cmath>
#include <limits>
#include <string>

namespace tarnbeck {
namespace {

constexpr int kLastField = 15;
constexpr int kTimestampMinimum = 26;
constexpr int kLongValue = 21;
constexpr int kTailLength = 20;

QString fieldText(const nlohmann::json& entry, int field) {
  if (!entry.is_object()) return QString();
  auto found = entry.find(kEntryKeys[static_cast<std::size_t>(field)]);
  if (found == entry.end()) return QString();
  const nlohmann::json& value = *found;
  if (isIntegerField(field)) {
    if (value.is_number_unsigned()) return QString::number(value.get<std::uint64_t>());
    if (value.is_number_integer()) return QString::number(value.get<std::int64_t>());
    if (value.is_number_float()) {
      const double d = value.get<double>();
      if (std::trunc(d) == d && std::fabs(d) < 9.2e18) return QString::number(static_cast<long long>(d));
    }
    fatalError(std::string("log entry key \"") + kEntryKeys[static_cast<std::size_t>(field)] + "\" holds " +
               value.type_name() + ", not an integer");
  }
  if (!value.is_string()) {
    fatalError(std::string("log entry key \"") + kEntryKeys[static_cast<std::size_t>(field)] + "\" holds " +
               value.type_name() + ", not text");
  }
  const std::string& utf8 = value.get_ref<const std::string&>();
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString shorten(const QString& text, const StyleToken& token) {
  if (token.field == 0) {
    if (!token.timeOfDay && !token.dateAndTime) return text;
    if (graphemeCount(text) < kTimestampMinimum) {
      fatalError("a time stamp shorter than 26 characters cannot be shown with \"h\" or \"d\"");
    }
    return token.timeOfDay ? graphemeSlice(text, 11, 26) : graphemeSlice(text, 0, 26);
  }
  if (token.head || token.tail) {
    const int count = graphemeCount(text);
    if (count < kLongValue) return text;
    return token.head ? graphemeSlice(text, 0, kLongValue) : graphemeSlice(text, count - kTailLength, count);
  }
  if (token.fileName) {
    const qsizetype slash = text.lastIndexOf(u'/');
    return slash < 0 ? text : text.mid(slash + 1);
  }
  return text;
}

void appendRun(std::vector<StyledRun>& runs, const QString& text, RunColour colour) {
  if (!runs.empty() && runs.back().colour == colour) {
    runs.back().text += text;
  } else {
    runs.push_back({text, colour});
  }
}

}  // namespace

bool isIntegerField(int field) {
  return field == 1 || field == 5 || field == 6 || field == 7 || field == 8 || field == 9;
}

ColourComponents colourComponents(RunColour colour) {
  switch (colour) {
    case RunColour::Red:
      return {0.673248, 0.043259, 0.047836};
    case RunColour::Green:
      return {0.0, 0.603261, 0.035142};
    case RunColour::Blue:
      return {0.067341, 0.044266, 1.0};
    case RunColour::None:
      break;
  }
  return {0.0, 0.0, 0.0};
}

long long lenientInteger(const QString& token) {
  qsizetype i = 0;
  const qsizetype n = token.size();
  while (i < n && token.at(i).isSpace()) ++i;
  bool negative = false;
  if (i < n && (token.at(i) == u'+' || token.at(i) == u'-')) {
    negative = token.at(i) == u'-';
    ++i;
  }
  long long value = 0;
  constexpr long long kMax = std::numeric_limits<long long>::max();
  for (; i < n && token.at(i) >= u'0' && token.at(i) <= u'9'; ++i) {
    const int digit = token.at(i).unicode() - u'0';
    value = value > (kMax - digit) / 10 ? kMax : value * 10 + digit;
  }
  return negative ? -value : value;
}

std::vector<StyleToken> parseStyle(const QString& style) {
  std::vector<StyleToken> tokens;
  for (const QString& text : style.split(u' ')) {
    StyleToken token;
    const long long number = lenientInteger(text);
    token.field = number < 0 ? 0 : (number > kLastField ? kLastField : static_cast<int>(number));
    token.timeOfDay = text.contains(u'h');
    token.dateAndTime = !token.timeOfDay && text.contains(u'd');
    token.head = text.contains(u't');
    token.tail = !token.head && text.contains(u'T');
    token.fileName = !token.head && !token.tail && text.contains(u'f');
    if (text.contains(u'r')) {
      token.colour = RunColour::Red;
    } else if (text.contains(u'g')) {
      token.colour = RunColour::Green;
    } else if (text.contains(u'b')) {
      token.colour = RunColour::Blue;
    }
    tokens.push_back(token);
  }
  return tokens;
}

std::vector<StyledRun> styleLogEntries(const nlohmann::json& entries, const QString& style,
                                       const std::optional<QString>& filter) {
  std::vector<StyledRun> runs;
  const std::vector<StyleToken> tokens = parseStyle(style);
  std::optional<EntryFilter> entryFilter;
  if (filter) entryFilter.emplace(*filter);
  if (!entries.is_array() || entries.empty()) return runs;

  const QString space = QStringLiteral(" ");
  const QString lineBreak = QStringLiteral("\n");
  for (const nlohmann::json& entry : entries) {
    if (entryFilter) {
      if (!entry.is_object()) continue;
      auto message = entry.find("eventMessage");
      if (message == entry.end()) continue;
      if (!message->is_string()) fatalError("log entry key \"eventMessage\" is not text");
      const std::string& utf8 = message->get_ref<const std::string&>();
      if (!entryFilter->matches(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())))) continue;
    }
    for (const StyleToken& token : tokens) {
      QString text = shorten(fieldText(entry, token.field), token);
      text += space;
      appendRun(runs, text, token.colour);
    }
    appendRun(runs, lineBreak, RunColour::None);
  }
  return runs;
}

QString plainText(const std::vector<StyledRun>& runs) {
  QString text;
  for (const StyledRun& run : runs) text += run.text;
  return text;
}

QString ansiText(const std::vector<StyledRun>& runs, bool colour) {
  QString text;
  for (const StyledRun& run : runs) {
    if (!colour || run.colour == RunColour::None) {
      text += run.text;
      continue;
    }
    const ColourComponents c = colourComponents(run.colour);
    text += QStringLiteral("\x1b[38;2;%1;%2;%3m").arg(std::lround(c.red * 255)).arg(std::lround(c.green * 255)).arg(std::lround(c.blue * 255));
    text += run.text;
    text += QStringLiteral("\x1b[0m");
  }
  return text;
}

}  // namespace tarnbeck
