#include "stats/reports.h"

#include <algorithm>

namespace tarnbeck {
namespace {

// Fields joined by "," with no quoting, ended by a line break.
QString row(std::initializer_list<QStringView> fields) {
  qsizetype size = static_cast<qsizetype>(fields.size());
  for (QStringView field : fields) size += field.size();
  QString text;
  text.reserve(size);
  for (QStringView field : fields) {
    if (!text.isEmpty()) text += u',';
    text += field;
  }
  text += u'\n';
  return text;
}

Report finish(QStringList rows, const QStringList& held, bool wholeReport) {
  std::sort(rows.begin(), rows.end());
  Report report;
  report.chart = wholeReport ? makeChartValsAll(rows, held) : makeChartValsPart(rows, held);
  report.text = rows.join(QString());
  report.rows = std::move(rows);
  return report;
}

}  // namespace

QString percentText(std::int64_t part, std::int64_t total) {
  if (total == 0) return QStringLiteral("0.0");
  return QString::asprintf("%.1f", static_cast<double>(part) * 100.0 / static_cast<double>(total));
}

// Sorts the record keys in place and calls `visit` with each key and its entry, in order.
template <typename Visit>
void forEachRecord(QStringList& fileArray, const QHash<QString, StatsEntry>& fullStatsDict, Visit visit) {
  std::sort(fileArray.begin(), fileArray.end());
  for (const QString& key : fileArray) {
    auto found = fullStatsDict.constFind(key);
    if (found != fullStatsDict.constEnd()) visit(key, *found);
  }
}

Report displayFullStats(QStringList& fileArray, const QHash<QString, StatsEntry>& fullStatsDict,
                        const QStringList& heldTracev3Files) {
  QStringList rows;
  forEachRecord(fileArray, fullStatsDict, [&rows](const QString& key, const StatsEntry& entry) {
    for (auto it = entry.procs.begin(); it != entry.procs.end(); ++it) {
      rows << row({entry.date, entry.time, entry.total, key, it->load, it->percent, it.key()});
    }
  });
  return finish(std::move(rows), heldTracev3Files, true);
}

Report displayPartialStats(QStringList& fileArray, const QHash<QString, StatsEntry>& fullStatsDict,
                           const QString& processName, const QStringList& heldTracev3Files) {
  QStringList rows;
  forEachRecord(fileArray, fullStatsDict, [&](const QString& key, const StatsEntry& entry) {
    auto process = entry.procs.constFind(processName);
    if (process == entry.procs.constEnd()) return;
    rows << row({entry.date, entry.time, entry.total, key, process->load, process->percent, processName});
  });
  return finish(std::move(rows), heldTracev3Files, false);
}

Report displayGatheredStats(const QStringList& heldTracev3Files, const QHash<QString, HeldFileInfo>& heldFileInfo,
                            const QString& processName, const std::function<std::int64_t(const QString&)>& summarise,
                            const std::function<void(const QString&)>& progress) {
  QStringList rows;
  for (const QString& file : heldTracev3Files) {
    const std::int64_t count = summarise(file);
    progress(QStringLiteral(", ") + file);
    auto info = heldFileInfo.constFind(file);
    if (info == heldFileInfo.constEnd()) continue;
    const QString total = QString::number(info->total);
    const QString size = QString::number(count);
    const QString percent = percentText(count, info->total);
    rows << row({info->date, info->time, total, file, size, percent, processName});
  }
  return finish(std::move(rows), heldTracev3Files, false);
}

}  // namespace tarnbeck
