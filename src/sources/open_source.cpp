#include "sources/open_source.h"

#include <algorithm>

namespace tarnbeck {

QString catalogueHeading(const QString& path) {
  return QStringLiteral("\nCatalogue listing of ") + path + QStringLiteral(" :\n");
}

QStringList processMenuTitles(const QStringList& extraProcs, const QSet<QString>& procsSet) {
  QStringList found(procsSet.begin(), procsSet.end());
  std::sort(found.begin(), found.end());
  return QStringList{kAllTitle} + extraProcs + found;
}

OpenedSource openSource(const QString& path, const QStringList& extraProcs) {
  OpenedSource opened;
  opened.path = path;
  opened.stats.memoryCount = 1;
  auto inFolder = [&path](const char* name) { return path + QStringLiteral("/") + QString::fromLatin1(name); };
  opened.wipedMessages << scanFolder(path, QString(), opened.scan);
  opened.wipedMessages << scanFolder(inFolder("Persist"), QStringLiteral("Persist"), opened.scan);
  opened.wipedMessages << scanFolder(inFolder("Special"), QStringLiteral("Special"), opened.scan);
  if (auto message = runStatsCheck(inFolder("Extra"), opened.stats)) opened.wipedMessages << *message;

  opened.fullReport = displayFullStats(opened.stats.fileArray, opened.stats.fullStatsDict, opened.scan.heldTracev3Files);
  std::sort(opened.scan.tracev3Array.begin(), opened.scan.tracev3Array.end());
  opened.outputText = kStatisticsHeader + opened.fullReport.text + catalogueHeading(path) + opened.scan.tracev3Array.join(QString());
  opened.processMenu = processMenuTitles(extraProcs, opened.stats.procsSet);
  opened.sourceLogMenu = QStringList{kAllTitle} + opened.scan.heldTracev3Files;
  return opened;
}

}  // namespace tarnbeck
