#include "app/tb_window.h"

#include "main_window/view_controller.h"

namespace tarnbeck {

TBWindow::TBWindow(QWidget* parent, Qt::WindowFlags flags) : QMainWindow(parent, flags), controller_(new ViewController(this)) {
  setCentralWidget(controller_);
  setWindowTitle(QStringLiteral("Tarnbeck"));
  resize(1200, 760);
}

}  // namespace tarnbeck
