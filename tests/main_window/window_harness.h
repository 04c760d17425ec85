#pragma once
// Drives a real ViewController offscreen: panels answered by the test, menus chosen as a
// user chooses them, bundles written into temporary folders.
#include "chart/chart_view.h"
#include "main_window/panels.h"
#include "main_window/view_controller.h"
#include "support/test_support.h"

#include <QComboBox>
#include <QTextEdit>
#include <QTemporaryDir>
#include <QMouseEvent>

#include <deque>

namespace tarnbeck::test {

class FakePanels : public Panels {
 public:
  std::deque<std::optional<QString>> answers;
  QStringList asked;

  void chooseLogarchive(QWidget*, Completion done) override { answer(QStringLiteral("logarchive"), std::move(done)); }
  void chooseStoreFolder(QWidget*, Completion done) override { answer(QStringLiteral("store"), std::move(done)); }
  void chooseBundleDestination(QWidget*, Completion done) override { answer(QStringLiteral("bundle"), std::move(done)); }
  void chooseTextDestination(QWidget*, Completion done) override { answer(QStringLiteral("text"), std::move(done)); }

 private:
  void answer(const QString& kind, Completion done) {
    asked << kind;
    std::optional<QString> chosen;
    if (!answers.empty()) {
      chosen = answers.front();
      answers.pop_front();
    }
    done(chosen);
  }
};

// Chooses an item as the user does: the selection changes and the menu's action runs.
inline void choose(QComboBox* popup, int index) {
  popup->setCurrentIndex(index);
  emit popup->activated(index);
}

inline QStringList items(const QComboBox* popup) {
  QStringList titles;
  for (int i = 0; i < popup->count(); ++i) titles << popup->itemText(i);
  return titles;
}

struct Window {
  explicit Window(bool clearDefaults = true) {
    if (clearDefaults) clearUserDefaults();
    controller = std::make_unique<ViewController>();
    panels = new FakePanels;
    controller->setPanels(std::unique_ptr<Panels>(panels));
    controller->resize(1200, 800);
    controller->show();
  }
  ViewController* operator->() { return controller.get(); }
  QString output() const { return controller->outputText->toPlainText(); }
  std::unique_ptr<ViewController> controller;
  FakePanels* panels;
};

// Clicks the chart at a horizontal position, as the user does.
void click(ChartView* chart, double x, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {});
// The horizontal middle of bar i of n bars drawn across the chart.
double barMiddle(const ChartView* chart, int i, int n);

// Syslog-style text of the tool: a header, then one entry line per moment.
QByteArray syslogLines(const std::vector<Date>& moments, const char* process = "kernel[0]");

// A bundle with statistics records, Persist and Special log files.
struct Bundle {
  explicit Bundle(int records = 3, bool withSpecial = true);
  QString path;
  QTemporaryDir dir;
};

}  // namespace tarnbeck::test
