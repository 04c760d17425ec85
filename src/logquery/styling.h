#pragma once
// Styling of JSON log entries by a user style ("0h 9 4g 10": field numbers with letters)
// and an optional filter. The result is a list of text runs, each with an optional
// colour; the window turns them into rich text, the command line into ANSI colours.
#include "logquery/log_entries.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tarnbeck {

// The sixteen known keys of a log entry; a style names a field by its number here.
inline constexpr std::array<const char*, 16> kEntryKeys = {
    "timestamp",       "machTimestamp",        "messageType", "category",     "subsystem",        "processUniqueID",
    "threadID",        "traceID",              "senderProgramCounter", "processID", "eventMessage", "processImagePath",
    "processImageUUID", "senderImagePath",     "senderImageUUID", "timezoneName"};

// Whether field n holds an integer (else text).
bool isIntegerField(int field);

enum class RunColour { None, Red, Green, Blue };

// Calibrated RGB components of the run colours (alpha 1).
struct ColourComponents {
  double red, green, blue;
};
ColourComponents colourComponents(RunColour colour);

struct StyleToken {
  int field = 0;
  bool timeOfDay = false;   // "h": field 0 only
  bool dateAndTime = false; // "d": field 0 only, without "h"
  bool head = false;        // "t": first 21 characters of a long value
  bool tail = false;        // "T": last 20 characters of a long value
  bool fileName = false;    // "f": the part after the last "/"
  RunColour colour = RunColour::None;
};

// Reads the leading integer as the platform's lenient rule does: leading white space,
// an optional sign, digits up to the first non-digit; none read gives 0.
long long lenientInteger(const QString& token);

// Splits the style at every single space and reads each token.
std::vector<StyleToken> parseStyle(const QString& style);

struct StyledRun {
  QString text;
  RunColour colour = RunColour::None;
};

// Styles every entry that passes the filter (none when `filter` is empty). The fatal
// stops: a present "eventMessage" that is not text while filtering, a value of the wrong
// kind, a time stamp shorter than 26 characters shown with "h" or "d".
std::vector<StyledRun> styleLogEntries(const nlohmann::json& entries, const QString& style,
                                       const std::optional<QString>& filter);

// The plain text of the runs.
QString plainText(const std::vector<StyledRun>& runs);

// The runs with 24-bit ANSI colour sequences (or plain, when colour is off).
QString ansiText(const std::vector<StyledRun>& runs, bool colour);

}  // namespace tarnbeck
