#pragma once
// Texts for file-system failures, worded as the platform's own descriptions are, so that
// messages in the output view read the same on every system.
#include <QString>

namespace tarnbeck {

// The folder could not be listed (missing, not a folder, no permission).
QString folderListingError(const QString& path);
// The file could not be read (missing, no permission, not UTF-8 text).
QString fileReadError(const QString& path);
QString fileNotUtf8Error(const QString& path);
// Copying an item failed.
QString copyError(const QString& source, const QString& destination);
// Creating a folder failed.
QString createFolderError(const QString& path);
// Writing a file failed.
QString fileWriteError(const QString& path);

}  // namespace tarnbeck
