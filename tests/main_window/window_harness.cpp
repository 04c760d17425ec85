#include "main_window/window_harness.h"

#include "tools/sample_writer.h"

#include <QApplication>

namespace tarnbeck::test {

Bundle::Bundle(int records, bool withSpecial) {
  path = dir.filePath(QStringLiteral("Test.logarchive"));
  QByteArray statistics;
  for (int i = 1; i <= records; ++i) {
    statistics += sample::fileRotateRecord(QStringLiteral("Persist/%1.tracev3").arg(i, 16, 10, QLatin1Char('0')),
                                           QStringLiteral("2019-02-2%1 10:00:00-0800").arg(i), 1000000 * i,
                                           sample::typicalProcesses(1000000 * i, static_cast<unsigned>(i)));
    statistics += sample::purgeRecords(QStringLiteral("2019-02-2%1 11:00:00-0800").arg(i));
  }
  writeFile(path + QStringLiteral("/Extra/logdata.statistics.0.txt"), statistics);
  writeFile(path + QStringLiteral("/Persist/0000000000000001.tracev3"), QByteArray(4096, 'p'));
  writeFile(path + QStringLiteral("/Persist/0000000000000002.tracev3"), QByteArray(2048, 'p'));
  if (withSpecial) writeFile(path + QStringLiteral("/Special/0000000000000001.tracev3"), QByteArray(1024, 's'));
}

void click(ChartView* chart, double x, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
  const QPointF at(x, chart->height() / 2.0);
  QMouseEvent press(QEvent::MouseButtonPress, at, chart->mapToGlobal(at), button, button, modifiers);
  QApplication::sendEvent(chart, &press);
  QMouseEvent release(QEvent::MouseButtonRelease, at, chart->mapToGlobal(at), button, Qt::NoButton, modifiers);
  QApplication::sendEvent(chart, &release);
}

double barMiddle(const ChartView* chart, int i, int n) { return 10.0 + (i + 0.5) * (chart->width() - 20.0) / n; }

QByteArray syslogLines(const std::vector<Date>& moments, const char* process) {
  QByteArray text = "Timestamp                       (process)[PID]\n";
  for (const Date& moment : moments) {
    text += formatDate(moment, date_pattern::kToolTimestamp).toUtf8() + "  localhost " + process + ": an entry\n";
  }
  return text;
}

}  // namespace tarnbeck::test
