// Tarnbeck's benchmarks. Each section runs in a child process of its own (so that its peak
// memory is its own) and prints its figures beside the limit they are measured against.
//   tarnbeck-bench            all sections
//   tarnbeck-bench SECTION    one of: styling runner open dates binning
#include "chart/binning.h"
#include "logquery/extract_dates.h"
#include "logquery/log_entries.h"
#include "logquery/styling.h"
#include "platform/byte_buffer.h"
#include "platform/date_text.h"
#include "platform/process_runner.h"
#include "sources/open_source.h"
#include "tools/sample_writer.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

using namespace tarnbeck;

namespace {

using Clock = std::chrono::steady_clock;

// Best of a few runs, in seconds.
double timeBest(int runs, const std::function<void()>& work) {
  double best = 1e30;
  for (int i = 0; i < runs; ++i) {
    const auto start = Clock::now();
    work();
    best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
  }
  return best;
}

// Resident set size and its peak, in bytes, from the kernel's account of this process.
long long statusField(const char* field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind(field, 0) == 0) return std::atoll(line.c_str() + std::strlen(field)) * 1024;
  }
  return -1;
}

// Starts the kernel's peak-memory account afresh (VmHWM), so a peak is that of what follows.
void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

void row(const char* what, double seconds, double bytes, double items, const char* unit) {
  std::printf("  %-44s %9.1f ms %9.1f MB/s %12.0f %s/s\n", what, seconds * 1000, bytes / seconds / 1e6, items / seconds, unit);
}

std::string toolJson(int entries) {
  std::mt19937 random(5);
  std::string json = "[";
  for (int i = 0; i < entries; ++i) {
    std::string message(560 + random() % 80, 'm');
    for (std::size_t k = 0; k < message.size(); k += 7) message[k] = static_cast<char>('a' + random() % 26);
    char head[1024];
    std::snprintf(head, sizeof head,
                  "%s{\n  \"traceID\" : %llu,\n  \"eventMessage\" : \"%s\",\n  \"eventType\" : \"logEvent\",\n"
                  "  \"source\" : null,\n  \"formatString\" : \"%%{public}s\",\n  \"activityIdentifier\" : 0,\n"
                  "  \"subsystem\" : \"com.apple.network\",\n  \"category\" : \"connection\",\n  \"threadID\" : %d,\n"
                  "  \"senderImageUUID\" : \"8B4C1E7A-52B9-3C3B-9E77-1E4A9C2D3F10\",\n",
                  i ? "," : "", 9223372036854775808ULL + static_cast<unsigned long long>(i), message.c_str(), 1000 + i);
    json += head;
    std::snprintf(head, sizeof head,
                  "  \"processImagePath\" : \"\\/usr\\/libexec\\/nsurlsessiond\",\n  \"senderImagePath\" : \"\\/System\\/Library\\/"
                  "Frameworks\\/Network.framework\\/Versions\\/A\\/Network\",\n  \"timestamp\" : \"2025-07-27 15:47:%02d.%06d-0400\",\n"
                  "  \"machTimestamp\" : %llu,\n  \"messageType\" : \"Default\",\n  \"processImageUUID\" : "
                  "\"1D2C3B4A-0000-1111-2222-333344445555\",\n  \"processID\" : %d,\n  \"senderProgramCounter\" : %llu,\n"
                  "  \"timezoneName\" : \"\"\n}",
                  i % 60, i % 1000000, 18446744073709551000ULL + static_cast<unsigned long long>(i % 600), 400 + i % 50,
                  12345678901234567890ULL);
    json += head;
  }
  json += "]";
  return json;
}

