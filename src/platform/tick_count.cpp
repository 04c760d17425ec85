#include "platform/tick_count.h"

#include <QUuid>

#include <chrono>

#ifdef __APPLE__
#include <mach/mach_time.h>
#endif

namespace tarnbeck {

std::uint64_t machAbsoluteTime() {
#ifdef __APPLE__
  return mach_absolute_time();
#else
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch()).count());
#endif
}

QString newUuidString() { return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(); }

bool isUuidText(const QString& text) {
  if (text.size() != 36) return false;
  for (int i = 0; i < 36; ++i) {
    const QChar c = text[i];
    if (i == 8 || i == 13 || i == 18 || i == 23) {
      if (c != u'-') return false;
    } else if (!((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F'))) {
      return false;
    }
  }
  return true;
}

}  // namespace tarnbeck
