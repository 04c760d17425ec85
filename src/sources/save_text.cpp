#include "sources/save_text.h"

#include "platform/file_errors.h"

#include <QFile>

namespace tarnbeck {

std::optional<QString> saveOutputText(const QString& path, const QString& text) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return fileWriteError(path);
  const QByteArray bytes = text.toUtf8();
  if (file.write(bytes) != bytes.size()) return fileWriteError(path);
  return std::nullopt;
}

}  // namespace tarnbeck
