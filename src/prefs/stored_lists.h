#pragma once
// The user's three stored lists and the notifications that announce a change of each.
#include <QString>

namespace tarnbeck {

inline const QString kExtraProcsKey = QStringLiteral("ExtraProcs");
inline const QString kExtraFiltersKey = QStringLiteral("ExtraFilters");
inline const QString kExtraStylesKey = QStringLiteral("ExtraStyles");

inline const QString kProcsChanged = QStringLiteral("Procs-Changed");
inline const QString kFiltersChanged = QStringLiteral("Filters-Changed");
inline const QString kStylesChanged = QStringLiteral("Styles-Changed");

}  // namespace tarnbeck
