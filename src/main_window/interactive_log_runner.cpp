#include "main_window/interactive_log_runner.h"

#include "platform/process_runner.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QLocale>
#include <QProgressDialog>
#include <QTimer>

#include <atomic>
#include <thread>

namespace tarnbeck {
namespace {

QString progressText(const QString& subject, std::uint64_t bytes, qint64 elapsedMs) {
  return QObject::tr("Running the log tool on %1\n%2 received, %3 s")
      .arg(subject, QLocale().formattedDataSize(static_cast<qint64>(bytes)))
      .arg(static_cast<double>(elapsedMs) / 1000.0, 0, 'f', 1);
}

}  // namespace

void InteractiveLogToolRunner::cancel() {
  if (control_) control_->cancelRequested.store(true);
}

LogRunOutcome InteractiveLogToolRunner::run(const QStringList& arguments, OutputSink& sink, const QString& subject) {
  const QString program = logToolPath();
  RunControl control;
  control_ = &control;
  ProcessResult result;
  std::atomic<bool> done{false};
  QEventLoop loop;
  QElapsedTimer clock;
  clock.start();

  std::thread worker([&] {
    result = runProcess(program, arguments, sink, &control);
    done.store(true);
    QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
  });

  // First only painting, no input: a short run leaves no trace of a dialog.
  QTimer delay;
  delay.setSingleShot(true);
  QObject::connect(&delay, &QTimer::timeout, &loop, &QEventLoop::quit);
  delay.start(progressDelayMs);
  // An application that is quitting ends every event loop at once: stop the child then.
  auto wait = [&](QEventLoop::ProcessEventsFlags flags) {
    if (loop.exec(flags) < 0) control.cancelRequested.store(true);
  };
  while (!done.load() && delay.isActive()) wait(QEventLoop::ExcludeUserInputEvents);
  delay.stop();

  if (!done.load()) {
    QProgressDialog dialog(progressText(subject, 0, clock.elapsed()), QObject::tr("Cancel"), 0, 0, window_);
    dialog.setWindowTitle(QObject::tr("Log tool"));
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(0);
    QObject::connect(&dialog, &QProgressDialog::canceled, [&control] { control.cancelRequested.store(true); });
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
      dialog.setLabelText(progressText(subject, control.bytesReceived.load(), clock.elapsed()));
    });
    tick.start(200);
    dialog.show();
    if (onProgressShown) onProgressShown(dialog);
    while (!done.load()) wait(QEventLoop::AllEvents);
    tick.stop();
  }
  worker.join();
  control_ = nullptr;
  return outcomeOf(program, result);
}

}  // namespace tarnbeck
