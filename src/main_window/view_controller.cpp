#include "main_window/view_controller.h"

#include "chart/chart_view.h"
#include "logquery/periods.h"
#include "main_window/interactive_log_runner.h"
#include "main_window/panels.h"
#include "platform/notification_center.h"
#include "platform/tick_count.h"
#include "platform/user_defaults.h"
#include "prefs/prefs_view_controller.h"
#include "prefs/stored_lists.h"
#include "sources/open_source.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QTextEdit>
#include <QVBoxLayout>

namespace tarnbeck {
namespace {

constexpr int kFewestBars = 5;
constexpr int kMostBars = 200;
constexpr int kStartingBars = 50;
const QString kFirstStyleTitle = QStringLiteral("syslog");
const QString kFirstFilterTitle = QStringLiteral("none");

// A stepper: only the up and down arrows of a spin box.
class Stepper : public QSpinBox {
 public:
  explicit Stepper(QWidget* parent) : QSpinBox(parent) {
    lineEdit()->setVisible(false);
    setFixedWidth(22);
    setButtonSymbols(QAbstractSpinBox::UpDownArrows);
  }
};

QComboBox* makePopup(QWidget* parent, const char* name, int minimumWidth) {
  auto* popup = new QComboBox(parent);
  popup->setObjectName(QString::fromLatin1(name));
  popup->setMinimumWidth(minimumWidth);
  popup->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  popup->setMinimumContentsLength(8);
  return popup;
}

}  // namespace

ViewController::ViewController(QWidget* parent)
    : QWidget(parent),
      theUUID(newUuidString()),
      theJSONDictionaries(noLogEntries()),
      panels_(std::make_unique<FileDialogPanels>()),
      runner_(std::make_unique<InteractiveLogToolRunner>(this)) {
  buildControls();
  viewDidLoad();
}

ViewController::~ViewController() { NotificationCenter::defaultCenter().removeObserver(this); }

void ViewController::buildControls() {
  setObjectName(QStringLiteral("viewController"));
  auto* layout = new QVBoxLayout(this);

  auto* top = new QHBoxLayout;
  openButtonControl = new QPushButton(tr("Open…"), this);
  makeButtonControl = new QPushButton(tr("Make…"), this);
  saveButtonControl = new QPushButton(tr("Save…"), this);
  prefsButtonControl = new QPushButton(tr("Preferences…"), this);
  openButtonControl->setToolTip(tr("Open a .logarchive bundle"));
  makeButtonControl->setToolTip(tr("Assemble a .logarchive bundle from a log store folder"));
  saveButtonControl->setToolTip(tr("Save the output text"));
  sourceFileText = new QLineEdit(this);
  sourceFileText->setObjectName(QStringLiteral("sourceFileText"));
  sourceFileText->setReadOnly(true);
  sourceFileText->setPlaceholderText(tr("No log archive open"));
  for (QPushButton* button : {openButtonControl, makeButtonControl, saveButtonControl, prefsButtonControl}) {
    button->setAutoDefault(false);
    top->addWidget(button);
  }
  top->addWidget(sourceFileText, 1);
  layout->addLayout(top);

  auto* row = new QHBoxLayout;
  procsPopup = makePopup(this, "procsPopup", 140);
  sourceLogPopup = makePopup(this, "sourceLogPopup", 280);
  periodPopup = makePopup(this, "periodPopup", 160);
  stylePopup = makePopup(this, "stylePopup", 100);
  filterPopup = makePopup(this, "filterPopup", 100);
  procsEditText = new QLineEdit(this);
  procsEditText->setObjectName(QStringLiteral("procsEditText"));
  procsEditText->setPlaceholderText(tr("name, then Return"));
  procsEditText->setMinimumWidth(160);
  procsEditText->setMaximumWidth(220);
  showEventsCheckbox = new QCheckBox(tr("Events"), this);
  showEventsCheckbox->setToolTip(tr("Mark boot and wake events on the chart"));
  fullAnalysisCheckbox = new QCheckBox(tr("Full analysis"), this);
  fullAnalysisCheckbox->setToolTip(tr("Measure an extra process by running the log tool over every log file"));
  allLogCheckbox = new QCheckBox(tr("All log"), this);
  allLogCheckbox->setToolTip(tr("List the entries of every process, not only the chosen one"));
  barsNumBox = new QLineEdit(this);
  barsNumBox->setObjectName(QStringLiteral("barsNumBox"));
  barsNumBox->setMaximumWidth(44);
  barsNumBox->setToolTip(tr("Number of chart bars (5 to 200)"));
  barsStepper = new Stepper(this);
  barsStepper->setObjectName(QStringLiteral("barsStepper"));
  barsStepper->setRange(kFewestBars, kMostBars);
  const std::pair<const char*, QWidget*> labelled[] = {
      {"Process", procsPopup}, {"Log file", sourceLogPopup}, {"Period", periodPopup}, {"Style", stylePopup}, {"Filter", filterPopup}};
  for (const auto& [caption, control] : labelled) {
    auto* label = new QLabel(tr(caption), this);
    label->setBuddy(control);
    row->addWidget(label);
    row->addWidget(control);
  }
  row->addStretch();
  layout->addLayout(row);

  auto* options = new QHBoxLayout;
  auto* addLabel = new QLabel(tr("Add process"), this);
  addLabel->setBuddy(procsEditText);
  options->addWidget(addLabel);
  options->addWidget(procsEditText);
  options->addSpacing(12);
  options->addWidget(showEventsCheckbox);
  options->addWidget(fullAnalysisCheckbox);
  options->addWidget(allLogCheckbox);
  options->addSpacing(12);
  options->addWidget(new QLabel(tr("Bars"), this));
  options->addWidget(barsNumBox);
  options->addWidget(barsStepper);
  options->addStretch();
  layout->addLayout(options);

  auto* splitter = new QSplitter(Qt::Vertical, this);
  outputText = new QTextEdit(splitter);
  outputText->setObjectName(QStringLiteral("outputText"));
  outputText->setReadOnly(true);
  outputText->setLineWrapMode(QTextEdit::NoWrap);
  outputText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  theChartView = new ChartView(splitter);
  theChartView->setObjectName(QStringLiteral("theChartView"));
  splitter->addWidget(outputText);
  splitter->addWidget(theChartView);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 0);
  splitter->setSizes({400, 200});
  layout->addWidget(splitter, 1);

