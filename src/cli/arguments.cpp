#include "cli/arguments.h"

namespace tarnbeck::cli {

Arguments::Arguments(const QStringList& words, const std::set<QString>& valued, const std::set<QString>& flags) {
  for (qsizetype i = 0; i < words.size(); ++i) {
    const QString& word = words[i];
    if (word.startsWith(QStringLiteral("--")) && word.size() > 2) {
      QString name = word;
      std::optional<QString> inlineValue;
      const qsizetype equals = word.indexOf(u'=');
      if (equals > 0) {
        name = word.left(equals);
        inlineValue = word.mid(equals + 1);
      }
      if (valued.count(name)) {
        if (inlineValue) {
          values_.insert(name, *inlineValue);
        } else if (i + 1 < words.size()) {
          values_.insert(name, words[++i]);
        } else {
          throw UsageError{QStringLiteral("option %1 needs a value").arg(name)};
        }
      } else if (flags.count(name) && !inlineValue) {
        flags_.insert(name);
      } else {
        throw UsageError{QStringLiteral("unknown option %1").arg(word)};
      }
    } else {
      positional_ << word;
    }
  }
}

std::optional<QString> Arguments::value(const QString& option) const {
  auto found = values_.constFind(option);
  if (found == values_.constEnd()) return std::nullopt;
  return *found;
}

QString Arguments::required(const QString& option) const {
  auto found = value(option);
  if (!found) throw UsageError{QStringLiteral("missing %1").arg(option)};
  return *found;
}

}  // namespace tarnbeck::cli
