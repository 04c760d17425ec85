#pragma once
// Binning entry times into equal time bars over a period, with the bars' labels, the
// period's foot labels, the legend and the text summary written to the output.
#include "platform/date_text.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace tarnbeck {

struct BarPeriod {
  Date start;
  Date end;
  bool operator==(const BarPeriod&) const = default;
};

struct ChartBinning {
  std::vector<double> heights;   // entries per bar
  std::vector<int> types;        // every bar of type 1
  QStringList labels;            // "12.5%, 300\nSTART\nEND"
  std::vector<BarPeriod> barDates;
  std::vector<double> eventTimes;  // events within the period, as fractions 0..1
  std::optional<QString> startChartStr;  // "TIME\nDATE"; none keeps the old label
  std::optional<QString> endChartStr;
  QString legend;                  // "Total C entries\n  max M"
  QString summary;                 // "Overall:\n..." and one line per bar
  double total = 0;                // entries inside the period
};

enum class BinningFailure { NoEntries, PeriodTooSmall };

inline const QString kNoEntriesMessage = QStringLiteral("No log entries were found for the selected process in this log file.\n");
inline const QString kPeriodTooSmallMessage = QStringLiteral("The time period has become too small.");

// `bars` must be at least 1. Dates outside [start, end] are not counted; each bar's share
// divides by all the dates given.
std::variant<ChartBinning, BinningFailure> binDates(const std::vector<Date>& dates, const std::vector<Date>& events,
                                                    int bars, Date start, Date end);

// The foot label of a moment: its time (zone suffix dropped east of UTC), a line break,
// its date; nothing when the formatted text has no space.
std::optional<QString> footLabel(Date moment);

}  // namespace tarnbeck
