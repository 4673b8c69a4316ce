// The `tintora` command: runs the library-file readers on plain files.
#pragma once

#include <ostream>

namespace tool {

// Parses the command line and runs the subcommand, writing its output to
// `out` and complaints to `err`. Answers the exit status: 0 when the reader
// (or the pre-scan) succeeded, or convert and sheet wrote their output; 1
// when the reader did not (its output printed all the same) or convert and
// sheet failed; 2 when the tool itself could not run (bad command line,
// unreadable file).
int RunTintora(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace tool
