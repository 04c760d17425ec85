#include "support/test_support.h"

#include "platform/date_text.h"
#include "platform/user_defaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>

#include <gtest/gtest.h>

#include <cstdlib>

namespace tarnbeck::test {

void isolateUserDefaults() {
  static QTemporaryDir folder;
  UserDefaults::useLocation(folder.path());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
}

void clearUserDefaults() {
  UserDefaults& defaults = UserDefaults::standard();
  for (const QString& key : defaults.dictionaryRepresentation().keys()) defaults.removeObject(key);
}

ScopedTimeZone::ScopedTimeZone(const char* zone) {
  if (qEnvironmentVariableIsSet("TZ")) previous_ = qgetenv("TZ");
  qputenv("TZ", zone);
  resetLocalTimeZone();
}

ScopedTimeZone::~ScopedTimeZone() {
  if (previous_) {
    qputenv("TZ", *previous_);
  } else {
    qunsetenv("TZ");
  }
  resetLocalTimeZone();
}

void writeFile(const QString& path, const QByteArray& content) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
  ASSERT_EQ(file.write(content), content.size());
}

QByteArray readFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return QByteArray();
  return file.readAll();
}

void setModificationTime(const QString& path, qint64 unixSeconds) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(unixSeconds), QFileDevice::FileModificationTime));
}

std::optional<QString> realDataPath(const QString& relative) {
  const QString path = QStringLiteral(REALDATA_DIR) + QStringLiteral("/") + relative;
  if (!QFileInfo::exists(path)) return std::nullopt;
  return path;
}

FakeLogTool::FakeLogTool() {
  previousTool_ = qgetenv("TARNBECK_LOG_TOOL");
  previousDir_ = qgetenv("FAKE_LOG_DIR");
  qputenv("TARNBECK_LOG_TOOL", FAKE_LOG_PATH);
  qputenv("FAKE_LOG_DIR", dir_.path().toLocal8Bit());
}

FakeLogTool::~FakeLogTool() {
  if (previousTool_.isEmpty()) {
    qunsetenv("TARNBECK_LOG_TOOL");
  } else {
    qputenv("TARNBECK_LOG_TOOL", previousTool_);
  }
  if (previousDir_.isEmpty()) {
    qunsetenv("FAKE_LOG_DIR");
  } else {
    qputenv("FAKE_LOG_DIR", previousDir_);
  }
}

void FakeLogTool::put(const QString& name, const QByteArray& content) { writeFile(dir_.filePath(name), content); }

void FakeLogTool::expectRun(int run, const QStringList& arguments, const QByteArray& output, int status) {
  const QString n = QString::number(run);
  put(n + QStringLiteral(".expect"), arguments.join(QChar(0x1f)).toUtf8());
  put(n + QStringLiteral(".out"), output);
  put(n + QStringLiteral(".status"), QByteArray::number(status));
}

void FakeLogTool::expectEveryRun(const QStringList& arguments, const QByteArray& output, int status) {
  put(QStringLiteral("all.expect"), arguments.join(QChar(0x1f)).toUtf8());
  put(QStringLiteral("all.out"), output);
  put(QStringLiteral("all.status"), QByteArray::number(status));
}

void FakeLogTool::sleepBeforeOutput(int run, int milliseconds) {
  put(QString::number(run) + QStringLiteral(".sleep"), QByteArray::number(milliseconds));
}

void FakeLogTool::generateBytes(int run, qint64 bytes) { put(QString::number(run) + QStringLiteral(".bytes"), QByteArray::number(bytes)); }

QList<QStringList> FakeLogTool::calls() const {
  QList<QStringList> result;
  const QByteArray text = readFile(dir_.filePath(QStringLiteral("calls.txt")));
  for (const QByteArray& line : text.split('\n')) {
    if (line.isEmpty()) continue;
    result << QString::fromUtf8(line).split(QChar(0x1f));
  }
  return result;
}

CliResult runCli(const QStringList& arguments, const QByteArray& input) {
  QProcess process;
  process.start(QStringLiteral(TARNBECK_CLI_PATH), arguments);
  CliResult result;
  if (!process.waitForStarted(10000)) return result;
  if (!input.isEmpty()) process.write(input);
  process.closeWriteChannel();
  process.waitForFinished(120000);
  result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  result.out = process.readAllStandardOutput();
  result.err = process.readAllStandardError();
  return result;
}

}  // namespace tarnbeck::test
