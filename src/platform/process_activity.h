#pragma once
// A user-initiated activity for the duration of long work ("opening logarchive",
// "running log command", ...). On macOS it keeps the machine from idle sleep with a power
// assertion; elsewhere it only records itself, so that tests can see it.
#include <QString>
#include <QStringList>

#include <functional>

namespace tarnbeck {

class ProcessActivity {
 public:
  explicit ProcessActivity(const QString& reason);  // beginActivity
  ~ProcessActivity();                               // endActivity
  ProcessActivity(const ProcessActivity&) = delete;
  ProcessActivity& operator=(const ProcessActivity&) = delete;

  // Every begin and end is reported here ("begin:REASON", "end:REASON"), for tests.
  static void setObserver(std::function<void(const QString& event)> observer);

 private:
  QString reason_;
  unsigned assertion_ = 0;
};

}  // namespace tarnbeck
