#include "platform/process_runner.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace tarnbeck {
namespace {

constexpr std::size_t kReadChunk = 1 << 20;

int waitForChild(pid_t pid) {
  int raw = 0;
  while (waitpid(pid, &raw, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  if (WIFEXITED(raw)) return WEXITSTATUS(raw);
  if (WIFSIGNALED(raw)) return WTERMSIG(raw);
  return -1;
}

// Ends a child that was asked to stop: a polite signal first, then a hard one.
// The child leads its own process group, so whatever it started ends with it.
void endChild(pid_t pid) {
  kill(-pid, SIGTERM);
  for (int i = 0; i < 100; ++i) {
    int raw = 0;
    pid_t done = waitpid(pid, &raw, WNOHANG);
    if (done == pid) return;
    usleep(10000);
  }
  kill(-pid, SIGKILL);
  waitForChild(pid);
}

}  // namespace

ProcessResult runProcess(const QString& program, const QStringList& arguments, OutputSink& sink, RunControl* control) {
  ProcessResult result;
  int fds[2];
  if (pipe(fds) != 0) {
    result.outcome = ProcessResult::Outcome::FailedToStart;
    result.startError = QString::fromLocal8Bit(std::strerror(errno));
    return result;
  }
  fcntl(fds[0], F_SETFD, FD_CLOEXEC);
#ifdef F_SETPIPE_SZ
  // A larger pipe lets the child write on while the reader is busy: fewer switches.
  fcntl(fds[0], F_SETPIPE_SZ, 1 << 20);
#endif

  std::vector<std::string> storage;
  storage.reserve(static_cast<std::size_t>(arguments.size()) + 1);
  storage.push_back(program.toStdString());
  for (const QString& argument : arguments) storage.push_back(argument.toStdString());
  std::vector<char*> argv;
  for (std::string& s : storage) argv.push_back(s.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, fds[1]);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);
  pid_t pid = 0;
  const int spawnError = posix_spawn(&pid, storage[0].c_str(), &actions, &attributes, argv.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  close(fds[1]);
  if (spawnError != 0) {
    close(fds[0]);
    result.outcome = ProcessResult::Outcome::FailedToStart;
    result.startError = QString::fromLocal8Bit(std::strerror(spawnError));
    return result;
  }

  // Read to the end before waiting, so a child writing more than a pipe holds never blocks.
  for (;;) {
    if (control && control->cancelRequested.load()) {
      close(fds[0]);
      endChild(pid);
      result.outcome = ProcessResult::Outcome::Cancelled;
      return result;
    }
    pollfd waitFor{fds[0], POLLIN, 0};
    int ready = poll(&waitFor, 1, control ? 50 : -1);
    if (ready < 0 && errno != EINTR) break;
    if (ready <= 0) continue;
    std::span<char> space = sink.prepare(kReadChunk);
    ssize_t got = read(fds[0], space.data(), space.size());
    if (got < 0) {
      if (errno == EINTR || errno == EAGAIN) continue;
      break;
    }
    if (got == 0) break;
    sink.commit(static_cast<std::size_t>(got));
    result.bytes += static_cast<std::uint64_t>(got);
    if (control) control->bytesReceived.store(result.bytes);
  }
  close(fds[0]);
  result.status = waitForChild(pid);
  result.outcome = ProcessResult::Outcome::Exited;
  return result;
}

}  // namespace tarnbeck
