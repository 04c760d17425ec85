#pragma once
// What the chart needs of the window that holds it: writing the output text, recording a
// charted period, and running the queries that a click on a bar asks for.
#include "platform/date_text.h"
#include "stats/chart_values.h"

#include <QString>

#include <optional>

namespace tarnbeck {

class ChartController {
 public:
  virtual ~ChartController() = default;

  virtual void replaceOutputText(const QString& text) = 0;
  virtual void appendOutputText(const QString& text) = 0;
  // Remembers a charted period for the current log file (the period menu).
  virtual void insertDefaults(Date start, Date end) = 0;
  // Drops the entries of an earlier excerpt, if any are held.
  virtual void clearHeldEntries() = 0;
  // Whether boot and wake markers are wanted.
  virtual bool showsEvents() const = 0;
  // Whether a statistics bar may open its log file: a statistics process is chosen, or
  // full analysis is on.
  virtual bool statisticsBarsOpenFiles() const = 0;
  virtual void openTraceV3(const QString& filename) = 0;
  virtual void excerptTraceV3(const QString& filename, Date start, Date end) = 0;
  // The statistics chart the window last computed.
  virtual ChartArrays statisticsChart() const = 0;
  // No single log file chosen any more: the source-log menu back at "all".
  virtual void leaveLogFile() = 0;
  // The process chosen in the menu if it is one of the statistics' processes.
  virtual std::optional<QString> chosenStatisticsProcess() const = 0;
  // The partial report of a process (its rows), refilling the window's chart lists.
  virtual QString displayPartialStats(const QString& processName) = 0;
};

}  // namespace tarnbeck
