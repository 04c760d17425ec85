#include "sources/assembly.h"

#include "platform/fatal.h"
#include "platform/file_errors.h"
#include "platform/property_list.h"
#include "platform/tick_count.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace tarnbeck {
namespace {

// Copies a file keeping its modification time, as the platform's copy does, so that the
// catalogue of the new bundle shows when each log file was written.
bool copyFile(const QString& from, const QString& to) {
  if (!QFile::copy(from, to)) return false;
  QFile copied(to);
  const QDateTime modified = QFileInfo(from).lastModified();
  if (copied.open(QIODevice::ReadWrite)) copied.setFileTime(modified, QFileDevice::FileModificationTime);
  return true;
}

// Copies a file or a whole folder to a path that must not exist yet.
bool copyItem(const QString& from, const QString& to) {
  const QFileInfo info(from);
  if (!info.exists() || QFileInfo::exists(to)) return false;
  if (!info.isDir()) return copyFile(from, to);
  if (!QDir().mkdir(to)) return false;
  QDir dir(from);
  QStringList names = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
  std::sort(names.begin(), names.end());
  for (const QString& name : names) {
    if (!copyItem(dir.filePath(name), to + QStringLiteral("/") + name)) return false;
  }
  return true;
}

}  // namespace

QString sourceLine(const QString& source) { return QStringLiteral("Source: ") + source + QStringLiteral("\n"); }
QString destinationLine(const QString& dest) { return QStringLiteral("Destination:") + dest + QStringLiteral("\n"); }
QString couldNotSaveInfoMessage() { return QStringLiteral("Couldn't save exported file."); }

std::optional<QString> copyToLogarchive(const QString& source, const QString& dest) {
  const std::pair<const char*, const char*> folders[] = {
      {"/uuidtext", ""}, {"/diagnostics/Persist", "/Persist"}, {"/diagnostics/Special", "/Special"},
      {"/diagnostics/timesync", "/timesync"}};
  for (const auto& [from, to] : folders) {
    const QString fromPath = source + QString::fromLatin1(from);
    const QString toPath = dest + QString::fromLatin1(to);
    if (!copyItem(fromPath, toPath)) return copyError(fromPath, toPath);
  }
  const QString extra = dest + QStringLiteral("/Extra");
  if (!QDir().mkdir(extra)) return createFolderError(extra);
  const QString diagnostics = source + QStringLiteral("/diagnostics");
  if (!QFileInfo(diagnostics).isDir()) return folderListingError(diagnostics);
  QStringList names = QDir(diagnostics).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
  std::sort(names.begin(), names.end());
  for (const QString& name : names) {
    const QString fromPath = diagnostics + QStringLiteral("/") + name;
    if (QFileInfo(fromPath).isDir()) continue;
    const QString toPath = extra + QStringLiteral("/") + name;
    if (!copyItem(fromPath, toPath)) return copyError(fromPath, toPath);
  }
  return std::nullopt;
}

QVariantMap infoDictionary(QVariantMap versionPlist, quint64 continuousTime, const QString& uuid) {
  if (!versionPlist.isEmpty()) versionPlist.remove(QStringLiteral("Version"));
  const QVariantMap timeRef{{QStringLiteral("ContinuousTime"), QVariant::fromValue<quint64>(continuousTime)},
                            {QStringLiteral("UUID"), uuid}};
  const QString oldest = QStringLiteral("OldestTimeRef");
  return QVariantMap{
      {QStringLiteral("EndTimeRef"), timeRef},
      {QStringLiteral("LiveMetadata"), QVariantMap{{oldest, timeRef}}},
      {QStringLiteral("OSArchiveVersion"), QVariant::fromValue<qint64>(3)},
      {QStringLiteral("OSLoggingSupportProject"), QStringLiteral("libtrace-518.70.1")},
      {QStringLiteral("OSLoggingSupportVersion"), 518.7},
      {QStringLiteral("PersistMetadata"), QVariantMap{{oldest, timeRef}}},
      {QStringLiteral("SpecialMetadata"), QVariantMap{{oldest, timeRef}, {QStringLiteral("TTL"), versionPlist}}},
  };
}

std::optional<QString> makeInfoFile(const QString& dest) {
  const QString versionPath = dest + QStringLiteral("/Extra/version.plist");
  std::optional<QVariantMap> version = readPlistDictionary(versionPath);
  if (!version) {
    fatalError(("cannot assemble the bundle: " + versionPath + " is missing or is not a property-list dictionary")
                   .toStdString());
  }
  const QVariantMap info = infoDictionary(*version, machAbsoluteTime(), newUuidString());
  if (!writeXmlPlist(dest + QStringLiteral("/Info.plist"), info)) return couldNotSaveInfoMessage();
  return std::nullopt;
}

}  // namespace tarnbeck
