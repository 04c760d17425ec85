#include "logquery/periods.h"

#include "platform/fatal.h"
#include "platform/tick_count.h"

namespace tarnbeck {

QString periodTitle(Date start, Date end) {
  return formatDate(start, date_pattern::kPeriod) + QStringLiteral(" - ") + formatDate(end, date_pattern::kPeriod);
}

std::optional<std::pair<Date, Date>> parsePeriodTitle(const QString& title) {
  const QStringList parts = title.split(QStringLiteral(" - "));
  if (parts.size() != 2 || parts[0].isEmpty() || parts[1].isEmpty()) return std::nullopt;
  auto start = parseDate(parts[0], date_pattern::kPeriod);
  auto end = parseDate(parts[1], date_pattern::kPeriod);
  if (!start || !end) return std::nullopt;
  return std::make_pair(*start, *end);
}

QVariantMap rememberedPeriod(const QString& file, Date start, Date end) {
  return QVariantMap{{QStringLiteral("file"), file},
                     {QStringLiteral("start"), start.sinceReference},
                     {QStringLiteral("end"), end.sinceReference}};
}

QStringList rememberedPeriodTitles(const QVariantMap& allDefaults, const QString& file) {
  QStringList titles;
  for (auto it = allDefaults.begin(); it != allDefaults.end(); ++it) {
    if (!isUuidText(it.key())) continue;
    if (it.value().typeId() != QMetaType::QVariantMap) fatalError("a remembered period is not a dictionary");
    const QVariantMap period = it.value().toMap();
    const QVariant storedFile = period.value(QStringLiteral("file"));
    if (storedFile.typeId() != QMetaType::QString) fatalError("a remembered period has no file name");
    if (storedFile.toString() != file) continue;
    bool startOk = false, endOk = false;
    const double start = period.value(QStringLiteral("start")).toDouble(&startOk);
    const double end = period.value(QStringLiteral("end")).toDouble(&endOk);
    if (!startOk || !endOk) fatalError("a remembered period has no numeric start or end");
    titles << periodTitle(Date{start}, Date{end});
  }
  return titles;
}

}  // namespace tarnbeck
