#include <kelvra/EventLog.h>

#include <algorithm>

namespace kelvra {

namespace {

// Keeps an event on one line.
std::string OneLine(const std::string& text) {
    std::string line;
    for (char c : text) {
        if (c == '\n') line += "\\n";
        else if (c == '\t') line += "\\t";
        else if (c == '\r') line += "\\r";
        else line += c;
    }
    return line;
}

}  // namespace

const char* KindName(Event::Kind kind) {
    switch (kind) {
    case Event::Kind::Alert: return "alert";
    case Event::Kind::Question: return "question";
    case Event::Kind::MoreInfo: return "more-info";
    case Event::Kind::Usage: return "usage";
    }
    return "?";
}

std::string ReadableLine(const Event& event) {
    const std::string kind = KindName(event.kind);
    switch (event.kind) {
    case Event::Kind::Alert:
        return kind + ": " + OneLine(event.text);
    case Event::Kind::Question:
        return kind + ": " + OneLine(event.text) + " -> " + (event.answer ? "yes" : "no");
    case Event::Kind::MoreInfo:
        return kind + " " + std::to_string(event.number) + ": " + OneLine(event.text) +
               " [help: " + OneLine(event.helpKey) + "]";
    case Event::Kind::Usage:
        return kind + ": " + OneLine(event.category) + " / " + OneLine(event.event) +
               (event.hasDetail ? " / " + OneLine(event.detail) : "");
    }
    return kind;
}

std::size_t EventLog::Count(Event::Kind kind) const {
    return std::size_t(std::count_if(events_.begin(), events_.end(),
                                     [kind](const Event& e) { return e.kind == kind; }));
}

}  // namespace kelvra
