#include "JsonWriter.h"

#include "JsonText.h"

namespace tool {

void JsonWriter::NewLine(std::size_t depth) {
    out_ << '\n';
    for (std::size_t i = 0; i < depth; ++i) out_ << "  ";
}

void JsonWriter::BeforeItem() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levels_.empty()) return;
    Level& level = levels_.back();
    if (!level.empty) out_ << (pretty_ && !level.oneLine ? "," : ", ");
    if (pretty_ && !level.oneLine) NewLine(levels_.size());
    level.empty = false;
}

void JsonWriter::Open(char bracket, bool oneLine) {
    BeforeItem();
    out_ << bracket;
    // Inside a one-line array everything stays on its line.
    const bool insideOneLine = !levels_.empty() && levels_.back().oneLine;
    levels_.push_back({oneLine || insideOneLine, true});
}

void JsonWriter::Close(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (pretty_ && !level.oneLine && !level.empty) NewLine(levels_.size());
    out_ << bracket;
    if (levels_.empty()) out_.Flush();
}

void JsonWriter::BeginObject() { Open('{', false); }
void JsonWriter::EndObject() { Close('}'); }
void JsonWriter::BeginArray(bool oneLine) { Open('[', oneLine); }
void JsonWriter::EndArray() { Close(']'); }

void JsonWriter::Key(std::string_view key) {
    BeforeItem();
    out_ << '"' << key << "\": ";
    afterKey_ = true;
}

void JsonWriter::Value(std::string_view json) {
    BeforeItem();
    out_ << json;
}

void JsonWriter::Value(double number) {
    char text[kJsonDoubleSize];
    Value(std::string_view(text, WriteJsonDouble(text, number)));
}

void JsonWriter::Value(std::u16string_view text) {
    BeforeItem();
    PutJsonString(text, [this](char c) { out_ << c; });
}

}  // namespace tool
