// A message as the host's dialogs show it. The module passes its texts with
// the host's own marks: "^Q" stands for a quotation mark (opening, then
// closing), a tab moves to the next stop of eight columns and a line break
// starts a new line; blanks at the end of a line are not seen.
#pragma once

#include <ostream>
#include <string_view>

namespace kelvra::cli {

// Writes `text` so; every line after the first begins with `indent`. No line
// break after the last line.
void WriteDialogText(std::ostream& out, std::string_view text, std::string_view indent);

}  // namespace kelvra::cli
