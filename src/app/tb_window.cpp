#include "app/tb_window.h"

#include "main_window/interactive_log_runner.h"
#include "main_window/view_controller.h"

#include <QCloseEvent>

namespace tarnbeck {

TBWindow::TBWindow(QWidget* parent, Qt::WindowFlags flags) : QMainWindow(parent, flags), controller_(new ViewController(this)) {
  setCentralWidget(controller_);
  setWindowTitle(QStringLiteral("Tarnbeck"));
  resize(1200, 760);
}

void TBWindow::closeEvent(QCloseEvent* event) {
  if (controller_->logToolRunner().running()) {
    controller_->logToolRunner().cancel();
    event->ignore();
    return;
  }
  QMainWindow::closeEvent(event);
  if (event->isAccepted()) emit windowClosed();
}

}  // namespace tarnbeck