void stylingSection() {
  std::printf("Styling 100,000 JSON entries (parse, then style \"0h 9 4g 11f 10\")\n");
  const std::string json = toolJson(100000);
  const double mb = static_cast<double>(json.size());
  const double parse = timeBest(3, [&] { benchmark::DoNotOptimize(nlohmann::json::parse(json)); });
  LogEntries entries = parseLogEntries(json);
  const QString style = QStringLiteral("0h 9 4g 11f 10");
  const double style1 = timeBest(3, [&] { benchmark::DoNotOptimize(styleLogEntries(*entries, style, std::nullopt)); });
  const double filtered = timeBest(3, [&] { benchmark::DoNotOptimize(styleLogEntries(*entries, style, QStringLiteral("ERROR"))); });
  const double both = timeBest(3, [&] {
    LogEntries parsed = parseLogEntries(json);
    benchmark::DoNotOptimize(styleLogEntries(*parsed, style, std::nullopt));
  });
  std::printf("  JSON size %.1f MB\n", mb / 1e6);
  row("bare JSON parse (the limit)", parse, mb, 100000, "entries");
  row("styling alone", style1, mb, 100000, "entries");
  row("styling with a plain filter", filtered, mb, 100000, "entries");
  row("parse + styling, as the app does", both, mb, 100000, "entries");
  std::printf("  styling / bare parse: %.2fx; (parse + styling) / bare parse: %.2fx (target: styling <= 3x)\n\n", style1 / parse,
              both / parse);
}

// Writes `bytes` of syslog-style lines to standard output: the child of the runner benchmark.
int printLines(long long bytes) {
  static const char line[] = "2018-03-04 05:06:07.123456+0100  localhost kernel[0]: (AppleACPIPlatform) a generated line\n";
  std::string block;
  while (block.size() < (1 << 20)) block += line;
  for (long long left = bytes; left > 0;) {
    const long long n = std::min<long long>(left, static_cast<long long>(block.size()));
    if (std::fwrite(block.data(), 1, static_cast<std::size_t>(n), stdout) != static_cast<std::size_t>(n)) return 1;
    left -= n;
  }
  return 0;
}

void runnerSection(const QString& self) {
  constexpr long long kBytes = 200LL * 1000 * 1000;
  std::printf("Running a child that prints 200 MB\n");
  const QStringList args{QStringLiteral("print-lines"), QString::number(kBytes)};
  // The child's own run time: its output drained and dropped as fast as a reader can.
  const double own = timeBest(3, [&] {
    CountingSink sink;
    runProcess(self, args, sink);
  });
  resetPeak();
  const long long rssBefore = statusField("VmRSS:");
  double kept = 0;
  std::size_t size = 0, capacity = 0;
  kept = timeBest(3, [&] {
    ByteBuffer buffer;
    runProcess(self, args, buffer);
    size = buffer.size();
    capacity = buffer.capacity();
  });
  const long long peak = statusField("VmHWM:") - rssBefore;
  row("child alone, output drained (the limit)", own, kBytes, kBytes / 91.0, "lines");
  row("runProcess keeping the whole output", kept, kBytes, kBytes / 91.0, "lines");
  std::printf("  overhead over the child's own run: %.1f %% (target <= 5 %%)\n", (kept / own - 1) * 100);
  std::printf("  output %zu bytes, buffer %zu bytes, peak memory growth %.2fx the output (target <= 1.2x)\n\n", size, capacity,
              static_cast<double>(peak) / static_cast<double>(kBytes));
}

