#pragma once
// Statistics records in the daemon's byte layout, and sample log archives built from them.
#include <QByteArray>
#include <QString>

#include <vector>

namespace tarnbeck::sample {

struct ProcessShare {
  long long bytes;
  QString path;  // the full executable path, spaces and all
};

// "--- !logd statistics record\ntype  : File Rotate\nfile  : FILE\ntime  : TIME\ntotal : N\n"
// "procs :\n" then one "    - [ %10zu, %5.1f, %s ]\n" per process, then an empty line.
// `time` is "yyyy-MM-dd HH:mm:ss-0800" (no space before the zone).
QByteArray fileRotateRecord(const QString& file, const QString& time, long long total,
                            const std::vector<ProcessShare>& processes);
QByteArray memoryRolloverRecord(const QString& time, long long total, const std::vector<ProcessShare>& processes);
// Records of other kinds that share the files: a Persist and a Special purge record (the
// latter with file lines shaped like process lines) and a uuid purge record.
QByteArray purgeRecords(const QString& time);

// 20 processes with full paths (some with spaces), largest first, summing to under `total`.
std::vector<ProcessShare> typicalProcesses(long long total, unsigned seed);

// Writes a bundle shaped like a real one: Info.plist, Extra/ with two statistics files
// (File Rotate records for Persist and Special, Memory Rollover records, purge records
// between them) and version.plist, Persist/ and Special/ with .tracev3 files of varied
// sizes and modification times, timesync/, dsc/ and uuidtext-style folders.
bool writeSampleBundle(const QString& path);

// Writes a live-store-shaped folder (uuidtext/ and diagnostics/) for assembling bundles.
bool writeSampleStore(const QString& path);

}  // namespace tarnbeck::sample
