#include "app/app_delegate.h"

#include "app/document.h"
#include "app/tb_window.h"
#include "main_window/view_controller.h"
#include "platform/tick_count.h"
#include "platform/user_defaults.h"

#include <QApplication>
#include <QFileDialog>
#include <QMenuBar>

namespace tarnbeck {

AppDelegate::AppDelegate() {
  connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::applicationWillTerminate);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {}

void AppDelegate::applicationWillTerminate() {
  UserDefaults& defaults = UserDefaults::standard();
  const QVariantMap all = defaults.dictionaryRepresentation();
  for (auto it = all.begin(); it != all.end(); ++it) {
    if (isUuidText(it.key())) defaults.removeObject(it.key());
  }
  defaults.synchronize();
}

Document* AppDelegate::newDocument() {
  auto document = std::make_unique<Document>();
  document->makeWindowControllers();
  installMenus(document.get());
  connect(document.get(), &Document::closed, this, &AppDelegate::closeDocument, Qt::QueuedConnection);
  Document* made = document.get();
  documents_.push_back(std::move(document));
  return made;
}

void AppDelegate::closeDocument(Document* document) {
  std::erase_if(documents_, [document](const std::unique_ptr<Document>& d) { return d.get() == document; });
}

void AppDelegate::installMenus(Document* document) {
  QMenuBar* bar = document->window()->menuBar();
  QMenu* file = bar->addMenu(tr("&File"));
  QAction* newAction = file->addAction(tr("&New"), this, [this] { newDocument()->window()->show(); });
  newAction->setShortcut(QKeySequence::New);
  ViewController* controller = document->window()->contentViewController();
  QAction* openBundle = file->addAction(tr("&Open Log Archive…"), controller, &ViewController::openButton);
  openBundle->setShortcut(QKeySequence::Open);
  file->addAction(tr("&Make Log Archive…"), controller, &ViewController::makeButton);
  file->addAction(tr("Open as Document…"), document, [document] {
    const QString path = QFileDialog::getOpenFileName(document->window(), tr("Open"));
    if (path.isEmpty()) return;
    if (auto error = document->readFrom(path, QString())) document->presentError(*error);
  });
  file->addSeparator();
  QAction* saveAction = file->addAction(tr("&Save"), document, [document] {
    if (auto error = document->dataOfType(QString())) document->presentError(*error);
  });
  saveAction->setShortcut(QKeySequence::Save);
  saveAction->setObjectName(QStringLiteral("saveDocumentAction"));
  QAction* saveText = file->addAction(tr("Save Output &Text…"), controller, &ViewController::saveButton);
  saveText->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  QAction* preferences = file->addAction(tr("&Preferences…"), controller, &ViewController::showPrefs);
  preferences->setShortcut(QKeySequence::Preferences);
  preferences->setMenuRole(QAction::PreferencesRole);
  QAction* closeAction = file->addAction(tr("&Close Window"), document->window(), &QWidget::close);
  closeAction->setShortcut(QKeySequence::Close);
  file->addSeparator();
  QAction* quitAction = file->addAction(tr("&Quit"), qApp, &QApplication::quit);
  quitAction->setShortcut(QKeySequence::Quit);
  quitAction->setMenuRole(QAction::QuitRole);
}

}  // namespace tarnbeck
