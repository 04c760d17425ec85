#pragma once
// The application: its documents (one window each), the File menu's commands, and the
// clean-up at a normal quit that removes the remembered periods.
#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

class QMenuBar;

namespace tarnbeck {

class Document;

class AppDelegate : public QObject {
  Q_OBJECT
 public:
  AppDelegate();
  ~AppDelegate() override;

  void applicationDidFinishLaunching();
  // Removes every settings key that is a UUID (the remembered periods).
  void applicationWillTerminate();

  // File > New: a new document with its own window and controller.
  Document* newDocument();
  const std::vector<std::unique_ptr<Document>>& documents() const { return documents_; }

 private:
  void installMenus(Document* document);
  void closeDocument(Document* document);
  std::vector<std::unique_ptr<Document>> documents_;
};

}  // namespace tarnbeck
