#include "cli/commands.h"

#include "chart/binning.h"
#include "chart/chart_painter.h"
#include "cli/arguments.h"
#include "logquery/extract_dates.h"
#include "logquery/queries.h"
#include "logquery/periods.h"
#include "logquery/styling.h"
#include "sources/assembly.h"
#include "sources/open_source.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <memory>

#include <unistd.h>

namespace tarnbeck::cli {
namespace {

const char* const kTopHelp =
    "Usage: tarnbeck-cli SUBCOMMAND [OPTIONS]\n"
    "\n"
    "Tarnbeck's reports, queries and charts without a window.\n"
    "\n"
    "Subcommands:\n"
    "  open BUNDLE       the output text after opening BUNDLE (statistics and catalogue)\n"
    "  stats BUNDLE      the report on one process (--process NAME [--gathered])\n"
    "  chart BUNDLE      chart one log file's entries of a process (--file REL --process NAME)\n"
    "  excerpt BUNDLE    the entries of a log file between two times\n"
    "  style             style a JSON array of log entries\n"
    "  dates             the entry times of syslog-style log text\n"
    "  make SOURCE DEST  assemble a .logarchive bundle from a log store folder\n"
    "\n"
    "Options: --help (also after a subcommand), --version.\n"
    "The log tool is /usr/bin/log unless TARNBECK_LOG_TOOL names another program.\n";

const char* subcommandHelp(const QString& name) {
  if (name == QStringLiteral("open"))
    return "Usage: tarnbeck-cli open BUNDLE [--png FILE] [--size WxH]\n"
           "Prints the output text after opening BUNDLE: header line, full statistics report, blank line,\n"
           "catalogue heading and the sorted catalogue lines. --png draws the statistics chart (default 900x240).\n";
  if (name == QStringLiteral("stats"))
    return "Usage: tarnbeck-cli stats BUNDLE --process NAME [--gathered] [--png FILE] [--size WxH]\n"
           "Prints the header line and the partial report on NAME from the statistics records, or with\n"
           "--gathered the report gathered by one log run per catalogued log file (progress on standard error).\n";
  if (name == QStringLiteral("chart"))
    return "Usage: tarnbeck-cli chart BUNDLE --file REL --process NAME [--events] [--bars N]\n"
           "                          [--period \"START - END\"] [--png FILE] [--size WxH]\n"
           "Charts the entries of NAME in the log file REL into N bars (default 50, clamped to 5..200) and\n"
           "prints the summary. --period charts a period menu title instead (always 50 bars).\n";
  if (name == QStringLiteral("excerpt"))
    return "Usage: tarnbeck-cli excerpt BUNDLE --file REL --start TIME --end TIME (--process NAME | --all)\n"
           "                            [--style STYLE] [--filter FILTER] [--color auto|always|never]\n"
           "TIME is \"yyyy-MM-dd HH:mm:ss\" in local time. Prints the tool's syslog text, or with --style the\n"
           "JSON entries styled and filtered.\n";
  if (name == QStringLiteral("style"))
    return "Usage: tarnbeck-cli style --style STYLE [--filter FILTER] [--color auto|always|never] [FILE]\n"
           "Styles a JSON array of log entries read from FILE or standard input.\n";
  if (name == QStringLiteral("dates"))
    return "Usage: tarnbeck-cli dates [FILE]\n"
           "Prints one line per entry time of syslog-style text, as yyyy-MM-dd HH:mm:ss.SSSZZZ.\n";
  if (name == QStringLiteral("make"))
    return "Usage: tarnbeck-cli make SOURCE DEST\n"
           "Assembles the bundle DEST from the log store folder SOURCE.\n";
  return nullptr;
}

class Printer {
 public:
  Printer(std::FILE* out, std::FILE* err) : out_(out), err_(err) {}
  void out(const QString& text) const { write(out_, text); }
  void err(const QString& text) const {
    write(err_, text);
    std::fflush(err_);
  }

