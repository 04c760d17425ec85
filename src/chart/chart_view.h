#pragma once
// The bar chart at the foot of the window. Statistics mode shows bars handed in ready-made
// (one per statistics record or report row); log-file mode bins the entry times of one
// process in one log file into equal time bars, with a zoom stack and boot and wake marks.
#include "chart/binning.h"
#include "chart/chart_controller.h"
#include "chart/tool_tip.h"
#include "stats/chart_values.h"

#include <QRectF>
#include <QWidget>

#include <array>
#include <memory>
#include <vector>

namespace tarnbeck {

class ChartView : public QWidget {
  Q_OBJECT
 public:
  explicit ChartView(QWidget* parent = nullptr);

  void setArrays(const std::vector<double>& theCH, const std::vector<int>& theCT, const QStringList& theCL);
  void setDateArray(const std::vector<Date>& theDate, const std::vector<Date>& theEvent);
  void setTopLevel();
  void chartDates(int theBarNum, Date theStart, Date theEnd, bool doText);

  void mouseDown(Qt::KeyboardModifiers modifiers, double x);
  void rightMouseDown(Qt::KeyboardModifiers modifiers);

  // Draws the chart at a size, as the window would show it (for images of the chart).
  void drawInto(QPainter& painter, QSizeF size);
  // The tooltip text at a point, if the pointer rests on a bar.
  std::optional<QString> toolTipAt(QPointF point) const;
  // The index of the bar under a point, clamped to the bars.
  int barIndexAt(double x) const;

  std::vector<double> theChartHeights;
  std::vector<int> theChartTypes;
  QStringList theChartLabels;
  std::vector<int> theTooltipTags;
  std::vector<std::unique_ptr<ToolTip>> theTooltipList;
  std::vector<Date> theDates;
  std::vector<Date> theEventDates;
  std::vector<double> theEventTimes;
  bool isLogarchive = true;
  long theMagnification = 0;
  std::vector<BarPeriod> theBarDates;
  std::vector<BarPeriod> theViewDates;
  QString theFilename;
  QString theStartChartStr;
  QString theEndChartStr;
  QString theChartLegStr;
  double theBarsNum = 50.0;

  // The tooltip rectangles registered by the last drawing, with their tags.
  std::vector<std::pair<int, QRectF>> theTooltipRects;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  ChartController* controller() const;
  void display();
  int nextTooltipTag_ = 1;
};

}  // namespace tarnbeck
