#pragma once
// The open and save panels of the window, each shown window-modal with a completion
// handler (the work runs in the handler). Tests put their own panels in place.
#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace tarnbeck {

class Panels {
 public:
  using Completion = std::function<void(std::optional<QString> chosen)>;
  virtual ~Panels() = default;
  // A .logarchive bundle (a folder whose name ends in ".logarchive"; a package on macOS).
  virtual void chooseLogarchive(QWidget* window, Completion done) = 0;
  // The live log store folder to assemble from (hidden folders shown).
  virtual void chooseStoreFolder(QWidget* window, Completion done) = 0;
  // Where to create the new bundle.
  virtual void chooseBundleDestination(QWidget* window, Completion done) = 0;
  // Where to save the output text ("text" or "txt").
  virtual void chooseTextDestination(QWidget* window, Completion done) = 0;
};

// The platform's file dialogs.
class FileDialogPanels final : public Panels {
 public:
  void chooseLogarchive(QWidget* window, Completion done) override;
  void chooseStoreFolder(QWidget* window, Completion done) override;
  void chooseBundleDestination(QWidget* window, Completion done) override;
  void chooseTextDestination(QWidget* window, Completion done) override;
};

// Whether a chosen path names a .logarchive bundle.
bool isLogarchivePath(const QString& path);

}  // namespace tarnbeck
