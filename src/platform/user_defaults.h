#pragma once
// The per-user settings store ("standard user defaults") over QSettings. It keeps the
// three stored lists and the remembered periods. The INI backend used on Linux loses
// types (numbers and one-element lists come back as strings, an empty list as an
// invalid value); the readers below give back what was written.
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <optional>

namespace tarnbeck {

class UserDefaults {
 public:
  static UserDefaults& standard();

  // Keeps the store in the given folder instead of the user's own (tests, tools).
  static void useLocation(const QString& folder);

  // A list of texts, or nothing when the key is absent or holds something else.
  std::optional<QStringList> stringArray(const QString& key) const;
  void setStringArray(const QString& key, const QStringList& value);

  // A dictionary, or nothing when the key is absent or holds something else.
  std::optional<QVariantMap> dictionary(const QString& key) const;
  void setDictionary(const QString& key, const QVariantMap& value);

  // Every key with its value (lists as QStringList, dictionaries as QVariantMap).
  QVariantMap dictionaryRepresentation() const;

  bool contains(const QString& key) const;
  void removeObject(const QString& key);
  void synchronize();

 private:
  UserDefaults();
  void reopen(const QString& folder);
  QVariant value(const QString& key) const;

  std::unique_ptr<QSettings> settings_;
};

}  // namespace tarnbeck
