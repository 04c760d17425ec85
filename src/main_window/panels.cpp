#include "main_window/panels.h"

#include <QFileDialog>
#include <QMessageBox>

namespace tarnbeck {
namespace {

// A folder dialog that only accepts folders named "*.logarchive".
class LogarchiveDialog : public QFileDialog {
 public:
  using QFileDialog::QFileDialog;
  void accept() override {
    const QStringList chosen = selectedFiles();
    if (!chosen.isEmpty() && !isLogarchivePath(chosen.first())) {
      QMessageBox::information(this, tr("Open"), tr("Please choose a .logarchive bundle."));
      return;
    }
    QFileDialog::accept();
  }
};

void showDialog(QFileDialog* dialog, Panels::Completion done) {
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowModality(Qt::WindowModal);
  QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, done = std::move(done)](int result) {
    const QStringList chosen = dialog->selectedFiles();
    if (result != QDialog::Accepted || chosen.isEmpty()) {
      done(std::nullopt);
    } else {
      done(chosen.first());
    }
  });
  dialog->open();
}

}  // namespace

bool isLogarchivePath(const QString& path) {
  QString trimmed = path;
  while (trimmed.endsWith(u'/') && trimmed.size() > 1) trimmed.chop(1);
  return trimmed.endsWith(QStringLiteral(".logarchive"));
}

void FileDialogPanels::chooseLogarchive(QWidget* window, Completion done) {
  auto* dialog = new LogarchiveDialog(window, QObject::tr("Open a log archive"));
#ifdef __APPLE__
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->setNameFilter(QObject::tr("Log archives (*.logarchive)"));
#else
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly, true);
#endif
  showDialog(dialog, std::move(done));
}

void FileDialogPanels::chooseStoreFolder(QWidget* window, Completion done) {
  auto* dialog = new QFileDialog(window, QObject::tr("Choose the log store folder"));
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly, true);
  dialog->setFilter(dialog->filter() | QDir::Hidden);
  showDialog(dialog, std::move(done));
}

void FileDialogPanels::chooseBundleDestination(QWidget* window, Completion done) {
  auto* dialog = new QFileDialog(window, QObject::tr("Save the log archive as"));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter(QObject::tr("Log archives (*.logarchive)"));
  dialog->setDefaultSuffix(QStringLiteral("logarchive"));
  showDialog(dialog, std::move(done));
}

void FileDialogPanels::chooseTextDestination(QWidget* window, Completion done) {
  auto* dialog = new QFileDialog(window, QObject::tr("Save the output text"));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter(QObject::tr("Text (*.text *.txt)"));
  dialog->setDefaultSuffix(QStringLiteral("text"));
  showDialog(dialog, std::move(done));
}

}  // namespace tarnbeck
