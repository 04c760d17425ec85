#pragma once
// Entry times from the tool's syslog-style text. A line of five or more space-separated
// words whose first two words form a time stamp ("2018-03-04 05:06:07.123456+0100")
// gives one date; every other line is skipped. Text that is not UTF-8 gives no dates.
//
// The tool can print millions of lines, so the text is read as it streams in from the
// pipe: only the unfinished last line is kept, and the canonical stamp is read by hand,
// with ICU's parser (pattern "yyyy-MM-dd HH:mm:ss.SSSSSSZZZ") for anything else.
#include "platform/byte_buffer.h"
#include "platform/date_text.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnbeck {

// The time stamp of two words, exactly as ICU would read it with the tool's pattern
// (fractions truncated to milliseconds).
std::optional<Date> parseToolTimestamp(std::string_view text);
// The same through ICU alone (the reference the fast reading must equal).
std::optional<Date> parseToolTimestampWithIcu(std::string_view text);

// A sink that turns streamed output into dates.
class DateExtractor final : public OutputSink {
 public:
  std::span<char> prepare(std::size_t atLeast) override;
  void commit(std::size_t n) override;
  // The dates in line order; none when any of the text was not UTF-8.
  std::vector<Date> finish();

  // Reads text held elsewhere, without copying it (only an unfinished last line is kept).
  void feed(std::string_view bytes);

 private:
  // Reads the complete lines of the bytes; returns how many bytes they take.
  std::size_t takeLines(const char* data, std::size_t size);
  void takeLine(std::string_view line, bool knownAscii);

  std::string pending_;  // bytes of the unfinished line, then room for the next read
  std::size_t pendingSize_ = 0;
  std::vector<Date> dates_;
  bool valid_ = true;
};

// All dates of a complete text.
std::vector<Date> extractDates(std::string_view data);

}  // namespace tarnbeck
