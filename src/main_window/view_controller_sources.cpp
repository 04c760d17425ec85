// Opening a bundle, assembling one from a log store, and saving the output text.
#include "chart/chart_view.h"
#include "main_window/panels.h"
#include "main_window/view_controller.h"
#include "platform/process_activity.h"
#include "sources/assembly.h"
#include "sources/open_source.h"
#include "sources/save_text.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTextEdit>

namespace tarnbeck {

void ViewController::openButton() {
  QPointer<ViewController> self(this);
  panels_->chooseLogarchive(this, [self](std::optional<QString> chosen) {
    if (self && chosen) self->openSource(*chosen);
  });
}

void ViewController::openSource(const QString& path) {
  theMemoryCount = 1;
  theTracev3Array.clear();
  theHeldTracev3Files.clear();
  theHeldFileInfo.clear();
  rebuildMenu(sourceLogPopup, {kAllTitle});
  OpenedSource opened;
  {
    ProcessActivity activity(QStringLiteral("opening logarchive"));
    opened = tarnbeck::openSource(path, theExtraProcs);
    // The source-log menu gains one item per catalogued file, in scan order.
    sourceLogPopup->addItems(opened.scan.heldTracev3Files);
    theHeldTracev3Files = opened.scan.heldTracev3Files;
    theHeldFileInfo = opened.scan.heldFileInfo;
    theFileArray = opened.stats.fileArray;
    theFullStatsDict = opened.stats.fullStatsDict;
    theProcsSet = opened.stats.procsSet;
    theMemoryCount = opened.stats.memoryCount;
    setChartLists(opened.fullReport.chart);
    replaceOutputText(opened.outputText);
    theTracev3Array = opened.scan.tracev3Array;
  }
  rebuildMenu(procsPopup, opened.processMenu);
  sourceFileText->setText(path);
  sourceLogPopup->setCurrentIndex(0);
  theSourceLogFile.clear();
  handOverChart();
}

void ViewController::makeButton() {
  QPointer<ViewController> self(this);
  panels_->chooseStoreFolder(this, [self](std::optional<QString> source) {
    if (!self || !source) return;
    self->replaceOutputText(sourceLine(*source));
    self->panels_->chooseBundleDestination(self, [self, source](std::optional<QString> dest) {
      if (!self || !dest) return;
      self->appendOutputText(destinationLine(*dest));
      ProcessActivity activity(QStringLiteral("making logarchive"));
      if (auto failure = copyToLogarchive(*source, *dest)) self->appendOutputText(*failure);
      if (auto failure = makeInfoFile(*dest)) self->appendOutputText(*failure);
    });
  });
}

void ViewController::saveButton() {
  const QString text = outputText->toPlainText();
  QPointer<ViewController> self(this);
  panels_->chooseTextDestination(this, [self, text](std::optional<QString> chosen) {
    if (!self || !chosen) return;
    if (auto failure = saveOutputText(*chosen, text)) self->appendOutputText(*failure);
  });
}

}  // namespace tarnbeck
