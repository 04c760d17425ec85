#pragma once
#include <QString>

#include <optional>

namespace tarnbeck {

// The owner of one bar's tooltip rectangle: the text shown when the pointer rests there.
class ToolTip {
 public:
  explicit ToolTip(QString tip) : tip(std::move(tip)) {}
  QString stringForToolTip() const { return tip; }

  QString tip;
  std::optional<int> tag;
};

}  // namespace tarnbeck
