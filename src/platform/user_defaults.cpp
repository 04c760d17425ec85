#include "platform/user_defaults.h"

#include <QDir>

namespace tarnbeck {

UserDefaults::UserDefaults() { reopen(QString()); }

UserDefaults& UserDefaults::standard() {
  static UserDefaults defaults;
  return defaults;
}

void UserDefaults::useLocation(const QString& folder) { standard().reopen(folder); }

void UserDefaults::reopen(const QString& folder) {
  if (settings_) settings_->sync();
  if (folder.isEmpty()) {
    settings_ = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Tarnbeck"),
                                            QStringLiteral("Tarnbeck"));
  } else {
    QDir().mkpath(folder);
    settings_ = std::make_unique<QSettings>(QDir(folder).filePath(QStringLiteral("Tarnbeck.ini")), QSettings::IniFormat);
  }
}

QVariant UserDefaults::value(const QString& key) const { return settings_->value(key); }

bool UserDefaults::contains(const QString& key) const { return settings_->contains(key); }

std::optional<QStringList> UserDefaults::stringArray(const QString& key) const {
  if (!settings_->contains(key)) return std::nullopt;
  const QVariant stored = value(key);
  // An empty list is written as an invalid value; a one-element list reads back as its text.
  if (!stored.isValid()) return QStringList();
  if (stored.typeId() == QMetaType::QStringList) return stored.toStringList();
  if (stored.typeId() == QMetaType::QString) return QStringList{stored.toString()};
  if (stored.typeId() == QMetaType::QVariantList) {
    QStringList texts;
    for (const QVariant& item : stored.toList()) {
      if (item.typeId() != QMetaType::QString) return std::nullopt;
      texts << item.toString();
    }
    return texts;
  }
  return std::nullopt;
}

void UserDefaults::setStringArray(const QString& key, const QStringList& value) { settings_->setValue(key, value); }

std::optional<QVariantMap> UserDefaults::dictionary(const QString& key) const {
  if (!settings_->contains(key)) return std::nullopt;
  const QVariant stored = value(key);
  if (stored.typeId() != QMetaType::QVariantMap) return std::nullopt;
  return stored.toMap();
}

void UserDefaults::setDictionary(const QString& key, const QVariantMap& value) { settings_->setValue(key, value); }

QVariantMap UserDefaults::dictionaryRepresentation() const {
  QVariantMap all;
  for (const QString& key : settings_->allKeys()) {
    const QVariant stored = value(key);
    if (stored.typeId() == QMetaType::QVariantMap) {
      all.insert(key, stored);
    } else if (auto texts = stringArray(key)) {
      all.insert(key, *texts);
    } else {
      all.insert(key, stored);
    }
  }
  return all;
}

void UserDefaults::removeObject(const QString& key) { settings_->remove(key); }

void UserDefaults::synchronize() { settings_->sync(); }

}  // namespace tarnbeck
