#pragma once
#include <QString>

#include <cstdint>

namespace tarnbeck {

// The host's monotonic tick count (mach_absolute_time on macOS, a steady clock in
// nanoseconds elsewhere).
std::uint64_t machAbsoluteTime();

// A fresh random UUID in its canonical text form, upper-case: 8-4-4-4-12 hex digits.
QString newUuidString();

// Whether a text is a UUID in canonical 8-4-4-4-12 hexadecimal form (either case).
bool isUuidText(const QString& text);

}  // namespace tarnbeck
