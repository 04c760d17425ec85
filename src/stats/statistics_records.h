#pragma once
// The log daemon's statistics files (Extra/*.txt): records of how many bytes each process
// wrote into a rotated tracev3 file ("File Rotate") or into the memory buffer ("Memory
// Rollover"). Purge, uuid purge and snapshot records share the files and are skipped.
//
//   --- !logd statistics record
//   type  : File Rotate
//   file  : Persist/0000000000000019.tracev3
//   time  : 2019-02-24 19:35:47-0800
//   total : 36658976
//   procs :
//       - [   11785357,  32.1, /Applications/Xcode.app/Contents/MacOS/Xcode ]
//   (up to 20 process lines, then one empty line)
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnbeck {

struct ProcessLoad {
  QString load;     // bytes, as the digits stand in the line
  QString percent;  // share of the file, as the text stands
  bool operator==(const ProcessLoad&) const = default;
};

// One record: everything kept as the text of the file.
struct StatsEntry {
  QString date;
  QString time;
  QString total;
  QMap<QString, ProcessLoad> procs;
};

struct StatisticsTables {
  // Record keys in reading order; a key read twice stands twice.
  QStringList fileArray;
  // Record key -> entry; a later record of the same key replaces the earlier.
  QHash<QString, StatsEntry> fullStatsDict;
  // Numbers the Memory Rollover records: "memory" + "%06u".
  qint64 memoryCount = 0;
  // Every process named by a stored record.
  QSet<QString> procsSet;
};

inline constexpr char kStatisticsSeparator[] = "--- !logd statistics record\n";

// The per-process map of a record's process lines.
QMap<QString, ProcessLoad> analyseStats(const QStringList& lines);

// Parses a File Rotate record (Persist or Special): its key and entry, or nothing when
// it has ten lines or fewer or meets a malformed line.
std::optional<std::pair<QString, StatsEntry>> getPersistStats(const QString& record);
// Special records are read exactly like Persist ones.
std::optional<std::pair<QString, StatsEntry>> getSpecialStats(const QString& record);
// Parses a Memory Rollover record, keyed by the memory counter's current value.
std::optional<std::pair<QString, StatsEntry>> getRolloverStats(const QString& record, qint64 memoryCount);

// Reads the records of one file's text into the tables.
void readStatisticsText(const QString& text, StatisticsTables& tables);

// Reads one file if its extension is exactly "txt". Returns the message that replaces the
// output text when the file cannot be read as UTF-8 text.
std::optional<QString> getStats(const QString& path, StatisticsTables& tables);

// Reads every statistics file of a folder, in ascending name order. Returns the last
// message that replaced the output text (a listing or reading failure), if any.
std::optional<QString> runStatsCheck(const QString& folder, StatisticsTables& tables);

}  // namespace tarnbeck
