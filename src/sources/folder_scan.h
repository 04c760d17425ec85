#pragma once
// Cataloguing the .tracev3 files of an opened source: their names relative to the source
// ("Persist/0000000000000001.tracev3", "/logdata.LiveData.tracev3" at the top level),
// a catalogue line each, and their size and modification time for the reports.
#include "stats/reports.h"

#include <QFileInfo>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnbeck {

struct FolderScan {
  QStringList heldTracev3Files;              // relative names, in scan order
  QStringList tracev3Array;                  // catalogue lines, in scan order
  QHash<QString, HeldFileInfo> heldFileInfo;  // relative name -> date, time, size
};

// "R\tCREATED  MODIFIED  SIZE bytes, period MINUTES min\n", times in UTC.
QString catalogueLine(const QString& relativeName, qint64 createdMs, qint64 modifiedMs, qint64 size);

// Registers one directory entry if it is a regular file with the extension "tracev3"
// exactly. Returns the text to append to the output when its details cannot be read.
std::optional<QString> getTracev3(const QString& itemPath, const QString& folder, FolderScan& scan);

// Lists a folder in ascending name order and registers each entry. Returns the texts to
// append to the output (a listing failure, unreadable entries).
QStringList scanFolder(const QString& folderPath, const QString& folder, FolderScan& scan);

// The creation time used for the period: the file's birth time, or its modification time
// where the file system records none or records one after the modification.
qint64 creationMilliseconds(const QFileInfo& info);

}  // namespace tarnbeck
