#include "chart/chart_view.h"

#include "chart/chart_painter.h"
#include "stats/reports.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace tarnbeck {
namespace {
constexpr double kSideMargin = 10;
constexpr double kShortestZoom = 0.001;  // seconds: shorter bars cannot be zoomed into
constexpr double kExcerptReach = 1.0;    // seconds past a bar's end that an excerpt reaches
}  // namespace

ChartView::ChartView(QWidget* parent) : QWidget(parent) {
  setMinimumHeight(120);
  setMouseTracking(false);
}

ChartController* ChartView::controller() const {
  for (QWidget* ancestor = parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
    if (auto* found = dynamic_cast<ChartController*>(ancestor)) return found;
  }
  return nullptr;
}

void ChartView::display() {
  update();
  repaint();
}

void ChartView::setArrays(const std::vector<double>& theCH, const std::vector<int>& theCT, const QStringList& theCL) {
  theChartHeights = theCH;
  theChartTypes = theCT;
  theChartLabels = theCL;
  isLogarchive = true;
  theViewDates.clear();
  theFilename.clear();
  display();
}

void ChartView::setDateArray(const std::vector<Date>& theDate, const std::vector<Date>& theEvent) {
  ChartController* window = controller();
  if (theDate.empty()) {
    if (window) window->replaceOutputText(kNoEntriesMessage);
    return;
  }
  theDates = theDate;
  if (!theEvent.empty()) theEventDates = theEvent;
  isLogarchive = false;
  theViewDates = {BarPeriod{theDates.front(), theDates.back()}};
  chartDates(static_cast<int>(theBarsNum), theDates.front(), theDates.back(), true);
}

void ChartView::setTopLevel() {
  if (theViewDates.size() >= 2) theViewDates.resize(1);
}

void ChartView::chartDates(int theBarNum, Date theStart, Date theEnd, bool doText) {
  ChartController* window = controller();
  auto binned = binDates(theDates, theEventDates, theBarNum, theStart, theEnd);
  if (auto* failure = std::get_if<BinningFailure>(&binned)) {
    if (doText && window) {
      window->replaceOutputText(*failure == BinningFailure::NoEntries ? kNoEntriesMessage : kPeriodTooSmallMessage);
    }
    return;
  }
  ChartBinning& chart = std::get<ChartBinning>(binned);
  theChartHeights = std::move(chart.heights);
  theChartTypes = std::move(chart.types);
  theChartLabels = std::move(chart.labels);
  theBarDates = std::move(chart.barDates);
  theEventTimes = std::move(chart.eventTimes);
  if (chart.startChartStr) theStartChartStr = *chart.startChartStr;
  if (chart.endChartStr) theEndChartStr = *chart.endChartStr;
  theChartLegStr = chart.legend;
  display();
  if (window) window->insertDefaults(theStart, theEnd);
  if (doText && window) window->replaceOutputText(chart.summary);
}

void ChartView::drawInto(QPainter& painter, QSizeF size) {
  ChartController* window = controller();
  ChartPicture picture;
  picture.heights = theChartHeights;
  picture.types = theChartTypes;
  picture.startChartStr = theStartChartStr;
  picture.endChartStr = theEndChartStr;
  picture.legend = theChartLegStr;
  picture.eventTimes = theEventTimes;
  picture.drawEvents = window && window->showsEvents() && !isLogarchive;
  theTooltipTags.clear();
  theTooltipList.clear();
  theTooltipRects.clear();
  const std::vector<QRectF> bars = paintChart(painter, size, picture);
  for (std::size_t i = 0; i < bars.size(); ++i) {
    auto tip = std::make_unique<ToolTip>(i < static_cast<std::size_t>(theChartLabels.size()) ? theChartLabels[static_cast<qsizetype>(i)] : QString());
    const int tag = nextTooltipTag_++;
    theTooltipRects.emplace_back(tag, bars[i]);
    theTooltipTags.push_back(tag);
    theTooltipList.push_back(std::move(tip));
  }
}

void ChartView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawInto(painter, QSizeF(width(), height()));
}

std::optional<QString> ChartView::toolTipAt(QPointF point) const {
  for (std::size_t i = 0; i < theTooltipRects.size(); ++i) {
    const QRectF& rect = theTooltipRects[i].second;
    // A bar of height 0 still owns its (zero-height) rectangle: the base-line pixel row.
    const QRectF hit = rect.height() > 0 ? rect : QRectF(rect.left(), rect.top() - 0.5, rect.width(), 1);
    if (hit.contains(point)) return theTooltipList[i]->stringForToolTip();
  }
  return std::nullopt;
}

