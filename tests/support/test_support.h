#pragma once
// Helpers shared by the tests: temporary folders, files, the fake log tool, real samples.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace tarnbeck::test {

// Keeps the settings of this test run in a temporary folder, never the user's own.
void isolateUserDefaults();
// Removes every stored key (a fresh start between tests).
void clearUserDefaults();

// Sets the process's time zone (TZ) for the life of the object.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* zone);
  ~ScopedTimeZone();

 private:
  std::optional<QByteArray> previous_;
};

void writeFile(const QString& path, const QByteArray& content);
QByteArray readFile(const QString& path);
void setModificationTime(const QString& path, qint64 unixSeconds);

// The folder of real samples beside the repository, if it is there.
std::optional<QString> realDataPath(const QString& relative);

// The fake log tool, in place of /usr/bin/log while the object lives. Every run it is
// given must be expected, with its exact argument list.
class FakeLogTool {
 public:
  FakeLogTool();
  ~FakeLogTool();

  // The n-th run (from 1) must have these arguments; it prints `output` and exits with `status`.
  void expectRun(int run, const QStringList& arguments, const QByteArray& output = {}, int status = 0);
  // Every run not otherwise described.
  void expectEveryRun(const QStringList& arguments, const QByteArray& output = {}, int status = 0);
  void sleepBeforeOutput(int run, int milliseconds);
  void generateBytes(int run, qint64 bytes);

  // The argument lists of the runs so far.
  QList<QStringList> calls() const;
  QString directory() const { return dir_.path(); }

 private:
  void put(const QString& name, const QByteArray& content);
  QTemporaryDir dir_;
  QByteArray previousTool_;
  QByteArray previousDir_;
};

// Runs tarnbeck-cli with arguments (and optional standard input); returns the exit status.
struct CliResult {
  int status = -1;
  QByteArray out;
  QByteArray err;
};
CliResult runCli(const QStringList& arguments, const QByteArray& input = {});

}  // namespace tarnbeck::test
