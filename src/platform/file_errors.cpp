#include "platform/file_errors.h"

#include <QFileInfo>

namespace tarnbeck {
namespace {
QString quoted(const QString& path) { return QStringLiteral("\u201C") + QFileInfo(path).fileName() + QStringLiteral("\u201D"); }
}  // namespace

QString folderListingError(const QString& path) {
  QFileInfo info(path);
  if (!info.exists()) return QStringLiteral("The folder ") + quoted(path) + QStringLiteral(" doesn\u2019t exist.");
  if (!info.isDir()) return QStringLiteral("The file ") + quoted(path) + QStringLiteral(" couldn\u2019t be opened because it isn\u2019t a folder.");
  return QStringLiteral("The folder ") + quoted(path) +
         QStringLiteral(" couldn\u2019t be opened because you don\u2019t have permission to view it.");
}

QString fileReadError(const QString& path) {
  QFileInfo info(path);
  if (!info.exists()) return QStringLiteral("The file ") + quoted(path) + QStringLiteral(" couldn\u2019t be opened because there is no such file.");
  return QStringLiteral("The file ") + quoted(path) +
         QStringLiteral(" couldn\u2019t be opened because you don\u2019t have permission to view it.");
}

QString fileNotUtf8Error(const QString& path) {
  return QStringLiteral("The file ") + quoted(path) +
         QStringLiteral(" couldn\u2019t be opened because the text encoding of its contents can\u2019t be determined.");
}

QString copyError(const QString& source, const QString& destination) {
  if (!QFileInfo::exists(source)) {
    return QStringLiteral("The file ") + quoted(source) + QStringLiteral(" couldn\u2019t be opened because there is no such file.");
  }
  if (QFileInfo::exists(destination)) {
    return quoted(source) + QStringLiteral(" couldn\u2019t be copied to ") + quoted(QFileInfo(destination).path()) +
           QStringLiteral(" because an item with the same name already exists.");
  }
  return quoted(source) + QStringLiteral(" couldn\u2019t be copied to ") + quoted(QFileInfo(destination).path()) + QStringLiteral(".");
}

QString createFolderError(const QString& path) {
  if (QFileInfo::exists(path)) {
    return QStringLiteral("The file ") + quoted(path) + QStringLiteral(" couldn\u2019t be saved because a file with the same name already exists.");
  }
  return QStringLiteral("You don\u2019t have permission to save the file ") + quoted(path) + QStringLiteral(".");
}

QString fileWriteError(const QString& path) {
  if (!QFileInfo(QFileInfo(path).path()).isDir()) {
    return QStringLiteral("The folder ") + quoted(QFileInfo(path).path()) + QStringLiteral(" doesn\u2019t exist.");
  }
  return QStringLiteral("You don\u2019t have permission to save the file ") + quoted(path) + QStringLiteral(" in the folder ") +
         quoted(QFileInfo(path).path()) + QStringLiteral(".");
}

}  // namespace tarnbeck
