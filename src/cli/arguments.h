#pragma once
// Reading a subcommand's words: positional arguments and --options with or without values.
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <set>

namespace tarnbeck::cli {

struct UsageError {
  QString reason;
};

class Arguments {
 public:
  // `valued` options take the next word; `flags` take none. Throws UsageError.
  Arguments(const QStringList& words, const std::set<QString>& valued, const std::set<QString>& flags);

  const QStringList& positional() const { return positional_; }
  std::optional<QString> value(const QString& option) const;
  bool has(const QString& option) const { return flags_.count(option) > 0 || values_.contains(option); }
  QString required(const QString& option) const;

 private:
  QStringList positional_;
  QMap<QString, QString> values_;
  std::set<QString> flags_;
};

}  // namespace tarnbeck::cli