void openSection() {
  std::printf("Opening a bundle of 1,000 log files and 5,000 statistics records\n");
  QTemporaryDir dir;
  const QString bundle = dir.filePath(QStringLiteral("Big.logarchive"));
  QByteArray statistics[2];
  for (int r = 0; r < 5000; ++r) {
    const long long total = 1000000 + r;
    const QString time = QStringLiteral("2019-02-%1 %2:%3:%4-0800").arg(10 + r / 1000).arg(r / 60 % 24, 2, 10, QLatin1Char('0'))
                             .arg(r % 60, 2, 10, QLatin1Char('0')).arg(r % 7, 2, 10, QLatin1Char('0'));
    QByteArray& file = statistics[r % 2];
    if (r % 10 == 9) {
      file += sample::memoryRolloverRecord(time, total, sample::typicalProcesses(total, static_cast<unsigned>(r)));
    } else {
      file += sample::fileRotateRecord(QStringLiteral("%1/%2.tracev3").arg(r % 3 ? "Persist" : "Special").arg(r, 16, 16, QLatin1Char('0')),
                                       time, total, sample::typicalProcesses(total, static_cast<unsigned>(r)));
    }
    if (r % 50 == 0) file += sample::purgeRecords(time);
  }
  auto write = [](const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(bytes);
  };
  write(bundle + QStringLiteral("/Extra/logdata.statistics.0.txt"), statistics[0]);
  write(bundle + QStringLiteral("/Extra/logdata.statistics.1.txt"), statistics[1]);
  for (int i = 0; i < 1000; ++i) {
    write(bundle + QStringLiteral("/%1/%2.tracev3").arg(i % 4 ? "Persist" : "Special").arg(i, 16, 16, QLatin1Char('0')), QByteArray(256, 'x'));
  }
  const double bytes = statistics[0].size() + statistics[1].size();
  const double limit = timeBest(5, [&] {
    long long seen = 0;
    for (const char* folder : {"", "/Persist", "/Special", "/Extra"}) {
      for (const QFileInfo& info : QDir(bundle + QString::fromLatin1(folder)).entryInfoList(QDir::Files | QDir::Hidden)) {
        seen += info.size() + info.lastModified().toMSecsSinceEpoch();
        if (info.suffix() == QStringLiteral("txt")) {
          QFile f(info.filePath());
          f.open(QIODevice::ReadOnly);
          seen += f.readAll().size();
        }
      }
    }
    benchmark::DoNotOptimize(seen);
  });
  QString text;
  const double open = timeBest(5, [&] { text = openSource(bundle, {}).outputText; });
  std::printf("  statistics %.1f MB, output text %.1f MB (%lld lines)\n", bytes / 1e6, text.size() * 2 / 1e6,
              static_cast<long long>(text.count(u'\n')));
  row("listing and reading the files (the limit)", limit, bytes, 1000, "files");
  row("opening to the final output text", open, bytes, 5000, "records");
  std::printf("  opening / limit: %.2fx (target <= 2x)\n\n", open / limit);
}

void datesSection(const QString& self) {
  constexpr int kLines = 2000000;
  std::printf("Reading entry times from 2,000,000 syslog-style lines\n");
  std::string text = "Timestamp                       (process)[PID]\n";
  std::mt19937 random(3);
  for (int i = 0; i < kLines; ++i) {
    char line[256];
    std::snprintf(line, sizeof line, "2023-05-21 %02d:%02d:%02d.%06d-0700  localhost kernel[0]: (AppleACPIPlatform) "
                  "AppleACPIPlatformPower Wake reason: RTC XDCI CNVW (Alarm) %u\n",
                  i / 3600000 % 24, i / 60000 % 60, i / 1000 % 60, i % 1000000, static_cast<unsigned>(random()));
    text += line;
  }
  const double mb = static_cast<double>(text.size());
  const double scan = timeBest(3, [&] {
    std::size_t lines = 0;
    for (const char* p = text.data(); (p = static_cast<const char*>(std::memchr(p, '\n', text.data() + text.size() - p))); ++p) ++lines;
    benchmark::DoNotOptimize(lines);
  });
  std::vector<Date> dates;
  const double fast = timeBest(3, [&] { dates = extractDates(text); });
  // The straightforward port: decode, split into lines and words, and let ICU read each stamp.
  const int sampleLines = 100000;
  const std::size_t sampleEnd = [&] {
    std::size_t at = 0;
    for (int i = 0; i <= sampleLines; ++i) at = text.find('\n', at) + 1;
    return at;
  }();
  const double icuSample = timeBest(1, [&] {
    std::size_t found = 0;
    for (std::size_t at = 0; at < sampleEnd;) {
      const std::size_t end = text.find('\n', at);
      const std::string_view line(text.data() + at, end - at);
      const std::size_t second = line.find(' ', line.find(' ') + 1);
      if (second != std::string_view::npos && parseToolTimestampWithIcu(line.substr(0, second))) ++found;
      at = end + 1;
    }
    benchmark::DoNotOptimize(found);
  });
  const double icu = icuSample * kLines / sampleLines;
  row("bare newline scan (the limit)", scan, mb, kLines, "lines");
  row("extractDates", fast, mb, kLines, "lines");
  row("ICU for every line (from 100,000 lines)", icu, mb, kLines, "lines");
  std::printf("  %zu dates; extractDates is %.0fx faster than ICU per line (target >= 50x), %.2fx the bare scan (target <= 3x)\n",
              dates.size(), icu / fast, fast / scan);

  // Streaming from a pipe: memory grows with the number of entries, not the bytes of text.
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("lines.txt"));
  {
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(text.data(), static_cast<qint64>(text.size()));
  }
  text.clear();
  text.shrink_to_fit();
  // A fresh process reads the file through a pipe, so its peak is the reading's alone.
  ByteBuffer report;
  runProcess(self, {QStringLiteral("stream-dates"), path}, report);
  std::printf("%.*s\n", static_cast<int>(report.size()), report.data());
}

