#include "sources/folder_scan.h"

#include "platform/date_text.h"
#include "platform/file_errors.h"

#include <QDateTime>
#include <QDir>

#include <algorithm>

namespace tarnbeck {

qint64 creationMilliseconds(const QFileInfo& info) {
  const qint64 modified = info.lastModified().toMSecsSinceEpoch();
  const QDateTime birth = info.birthTime();
  if (!birth.isValid()) return modified;
  const qint64 born = birth.toMSecsSinceEpoch();
  return born > modified ? modified : born;
}

QString catalogueLine(const QString& relativeName, qint64 createdMs, qint64 modifiedMs, qint64 size) {
  const double minutes = static_cast<double>(modifiedMs - createdMs) / 1000.0 / 60.0;
  return relativeName + QStringLiteral("\t") + utcDateTimeText(createdMs) + QStringLiteral("  ") + utcDateTimeText(modifiedMs) +
         QStringLiteral("  ") + QString::number(size) + QStringLiteral(" bytes, period ") + QString::asprintf("%.1f", minutes) +
         QStringLiteral(" min\n");
}

std::optional<QString> getTracev3(const QString& itemPath, const QString& folder, FolderScan& scan) {
  QFileInfo info(itemPath);
  if (info.suffix() != QStringLiteral("tracev3")) return std::nullopt;
  info.refresh();
  if (!info.exists()) return fileReadError(itemPath);
  if (!info.isFile()) return std::nullopt;
  const qint64 modified = info.lastModified().toMSecsSinceEpoch();
  const qint64 created = creationMilliseconds(info);
  const QString relativeName = folder + QStringLiteral("/") + info.fileName();
  scan.heldTracev3Files << relativeName;
  scan.tracev3Array << catalogueLine(relativeName, created, modified, info.size());
  const QString stamp = utcDateTimeText(modified);
  scan.heldFileInfo.insert(relativeName, HeldFileInfo{stamp.left(10), stamp.mid(11), info.size()});
  return std::nullopt;
}

QStringList scanFolder(const QString& folderPath, const QString& folder, FolderScan& scan) {
  QStringList messages;
  const QFileInfo folderInfo(folderPath);
  if (!folderInfo.isDir() || !folderInfo.isReadable() || !folderInfo.isExecutable()) {
    messages << folderListingError(folderPath);
    return messages;
  }
  QDir dir(folderPath);
  QStringList names = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
  std::sort(names.begin(), names.end());
  for (const QString& name : names) {
    if (auto failed = getTracev3(dir.filePath(name), folder, scan)) messages << *failed;
  }
  return messages;
}

}  // namespace tarnbeck
