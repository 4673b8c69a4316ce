#include "JsonWriter.h"

#include "JsonText.h"

#include <bit>
#include <cstring>

namespace tool {

void JsonWriter::NewLine(std::size_t depth) {
    out_ << '\n';
    for (std::size_t i = 0; i < depth; ++i) out_ << "  ";
}

void JsonWriter::SeparateItem() {
    Level& level = levels_.back();
    const bool ownLines = pretty_ && !level.oneLine;
    if (!level.empty) {
        out_.WriteAtMost(2, [ownLines](char* at) {
            *at++ = ',';
            if (!ownLines) *at++ = ' ';
            return at;
        });
    }
    if (ownLines) NewLine(levels_.size());
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
    if (key.size() + 4 > commandline::OutputBuffer::Capacity()) {
        out_ << '"' << key << "\": ";
    } else {
        out_.WriteAtMost(key.size() + 4, [key](char* at) {
            *at++ = '"';
            at += key.copy(at, key.size());
            *at++ = '"';
            *at++ = ':';
            *at++ = ' ';
            return at;
        });
    }
    afterKey_ = true;
}

void JsonWriter::Value(std::string_view json) {
    BeforeItem();
    out_ << json;
}

std::string_view JsonWriter::TextOf(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    DoubleText& slot = doubleTexts_[(bits * 0x9E3779B97F4A7C15u) >> 56];
    if (slot.size == 0 || slot.bits != bits) {
        slot.bits = bits;
        slot.size = std::uint8_t(WriteJsonDouble(slot.text, number) - slot.text);
    }
    return {slot.text, slot.size};
}

void JsonWriter::Value(double number) {
    BeforeItem();
    const std::string_view text = TextOf(number);
    // The whole slot is copied, a fixed size the compiler copies in a few
    // moves; only the text's own characters count.
    out_.WriteAtMost(kJsonDoubleSize, [&text](char* at) {
        std::memcpy(at, text.data(), kJsonDoubleSize);
        return at + text.size();
    });
}

void JsonWriter::Value(std::u16string_view text) {
    BeforeItem();
    const std::size_t most = kJsonStringMostPerUnit * text.size() + 2;
    if (most > commandline::OutputBuffer::Capacity()) {
        PutJsonString(text, [this](char c) { out_ << c; });
        return;
    }
    out_.WriteAtMost(most, [text](char* at) {
        PutJsonString(text, [&at](char c) { *at++ = c; });
        return at;
    });
}

}  // namespace tool
