#pragma once
// The statistics chart's bars: heights, type codes and labels, built from statistics rows
// ("date,time,totalsize,filename,size,percent,process").
#include <QString>
#include <QStringList>

#include <vector>

namespace tarnbeck {

// Type codes of the bars, which pick their colours and whether a click opens their file.
enum ChartType : int {
  kPersistHeld = 1,
  kPersistGone = 2,
  kSpecialHeld = 3,
  kSpecialGone = 4,
  kMemoryRollover = 10,
};

struct ChartArrays {
  std::vector<double> heights;
  std::vector<int> types;
  QStringList labels;
  bool operator==(const ChartArrays&) const = default;
};

// 1/2 for a Persist key held or not, 3/4 for Special, 10 for anything else.
int getChartColour(const QString& key, const QStringList& heldTracev3Files);

// One bar per record of the full report: rows 0, 20, 40, ... (each record gives 20 rows).
ChartArrays makeChartValsAll(const QStringList& rows, const QStringList& heldTracev3Files);

// One bar per row of a report on one process; the height is the percent.
ChartArrays makeChartValsPart(const QStringList& rows, const QStringList& heldTracev3Files);

}  // namespace tarnbeck
