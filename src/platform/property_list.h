#pragma once
// Property lists through libplist. Values map to QVariant: dictionaries to QVariantMap,
// arrays to QVariantList, integers to quint64, reals to double, strings to QString,
// booleans to bool, data to QByteArray, dates to QDateTime.
#include <QString>
#include <QVariantMap>

#include <optional>

namespace tarnbeck {

// Reads an XML or binary property list whose root is a dictionary.
std::optional<QVariantMap> readPlistDictionary(const QString& path);

// Writes the dictionary as an XML property list, in place (no temporary file).
bool writeXmlPlist(const QString& path, const QVariantMap& dictionary);

// The XML text of a dictionary (for comparisons and tests).
QByteArray xmlPlistText(const QVariantMap& dictionary);

}  // namespace tarnbeck
