#pragma once
// A document is one main window with its own controller; it has no file content. Saving
// it or opening a file as a document fails with the platform's "unimplemented" status.
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace tarnbeck {

class TBWindow;

struct DocumentError {
  QString domain;  // "NSOSStatusErrorDomain"
  int code = 0;    // -4
  QString localizedDescription() const;
};

class Document : public QObject {
  Q_OBJECT
 public:
  Document();
  ~Document() override;

  static constexpr bool autosavesInPlace = false;

  void makeWindowControllers();
  TBWindow* window() const { return window_; }

  // Saving the document: never possible.
  std::optional<DocumentError> dataOfType(const QString& typeName) const;
  // Reading a file as the document: never possible.
  std::optional<DocumentError> readFrom(const QString& path, const QString& typeName);

  // Shows the error of a failed save or open in an alert on the window.
  void presentError(const DocumentError& error) const;

 signals:
  void closed(Document* document);

 private:
  TBWindow* window_ = nullptr;
};

}  // namespace tarnbeck
