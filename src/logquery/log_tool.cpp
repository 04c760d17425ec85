#include "logquery/log_tool.h"

#include "platform/process_runner.h"

namespace tarnbeck {

QString logToolPath() {
  const QByteArray chosen = qgetenv("TARNBECK_LOG_TOOL");
  return chosen.isEmpty() ? QStringLiteral("/usr/bin/log") : QString::fromLocal8Bit(chosen);
}

QString processPredicate(const QString& term) {
  const QString quoted = QStringLiteral("\"") + term + QStringLiteral("\"");
  return QStringLiteral("subsystem ==[c] ") + quoted + QStringLiteral(" OR processImagePath CONTAINS[c] ") + quoted +
         QStringLiteral(" OR senderImagePath CONTAINS[c] ") + quoted;
}

QString eventsPredicate() {
  return QStringLiteral(
      "eventMessage CONTAINS[c] \"system boot:\" OR eventMessage CONTAINS[c] \"BOOT_TIME\" OR eventMessage "
      "CONTAINS[c] \"PMRD: System Wake\"");
}

QString logFilePath(const QString& sourceFolder, const QString& filename) {
  return sourceFolder + QStringLiteral("/") + filename.trimmed();
}

QStringList excerptArguments(const ExcerptRequest& request) {
  QStringList arguments{QStringLiteral("show"), QStringLiteral("--file"), logFilePath(request.sourceFolder, request.filename)};
  if (!request.wholeLog) arguments << QStringLiteral("--predicate") << processPredicate(request.processTerm);
  arguments << QStringLiteral("--style") << (request.styleIndex == 0 ? QStringLiteral("syslog") : QStringLiteral("json"));
  arguments << QStringLiteral("--info");
  arguments << QStringLiteral("--start") << formatDate(request.start, date_pattern::kToolArgument);
  arguments << QStringLiteral("--end") << formatDate(request.end, date_pattern::kToolArgument);
  return arguments;
}

QStringList wholeFileArguments(const QString& path, const QString& predicate) {
  return {QStringLiteral("show"),  QStringLiteral("--file"), path,
          QStringLiteral("--predicate"), predicate, QStringLiteral("--style"),
          QStringLiteral("syslog"), QStringLiteral("--info")};
}

QString errorNumberMessage(int status) { return QStringLiteral("log command returned error number ") + QString::number(status); }

QString couldNotStartMessage(const QString& program, const QString& reason) {
  return QStringLiteral("log command could not be started: ") + program + QStringLiteral(": ") + reason;
}

QString cancelledMessage() { return QStringLiteral("log command cancelled"); }

LogRunOutcome outcomeOf(const QString& program, const ProcessResult& result) {
  LogRunOutcome outcome;
  outcome.bytes = result.bytes;
  switch (result.outcome) {
    case ProcessResult::Outcome::FailedToStart:
      outcome.failureMessage = couldNotStartMessage(program, result.startError);
      break;
    case ProcessResult::Outcome::Cancelled:
      outcome.failureMessage = cancelledMessage();
      break;
    case ProcessResult::Outcome::Exited:
      if (result.status == 0) {
        outcome.succeeded = true;
      } else {
        outcome.failureMessage = errorNumberMessage(result.status);
      }
      break;
  }
  return outcome;
}

LogRunOutcome BlockingLogToolRunner::run(const QStringList& arguments, OutputSink& sink, const QString&) {
  const QString program = logToolPath();
  return outcomeOf(program, runProcess(program, arguments, sink));
}

}  // namespace tarnbeck
