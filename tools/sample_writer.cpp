#include "tools/sample_writer.h"

#include "platform/property_list.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTimeZone>

#include <random>

namespace tarnbeck::sample {
namespace {

QByteArray processLines(long long total, const std::vector<ProcessShare>& processes) {
  QByteArray lines;
  for (const ProcessShare& p : processes) {
    const double percent = total > 0 ? static_cast<double>(p.bytes) * 100.0 / static_cast<double>(total) : 0.0;
    lines += QString::asprintf("    - [ %10lld, %5.1f, ", p.bytes, percent).toUtf8() + p.path.toUtf8() + " ]\n";
  }
  return lines;
}

bool write(const QString& path, const QByteArray& content, qint64 modifiedSeconds = 0) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  if (file.write(content) != content.size()) return false;
  // Written bytes must reach the file before its time is set, or closing moves it again.
  file.flush();
  if (modifiedSeconds > 0) file.setFileTime(QDateTime::fromSecsSinceEpoch(modifiedSeconds), QFileDevice::FileModificationTime);
  return true;
}

const char* const kPaths[] = {
    "/System/Library/PrivateFrameworks/SkyLight.framework/Versions/A/Resources/WindowServer",
    "/kernel",
    "/usr/libexec/trustd",
    "/usr/sbin/mDNSResponder",
    "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome",
    "/usr/libexec/locationd",
    "/System/Library/CoreServices/powerd.bundle/powerd",
    "/usr/libexec/sharingd",
    "/Applications/Xcode.app/Contents/MacOS/Xcode",
    "/usr/sbin/bluetoothd",
    "/System/Library/Frameworks/CoreServices.framework/Frameworks/Metadata.framework/Versions/A/Support/mds_stores",
    "/usr/libexec/runningboardd",
    "/Library/Application Support/Microsoft/MAU2.0/Microsoft AutoUpdate.app/Contents/MacOS/Microsoft AU Daemon.app/Contents/MacOS/Microsoft AU Daemon",
    "/usr/libexec/symptomsd",
    "/System/Library/CoreServices/Finder.app/Contents/MacOS/Finder",
    "/usr/sbin/cfprefsd",
    "/usr/libexec/airportd",
    "/System/Library/CoreServices/loginwindow.app/Contents/MacOS/loginwindow",
    "/usr/libexec/nsurlsessiond",
    "/usr/sbin/syslogd",
    "/usr/libexec/backupd",
    "/Applications/Safari.app/Contents/MacOS/Safari",
};

QString stamp(qint64 unixSeconds) {
  // The daemon writes local time with the offset glued on; the sample is written in UTC-8.
  const QDateTime local = QDateTime::fromSecsSinceEpoch(unixSeconds, QTimeZone(-8 * 3600));
  return local.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral("-0800");
}

}  // namespace

QByteArray fileRotateRecord(const QString& file, const QString& time, long long total,
                            const std::vector<ProcessShare>& processes) {
  return "--- !logd statistics record\ntype  : File Rotate\nfile  : " + file.toUtf8() + "\ntime  : " + time.toUtf8() +
         "\ntotal : " + QByteArray::number(total) + "\nprocs :\n" + processLines(total, processes) + "\n";
}

QByteArray memoryRolloverRecord(const QString& time, long long total, const std::vector<ProcessShare>& processes) {
  return "--- !logd statistics record\ntype  : Memory Rollover\ntime  : " + time.toUtf8() + "\ntotal : " +
         QByteArray::number(total) + "\nprocs :\n" + processLines(total, processes) + "\n";
}

