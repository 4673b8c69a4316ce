#include "EventText.h"

#include "ColorText.h"
#include "DialogText.h"

#include <kelvra/HelpPages.h>

#include <nlohmann/json.hpp>

#include <string>

namespace kelvra::cli {

namespace {

// A name as a quoted, escaped string on one line.
std::string Quoted(const std::string& name) { return nlohmann::json(name).dump(); }

void WriteDefinition(std::ostream& out, const KVCustomColor& definition) {
    out << ((definition.flags & kKVCustomSpotColor) != 0 ? "spot " : "global ");
    const ColorValues color = ColorValuesOf(definition);
    WriteValues(out, color);
    WriteHex(out << ' ', ShownColor(color));
}

// A dialog's text under its label; its later lines line up with the first.
void WriteDialog(std::ostream& out, std::string_view indent, const std::string& label, const std::string& text) {
    out << indent << label;
    const std::string continuation = std::string(indent) + std::string(label.size(), ' ');
    WriteDialogText(out, text, continuation);
}

}  // namespace

void WriteEvent(std::ostream& out, const Event& event, std::string_view indent) {
    switch (event.kind) {
    case Event::Kind::Alert:
        WriteDialog(out, indent, "alert: ", event.text);
        break;
    case Event::Kind::Question:
        WriteDialog(out, indent, "question: ", event.text);
        out << " -> " << (event.answer ? "yes" : "no");
        break;
    case Event::Kind::MoreInfo: {
        const std::string label = "more-info " + std::to_string(event.number) + ": ";
        WriteDialog(out, indent, label, event.text);
        out << '\n' << indent << std::string(label.size(), ' ') << "More Info: " << HelpPageAddress(event.helpKey);
        break;
    }
    case Event::Kind::Usage:
        out << indent << ReadableLine(event);
        break;
    case Event::Kind::CustomColorRedefined:
        out << indent << "redefined: custom colour " << Quoted(event.customColor) << " in " << Quoted(event.document)
            << " was ";
        WriteDefinition(out, event.before);
        out << ", now ";
        WriteDefinition(out, event.after);
        break;
    case Event::Kind::CustomColorShared:
        out << indent << "shared: " << event.swatches << " swatches show custom colour " << Quoted(event.customColor)
            << " in " << Quoted(event.document);
        if (event.definitions > 1) out << ", given " << event.definitions << " definitions; all show the last";
        break;
    case Event::Kind::EmptySwatchName:
        out << indent << "empty name: swatch " << event.swatch + 1 << " of "
            << (event.group == 0 ? std::string("the default group") : "group " + Quoted(event.groupName)) << " in "
            << Quoted(event.document);
        break;
    }
    out << '\n';
}

void WriteEvents(std::ostream& out, const std::vector<Event>& events) {
    for (const Event& event : events) WriteEvent(out, event, "  ");
}

}  // namespace kelvra::cli
