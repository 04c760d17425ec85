// The window's runs of the log tool: the excerpt of a time slice, the styling of its
// entries, the summary of one file and the charting of one file's entries and events.
#include "chart/chart_view.h"
#include "logquery/queries.h"
#include "main_window/interactive_log_runner.h"
#include "main_window/rich_text.h"
#include "main_window/view_controller.h"
#include "platform/fatal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTextEdit>

namespace tarnbeck {

void ViewController::excerptTraceV3(const QString& filename, Date start, Date end) {
  ExcerptRequest request;
  request.sourceFolder = sourceFileText->text();
  request.filename = filename;
  request.wholeLog = allLogCheckbox->isChecked();
  if (!request.wholeLog) request.processTerm = procsPopup->currentText();
  request.styleIndex = stylePopup->currentIndex();
  request.start = start;
  request.end = end;
  ExcerptResult result = runExcerpt(*runner_, request);
  switch (result.kind) {
    case ExcerptResult::Kind::Failed:
      replaceOutputText(result.text);
      return;
    case ExcerptResult::Kind::NotUtf8:
      return;
    case ExcerptResult::Kind::SyslogText:
      replaceOutputText(result.text);
      clearHeldEntries();
      return;
    case ExcerptResult::Kind::Entries:
      theJSONDictionaries = result.entries;
      showStyledEntries();
      return;
  }
}

std::vector<StyledRun> ViewController::styleLogStr() const {
  const int styleIndex = stylePopup->currentIndex();
  if (styleIndex < 1 || styleIndex > theExtraStyles.size()) fatalError("styling needs a user style to be chosen");
  std::optional<QString> filter;
  const int filterIndex = filterPopup->currentIndex();
  if (filterIndex > 0) {
    if (filterIndex > theExtraFilters.size()) fatalError("the chosen filter is not in the stored list");
    filter = theExtraFilters[filterIndex - 1];
  }
  return styleLogEntries(*theJSONDictionaries, theExtraStyles[styleIndex - 1], filter);
}

void ViewController::showStyledEntries() { setStyledRuns(*outputText->document(), styleLogStr()); }

std::int64_t ViewController::summariseTraceV3(const QString& filename) {
  QString failure;
  const std::int64_t bytes = summariseBytes(*runner_, sourceFileText->text(), filename, procsPopup->currentText(), &failure);
  if (!failure.isEmpty()) replaceOutputText(failure);
  return bytes;
}

void ViewController::openTraceV3(const QString& filename) {
  TraceV3Dates dates = readTraceV3Dates(*runner_, sourceFileText->text(), filename, procsPopup->currentText(),
                                        showEventsCheckbox->isChecked());
  if (!dates.succeeded) {
    replaceOutputText(dates.failureMessage);
    return;
  }
  if (dates.eventsFailure) replaceOutputText(*dates.eventsFailure);
  theChartView->setDateArray(dates.entries, dates.events);
  theSourceLogFile = dates.filename;
  const int item = sourceLogPopup->findText(dates.filename, Qt::MatchExactly);
  if (item >= 0) sourceLogPopup->setCurrentIndex(item);
}

}  // namespace tarnbeck