QByteArray purgeRecords(const QString& time) {
  const QByteArray t = time.toUtf8();
  return "--- !logd purge record\ntype  : Persist Periodic Compaction\ngoal  : 0\ntime  : " + t +
         "\nfiles :\n    - Persist/0000000000000001.tracev3\ncount : 3\nsize  : 4048432\nkept  : 7 files, 1954488 bytes\n\n"
         "--- !logd purge record\ntype  : Special Periodic Compaction\ngoal  : 0\ntime  : " + t +
         "\nfiles :\n    - [ Special/0000000000000014.tracev3, 318040, 192096 ]\n"
         "    - [ Special/0000000000000015.tracev3, 316624, 186672 ]\ndone  : " + t + "\n\n"
         "--- !logd uuid purge records\ntime  : " + t +
         "\nuuids :\n    - 000C4E9F-E0D9-371D-B304-83BA37460724\n    - 0A1B2C3D-0000-1111-2222-333344445555\n"
         "files_in_use: 1829\nfiles_locked: 0\nfiles_recent: 43\n\n";
}

std::vector<ProcessShare> typicalProcesses(long long total, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<std::size_t> order(std::size(kPaths));
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::shuffle(order.begin(), order.end(), random);
  std::vector<ProcessShare> processes;
  long long left = total * 9 / 10;
  for (int i = 0; i < 20; ++i) {
    const long long bytes = std::max<long long>(1, left / (3 + static_cast<long long>(random() % 3)));
    processes.push_back({bytes, QString::fromUtf8(kPaths[order[static_cast<std::size_t>(i)]])});
    left -= bytes;
  }
  std::sort(processes.begin(), processes.end(), [](const ProcessShare& a, const ProcessShare& b) { return a.bytes > b.bytes; });
  return processes;
}

bool writeSampleBundle(const QString& path) {
  const qint64 start = 1550620800;  // 2019-02-20 00:00:00 UTC
  std::mt19937 random(2019);
  QByteArray older, newer;
  int persist = 1, special = 1;
  qint64 now = start;
  for (int record = 0; record < 24; ++record) {
    now += 3600 + static_cast<qint64>(random() % 5400);
    const long long total = 8000000 + static_cast<long long>(random() % 30000000);
    QByteArray& target = record < 12 ? older : newer;
    if (record % 6 == 3) target += purgeRecords(stamp(now - 60));
    if (record % 5 == 4) {
      target += memoryRolloverRecord(stamp(now), total, typicalProcesses(total, static_cast<unsigned>(record)));
    } else if (record % 3 == 2) {
      target += fileRotateRecord(QStringLiteral("Special/%1.tracev3").arg(special++, 16, 16, QLatin1Char('0')), stamp(now),
                                 total / 4, typicalProcesses(total / 4, static_cast<unsigned>(record)));
    } else {
      target += fileRotateRecord(QStringLiteral("Persist/%1.tracev3").arg(persist++, 16, 16, QLatin1Char('0')), stamp(now),
                                 total, typicalProcesses(total, static_cast<unsigned>(record)));
    }
  }
  bool ok = write(path + QStringLiteral("/Extra/logdata.statistics.1.txt"), older) &&
            write(path + QStringLiteral("/Extra/logdata.statistics.0.txt"), newer) &&
            write(path + QStringLiteral("/Extra/shutdown.log"), "SIGTERM: [1550620800] All buffers flushed\n");
  const QVariantMap ttl{{QStringLiteral("ContinuousTime"), QVariant::fromValue<quint64>(123456789)},
                        {QStringLiteral("UUID"), QStringLiteral("5E0C3B4A-8D7F-4B8E-9A31-0C7A5C2B1D10")}};
  ok = ok && writeXmlPlist(path + QStringLiteral("/Extra/version.plist"),
                           {{QStringLiteral("Identifier"), QStringLiteral("8A1F2E3D-4C5B-6A79-8877-665544332211")},
                            {QStringLiteral("Version"), QVariant::fromValue<qint64>(7)},
                            {QStringLiteral("ttl01"), ttl}, {QStringLiteral("ttl03"), ttl}});
  // Log files: the ones still present (some named in the statistics, some later), with
  // sizes and modification times that vary.
  for (int i = 3; i < persist + 2; ++i) {
    const qint64 modified = start + i * 5400;
    ok = ok && write(path + QStringLiteral("/Persist/%1.tracev3").arg(i, 16, 16, QLatin1Char('0')),
                     QByteArray(static_cast<int>(4096 + random() % 200000), '\0'), modified);
  }
  for (int i = 2; i < special + 1; ++i) {
    ok = ok && write(path + QStringLiteral("/Special/%1.tracev3").arg(i, 16, 16, QLatin1Char('0')),
                     QByteArray(static_cast<int>(2048 + random() % 50000), '\0'), start + i * 9000);
  }
  ok = ok && write(path + QStringLiteral("/logdata.LiveData.tracev3"), QByteArray(65536, '\0'), start + 40 * 3600);
  ok = ok && write(path + QStringLiteral("/timesync/0000000000000002.timesync"), QByteArray(8880, '\0'), start);
  ok = ok && write(path + QStringLiteral("/dsc/6950044BE0E3321BBDA46924F3C09DED"), QByteArray(1024, '\0'), start);
  for (const char* folder : {"00", "3F", "AE", "FF"}) {
    ok = ok && write(path + QStringLiteral("/") + QString::fromLatin1(folder) + QStringLiteral("/E6600E9E43FF999EDE5CD8D8F2C3F1"),
                     QByteArray(512, '\0'), start);
  }
  const QVariantMap timeRef{{QStringLiteral("ContinuousTime"), QVariant::fromValue<quint64>(987654321)},
                            {QStringLiteral("UUID"), QStringLiteral("5E0C3B4A-8D7F-4B8E-9A31-0C7A5C2B1D10")}};
  ok = ok && writeXmlPlist(path + QStringLiteral("/Info.plist"),
                           {{QStringLiteral("EndTimeRef"), timeRef},
                            {QStringLiteral("OSArchiveVersion"), QVariant::fromValue<qint64>(3)},
                            {QStringLiteral("OSLoggingSupportProject"), QStringLiteral("libtrace-829.70.1")},
                            {QStringLiteral("OSLoggingSupportVersion"), 829.7},
                            {QStringLiteral("PersistMetadata"), QVariantMap{{QStringLiteral("OldestTimeRef"), timeRef}}}});
  return ok;
}

