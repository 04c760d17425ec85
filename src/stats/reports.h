#pragma once
// The three statistics reports, as rows of "date,time,totalsize,filename,size,percent,
// process": over all records, over the records for one process, and gathered by running
// the log tool over every held log file for one process.
#include "stats/chart_values.h"
#include "stats/statistics_records.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>

namespace tarnbeck {

inline const QString kStatisticsHeader = QStringLiteral("date,time,totalsize,filename,size,percent,process\n");

struct Report {
  QString text;        // the rows joined, each ending in "\n"
  QStringList rows;
  ChartArrays chart;   // what the report gives the chart
};

// What the folder scan keeps per held log file.
struct HeldFileInfo {
  QString date;  // modification date, UTC
  QString time;  // modification time of day, UTC
  std::int64_t total = 0;  // size in bytes
};

// Sorts the record keys in place (as the report always has) and reports every process
// of every record, rows in text order.
Report displayFullStats(QStringList& fileArray, const QHash<QString, StatsEntry>& fullStatsDict,
                        const QStringList& heldTracev3Files);

// The rows of the records that name the process.
Report displayPartialStats(QStringList& fileArray, const QHash<QString, StatsEntry>& fullStatsDict,
                           const QString& processName, const QStringList& heldTracev3Files);

// Measures the process in every held file with `summarise` (bytes of the tool's output),
// calling `progress` with ", " + file after each.
Report displayGatheredStats(const QStringList& heldTracev3Files, const QHash<QString, HeldFileInfo>& heldFileInfo,
                            const QString& processName, const std::function<std::int64_t(const QString&)>& summarise,
                            const std::function<void(const QString&)>& progress);

// "%.1f" of part * 100 / total; 0.0 for a zero total.
QString percentText(std::int64_t part, std::int64_t total);

}  // namespace tarnbeck
