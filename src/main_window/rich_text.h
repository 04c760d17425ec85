#pragma once
#include "logquery/styling.h"

#include <vector>

class QTextDocument;

namespace tarnbeck {

// Puts styled runs into a text document as its whole content: coloured runs get their
// calibrated foreground colour and nothing else; plain runs carry no attributes.
void setStyledRuns(QTextDocument& document, const std::vector<StyledRun>& runs);

}  // namespace tarnbeck
