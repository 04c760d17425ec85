#include "platform/date_text.h"

#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <QDateTime>
#include <QTimeZone>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace tarnbeck {
namespace {

std::atomic<unsigned> zoneGeneration{1};
std::mutex zoneMutex;
std::string lastTzValue = "\x01unset";

// Re-detects ICU's default zone when the TZ variable differs from the one last seen.
void refreshZoneIfTzChanged() {
  const char* tz = std::getenv("TZ");
  std::string now = tz ? std::string("=") + tz : std::string("-");
  std::lock_guard<std::mutex> lock(zoneMutex);
  if (now == lastTzValue) return;
  lastTzValue = now;
  tzset();
  icu::TimeZone::adoptDefault(icu::TimeZone::detectHostTimeZone());
  zoneGeneration.fetch_add(1);
}

struct FormatterCache {
  unsigned generation = 0;
  std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>, std::less<>> byPattern;
};

icu::SimpleDateFormat& formatterFor(std::string_view pattern) {
  refreshZoneIfTzChanged();
  thread_local FormatterCache cache;
  unsigned generation = zoneGeneration.load();
  if (cache.generation != generation) {
    cache.byPattern.clear();
    cache.generation = generation;
  }
  auto found = cache.byPattern.find(pattern);
  if (found != cache.byPattern.end()) return *found->second;
  UErrorCode status = U_ZERO_ERROR;
  auto formatter = std::make_unique<icu::SimpleDateFormat>(
      icu::UnicodeString::fromUTF8(icu::StringPiece(pattern.data(), static_cast<int32_t>(pattern.size()))),
      icu::Locale("en_US_POSIX"), status);
  formatter->setLenient(false);
  auto& result = *formatter;
  cache.byPattern.emplace(std::string(pattern), std::move(formatter));
  return result;
}

std::optional<Date> parseUnicode(const icu::UnicodeString& text, std::string_view pattern) {
  icu::SimpleDateFormat& formatter = formatterFor(pattern);
  icu::ParsePosition position(0);
  UDate parsed = formatter.parse(text, position);
  if (position.getErrorIndex() >= 0 || position.getIndex() != text.length()) return std::nullopt;
  return Date::fromUnixMilliseconds(parsed);
}

}  // namespace

QString formatDate(Date date, std::string_view pattern) {
  icu::UnicodeString out;
  formatterFor(pattern).format(date.unixMilliseconds(), out);
  return QString(reinterpret_cast<const QChar*>(out.getBuffer()), out.length());
}

std::optional<Date> parseDate(const QString& text, std::string_view pattern) {
  icu::UnicodeString unicode(false, reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()));
  return parseUnicode(unicode, pattern);
}

std::optional<Date> parseDateUtf8(std::string_view text, std::string_view pattern) {
  return parseUnicode(icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size()))),
                      pattern);
}

void resetLocalTimeZone() {
  {
    std::lock_guard<std::mutex> lock(zoneMutex);
    lastTzValue = "\x01reset";
  }
  refreshZoneIfTzChanged();
}

QString utcDateTimeText(qint64 unixMilliseconds) {
  return QDateTime::fromMSecsSinceEpoch(unixMilliseconds, QTimeZone::utc()).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

}  // namespace tarnbeck
