#include "main_window/rich_text.h"

#include <QColor>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace tarnbeck {

void setStyledRuns(QTextDocument& document, const std::vector<StyledRun>& runs) {
  document.clear();
  QTextCursor cursor(&document);
  cursor.beginEditBlock();
  QTextCharFormat plain;
  QTextCharFormat coloured[4];
  for (RunColour colour : {RunColour::Red, RunColour::Green, RunColour::Blue}) {
    const ColourComponents c = colourComponents(colour);
    coloured[static_cast<int>(colour)].setForeground(QColor::fromRgbF(c.red, c.green, c.blue, 1.0));
  }
  for (const StyledRun& run : runs) {
    cursor.insertText(run.text, run.colour == RunColour::None ? plain : coloured[static_cast<int>(run.colour)]);
  }
  cursor.endEditBlock();
}

}  // namespace tarnbeck