  connect(openButtonControl, &QPushButton::clicked, this, &ViewController::openButton);
  connect(makeButtonControl, &QPushButton::clicked, this, &ViewController::makeButton);
  connect(saveButtonControl, &QPushButton::clicked, this, &ViewController::saveButton);
  connect(prefsButtonControl, &QPushButton::clicked, this, &ViewController::showPrefs);
  connect(procsPopup, &QComboBox::activated, this, &ViewController::procsPopupAction);
  connect(sourceLogPopup, &QComboBox::activated, this, &ViewController::sourceLogPopupAction);
  connect(periodPopup, &QComboBox::activated, this, &ViewController::periodPopupAction);
  connect(stylePopup, &QComboBox::activated, this, &ViewController::stylePopupAct);
  connect(filterPopup, &QComboBox::activated, this, &ViewController::filterPopupAct);
  connect(procsEditText, &QLineEdit::returnPressed, this, &ViewController::procsEditTextAction);
  connect(barsNumBox, &QLineEdit::editingFinished, this, &ViewController::barsNumAction);
  connect(barsStepper, &QSpinBox::valueChanged, this, &ViewController::barsStepperAction);
}

void ViewController::rebuildMenu(QComboBox* popup, const QStringList& titles) {
  popup->clear();
  popup->addItems(titles);
}

void ViewController::viewDidLoad() {
  reloadStoredMenu(kExtraProcsKey, theExtraProcs, kAllTitle, procsPopup);
  rebuildMenu(sourceLogPopup, {kAllTitle});
  reloadStoredMenu(kExtraFiltersKey, theExtraFilters, kFirstFilterTitle, filterPopup);
  reloadStoredMenu(kExtraStylesKey, theExtraStyles, kFirstStyleTitle, stylePopup);
  rebuildMenu(periodPopup, {kVariablePeriodTitle});
  showEventsCheckbox->setChecked(false);
  fullAnalysisCheckbox->setChecked(false);
  allLogCheckbox->setChecked(false);
  barsNumBox->setText(QString::number(kStartingBars));
  {
    const QSignalBlocker quiet(barsStepper);
    barsStepper->setValue(kStartingBars);
  }
  theUUID = newUuidString();
  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.addObserver(this, kPeriodChanged, [this](const QString&) { loadPerMenu(); });
  center.addObserver(this, kProcsChanged, [this](const QString&) { loadProcMenu(); });
  center.addObserver(this, kFiltersChanged, [this](const QString&) { loadFiltMenu(); });
  center.addObserver(this, kStylesChanged, [this](const QString&) { loadStyMenu(); });
}

