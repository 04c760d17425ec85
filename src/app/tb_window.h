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

 signals:
  // The window has closed (a close that stopped a run instead does not count).
  void windowClosed();

 protected:
  // A window whose controller is waiting for the log tool stops the run instead of closing.
  void closeEvent(QCloseEvent* event) override;

 private:
  ViewController* controller_;
};

}  // namespace tarnbeck
