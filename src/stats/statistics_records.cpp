#include "stats/statistics_records.h"

#include "platform/file_errors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace tarnbeck {
namespace {

constexpr int kMinimumLines = 11;    // a record needs more than 10 lines
constexpr int kFirstProcessLine = 5;
constexpr int kLastProcessLine = 24; // at most 20 process lines

// Splits at every kind of line break, each break on its own (CR LF gives an empty line).
// The lines are views into the record's text, which outlives them.
QList<QStringView> splitLines(QStringView text) {
  QList<QStringView> lines;
  qsizetype start = 0;
  const qsizetype n = text.size();
  for (qsizetype i = 0; i < n; ++i) {
    const char16_t c = text[i].unicode();
    if (c == u'\n' || c == u'\r' || c == 0x0085 || c == 0x2028 || c == 0x2029 || c == 0x000B || c == 0x000C) {
      lines << text.sliced(start, i - start);
      start = i + 1;
    }
  }
  lines << text.sliced(start);
  return lines;
}

// The value of a "key  : value" line: the piece after the first ": " (up to a second one).
std::optional<QStringView> valueOf(QStringView line) {
  const qsizetype first = line.indexOf(u": ");
  if (first < 0) return std::nullopt;
  const QStringView rest = line.sliced(first + 2);
  const qsizetype second = rest.indexOf(u": ");
  return second < 0 ? rest : rest.first(second);
}

// "2019-02-24 19:35:47-0800": the zone cut off, then date and time.
bool readTime(QStringView line, StatsEntry& entry) {
  auto value = valueOf(line);
  if (!value) return false;
  const QStringView stamp = value->first(std::max<qsizetype>(0, value->size() - 5));
  const qsizetype space = stamp.indexOf(u' ');
  if (space < 0) return false;
  const QStringView time = stamp.sliced(space + 1);
  const qsizetype next = time.indexOf(u' ');
  entry.date = stamp.first(space).toString();
  entry.time = (next < 0 ? time : time.first(next)).toString();
  return true;
}

// Lines 5 to 24, ending early at the record's terminating empty line, so that the lines
// of a purge record that follows a short statistics record are never taken for processes.
QList<QStringView> processLines(const QList<QStringView>& lines) {
  QList<QStringView> result;
  const qsizetype last = std::min<qsizetype>(kLastProcessLine, lines.size() - 1);
  for (qsizetype i = kFirstProcessLine; i <= last; ++i) {
    if (lines[i].isEmpty()) break;
    result << lines[i];
  }
  return result;
}

// "    - [   11785357,  32.1, /Applications/Xcode.app/Contents/MacOS/Xcode ]": the fixed cuts
// (8 characters before the bytes, 2 after the path) match the daemon's own layout.
template <typename Lines>
QMap<QString, ProcessLoad> analyseLines(const Lines& lines) {
  QMap<QString, ProcessLoad> procs;
  for (QStringView line : lines) {
    if (line.isEmpty()) continue;
    const qsizetype firstComma = line.indexOf(u',');
    if (firstComma < 0) continue;
    const qsizetype secondComma = line.indexOf(u',', firstComma + 1);
    if (secondComma < 0) continue;
    const qsizetype thirdComma = line.indexOf(u',', secondComma + 1);
    const QStringView bytes = line.first(firstComma);
    const QStringView percent = line.sliced(firstComma + 1, secondComma - firstComma - 1);
    const QStringView pathField = thirdComma < 0 ? line.sliced(secondComma + 1) : line.sliced(secondComma + 1, thirdComma - secondComma - 1);
    const QStringView path = pathField.first(std::max<qsizetype>(0, pathField.size() - 2));
    const QStringView name = path.sliced(path.lastIndexOf(u'/') + 1);
    procs.insert(name.toString(), ProcessLoad{bytes.sliced(std::min<qsizetype>(8, bytes.size())).trimmed().toString(),
                                              percent.trimmed().toString()});
  }
  return procs;
}

// Time, total and process lines of a record whose time stamp stands on line `timeLine`
// and total on the next; process lines are taken from line 5 in both kinds of record.
std::optional<StatsEntry> readRecord(const QList<QStringView>& lines, int timeLine) {
  StatsEntry entry;
  if (!readTime(lines[timeLine], entry)) return std::nullopt;
  auto total = valueOf(lines[timeLine + 1]);
  if (!total) return std::nullopt;
  entry.total = total->toString();
  entry.procs = analyseLines(processLines(lines));
  return entry;
}

std::optional<std::pair<QString, StatsEntry>> persistRecord(QStringView record) {
  const QList<QStringView> lines = splitLines(record);
  if (lines.size() < kMinimumLines) return std::nullopt;
  auto key = valueOf(lines[1]);
  auto entry = key ? readRecord(lines, 2) : std::nullopt;
  if (!entry) return std::nullopt;
  return std::make_pair(key->toString(), *entry);
}

std::optional<std::pair<QString, StatsEntry>> rolloverRecord(QStringView record, qint64 memoryCount) {
  const QList<QStringView> lines = splitLines(record);
  if (lines.size() < kMinimumLines) return std::nullopt;
  auto entry = readRecord(lines, 1);
  if (!entry) return std::nullopt;
  return std::make_pair(QStringLiteral("memory") + QString::asprintf("%06u", static_cast<unsigned>(memoryCount)), *entry);
}

}  // namespace

