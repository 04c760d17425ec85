#include "logquery/queries.h"

#include "logquery/extract_dates.h"

#include <QStringDecoder>

namespace tarnbeck {

std::optional<QString> decodeUtf8(std::string_view bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (decoder.hasError()) return std::nullopt;
  return text;
}

ExcerptResult runExcerpt(LogToolRunner& runner, const ExcerptRequest& request) {
  ExcerptResult result;
  ByteBuffer output;
  const LogRunOutcome outcome = runner.run(excerptArguments(request), output, request.filename.trimmed());
  if (!outcome.succeeded) {
    result.kind = ExcerptResult::Kind::Failed;
    result.text = outcome.failureMessage;
    return result;
  }
  if (request.styleIndex == 0) {
    auto text = decodeUtf8(output.view());
    if (!text) {
      result.kind = ExcerptResult::Kind::NotUtf8;
      return result;
    }
    result.kind = ExcerptResult::Kind::SyslogText;
    result.text = std::move(*text);
    return result;
  }
  result.kind = ExcerptResult::Kind::Entries;
  result.entries = parseLogEntries(output.view());
  return result;
}

TraceV3Dates readTraceV3Dates(LogToolRunner& runner, const QString& sourceFolder, const QString& filename,
                              const QString& processTerm, bool wantEvents) {
  TraceV3Dates result;
  result.filename = filename.trimmed();
  const QString path = logFilePath(sourceFolder, result.filename);
  DateExtractor entries;
  const LogRunOutcome entryRun = runner.run(wholeFileArguments(path, processPredicate(processTerm)), entries, result.filename);
  if (!entryRun.succeeded) {
    result.failureMessage = entryRun.failureMessage;
    return result;
  }
  result.succeeded = true;
  result.entries = entries.finish();
  if (wantEvents) {
    DateExtractor events;
    const LogRunOutcome eventRun = runner.run(wholeFileArguments(path, eventsPredicate()), events, result.filename);
    if (eventRun.succeeded) {
      result.events = events.finish();
    } else {
      result.eventsFailure = eventRun.failureMessage;
    }
  }
  return result;
}

std::int64_t summariseBytes(LogToolRunner& runner, const QString& sourceFolder, const QString& filename,
                            const QString& processTerm, QString* failureMessage) {
  CountingSink counter;
  const QString trimmed = filename.trimmed();
  const LogRunOutcome outcome =
      runner.run(wholeFileArguments(logFilePath(sourceFolder, trimmed), processPredicate(processTerm)), counter, trimmed);
  if (!outcome.succeeded) {
    if (failureMessage) *failureMessage = outcome.failureMessage;
    return 0;
  }
  return static_cast<std::int64_t>(counter.count());
}

}  // namespace tarnbeck
