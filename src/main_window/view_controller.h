#pragma once
// The main window's controller: it holds the window's working state (the open source, its
// log files and statistics, the chart's input, the held log entries), the window's
// controls, and the actions behind them. Its methods read the controls, call the logic of
// the subsystems, and write the results back.
#include "chart/chart_controller.h"
#include "logquery/log_entries.h"
#include "logquery/log_tool.h"
#include "logquery/styling.h"
#include "platform/date_text.h"
#include "stats/reports.h"
#include "stats/statistics_records.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QSplitter;
class QTextEdit;

namespace tarnbeck {

class ChartView;
class Panels;
class InteractiveLogToolRunner;

class ViewController : public QWidget, public ChartController {
  Q_OBJECT
 public:
  explicit ViewController(QWidget* parent = nullptr);
  ~ViewController() override;

  // --- state ---
  QStringList theFileArray;
  QStringList theTracev3Array;
  QStringList theHeldTracev3Files;
  QHash<QString, HeldFileInfo> theHeldFileInfo;
  QHash<QString, StatsEntry> theFullStatsDict;
  qint64 theMemoryCount = 0;
  QSet<QString> theProcsSet;
  std::vector<double> theChartHeights;
  std::vector<int> theChartTypes;
  QStringList theChartLabels;
  QStringList theExtraProcs;
  QStringList theExtraFilters;
  QStringList theExtraStyles;
  QString theSourceLogFile;
  QString theUUID;
  LogEntries theJSONDictionaries;

  // --- outlets ---
  QComboBox* procsPopup = nullptr;
  QComboBox* sourceLogPopup = nullptr;
  QComboBox* periodPopup = nullptr;
  QComboBox* stylePopup = nullptr;
  QComboBox* filterPopup = nullptr;
  QTextEdit* outputText = nullptr;
  QLineEdit* sourceFileText = nullptr;
  QLineEdit* procsEditText = nullptr;
  QLineEdit* barsNumBox = nullptr;
  QSpinBox* barsStepper = nullptr;
  ChartView* theChartView = nullptr;
  QCheckBox* showEventsCheckbox = nullptr;
  QCheckBox* fullAnalysisCheckbox = nullptr;
  QCheckBox* allLogCheckbox = nullptr;
  QPushButton* openButtonControl = nullptr;
  QPushButton* makeButtonControl = nullptr;
  QPushButton* saveButtonControl = nullptr;
  QPushButton* prefsButtonControl = nullptr;

  // --- start-up and menus ---
  void viewDidLoad();
  void loadProcessMenu();
  void loadStyleMenu();
  void loadFilterMenu();
  void loadPeriodMenu();
  void loadPerMenu();
  void loadProcMenu();
  void loadFiltMenu();
  void loadStyMenu();

  // --- output text ---
  void replaceOutputText(const QString& string) override;
  void appendOutputText(const QString& string) override;

  // --- small actions ---
  void stylePopupAct();
  void filterPopupAct();
  void procsEditTextAction();
  void barsNumAction();
  void barsStepperAction();
  void showPrefs();

  // --- log queries ---
  void excerptTraceV3(const QString& filename, Date start, Date end) override;
  // The held entries styled by the chosen style and filter.
  std::vector<StyledRun> styleLogStr() const;
  void showStyledEntries();
  std::int64_t summariseTraceV3(const QString& filename);
  void openTraceV3(const QString& filename) override;

  // --- periods ---
  void insertDefaults(Date start, Date end) override;
  QStringList getPossibleTimes() const;
  void periodPopupAction();

  // --- statistics ---
  QString displayFullStats();
  QString displayPartialStats(const QString& theProcName) override;
  QString displayGatheredStats(const QString& theProcName);
  void procsPopupAction();
  void sourceLogPopupAction();

  // --- sources ---
  void openButton();
  void openSource(const QString& path);  // the Open panel's completion
  void makeButton();
  void saveButton();

  // The panels used by Open, Make and Save (tests put their own in place).
  void setPanels(std::unique_ptr<Panels> panels);
  InteractiveLogToolRunner& logToolRunner() { return *runner_; }

  // --- what the chart asks of the window ---
  void clearHeldEntries() override;
  bool showsEvents() const override;
  bool statisticsBarsOpenFiles() const override;
  ChartArrays statisticsChart() const override;
  void leaveLogFile() override;
  std::optional<QString> chosenStatisticsProcess() const override;

 private:
  void buildControls();
  void setTitle();
  void rebuildMenu(QComboBox* popup, const QStringList& titles);
  // Reads a stored list (an absent key leaves it as it is) and rebuilds its menu.
  void reloadStoredMenu(const QString& key, QStringList& list, const QString& firstItem, QComboBox* popup);
  void setChartLists(const ChartArrays& chart);
  void handOverChart();
  void showReport(const QString& report);
  bool selectsExtraProcess(int index) const;

  std::unique_ptr<Panels> panels_;
  std::unique_ptr<InteractiveLogToolRunner> runner_;
};

}  // namespace tarnbeck
