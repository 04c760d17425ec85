#include "chart/binning.h"

#include <algorithm>

namespace tarnbeck {

std::optional<QString> footLabel(Date moment) {
  const QStringList pieces = formatDate(moment, date_pattern::kPeriod).split(u' ');
  if (pieces.size() < 2) return std::nullopt;
  // Only a "+" zone is cut off: west of UTC the "-0500" stays on the time line.
  return pieces[1].split(u'+').first() + QStringLiteral("\n") + pieces[0];
}

std::variant<ChartBinning, BinningFailure> binDates(const std::vector<Date>& dates, const std::vector<Date>& events,
                                                    int bars, Date start, Date end) {
  if (dates.empty()) return BinningFailure::NoEntries;
  const double period = end - start;
  if (!(period > 0)) return BinningFailure::PeriodTooSmall;

  ChartBinning chart;
  const std::size_t n = static_cast<std::size_t>(bars);
  chart.heights.assign(n, 0.0);
  chart.types.assign(n, 1);
  const double width = period / bars;

  const double s = start.sinceReference;
  const double e = end.sinceReference;
  double* heights = chart.heights.data();
  const long long last = bars - 1;
  // The bar of a date inside the period: (D - S) / W truncated, kept within the bars.
  auto barOf = [&](double d) {
    const long long i = static_cast<long long>((d - s) / width);
    return i < 0 ? 0 : (i > last ? last : i);
  };
  if (std::is_sorted(dates.begin(), dates.end())) {
    // Entries come in time order, and the bar of a date never decreases as the date grows:
    // each bar's count is the distance between two searches.
    const auto first = std::lower_bound(dates.begin(), dates.end(), start);
    const auto past = std::upper_bound(first, dates.end(), end);
    auto from = first;
    for (long long bar = 0; bar < bars; ++bar) {
      const auto to = bar == last ? past
                                  : std::partition_point(from, past, [&](const Date& d) { return barOf(d.sinceReference) <= bar; });
      heights[bar] = static_cast<double>(to - from);
      from = to;
    }
  } else {
    for (const Date& date : dates) {
      const double d = date.sinceReference;
      if (d < s || d > e) continue;
      heights[barOf(d)] += 1.0;
    }
  }
  for (const Date& event : events) {
    if (event.sinceReference < s || event.sinceReference > e) continue;
    chart.eventTimes.push_back((event - start) / period);
  }

  const double all = static_cast<double>(dates.size());
  QString lines;
  double running = 0;
  chart.barDates.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double h = chart.heights[i];
    const Date barStart = start.addingSeconds(static_cast<double>(i) * width);
    const Date barEnd = barStart.addingSeconds(width);
    chart.barDates.push_back({barStart, barEnd});
    const QString share = QString::asprintf("%.1f", h * 100.0 / all);
    const QString count = QString::number(static_cast<long long>(h));
    const QString from = formatDate(barStart, date_pattern::kPeriod);
    const QString to = formatDate(barEnd, date_pattern::kPeriod);
    chart.labels << share + QStringLiteral("%, ") + count + QStringLiteral("\n") + from + QStringLiteral("\n") + to;
    lines += from + QStringLiteral(" - ") + to + QStringLiteral(" ") + share + QStringLiteral("%, ") + count + QStringLiteral("\n");
    running += h;
  }
  chart.total = running;

  chart.startChartStr = footLabel(start);
  chart.endChartStr = footLabel(end);

  const QString total = QString::number(static_cast<long long>(running));
  const double largest = *std::max_element(chart.heights.begin(), chart.heights.end());
  chart.legend = QStringLiteral("Total ") + total + QStringLiteral(" entries\n  max ") + QString::number(static_cast<long long>(largest));
  chart.summary = QStringLiteral("Overall:\n") + formatDate(start, date_pattern::kPeriod) + QStringLiteral(" - ") +
                  formatDate(end, date_pattern::kPeriod) + QStringLiteral(" total log entries ") + total + QStringLiteral("\n") + lines;
  return chart;
}

}  // namespace tarnbeck
