#include "chart/chart_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>

namespace tarnbeck {
namespace {

constexpr double kBaseLine = 10;     // the base line's height above the bottom edge
constexpr double kSideMargin = 10;   // left and right of the bars
constexpr double kTopRoom = 30;      // above the tallest bar, for the labels

// Text whose lower edge sits kTopRoom below the top edge, reaching upward.
void drawLabel(QPainter& painter, double x, const QString& text) {
  const QFontMetricsF metrics(painter.font());
  const QRectF box = metrics.boundingRect(QRectF(0, 0, 10000, 10000), Qt::AlignLeft | Qt::AlignTop, text);
  painter.drawText(QRectF(x, kTopRoom - box.height(), box.width() + 1, box.height()), Qt::AlignLeft | Qt::AlignBottom, text);
}

}  // namespace

QColor barColour(int type) {
  if (type <= 1) return chart_colour::kBlue;
  if (type == 2) return chart_colour::kCyan;
  if (type == 3) return chart_colour::kRed;
  if (type == 4) return chart_colour::kYellow;
  return chart_colour::kLightGray;
}

std::vector<QRectF> paintChart(QPainter& painter, QSizeF size, const ChartPicture& picture) {
  const double width = size.width();
  const double height = size.height();
  std::vector<QRectF> bars;

  painter.save();
  painter.setPen(QPen(chart_colour::kLightGray, 1));
  painter.drawLine(QPointF(0, height - kBaseLine), QPointF(width, height - kBaseLine));

  const double largest = picture.heights.empty() ? 0 : *std::max_element(picture.heights.begin(), picture.heights.end());
  if (!picture.heights.empty() && largest != 0) {
    const double scale = (height - 40) / largest;
    const double barWidth = (width - 2 * kSideMargin) / static_cast<double>(picture.heights.size());
    double x = kSideMargin;
    bars.reserve(picture.heights.size());
    for (std::size_t i = 0; i < picture.heights.size(); ++i) {
      const double barHeight = picture.heights[i] * scale;
      const QRectF bar(x, height - kBaseLine - barHeight, barWidth, barHeight);
      painter.fillRect(bar, barColour(i < picture.types.size() ? picture.types[i] : 1));
      bars.push_back(bar);
      x += barWidth;
    }
  }

  painter.setPen(QPalette().color(QPalette::WindowText));
  if (!picture.startChartStr.isEmpty()) drawLabel(painter, 5, picture.startChartStr);
  if (!picture.endChartStr.isEmpty()) drawLabel(painter, width - 75, picture.endChartStr);
  if (!picture.legend.isEmpty()) drawLabel(painter, width * 0.5 - 40, picture.legend);

  if (picture.drawEvents && !picture.eventTimes.empty()) {
    painter.setPen(QPen(chart_colour::kRed, 2));
    for (double t : picture.eventTimes) {
      const double x = (width - 2 * kSideMargin) * t + kSideMargin;
      painter.drawLine(QPointF(x, 0), QPointF(x, height));
    }
  }
  painter.restore();
  return bars;
}

}  // namespace tarnbeck
