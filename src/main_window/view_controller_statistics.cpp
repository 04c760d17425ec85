// The statistics reports and the process and source-log menus that choose between them.
#include "chart/chart_view.h"
#include "logquery/periods.h"
#include "main_window/view_controller.h"
#include "platform/process_activity.h"
#include "sources/open_source.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QTextEdit>

namespace tarnbeck {
namespace {
const QString kStartingAnalysis = QStringLiteral("Starting analysis. This will take several minutes.\nAnalysing");
const QString kNotInStatistics = QStringLiteral(
    "The selected process is not included in the statistics available for this logarchive. Please select an individual "
    "log file for statistics covering that period, or turn on Full analysis using the Checkbox above.\n");
}  // namespace

QString ViewController::displayFullStats() {
  Report report = tarnbeck::displayFullStats(theFileArray, theFullStatsDict, theHeldTracev3Files);
  setChartLists(report.chart);
  return report.text;
}

QString ViewController::displayPartialStats(const QString& theProcName) {
  Report report = tarnbeck::displayPartialStats(theFileArray, theFullStatsDict, theProcName, theHeldTracev3Files);
  setChartLists(report.chart);
  return report.text;
}

QString ViewController::displayGatheredStats(const QString& theProcName) {
  Report report = tarnbeck::displayGatheredStats(
      theHeldTracev3Files, theHeldFileInfo, theProcName, [this](const QString& file) { return summariseTraceV3(file); },
      [this](const QString& progress) {
        appendOutputText(progress);
        outputText->repaint();
      });
  setChartLists(report.chart);
  return report.text;
}

void ViewController::showReport(const QString& report) {
  replaceOutputText(kStatisticsHeader);
  appendOutputText(report);
  theSourceLogFile.clear();
}

void ViewController::procsPopupAction() {
  if (theFileArray.size() >= 2) {
    {
      ProcessActivity activity(QStringLiteral("running log command"));
      const int p = procsPopup->currentIndex();
      const int s = sourceLogPopup->currentIndex();
      if (p == 0) {
        showReport(displayFullStats());
        sourceLogPopup->setCurrentIndex(0);
        handOverChart();
      } else if (selectsExtraProcess(p) && s == 0) {
        if (fullAnalysisCheckbox->isChecked()) {
          replaceOutputText(kStartingAnalysis);
          showReport(displayGatheredStats(procsPopup->itemText(p)));
          sourceLogPopup->setCurrentIndex(0);
          handOverChart();
        } else {
          replaceOutputText(kNotInStatistics);
        }
      } else if (s == 0) {
        showReport(displayPartialStats(procsPopup->itemText(p)));
        sourceLogPopup->setCurrentIndex(0);
        handOverChart();
      } else {
        const QString file = sourceLogPopup->itemText(s);
        theChartView->theFilename = file;
        openTraceV3(file);
      }
    }
    rebuildMenu(periodPopup, QStringList{kVariablePeriodTitle} + getPossibleTimes());
  }
  setTitle();
  clearHeldEntries();
}

void ViewController::sourceLogPopupAction() {
  if (procsPopup->currentIndex() > 0) {
    {
      ProcessActivity activity(QStringLiteral("running log commands"));
      const int s = sourceLogPopup->currentIndex();
      if (s > 0) {
        const QString file = sourceLogPopup->itemText(s);
        theChartView->theFilename = file;
        openTraceV3(file);
      } else {
        const int p = procsPopup->currentIndex();
        if (p <= theExtraProcs.size()) {
          if (fullAnalysisCheckbox->isChecked()) {
            replaceOutputText(kStartingAnalysis);
            // This path keeps the current log file and leaves the chart as it is.
            const QString report = displayGatheredStats(procsPopup->itemText(p));
            replaceOutputText(kStatisticsHeader);
            appendOutputText(report);
          } else {
            replaceOutputText(kNotInStatistics);
          }
        } else {
          showReport(displayPartialStats(procsPopup->itemText(p)));
          handOverChart();
        }
      }
    }
    rebuildMenu(periodPopup, QStringList{kVariablePeriodTitle} + getPossibleTimes());
  }
  setTitle();
  clearHeldEntries();
}

}  // namespace tarnbeck