void binningSection() {
  constexpr std::size_t kDates = 10000000;
  std::printf("Binning 10,000,000 dates into 200 bars\n");
  std::vector<Date> dates(kDates);
  for (std::size_t i = 0; i < kDates; ++i) dates[i] = Date{1000.0 + static_cast<double>(i) * 0.001};
  const Date start = dates.front(), end = dates.back();
  const double loop = timeBest(5, [&] {
    double sum = 0;
    for (const Date& d : dates) sum += d.sinceReference;
    benchmark::DoNotOptimize(sum);
  });
  const double binning = timeBest(5, [&] { benchmark::DoNotOptimize(binDates(dates, {}, 200, start, end)); });
  row("plain loop over the dates (the limit)", loop, kDates * 8.0, kDates, "dates");
  row("binDates with labels and summary", binning, kDates * 8.0, kDates, "dates");
  std::printf("  binning takes %.1f ms (target <= 50 ms), %.1fx the plain loop\n\n", binning * 1000, binning / loop);
}

}  // namespace

// Streams a file through `cat` and a pipe into the date reader; prints the memory it took.
int streamDates(const char* path) {
  const long long before = statusField("VmRSS:");
  DateExtractor extractor;
  runProcess(QStringLiteral("/bin/cat"), {QString::fromLocal8Bit(path)}, extractor);
  const std::vector<Date> streamed = extractor.finish();
  const long long peak = statusField("VmHWM:") - before;
  const double dateArray = static_cast<double>(streamed.capacity() * sizeof(Date));
  std::printf("  streamed from a pipe: %zu dates, peak growth %.1f MB, %.1f bytes per entry beyond the %.1f MB date array "
              "(target <= 32)\n",
              streamed.size(), static_cast<double>(peak) / 1e6, (static_cast<double>(peak) - dateArray) / static_cast<double>(streamed.size()),
              dateArray / 1e6);
  return 0;
}

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "print-lines") == 0) return printLines(std::atoll(argv[2]));
  if (argc == 3 && std::strcmp(argv[1], "stream-dates") == 0) return streamDates(argv[2]);
  QCoreApplication application(argc, argv);
  const QString self = QCoreApplication::applicationFilePath();
  const std::vector<std::pair<const char*, std::function<void()>>> sections = {
      {"styling", stylingSection},
      {"runner", [&] { runnerSection(self); }},
      {"open", openSection},
      {"dates", [&] { datesSection(self); }},
      {"binning", binningSection},
  };
  const char* only = argc > 1 ? argv[1] : nullptr;
  for (const auto& [name, run] : sections) {
    if (only && std::strcmp(only, name) != 0) continue;
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
      run();
      std::fflush(stdout);
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
  }
  return 0;
}