 private:
  static void write(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
  }
  std::FILE* out_;
  std::FILE* err_;
};

QSize parseSize(const std::optional<QString>& text) {
  if (!text) return QSize(900, 240);
  const QStringList parts = text->split(u'x');
  bool okW = false, okH = false;
  const int w = parts.size() == 2 ? parts[0].toInt(&okW) : 0;
  const int h = parts.size() == 2 ? parts[1].toInt(&okH) : 0;
  if (!okW || !okH || w < 40 || h < 60) throw UsageError{QStringLiteral("--size takes WIDTHxHEIGHT, for example 900x240")};
  return QSize(w, h);
}

// Draws a chart into a PNG file with the same painting code as the window's chart.
bool writeChartImage(const QString& path, QSize size, const ChartPicture& picture) {
  std::unique_ptr<QGuiApplication> application;
  if (!QGuiApplication::instance()) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
      // Drawing needs a private runtime folder; make the one Qt would otherwise warn about.
      const QString runtime = QDir::tempPath() + QStringLiteral("/runtime-") + QString::number(getuid());
      QDir().mkpath(runtime);
      QFile::setPermissions(runtime, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
      qputenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit());
    }
    static int argc = 1;
    static char name[] = "tarnbeck-cli";
    static char* argv[] = {name, nullptr};
    application = std::make_unique<QGuiApplication>(argc, argv);
  }
  QImage image(size, QImage::Format_ARGB32);
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    paintChart(painter, QSizeF(size), picture);
  }
  return image.save(path, "PNG");
}

bool colourWanted(const std::optional<QString>& option, bool outIsTerminal) {
  const QString mode = option.value_or(QStringLiteral("auto"));
  if (mode == QStringLiteral("always")) return true;
  if (mode == QStringLiteral("never")) return false;
  if (mode == QStringLiteral("auto")) return outIsTerminal;
  throw UsageError{QStringLiteral("--color takes auto, always or never")};
}

std::optional<QByteArray> readInput(const QStringList& positional, const Printer& print) {
  QFile file;
  if (positional.isEmpty()) {
    if (!file.open(stdin, QIODevice::ReadOnly)) return std::nullopt;
  } else {
    file.setFileName(positional.first());
    if (!file.open(QIODevice::ReadOnly)) {
      print.err(QStringLiteral("cannot read %1: %2\n").arg(positional.first(), file.errorString()));
      return std::nullopt;
    }
  }
  return file.readAll();
}

int openCommand(const QStringList& words, const Printer& print) {
  Arguments args(words, {QStringLiteral("--png"), QStringLiteral("--size")}, {});
  if (args.positional().size() != 1) throw UsageError{QStringLiteral("open takes one BUNDLE")};
  const QSize size = parseSize(args.value(QStringLiteral("--size")));
  OpenedSource opened = openSource(args.positional().first(), {});
  print.out(opened.outputText);
  if (auto png = args.value(QStringLiteral("--png"))) {
    ChartPicture picture;
    picture.heights = opened.fullReport.chart.heights;
    picture.types = opened.fullReport.chart.types;
    if (!writeChartImage(*png, size, picture)) {
      print.err(QStringLiteral("cannot write the chart image %1\n").arg(*png));
      return kFailure;
    }
  }
  return kSuccess;
}

int statsCommand(const QStringList& words, const Printer& print) {
  Arguments args(words, {QStringLiteral("--process"), QStringLiteral("--png"), QStringLiteral("--size")},
                 {QStringLiteral("--gathered")});
  if (args.positional().size() != 1) throw UsageError{QStringLiteral("stats takes one BUNDLE")};
  const QString process = args.required(QStringLiteral("--process"));
  const QSize size = parseSize(args.value(QStringLiteral("--size")));
  const QString bundle = args.positional().first();
  OpenedSource opened = openSource(bundle, {});
  Report report;
  if (args.has(QStringLiteral("--gathered"))) {
    BlockingLogToolRunner runner;
    report = displayGatheredStats(
        opened.scan.heldTracev3Files, opened.scan.heldFileInfo, process,
        [&](const QString& file) {
          QString failure;
          const std::int64_t bytes = summariseBytes(runner, bundle, file, process, &failure);
          if (!failure.isEmpty()) print.err(failure + QStringLiteral("\n"));
          return bytes;
        },
        [&](const QString& progress) { print.err(progress); });
    print.err(QStringLiteral("\n"));
  } else {
    report = displayPartialStats(opened.stats.fileArray, opened.stats.fullStatsDict, process, opened.scan.heldTracev3Files);
  }
  print.out(kStatisticsHeader + report.text);
  if (auto png = args.value(QStringLiteral("--png"))) {
    ChartPicture picture;
    picture.heights = report.chart.heights;
    picture.types = report.chart.types;
    if (!writeChartImage(*png, size, picture)) return kFailure;
  }
  return kSuccess;
}

