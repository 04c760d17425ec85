#include "logquery/extract_dates.h"

#include <unicode/utf8.h>

#include <cstring>

namespace tarnbeck {
namespace {

bool isUtf8(std::string_view bytes) {
  const auto* s = reinterpret_cast<const uint8_t*>(bytes.data());
  const int32_t length = static_cast<int32_t>(bytes.size());
  int32_t i = 0;
  // Plain ASCII, eight bytes at a time: the usual case.
  constexpr uint64_t kHighBits = 0x8080808080808080ULL;
  while (i + 8 <= length) {
    uint64_t word;
    std::memcpy(&word, s + i, 8);
    if (word & kHighBits) break;
    i += 8;
  }
  while (i < length) {
    if (s[i] < 0x80) {
      ++i;
      continue;
    }
    UChar32 c;
    U8_NEXT(s, i, length, c);
    if (c < 0) return false;
  }
  return true;
}

bool isAscii(std::string_view bytes) {
  constexpr uint64_t kHighBits = 0x8080808080808080ULL;
  const char* p = bytes.data();
  std::size_t n = bytes.size();
  uint64_t any = 0;
  for (; n >= 32; p += 32, n -= 32) {
    uint64_t w[4];
    std::memcpy(w, p, 32);
    any |= w[0] | w[1] | w[2] | w[3];
  }
  for (; n >= 8; p += 8, n -= 8) {
    uint64_t w;
    std::memcpy(&w, p, 8);
    any |= w;
  }
  for (; n > 0; ++p, --n) any |= static_cast<uint8_t>(*p);
  return (any & kHighBits) == 0;
}

inline int digit(char c) { return (c >= '0' && c <= '9') ? c - '0' : -1; }

// Two to four digits at a position, or -1.
inline int number(const char* p, int count) {
  int value = 0;
  for (int i = 0; i < count; ++i) {
    const int d = digit(p[i]);
    if (d < 0) return -1;
    value = value * 10 + d;
  }
  return value;
}

constexpr bool isLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysInMonth(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeap(year) ? 29 : kDays[month - 1];
}

// Days since 1970-01-01 of a proleptic Gregorian date.
long long daysFromCivil(int y, int m, int d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * static_cast<unsigned>(m + (m > 2 ? -3 : 9)) + 2) / 5 + static_cast<unsigned>(d) - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}

// "yyyy-MM-dd HH:mm:ss.SSSSSS+hhmm", 31 characters, every field in its usual range.
std::optional<Date> parseCanonical(std::string_view text) {
  if (text.size() != 31) return std::nullopt;
  const char* p = text.data();
  if (p[4] != '-' || p[7] != '-' || p[10] != ' ' || p[13] != ':' || p[16] != ':' || p[19] != '.') return std::nullopt;
  if (p[26] != '+' && p[26] != '-') return std::nullopt;
  const int year = number(p, 4), month = number(p + 5, 2), day = number(p + 8, 2);
  const int hour = number(p + 11, 2), minute = number(p + 14, 2), second = number(p + 17, 2);
  const int micros = number(p + 20, 6);
  const int offsetHours = number(p + 27, 2), offsetMinutes = number(p + 29, 2);
  if (year < 1601 || month < 1 || month > 12 || day < 1 || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
      second < 0 || second > 59 || micros < 0 || offsetHours < 0 || offsetHours > 23 || offsetMinutes < 0 ||
      offsetMinutes > 59) {
    return std::nullopt;
  }
  if (day > daysInMonth(year, month)) return std::nullopt;
  const long long offset = (offsetHours * 3600LL + offsetMinutes * 60LL) * (p[26] == '-' ? -1 : 1);
  const long long seconds = daysFromCivil(year, month, day) * 86400LL + hour * 3600LL + minute * 60LL + second - offset;
  return Date::fromUnixMilliseconds(static_cast<double>(seconds * 1000LL + micros / 1000));
}

// The first two space-separated words of a line of at least five, joined by their space.
std::optional<std::string_view> stampOfLine(std::string_view line) {
  std::size_t spaces = 0;
  std::size_t secondSpace = std::string_view::npos;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != ' ') continue;
    ++spaces;
    if (spaces == 2) secondSpace = i;
    if (spaces == 4) return line.substr(0, secondSpace == std::string_view::npos ? i : secondSpace);
  }
  return std::nullopt;
}

}  // namespace

