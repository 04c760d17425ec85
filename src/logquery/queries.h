#pragma once
// The log tool's runs as the window makes them, without the window: the excerpt of a
// time slice, the entry and events runs over a whole log file, the per-file summary.
// The window and the command line both call these and differ only in how they show
// the outcome.
#include "logquery/log_entries.h"
#include "logquery/log_tool.h"
#include "platform/date_text.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tarnbeck {

struct ExcerptResult {
  enum class Kind {
    Failed,      // `text` is the failure message that replaces the output
    NotUtf8,     // syslog text that does not decode: nothing changes
    SyslogText,  // `text` replaces the output
    Entries,     // `entries` are styled into the output
  };
  Kind kind = Kind::Failed;
  QString text;
  LogEntries entries;
};

ExcerptResult runExcerpt(LogToolRunner& runner, const ExcerptRequest& request);

struct TraceV3Dates {
  bool succeeded = false;
  QString failureMessage;               // the entry run failed: nothing else happens
  std::optional<QString> eventsFailure; // the events run failed: shown, charting goes on
  QString filename;                     // trimmed
  std::vector<Date> entries;
  std::vector<Date> events;
};

// The entry run (the process predicate, always, even for "all") and, when wanted, the
// events run, both over the whole file, their output read for dates as it streams in.
TraceV3Dates readTraceV3Dates(LogToolRunner& runner, const QString& sourceFolder, const QString& filename,
                              const QString& processTerm, bool wantEvents);

// The bytes the tool prints for the process over the whole file; 0 and the failure
// message when the run fails.
std::int64_t summariseBytes(LogToolRunner& runner, const QString& sourceFolder, const QString& filename,
                            const QString& processTerm, QString* failureMessage);

// Whether bytes are valid UTF-8, and their text.
std::optional<QString> decodeUtf8(std::string_view bytes);

}  // namespace tarnbeck
