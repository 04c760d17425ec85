#include "stats/chart_values.h"

#include <algorithm>

namespace tarnbeck {
namespace {

constexpr int kRowsPerRecord = 20;

bool readsAsNumber(const QString& text, double& value) {
  bool ok = false;
  value = text.toDouble(&ok);
  return ok;
}

QString withoutLineEnd(const QString& row) { return row.endsWith(u'\n') ? row.chopped(1) : row; }

}  // namespace

int getChartColour(const QString& key, const QStringList& heldTracev3Files) {
  if (key.startsWith(QStringLiteral("Persist"))) return heldTracev3Files.contains(key) ? kPersistHeld : kPersistGone;
  if (key.startsWith(QStringLiteral("Special"))) return heldTracev3Files.contains(key) ? kSpecialHeld : kSpecialGone;
  return kMemoryRollover;
}

namespace {

// One bar per chosen row: the height read from field `heightField` (totalsize or percent),
// the label "HEIGHT, DATE TIME, FILE", the type from the file name. Malformed rows are skipped.
ChartArrays chartValues(const QStringList& rows, qsizetype step, int heightField, const QStringList& held) {
  ChartArrays chart;
  for (qsizetype i = 0; i < rows.size(); i += step) {
    const QStringList fields = withoutLineEnd(rows[i]).split(u',');
    if (fields.size() <= std::max(heightField, 3)) continue;
    double height = 0;
    if (!readsAsNumber(fields[heightField], height)) continue;
    chart.heights.push_back(height);
    chart.labels << fields[heightField] + QStringLiteral(", ") + fields[0] + QStringLiteral(" ") + fields[1] + QStringLiteral(", ") + fields[3];
    chart.types.push_back(getChartColour(fields[3], held));
  }
  return chart;
}

}  // namespace

ChartArrays makeChartValsAll(const QStringList& rows, const QStringList& heldTracev3Files) {
  return chartValues(rows, kRowsPerRecord, 2, heldTracev3Files);
}

ChartArrays makeChartValsPart(const QStringList& rows, const QStringList& heldTracev3Files) {
  return chartValues(rows, 1, 5, heldTracev3Files);
}

}  // namespace tarnbeck