int chartCommand(const QStringList& words, const Printer& print) {
  Arguments args(words,
                 {QStringLiteral("--file"), QStringLiteral("--process"), QStringLiteral("--bars"), QStringLiteral("--period"),
                  QStringLiteral("--png"), QStringLiteral("--size")},
                 {QStringLiteral("--events")});
  if (args.positional().size() != 1) throw UsageError{QStringLiteral("chart takes one BUNDLE")};
  const QString file = args.required(QStringLiteral("--file"));
  const QString process = args.required(QStringLiteral("--process"));
  const QSize size = parseSize(args.value(QStringLiteral("--size")));
  int bars = 50;
  if (auto text = args.value(QStringLiteral("--bars"))) {
    const long long typed = lenientInteger(*text);
    bars = typed < 5 ? 5 : static_cast<int>(std::min<long long>(typed, 200));
  }
  std::optional<std::pair<Date, Date>> period;
  if (auto title = args.value(QStringLiteral("--period"))) {
    period = parsePeriodTitle(*title);
    if (!period) throw UsageError{QStringLiteral("--period takes \"yyyy-MM-dd HH:mm:ss.SSSZZZ - yyyy-MM-dd HH:mm:ss.SSSZZZ\"")};
  }
  const bool events = args.has(QStringLiteral("--events"));
  BlockingLogToolRunner runner;
  TraceV3Dates dates = readTraceV3Dates(runner, args.positional().first(), file, process, events);
  if (!dates.succeeded) {
    print.err(dates.failureMessage + QStringLiteral("\n"));
    return kFailure;
  }
  if (dates.eventsFailure) print.err(*dates.eventsFailure + QStringLiteral("\n"));
  if (dates.entries.empty()) {
    print.out(kNoEntriesMessage);
    return kSuccess;
  }
  auto binned = binDates(dates.entries, dates.events, bars, dates.entries.front(), dates.entries.back());
  if (period) {
    auto again = binDates(dates.entries, dates.events, 50, period->first, period->second);
    if (std::holds_alternative<ChartBinning>(again)) {
      binned = std::move(again);
    } else {
      // The period cannot be charted: the window keeps the chart of the whole file and
      // shows the message.
      print.out(std::get<BinningFailure>(again) == BinningFailure::NoEntries ? kNoEntriesMessage : kPeriodTooSmallMessage);
      return kSuccess;
    }
  }
  if (auto* failure = std::get_if<BinningFailure>(&binned)) {
    print.out(*failure == BinningFailure::NoEntries ? kNoEntriesMessage : kPeriodTooSmallMessage);
    return kSuccess;
  }
  const ChartBinning& chart = std::get<ChartBinning>(binned);
  print.out(chart.summary);
  if (auto png = args.value(QStringLiteral("--png"))) {
    ChartPicture picture;
    picture.heights = chart.heights;
    picture.types = chart.types;
    picture.startChartStr = chart.startChartStr.value_or(QString());
    picture.endChartStr = chart.endChartStr.value_or(QString());
    picture.legend = chart.legend;
    picture.eventTimes = chart.eventTimes;
    picture.drawEvents = events;
    if (!writeChartImage(*png, size, picture)) return kFailure;
  }
  return kSuccess;
}

int excerptCommand(const QStringList& words, const Printer& print, bool outIsTerminal) {
  Arguments args(words,
                 {QStringLiteral("--file"), QStringLiteral("--start"), QStringLiteral("--end"), QStringLiteral("--process"),
                  QStringLiteral("--style"), QStringLiteral("--filter"), QStringLiteral("--color")},
                 {QStringLiteral("--all")});
  if (args.positional().size() != 1) throw UsageError{QStringLiteral("excerpt takes one BUNDLE")};
  const bool colour = colourWanted(args.value(QStringLiteral("--color")), outIsTerminal);
  ExcerptRequest request;
  request.sourceFolder = args.positional().first();
  request.filename = args.required(QStringLiteral("--file"));
  const auto process = args.value(QStringLiteral("--process"));
  request.wholeLog = args.has(QStringLiteral("--all"));
  if (request.wholeLog == process.has_value()) throw UsageError{QStringLiteral("give either --process NAME or --all")};
  request.processTerm = process.value_or(QString());
  auto start = parseDate(args.required(QStringLiteral("--start")), date_pattern::kToolArgument);
  auto end = parseDate(args.required(QStringLiteral("--end")), date_pattern::kToolArgument);
  if (!start || !end) throw UsageError{QStringLiteral("--start and --end take \"yyyy-MM-dd HH:mm:ss\"")};
  request.start = *start;
  request.end = *end;
  const auto style = args.value(QStringLiteral("--style"));
  request.styleIndex = style ? 1 : 0;
  BlockingLogToolRunner runner;
  ExcerptResult result = runExcerpt(runner, request);
  switch (result.kind) {
    case ExcerptResult::Kind::Failed:
      print.err(result.text + QStringLiteral("\n"));
      return kFailure;
    case ExcerptResult::Kind::NotUtf8:
      print.err(QStringLiteral("the log tool's text is not UTF-8; nothing to show\n"));
      return kSuccess;
    case ExcerptResult::Kind::SyslogText:
      print.out(result.text);
      return kSuccess;
    case ExcerptResult::Kind::Entries:
      print.out(ansiText(styleLogEntries(*result.entries, *style, args.value(QStringLiteral("--filter"))), colour));
      return kSuccess;
  }
  return kSuccess;
}

