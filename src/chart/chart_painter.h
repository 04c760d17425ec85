#pragma once
// Drawing the bar chart. The chart's geometry is laid out with its origin at the bottom
// left and y upward (bars stand on a base line 10 px above the bottom edge, labels hang
// 30 px below the top); every y is flipped here into Qt's top-left coordinates.
#include <QColor>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <span>
#include <vector>

class QPainter;

namespace tarnbeck {

// The system's named colours, as the chart uses them.
namespace chart_colour {
inline const QColor kBlue = QColor::fromRgbF(0, 0, 1);
inline const QColor kCyan = QColor::fromRgbF(0, 1, 1);
inline const QColor kRed = QColor::fromRgbF(1, 0, 0);
inline const QColor kYellow = QColor::fromRgbF(1, 1, 0);
inline const QColor kLightGray = QColor::fromRgbF(2.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0);
}  // namespace chart_colour

// 1 or less blue, 2 cyan, 3 red, 4 yellow, 5 or more light grey.
QColor barColour(int type);

struct ChartPicture {
  std::span<const double> heights;
  std::span<const int> types;
  QString startChartStr;
  QString endChartStr;
  QString legend;
  std::span<const double> eventTimes;
  bool drawEvents = false;  // log-file mode with the events box on
};

// Draws the whole chart; returns one rectangle per bar (none when there are no bars or
// all are zero), in Qt coordinates, for the bars' tooltips.
std::vector<QRectF> paintChart(QPainter& painter, QSizeF size, const ChartPicture& picture);

}  // namespace tarnbeck
