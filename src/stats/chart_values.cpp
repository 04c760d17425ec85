#include "stats/chart_values.h"

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

ChartArrays makeChartValsAll(const QStringList& rows, const QStringList& heldTracev3Files) {
  ChartArrays chart;
  for (qsizetype i = 0; i < rows.size(); i += kRowsPerRecord) {
    const QStringList fields = withoutLineEnd(rows[i]).split(u',');
    if (fields.size() < 4) continue;
    double height = 0;
    if (!readsAsNumber(fields[2], height)) continue;
    chart.heights.push_back(height);
    chart.labels << fields[2] + QStringLiteral(", ") + fields[0] + QStringLiteral(" ") + fields[1] + QStringLiteral(", ") + fields[3];
    chart.types.push_back(getChartColour(fields[3], heldTracev3Files));
  }
  return chart;
}

ChartArrays makeChartValsPart(const QStringList& rows, const QStringList& heldTracev3Files) {
  ChartArrays chart;
  for (const QString& row : rows) {
    const QStringList fields = withoutLineEnd(row).split(u',');
    if (fields.size() < 6) continue;
    double height = 0;
    if (!readsAsNumber(fields[5], height)) continue;
    chart.heights.push_back(height);
    chart.labels << fields[5] + QStringLiteral(", ") + fields[0] + QStringLiteral(" ") + fields[1] + QStringLiteral(", ") + fields[3];
    chart.types.push_back(getChartColour(fields[3], heldTracev3Files));
  }
  return chart;
}

}  // namespace tarnbeck