QMap<QString, ProcessLoad> analyseStats(const QStringList& lines) { return analyseLines(lines); }

std::optional<std::pair<QString, StatsEntry>> getPersistStats(const QString& record) { return persistRecord(record); }

std::optional<std::pair<QString, StatsEntry>> getSpecialStats(const QString& record) { return getPersistStats(record); }

std::optional<std::pair<QString, StatsEntry>> getRolloverStats(const QString& record, qint64 memoryCount) {
  return rolloverRecord(record, memoryCount);
}

void readStatisticsText(const QString& text, StatisticsTables& tables) {
  static const QString persist = QStringLiteral("type  : File Rotate\nfile  : Persist/");
  static const QString special = QStringLiteral("type  : File Rotate\nfile  : Special/");
  static const QString memory = QStringLiteral("type  : Memory Rollover\n");
  static const QString separator = QString::fromLatin1(kStatisticsSeparator);
  auto store = [&tables](const std::optional<std::pair<QString, StatsEntry>>& parsed) {
    if (!parsed) return;
    tables.fileArray << parsed->first;
    for (auto it = parsed->second.procs.keyBegin(); it != parsed->second.procs.keyEnd(); ++it) tables.procsSet.insert(*it);
    tables.fullStatsDict.insert(parsed->first, parsed->second);
  };
  // Every piece between separators, the one before the first included.
  const QStringView whole(text);
  for (qsizetype start = 0;;) {
    const qsizetype next = whole.indexOf(separator, start);
    const QStringView piece = next < 0 ? whole.sliced(start) : whole.sliced(start, next - start);
    if (piece.startsWith(persist) || piece.startsWith(special)) {
      store(persistRecord(piece));
    } else if (piece.startsWith(memory)) {
      store(rolloverRecord(piece, tables.memoryCount));
      tables.memoryCount += 1;
    }
    if (next < 0) break;
    start = next + separator.size();
  }
}

std::optional<QString> getStats(const QString& path, StatisticsTables& tables) {
  if (QFileInfo(path).suffix() != QStringLiteral("txt")) return std::nullopt;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return fileReadError(path);
  const QByteArray bytes = file.readAll();
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder.decode(bytes);
  if (decoder.hasError()) return fileNotUtf8Error(path);
  readStatisticsText(text, tables);
  return std::nullopt;
}

std::optional<QString> runStatsCheck(const QString& folder, StatisticsTables& tables) {
  QDir dir(folder);
  if (!QFileInfo(folder).isDir() || !QFileInfo(folder).isReadable()) return folderListingError(folder);
  QStringList names = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
  std::sort(names.begin(), names.end());
  std::optional<QString> message;
  for (const QString& name : names) {
    if (auto failed = getStats(dir.filePath(name), tables)) message = failed;
  }
  return message;
}

}  // namespace tarnbeck