bool writeSampleStore(const QString& path) {
  const qint64 start = 1550620800;
  bool ok = write(path + QStringLiteral("/uuidtext/00/AE6600E9E43FF999EDE5CD8D8F2C3F"), QByteArray(300, 'u'), start) &&
            write(path + QStringLiteral("/uuidtext/dsc/6950044BE0E3321BBDA46924F3C09DED"), QByteArray(200, 'd'), start) &&
            write(path + QStringLiteral("/diagnostics/Persist/0000000000000001.tracev3"), QByteArray(4096, 'p'), start + 600) &&
            write(path + QStringLiteral("/diagnostics/Special/0000000000000001.tracev3"), QByteArray(1024, 's'), start + 900) &&
            write(path + QStringLiteral("/diagnostics/timesync/0000000000000001.timesync"), QByteArray(100, 't'), start) &&
            write(path + QStringLiteral("/diagnostics/HighVolume/0000000000000001.tracev3"), QByteArray(10, 'h'), start) &&
            write(path + QStringLiteral("/diagnostics/logdata.statistics.0.txt"),
                  fileRotateRecord(QStringLiteral("Persist/0000000000000001.tracev3"), QStringLiteral("2019-02-19 16:27:24-0800"),
                                   4096, typicalProcesses(4096, 1)),
                  start) &&
            write(path + QStringLiteral("/diagnostics/shutdown.log"), "SIGTERM\n", start);
  const QVariantMap ttl{{QStringLiteral("ContinuousTime"), QVariant::fromValue<quint64>(42)},
                        {QStringLiteral("UUID"), QStringLiteral("11111111-2222-3333-4444-555555555555")}};
  ok = ok && writeXmlPlist(path + QStringLiteral("/diagnostics/version.plist"),
                           {{QStringLiteral("Version"), QVariant::fromValue<qint64>(7)},
                            {QStringLiteral("Identifier"), QStringLiteral("AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE")},
                            {QStringLiteral("ttl01"), ttl}});
  return ok;
}

}  // namespace tarnbeck::sample
