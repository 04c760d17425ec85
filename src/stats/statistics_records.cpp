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
QStringList splitLines(const QString& text) {
  QStringList lines;
  qsizetype start = 0;
  const qsizetype n = text.size();
  const QChar* units = text.constData();
  for (qsizetype i = 0; i < n; ++i) {
    const char16_t c = units[i].unicode();
    if (c == u'\n' || c == u'\r' || c == 0x0085 || c == 0x2028 || c == 0x2029 || c == 0x000B || c == 0x000C) {
      lines << text.sliced(start, i - start);
      start = i + 1;
    }
  }
  lines << text.sliced(start);
  return lines;
}

// The value of a "key  : value" line: the piece after the first ": ".
std::optional<QString> valueOf(const QString& line) {
  const QStringList pieces = line.split(QStringLiteral(": "));
  if (pieces.size() < 2) return std::nullopt;
  return pieces[1];
}

// "2019-02-24 19:35:47-0800": the zone cut off, then date and time.
bool readTime(const QString& line, StatsEntry& entry) {
  auto value = valueOf(line);
  if (!value) return false;
  const QString stamp = value->left(std::max<qsizetype>(0, value->size() - 5));
  const QStringList pieces = stamp.split(u' ');
  if (pieces.size() < 2) return false;
  entry.date = pieces[0];
  entry.time = pieces[1];
  return true;
}

// Lines 5 to 24, ending early at the record's terminating empty line, so that the lines
// of a purge record that follows a short statistics record are never taken for processes.
QStringList processLines(const QStringList& lines) {
  QStringList result;
  const qsizetype last = std::min<qsizetype>(kLastProcessLine, lines.size() - 1);
  for (qsizetype i = kFirstProcessLine; i <= last; ++i) {
    if (lines[i].isEmpty()) break;
    result << lines[i];
  }
  return result;
}

}  // namespace

QMap<QString, ProcessLoad> analyseStats(const QStringList& lines) {
  QMap<QString, ProcessLoad> procs;
  for (const QString& line : lines) {
    if (line.isEmpty()) continue;
    const QStringList fields = line.split(u',');
    if (fields.size() < 3) continue;
    ProcessLoad load{fields[0].mid(8).trimmed(), fields[1].trimmed()};
    const QString path = fields[2].left(std::max<qsizetype>(0, fields[2].size() - 2));
    const QString name = path.split(u'/').last();
    procs.insert(name, load);
  }
  return procs;
}

// Time, total and process lines of a record whose time stamp stands on line `timeLine`
// and total on the next; process lines are taken from line 5 in both kinds of record.
static std::optional<StatsEntry> readRecord(const QStringList& lines, int timeLine) {
  StatsEntry entry;
  if (!readTime(lines[timeLine], entry)) return std::nullopt;
  auto total = valueOf(lines[timeLine + 1]);
  if (!total) return std::nullopt;
  entry.total = *total;
  entry.procs = analyseStats(processLines(lines));
  return entry;
}

std::optional<std::pair<QString, StatsEntry>> getPersistStats(const QString& record) {
  const QStringList lines = splitLines(record);
  if (lines.size() < kMinimumLines) return std::nullopt;
  auto key = valueOf(lines[1]);
  auto entry = key ? readRecord(lines, 2) : std::nullopt;
  if (!entry) return std::nullopt;
  return std::make_pair(*key, *entry);
}

std::optional<std::pair<QString, StatsEntry>> getSpecialStats(const QString& record) { return getPersistStats(record); }

std::optional<std::pair<QString, StatsEntry>> getRolloverStats(const QString& record, qint64 memoryCount) {
  const QStringList lines = splitLines(record);
  if (lines.size() < kMinimumLines) return std::nullopt;
  auto entry = readRecord(lines, 1);
  if (!entry) return std::nullopt;
  return std::make_pair(QStringLiteral("memory") + QString::asprintf("%06u", static_cast<unsigned>(memoryCount)), *entry);
}

void readStatisticsText(const QString& text, StatisticsTables& tables) {
  static const QString persist = QStringLiteral("type  : File Rotate\nfile  : Persist/");
  static const QString special = QStringLiteral("type  : File Rotate\nfile  : Special/");
  static const QString memory = QStringLiteral("type  : Memory Rollover\n");
  auto store = [&tables](const std::optional<std::pair<QString, StatsEntry>>& parsed) {
    if (!parsed) return;
    tables.fileArray << parsed->first;
    tables.fullStatsDict.insert(parsed->first, parsed->second);
    for (auto it = parsed->second.procs.keyBegin(); it != parsed->second.procs.keyEnd(); ++it) tables.procsSet.insert(*it);
  };
  for (const QString& piece : text.split(QString::fromLatin1(kStatisticsSeparator))) {
    if (piece.startsWith(persist)) {
      store(getPersistStats(piece));
    } else if (piece.startsWith(special)) {
      store(getSpecialStats(piece));
    } else if (piece.startsWith(memory)) {
      store(getRolloverStats(piece, tables.memoryCount));
      tables.memoryCount += 1;
    }
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
