#include "app/document.h"

#include "app/tb_window.h"

#include <QMessageBox>

namespace tarnbeck {
namespace {
constexpr int kUnimplementedStatus = -4;

}  // namespace

QString DocumentError::localizedDescription() const {
  return QStringLiteral("The operation couldn\u2019t be completed. (OSStatus error %1.)").arg(code);
}

Document::Document() = default;

Document::~Document() { delete window_; }

void Document::makeWindowControllers() {
  window_ = new TBWindow;
  window_->setAttribute(Qt::WA_DeleteOnClose, false);
  connect(window_, &TBWindow::windowClosed, this, [this] { emit closed(this); });
}

std::optional<DocumentError> Document::dataOfType(const QString&) const {
  return DocumentError{QStringLiteral("NSOSStatusErrorDomain"), kUnimplementedStatus};
}

std::optional<DocumentError> Document::readFrom(const QString&, const QString&) {
  return DocumentError{QStringLiteral("NSOSStatusErrorDomain"), kUnimplementedStatus};
}

void Document::presentError(const DocumentError& error) const {
  auto* alert = new QMessageBox(QMessageBox::Warning, QStringLiteral("Tarnbeck"), error.localizedDescription(),
                                QMessageBox::Ok, window_);
  alert->setAttribute(Qt::WA_DeleteOnClose);
  alert->setWindowModality(Qt::WindowModal);
  alert->open();
}

}  // namespace tarnbeck
