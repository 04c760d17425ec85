#pragma once
// Opening a .logarchive bundle: the catalogue of its log files, its statistics records,
// and the output text, menus and chart they make.
#include "sources/folder_scan.h"
#include "stats/reports.h"

#include <QString>
#include <QStringList>

namespace tarnbeck {

struct OpenedSource {
  QString path;
  FolderScan scan;            // catalogue lines sorted as text
  StatisticsTables stats;     // record keys sorted by the full report
  Report fullReport;
  QString outputText;         // header, full report, catalogue heading and lines
  QStringList processMenu;    // "all", the extra processes, the found processes sorted
  QStringList sourceLogMenu;  // "all", then the held files in scan order
  // Texts that reached the output before the header replaced it (listing failures).
  QStringList wipedMessages;
};

inline const QString kAllTitle = QStringLiteral("all");

// The catalogue heading: "\nCatalogue listing of PATH :\n".
QString catalogueHeading(const QString& path);

// "all", then the extra processes in stored order, then the found processes sorted.
QStringList processMenuTitles(const QStringList& extraProcs, const QSet<QString>& procsSet);

OpenedSource openSource(const QString& path, const QStringList& extraProcs);

}  // namespace tarnbeck
