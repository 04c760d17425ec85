#pragma once
// Date texts in the process's local time zone, through ICU's SimpleDateFormat, whose
// pattern language ("yyyy-MM-dd HH:mm:ss.SSSZZZ") is the one the log tool's texts use.
#include <QString>

#include <compare>
#include <optional>
#include <string_view>

namespace tarnbeck {

// A moment in time: seconds since 2001-01-01 00:00:00 UTC, the reference date of the
// remembered periods. Held as a double, so sub-millisecond parts survive arithmetic.
struct Date {
  double sinceReference = 0.0;

  static constexpr double kUnixOffset = 978307200.0;  // 1970 -> 2001 in seconds
  static Date fromUnixMilliseconds(double ms) { return Date{ms / 1000.0 - kUnixOffset}; }
  double unixMilliseconds() const { return (sinceReference + kUnixOffset) * 1000.0; }
  Date addingSeconds(double seconds) const { return Date{sinceReference + seconds}; }
  auto operator<=>(const Date&) const = default;
};

// Interval between two moments, in seconds.
inline double operator-(Date later, Date earlier) { return later.sinceReference - earlier.sinceReference; }

namespace date_pattern {
// The log tool's --start and --end arguments.
inline constexpr std::string_view kToolArgument = "yyyy-MM-dd HH:mm:ss";
// Period titles, chart summaries and labels.
inline constexpr std::string_view kPeriod = "yyyy-MM-dd HH:mm:ss.SSSZZZ";
// Entry time stamps in the tool's syslog-style text.
inline constexpr std::string_view kToolTimestamp = "yyyy-MM-dd HH:mm:ss.SSSSSSZZZ";
}  // namespace date_pattern

// Formats a moment with the pattern in the local time zone.
QString formatDate(Date date, std::string_view pattern);

// Parses a whole text with the pattern (local time zone where the text carries no zone).
// Text left over after the pattern is a failure, as are out-of-range fields.
std::optional<Date> parseDate(const QString& text, std::string_view pattern);
std::optional<Date> parseDateUtf8(std::string_view text, std::string_view pattern);

// Makes the next format or parse re-read the local time zone (after TZ changed). Formats
// and parses also notice a changed TZ variable by themselves.
void resetLocalTimeZone();

// "2018-01-02 05:34:05": the UTC date and time of a file-system time stamp, whole seconds.
QString utcDateTimeText(qint64 unixMilliseconds);

}  // namespace tarnbeck
