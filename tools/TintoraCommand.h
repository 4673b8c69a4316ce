// The `tintora` command: runs the library-file readers on plain files.
#pragma once

#include <ostream>

namespace tool {

// Parses the command line and runs the subcommand, writing its output to
// `out` and complaints to `err`. Answers the exit status: for trace, dump and
// prescan 0 whenever the reader ran, whatever its result; for convert and
// sheet 0 only when the output was written; non-zero when the tool itself
// could not run (bad command line, unreadable file) or, for convert and
// sheet, when anything failed.
int RunTintora(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace tool