std::optional<Date> parseToolTimestampWithIcu(std::string_view text) {
  return parseDateUtf8(text, date_pattern::kToolTimestamp);
}

std::optional<Date> parseToolTimestamp(std::string_view text) {
  if (auto fast = parseCanonical(text)) return fast;
  return parseToolTimestampWithIcu(text);
}

std::span<char> DateExtractor::prepare(std::size_t atLeast) {
  if (pending_.size() < pendingSize_ + atLeast) pending_.resize(pendingSize_ + atLeast);
  return std::span<char>(pending_.data() + pendingSize_, pending_.size() - pendingSize_);
}

void DateExtractor::commit(std::size_t n) {
  const std::size_t end = pendingSize_ + n;
  const std::size_t used = takeLines(pending_.data(), end);
  if (used > 0) std::memmove(pending_.data(), pending_.data() + used, end - used);
  pendingSize_ = end - used;
}

void DateExtractor::feed(std::string_view bytes) {
  if (pendingSize_ > 0) {
    const char* lineEnd = static_cast<const char*>(std::memchr(bytes.data(), '\n', bytes.size()));
    const std::size_t head = lineEnd ? static_cast<std::size_t>(lineEnd - bytes.data()) + 1 : bytes.size();
    std::span<char> space = prepare(head);
    std::memcpy(space.data(), bytes.data(), head);
    commit(head);
    bytes.remove_prefix(head);
  }
  const std::size_t used = takeLines(bytes.data(), bytes.size());
  bytes.remove_prefix(used);
  if (!bytes.empty()) {
    std::span<char> space = prepare(bytes.size());
    std::memcpy(space.data(), bytes.data(), bytes.size());
    pendingSize_ += bytes.size();
  }
}

std::size_t DateExtractor::takeLines(const char* data, std::size_t size) {
  // The last line break (memrchr is not everywhere).
  const char* last = data + size;
  while (last != data && last[-1] != '\n') --last;
  if (last == data) return 0;
  --last;
  const std::size_t used = static_cast<std::size_t>(last - data) + 1;
  // One pass over the whole block tells whether any line needs a full UTF-8 check.
  const bool ascii = isAscii(std::string_view(data, used));
  const char* lineStart = data;
  const char* const stop = data + used;
  while (lineStart < stop) {
    const char* lineEnd = static_cast<const char*>(std::memchr(lineStart, '\n', static_cast<std::size_t>(stop - lineStart)));
    takeLine(std::string_view(lineStart, static_cast<std::size_t>(lineEnd - lineStart)), ascii);
    lineStart = lineEnd + 1;
  }
  return used;
}

void DateExtractor::takeLine(std::string_view line, bool knownAscii) {
  if (!valid_) return;
  if (!knownAscii && !isUtf8(line)) {
    valid_ = false;
    dates_.clear();
    dates_.shrink_to_fit();
    return;
  }
  // The tool's own lines: a canonical stamp of 31 characters, then a space, and at least
  // two more spaces further on (five words or more).
  if (line.size() > 33 && line[10] == ' ' && line[31] == ' ') {
    const char* third = static_cast<const char*>(std::memchr(line.data() + 32, ' ', line.size() - 32));
    if (third && std::memchr(third + 1, ' ', line.size() - static_cast<std::size_t>(third + 1 - line.data()))) {
      if (auto date = parseCanonical(line.substr(0, 31))) {
        dates_.push_back(*date);
        return;
      }
    }
  }
  if (auto stamp = stampOfLine(line)) {
    if (auto date = parseToolTimestamp(*stamp)) dates_.push_back(*date);
  }
}

std::vector<Date> DateExtractor::finish() {
  if (pendingSize_ > 0) takeLine(std::string_view(pending_.data(), pendingSize_), false);
  pendingSize_ = 0;
  if (!valid_) return {};
  return std::move(dates_);
}

std::vector<Date> extractDates(std::string_view data) {
  DateExtractor extractor;
  extractor.feed(data);
  return extractor.finish();
}

}  // namespace tarnbeck
