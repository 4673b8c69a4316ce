#include "LookupReport.h"

#include "ColorText.h"
#include "EventText.h"
#include "ResultJson.h"

#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

#include <algorithm>

namespace kelvra::cli {

namespace {

using nlohmann::json;

const char* ModelName(KVReferenceColorModel model) {
    switch (model) {
    case kKVReferenceCMYK:
        return "cmyk";
    case kKVReferenceRGB:
        return "rgb";
    case kKVReferenceLab:
        return "lab";
    }
    return "?";
}

// The channels a model has; the rest of the four values are unused.
std::size_t Channels(KVReferenceColorModel model) { return model == kKVReferenceCMYK ? 4 : 3; }

// The colour as the host writes colours for a person; none when the model
// could not express it.
std::optional<ColorValues> ValuesOf(const ReferenceColour& colour) {
    if (!colour.model) return std::nullopt;
    ColorValues values;
    switch (*colour.model) {
    case kKVReferenceCMYK: values.model = ColorValues::Model::Cmyk; break;
    case kKVReferenceRGB: values.model = ColorValues::Model::Rgb; break;
    case kKVReferenceLab: values.model = ColorValues::Model::Lab; break;
    }
    for (std::size_t i = 0; i < Channels(*colour.model); ++i) values.values[i] = float(colour.values[i]);
    return values;
}

void WriteCall(std::ostream& out, const std::string& function, const TintoraCall& call) {
    out << "  " << function << " -> " << ReadableText(call) << "\n";
}

void WriteName(std::ostream& out, const NameLookup& lookup, ChipDepth chips) {
    const std::optional<ColorValues> values =
        lookup.answer.call.Succeeded() ? ValuesOf(lookup.answer.value) : std::nullopt;
    const std::optional<Srgb> shown = values ? std::optional<Srgb>(ShownColor(*values)) : std::nullopt;
    out << "  ";
    WriteChip(out, shown, chips);
    if (shown) WriteHex(out, *shown);
    else out << "       ";
    out << ' ' << json(lookup.name).dump();
    if (!lookup.answer.call.Succeeded()) {
        out << " -> " << ReadableText(lookup.answer.call) << "\n";
        return;
    }
    out << ": ";
    if (values) WriteValues(out, *values);
    else out << "no colour the model can express";
    out << (lookup.answer.value.spot ? ", spot" : ", process") << "\n";
}

json NameJson(const NameLookup& lookup) {
    json entry = CallJson(lookup.answer.call);
    entry["name"] = lookup.name;
    entry["color"] = nullptr;
    if (lookup.answer.call.Succeeded()) {
        const ReferenceColour& colour = lookup.answer.value;
        entry["color"] = {{"model", colour.model ? json(ModelName(*colour.model)) : json(nullptr)},
                          {"values", colour.values},
                          {"spot", colour.spot}};
    }
    return entry;
}

// A call as {"function", …CallJson}.
json Step(const char* function, const TintoraCall& call) {
    json step = CallJson(call);
    step["function"] = function;
    return step;
}

}  // namespace

std::size_t LookupReport::Found() const {
    return std::size_t(
        std::count_if(names.begin(), names.end(), [](const NameLookup& n) { return n.answer.call.Succeeded(); }));
}

bool LookupReport::Succeeded() const {
    return run.Succeeded() && !missing && colorBook && colorBook->call.Succeeded() && BookRead() && bookId &&
           bookId->call.Succeeded() && Found() == namesAsked && dispose && dispose->Succeeded();
}

void WriteLookupText(std::ostream& out, const LookupReport& report, ChipDepth chips) {
    WriteStart(out, report.run);
    if (!report.run.Ready()) {
        WriteShutdown(out, report.run);
        return;
    }
    out << "file: " << report.file.string() << "\n";
    if (report.missing) out << "  no such file\n";
    if (report.colorBook) {
        out << "  IsColorBookFile -> "
            << (report.colorBook->call.Succeeded() ? (report.colorBook->value ? "yes" : "no")
                                                    : ReadableText(report.colorBook->call))
            << "\n";
    }
    if (report.newBook) WriteCall(out, "NewReferenceBook", *report.newBook);
    if (report.read) WriteCall(out, report.reader, *report.read);
    if (report.bookId) {
        out << "  GetReferenceBookID -> " << ReadableText(report.bookId->call);
        if (report.bookId->call.Succeeded()) out << ": book id " << report.bookId->value;
        out << "\n";
    }
    for (const NameLookup& lookup : report.names) WriteName(out, lookup, chips);
    if (report.dispose) WriteCall(out, "DisposeReferenceBook", *report.dispose);
    WriteEvents(out, report.events);
    WriteShutdown(out, report.run);
    if (report.BookRead()) {
        const std::size_t found = report.Found();
        out << report.namesAsked << (report.namesAsked == 1 ? " name: " : " names: ") << found << " found, "
            << report.namesAsked - found << " not found\n";
    } else {
        out << "the book was not read: no name was looked up\n";
    }
}

json LookupJson(const LookupReport& report) {
    json out = ClientRunJson(report.run);
    if (!report.run.refusal.empty()) return out;
    out["file"] = report.file.string();
    out["found"] = !report.missing;
    json calls = json::array();
    if (report.colorBook) {
        calls.push_back(Step("IsColorBookFile", report.colorBook->call));
        calls.back()["answer"] = report.colorBook->value;
    }
    if (report.newBook) calls.push_back(Step("NewReferenceBook", *report.newBook));
    if (report.read) calls.push_back(Step(report.reader.c_str(), *report.read));
    if (report.bookId) calls.push_back(Step("GetReferenceBookID", report.bookId->call));
    if (report.dispose) calls.push_back(Step("DisposeReferenceBook", *report.dispose));
    out["calls"] = std::move(calls);
    out["colorBook"] = report.colorBook && report.colorBook->call.Succeeded() ? json(report.colorBook->value) : json();
    out["bookId"] = report.bookId && report.bookId->call.Succeeded() ? json(report.bookId->value) : json();
    out["names"] = json::array();
    for (const NameLookup& lookup : report.names) out["names"].push_back(NameJson(lookup));
    out["events"] = ToJson(report.events);
    out["failed"] = !report.Succeeded();
    return out;
}

}  // namespace kelvra::cli