int styleCommand(const QStringList& words, const Printer& print, bool outIsTerminal) {
  Arguments args(words, {QStringLiteral("--style"), QStringLiteral("--filter"), QStringLiteral("--color")}, {});
  if (args.positional().size() > 1) throw UsageError{QStringLiteral("style takes at most one FILE")};
  const QString style = args.required(QStringLiteral("--style"));
  const bool colour = colourWanted(args.value(QStringLiteral("--color")), outIsTerminal);
  auto input = readInput(args.positional(), print);
  if (!input) return kFailure;
  LogEntries entries = parseLogEntries(std::string_view(input->constData(), static_cast<std::size_t>(input->size())));
  print.out(ansiText(styleLogEntries(*entries, style, args.value(QStringLiteral("--filter"))), colour));
  return kSuccess;
}

int datesCommand(const QStringList& words, const Printer& print) {
  Arguments args(words, {}, {});
  if (args.positional().size() > 1) throw UsageError{QStringLiteral("dates takes at most one FILE")};
  auto input = readInput(args.positional(), print);
  if (!input) return kFailure;
  QString lines;
  for (const Date& date : extractDates(std::string_view(input->constData(), static_cast<std::size_t>(input->size())))) {
    lines += formatDate(date, date_pattern::kPeriod) + QStringLiteral("\n");
  }
  print.out(lines);
  return kSuccess;
}

int makeCommand(const QStringList& words, const Printer& print) {
  Arguments args(words, {}, {});
  if (args.positional().size() != 2) throw UsageError{QStringLiteral("make takes SOURCE and DEST")};
  const QString source = args.positional()[0];
  const QString dest = args.positional()[1];
  print.out(sourceLine(source));
  print.out(destinationLine(dest));
  int status = kSuccess;
  if (auto failure = copyToLogarchive(source, dest)) {
    print.out(*failure);
    status = kFailure;
  }
  if (auto failure = makeInfoFile(dest)) {
    print.out(*failure);
    status = kFailure;
  }
  return status;
}

}  // namespace

int runCommandLine(const QStringList& arguments, std::FILE* out, std::FILE* err, bool outIsTerminal) {
  const Printer print(out, err);
  if (arguments.isEmpty()) {
    print.err(QStringLiteral("tarnbeck-cli: missing subcommand; see tarnbeck-cli --help\n"));
    return kBadUsage;
  }
  const QString command = arguments.first();
  if (command == QStringLiteral("--help") || command == QStringLiteral("-h")) {
    print.out(QString::fromUtf8(kTopHelp));
    return kSuccess;
  }
  if (command == QStringLiteral("--version")) {
    print.out(QStringLiteral("tarnbeck-cli %1\n").arg(QStringLiteral(TARNBECK_VERSION)));
    return kSuccess;
  }
  const char* help = subcommandHelp(command);
  if (!help) {
    print.err(QStringLiteral("tarnbeck-cli: unknown subcommand %1; see tarnbeck-cli --help\n").arg(command));
    return kBadUsage;
  }
  const QStringList rest = arguments.mid(1);
  if (rest.contains(QStringLiteral("--help")) || rest.contains(QStringLiteral("-h"))) {
    print.out(QString::fromUtf8(help));
    return kSuccess;
  }
  try {
    if (command == QStringLiteral("open")) return openCommand(rest, print);
    if (command == QStringLiteral("stats")) return statsCommand(rest, print);
    if (command == QStringLiteral("chart")) return chartCommand(rest, print);
    if (command == QStringLiteral("excerpt")) return excerptCommand(rest, print, outIsTerminal);
    if (command == QStringLiteral("style")) return styleCommand(rest, print, outIsTerminal);
    if (command == QStringLiteral("dates")) return datesCommand(rest, print);
    return makeCommand(rest, print);
  } catch (const UsageError& error) {
    print.err(QStringLiteral("tarnbeck-cli %1: %2; see tarnbeck-cli %1 --help\n").arg(command, error.reason));
    return kBadUsage;
  }
}

}  // namespace tarnbeck::cli
