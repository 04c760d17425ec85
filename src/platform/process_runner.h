#pragma once
// Runs a child process with an argument list and takes its standard output whole into a
// sink. Standard input and standard error are inherited. Blocking; the caller may run it
// on a worker thread and stop it through the control block.
#include "platform/byte_buffer.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <cstdint>

namespace tarnbeck {

struct RunControl {
  std::atomic<bool> cancelRequested{false};
  std::atomic<std::uint64_t> bytesReceived{0};
};

struct ProcessResult {
  enum class Outcome { Exited, FailedToStart, Cancelled };
  Outcome outcome = Outcome::Exited;
  // Exit status, or the signal number when the child was ended by a signal.
  int status = 0;
  // Why the program could not be started (the system's reason).
  QString startError;
  std::uint64_t bytes = 0;
};

ProcessResult runProcess(const QString& program, const QStringList& arguments, OutputSink& sink,
                         RunControl* control = nullptr);

}  // namespace tarnbeck
