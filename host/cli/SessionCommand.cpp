#include "SessionCommand.h"

#include <CommandLine.h>

#include <algorithm>

namespace kelvra::cli {

namespace {

using nlohmann::json;

std::string Written(const json& answer) { return answer.dump(-1, ' ', false, json::error_handler_t::replace); }

std::string Error(const std::string& why) { return Written({{"ok", false}, {"error", why}}); }

// How deep brackets nest outside strings.
std::size_t Nesting(const std::string& line) {
    std::size_t depth = 0;
    std::size_t deepest = 0;
    bool inString = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (inString) {
            if (c == '\\') ++i;
            else if (c == '"') inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            deepest = std::max(deepest, ++depth);
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return deepest;
}

}  // namespace

std::string AnswerLine(Session& session, const std::string& line) {
    if (Nesting(line) > kDeepestSessionNesting)
        return Error("the line nests deeper than " + std::to_string(kDeepestSessionNesting) + " levels");
    const json command = json::parse(line, nullptr, false);
    if (command.is_discarded()) return Error("the line is not JSON");
    return Written(session.Answer(command));
}

std::optional<std::string> ReadSessionLine(std::istream& in, bool& tooLong) {
    tooLong = false;
    std::string line;
    std::streambuf& buffer = *in.rdbuf();
    bool any = false;
    for (int c; (c = buffer.sbumpc()) != std::char_traits<char>::eof();) {
        any = true;
        if (c == '\n') return line;
        if (line.size() < kLongestSessionLine) line.push_back(char(c));
        else tooLong = true;
    }
    in.setstate(std::ios::eofbit);
    if (!any) return std::nullopt;
    return line;
}

int RunSession(const SessionOptions& options, std::istream& in, std::ostream& out) {
    Session session(options);
    bool tooLong = false;
    while (!session.Ended()) {
        const std::optional<std::string> line = ReadSessionLine(in, tooLong);
        if (!line) break;
        if (tooLong) out << Error("the line is longer than " + std::to_string(kLongestSessionLine) + " bytes") << '\n';
        else out << AnswerLine(session, *line) << '\n';
        out.flush();
    }
    return session.Refused() ? commandline::kFailed : commandline::kSucceeded;
}

}  // namespace kelvra::cli
