#pragma once
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnbeck {

// Writes the text as UTF-8, in place, replacing any file of that name. Returns the
// platform's description of a failure.
std::optional<QString> saveOutputText(const QString& path, const QString& text);

// The file types the save dialog offers, in order.
inline const QStringList kSaveFileTypes{QStringLiteral("text"), QStringLiteral("txt")};

}  // namespace tarnbeck
