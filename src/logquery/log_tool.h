#pragma once
// Running the system's log tool ("/usr/bin/log show ...") and the argument lists of every
// run the app makes: the excerpt, the entry and events runs, the per-file summary.
#include "platform/byte_buffer.h"
#include "platform/date_text.h"

#include <QString>
#include <QStringList>

namespace tarnbeck {

// "/usr/bin/log", unless TARNBECK_LOG_TOOL names another program.
QString logToolPath();

// The three-clause process filter; the term goes in double quotes, unescaped.
QString processPredicate(const QString& term);

// The boot and wake filter (127 characters), matched against every process.
QString eventsPredicate();

// Log file path: source folder, "/", file name trimmed of white space (plain concatenation).
QString logFilePath(const QString& sourceFolder, const QString& filename);

// Inputs of the excerpt query, as read from the window's controls.
struct ExcerptRequest {
  QString sourceFolder;
  QString filename;
  bool wholeLog = false;     // the whole-log box: no predicate at all
  QString processTerm;       // title of the selected process
  int styleIndex = 0;        // 0: syslog text, else JSON entries
  Date start;
  Date end;
};
QStringList excerptArguments(const ExcerptRequest& request);

// "show --file PATH --predicate PRED --style syslog --info": the whole file, no time limits.
QStringList wholeFileArguments(const QString& path, const QString& predicate);

// Messages of a run that did not succeed.
QString errorNumberMessage(int status);
QString couldNotStartMessage(const QString& program, const QString& reason);
QString cancelledMessage();

// The outcome of one run of the tool as its callers see it.
struct LogRunOutcome {
  bool succeeded = false;
  // What replaces the output text when the run did not succeed.
  QString failureMessage;
  std::uint64_t bytes = 0;
};

// Runs the tool. The window's runner keeps the window painting and offers Cancel; the
// command line's runner just blocks.
class LogToolRunner {
 public:
  virtual ~LogToolRunner() = default;
  // `subject` says what runs (the log file), for a progress display.
  virtual LogRunOutcome run(const QStringList& arguments, OutputSink& sink, const QString& subject) = 0;
};

class BlockingLogToolRunner final : public LogToolRunner {
 public:
  LogRunOutcome run(const QStringList& arguments, OutputSink& sink, const QString& subject) override;
};

// Turns a process result into the outcome the callers act on.
struct ProcessResult;
LogRunOutcome outcomeOf(const QString& program, const ProcessResult& result);

}  // namespace tarnbeck