bool ChartView::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    auto* help = static_cast<QHelpEvent*>(event);
    if (auto tip = toolTipAt(help->pos())) {
      QToolTip::showText(help->globalPos(), *tip, this);
    } else {
      QToolTip::hideText();
      event->ignore();
    }
    return true;
  }
  return QWidget::event(event);
}

int ChartView::barIndexAt(double x) const {
  const int n = static_cast<int>(theChartHeights.size());
  double barWidth = (width() - 2 * kSideMargin) / n;
  // In statistics mode the bar count doubles as a greatest bar width.
  if (isLogarchive) barWidth = std::min(barWidth, theBarsNum);
  long long index = static_cast<long long>(std::trunc((x - kSideMargin) / barWidth));
  if (index < 0) index = 0;
  if (index >= n) index = n - 1;
  return static_cast<int>(index);
}

void ChartView::mousePressEvent(QMouseEvent* event) {
  QWidget::mousePressEvent(event);
  if (event->button() == Qt::LeftButton) {
    mouseDown(event->modifiers(), event->position().x());
  } else if (event->button() == Qt::RightButton) {
    rightMouseDown(event->modifiers());
  }
}

void ChartView::mouseDown(Qt::KeyboardModifiers modifiers, double x) {
  ChartController* window = controller();
  if (window) window->clearHeldEntries();
  if ((modifiers & Qt::ShiftModifier) && !theViewDates.empty()) {
    chartDates(static_cast<int>(theBarsNum), theViewDates.back().start, theViewDates.back().end, true);
    return;
  }
  if (theChartHeights.empty()) return;
  if (isLogarchive) {
    if (!window || !window->statisticsBarsOpenFiles()) return;
    const int i = barIndexAt(x);
    if (i >= theChartLabels.size()) return;
    const QStringList pieces = theChartLabels[i].split(u',');
    if (pieces.size() < 3) return;
    theFilename = pieces[2];
    const int type = i < static_cast<int>(theChartTypes.size()) ? theChartTypes[static_cast<std::size_t>(i)] : 0;
    if (type == kPersistHeld || type == kSpecialHeld) window->openTraceV3(theFilename);
    return;
  }
  const int i = barIndexAt(x);
  if (static_cast<std::size_t>(i) >= theBarDates.size()) return;
  const BarPeriod bar = theBarDates[static_cast<std::size_t>(i)];
  if (!(bar.end - bar.start > kShortestZoom)) return;
  theViewDates.push_back(bar);
  // Command on macOS; Qt reports it as the Control modifier there, as Ctrl elsewhere.
  if (modifiers & Qt::ControlModifier) {
    chartDates(static_cast<int>(theBarsNum), bar.start, bar.end, false);
    if (window) window->excerptTraceV3(theFilename, bar.start, bar.end.addingSeconds(kExcerptReach));
  } else {
    chartDates(static_cast<int>(theBarsNum), bar.start, bar.end, true);
  }
}

void ChartView::rightMouseDown(Qt::KeyboardModifiers modifiers) {
  ChartController* window = controller();
  if (window) window->clearHeldEntries();
  if ((modifiers & Qt::ShiftModifier) && !theViewDates.empty()) {
    chartDates(static_cast<int>(theBarsNum), theViewDates.back().start, theViewDates.back().end, false);
    return;
  }
  if (isLogarchive || theViewDates.empty()) return;
  if (theViewDates.size() == 1) {
    if (!window) return;
    const ChartArrays statistics = window->statisticsChart();
    setArrays(statistics.heights, statistics.types, statistics.labels);
    isLogarchive = true;
    theFilename.clear();
    theStartChartStr.clear();
    theEndChartStr.clear();
    theChartLegStr.clear();
    display();
    window->leaveLogFile();
    if (auto process = window->chosenStatisticsProcess()) {
      const QString report = window->displayPartialStats(*process);
      window->replaceOutputText(kStatisticsHeader);
      window->appendOutputText(report);
    }
    return;
  }
  theViewDates.pop_back();
  theStartChartStr.clear();
  theEndChartStr.clear();
  theChartLegStr.clear();
  chartDates(static_cast<int>(theBarsNum), theViewDates.back().start, theViewDates.back().end, true);
}

}  // namespace tarnbeck
