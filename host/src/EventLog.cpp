#include <kelvra/DocumentJson.h>
#include <kelvra/EventLog.h>
#include <kelvra/FloatText.h>

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

std::string Quoted(const std::string& text) { return "\"" + OneLine(text) + "\""; }

std::string DefinitionText(const KVCustomColor& definition) {
    const DefinitionValues values = ValuesOf(definition);
    std::string text = values.kind;
    for (std::size_t i = 0; i < values.count; ++i) text += " " + FloatText(values.values[i]);
    text += (definition.flags & kKVCustomSpotColor) != 0 ? ", spot" : ", global";
    return (definition.flags & kKVCustomRegistrationColor) != 0 ? text + ", registration" : text;
}

}  // namespace

const char* KindName(Event::Kind kind) {
    switch (kind) {
    case Event::Kind::Alert: return "alert";
    case Event::Kind::Question: return "question";
    case Event::Kind::MoreInfo: return "more-info";
    case Event::Kind::Usage: return "usage";
    case Event::Kind::CustomColorRedefined: return "custom-color-redefined";
    case Event::Kind::CustomColorShared: return "custom-color-shared";
    case Event::Kind::EmptySwatchName: return "empty-swatch-name";
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
    case Event::Kind::CustomColorRedefined:
        return kind + ": " + Quoted(event.customColor) + " in " + Quoted(event.document) + ": " +
               DefinitionText(event.before) + " -> " + DefinitionText(event.after);
    case Event::Kind::CustomColorShared:
        return kind + ": " + Quoted(event.customColor) + " in " + Quoted(event.document) + ": " +
               std::to_string(event.swatches) + " swatches, " + std::to_string(event.definitions) + " definitions";
    case Event::Kind::EmptySwatchName:
        return kind + ": " + Quoted(event.document) + " group " + std::to_string(event.group) + " swatch " +
               std::to_string(event.swatch);
    }
    return kind;
}

std::size_t EventLog::Count(Event::Kind kind) const {
    return std::size_t(std::count_if(events_.begin(), events_.end(),
                                     [kind](const Event& e) { return e.kind == kind; }));
}

}  // namespace kelvra
