#pragma once
// Remembered chart periods: one entry per window in the user defaults, under the window's
// UUID: {"file": log file, "start": seconds since 2001, "end": seconds since 2001}.
// The period menu lists, for the current log file, every period remembered by any window,
// titled "yyyy-MM-dd HH:mm:ss.SSSZZZ - yyyy-MM-dd HH:mm:ss.SSSZZZ".
#include "platform/date_text.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <utility>

namespace tarnbeck {

inline const QString kPeriodChanged = QStringLiteral("Period-Changed");
inline const QString kVariablePeriodTitle = QStringLiteral("variable");

QString periodTitle(Date start, Date end);

// Start and end of a period title, or nothing when it is not two parseable times.
std::optional<std::pair<Date, Date>> parsePeriodTitle(const QString& title);

// The stored dictionary of a period.
QVariantMap rememberedPeriod(const QString& file, Date start, Date end);

// Titles of the periods remembered for a file, in the order the defaults give their keys.
// A UUID-named entry of another shape is a state the app never writes: a fatal stop.
QStringList rememberedPeriodTitles(const QVariantMap& allDefaults, const QString& file);

}  // namespace tarnbeck
