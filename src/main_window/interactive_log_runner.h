#pragma once
// Runs the log tool for the window: the caller still waits for the result, but the window
// keeps painting; after half a second a window-modal progress dialog shows the file, the
// bytes received and the time taken, with Cancel.
#include "logquery/log_tool.h"
#include "platform/process_runner.h"

#include <functional>

class QProgressDialog;
class QWidget;

namespace tarnbeck {

class InteractiveLogToolRunner final : public LogToolRunner {
 public:
  explicit InteractiveLogToolRunner(QWidget* window) : window_(window) {}
  LogRunOutcome run(const QStringList& arguments, OutputSink& sink, const QString& subject) override;

  // Called when the progress dialog appears (tests press Cancel through it).
  std::function<void(QProgressDialog&)> onProgressShown;
  // How long a run goes before the dialog appears, in milliseconds.
  int progressDelayMs = 500;

  // Whether a run is under way, and a way to stop it (closing the window asks this).
  bool running() const { return control_ != nullptr; }
  void cancel();

 private:
  QWidget* window_;
  RunControl* control_ = nullptr;
};

}  // namespace tarnbeck
