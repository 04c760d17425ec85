#pragma once
#include <QMainWindow>

namespace tarnbeck {

class ViewController;

// The main window: its content is one ViewController.
class TBWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit TBWindow(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
  ViewController* contentViewController() const { return controller_; }

 private:
  ViewController* controller_;
};

}  // namespace tarnbeck
