// The session's lines: one JSON command per line read, one JSON answer per
// line written and flushed, until the end of the input or "quit".
#pragma once

#include "Session.h"

#include <cstddef>
#include <istream>
#include <optional>
#include <ostream>
#include <string>

namespace kelvra::cli {

// Longer lines are answered with an error and skipped whole, so a script
// cannot make the host hold unbounded input.
inline constexpr std::size_t kLongestSessionLine = std::size_t(1) << 20;
// Deeper nesting is refused before it is parsed.
inline constexpr std::size_t kDeepestSessionNesting = 64;

// The answer to one line, as it is written (without the line break).
std::string AnswerLine(Session& session, const std::string& line);

// The next line of `in` without its line break; `tooLong` when it had more
// than kLongestSessionLine bytes (then the rest of it is skipped). None at
// the end of the input.
std::optional<std::string> ReadSessionLine(std::istream& in, bool& tooLong);

// 0 when the input ended or "quit" came; 1 when the module file was refused
// (the session answered all the same).
int RunSession(const SessionOptions& options, std::istream& in, std::ostream& out);

}  // namespace kelvra::cli