void ViewController::loadProcessMenu() {
  if (auto stored = UserDefaults::standard().stringArray(kExtraProcsKey)) theExtraProcs = *stored;
  rebuildMenu(procsPopup, processMenuTitles(theExtraProcs, theProcsSet));
}

void ViewController::reloadStoredMenu(const QString& key, QStringList& list, const QString& firstItem, QComboBox* popup) {
  if (auto stored = UserDefaults::standard().stringArray(key)) list = *stored;
  rebuildMenu(popup, QStringList{firstItem} + list);
}

void ViewController::loadStyleMenu() { reloadStoredMenu(kExtraStylesKey, theExtraStyles, kFirstStyleTitle, stylePopup); }

void ViewController::loadFilterMenu() { reloadStoredMenu(kExtraFiltersKey, theExtraFilters, kFirstFilterTitle, filterPopup); }

void ViewController::loadPerMenu() { loadPeriodMenu(); }
void ViewController::loadProcMenu() { loadProcessMenu(); }
void ViewController::loadFiltMenu() { loadFilterMenu(); }
void ViewController::loadStyMenu() { loadStyleMenu(); }

void ViewController::replaceOutputText(const QString& string) { outputText->setPlainText(string); }

void ViewController::appendOutputText(const QString& string) {
  QTextCursor cursor(outputText->document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(string, QTextCharFormat());
}

void ViewController::stylePopupAct() {
  if (stylePopup->currentIndex() > 0 && entryCount(theJSONDictionaries) > 0) showStyledEntries();
}

void ViewController::filterPopupAct() { stylePopupAct(); }

void ViewController::procsEditTextAction() {
  const QString name = procsEditText->text();
  if (name.isEmpty()) return;
  theExtraProcs << name;
  UserDefaults::standard().setStringArray(kExtraProcsKey, theExtraProcs);
  NotificationCenter::defaultCenter().post(kProcsChanged);
}

void ViewController::barsNumAction() {
  const long long typed = lenientInteger(barsNumBox->text());
  const int count = typed < kFewestBars ? kFewestBars : static_cast<int>(std::min<long long>(typed, kMostBars));
  barsNumBox->setText(QString::number(count));
  {
    const QSignalBlocker quiet(barsStepper);
    barsStepper->setValue(count);
  }
  theChartView->theBarsNum = count;
}

void ViewController::barsStepperAction() {
  barsNumBox->setText(QString::number(barsStepper->value()));
  theChartView->theBarsNum = barsStepper->value();
}

void ViewController::showPrefs() {
  auto* prefs = new PrefsViewController(this);
  prefs->setAttribute(Qt::WA_DeleteOnClose);
#ifdef __APPLE__
  prefs->setWindowFlag(Qt::Sheet);
#endif
  prefs->setWindowModality(Qt::WindowModal);
  prefs->open();
}

void ViewController::setPanels(std::unique_ptr<Panels> panels) { panels_ = std::move(panels); }

void ViewController::setTitle() {
  window()->setWindowTitle(sourceLogPopup->currentText() + QStringLiteral(" - ") + procsPopup->currentText());
}

void ViewController::setChartLists(const ChartArrays& chart) {
  theChartHeights = chart.heights;
  theChartTypes = chart.types;
  theChartLabels = chart.labels;
}

void ViewController::handOverChart() { theChartView->setArrays(theChartHeights, theChartTypes, theChartLabels); }

void ViewController::clearHeldEntries() {
  if (entryCount(theJSONDictionaries) > 0) theJSONDictionaries = noLogEntries();
}

bool ViewController::showsEvents() const { return showEventsCheckbox->isChecked(); }

bool ViewController::selectsExtraProcess(int index) const { return index >= 1 && index <= theExtraProcs.size(); }

bool ViewController::statisticsBarsOpenFiles() const {
  return procsPopup->currentIndex() > theExtraProcs.size() || fullAnalysisCheckbox->isChecked();
}

ChartArrays ViewController::statisticsChart() const { return ChartArrays{theChartHeights, theChartTypes, theChartLabels}; }

void ViewController::leaveLogFile() {
  theSourceLogFile.clear();
  sourceLogPopup->setCurrentIndex(0);
}

std::optional<QString> ViewController::chosenStatisticsProcess() const {
  if (procsPopup->currentIndex() > theExtraProcs.size()) return procsPopup->currentText();
  return std::nullopt;
}

}  // namespace tarnbeck
