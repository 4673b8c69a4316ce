// Writes the tool's JSON objects to a stream, either compact — one line,
// ", " between items and ": " after keys, as scripts read it — or pretty:
// two spaces of indent per level and one member per line, short arrays of
// numbers kept on one line. The text is gathered and goes to the stream
// when the outermost object or array closes.
#pragma once

#include <OutputBuffer.h>

#include "JsonText.h"

#include <array>
#include <bit>
#include <cstring>
#include <concepts>
#include <cstdint>
#include <ostream>
#include <string_view>
#include <vector>

namespace tool {

class JsonWriter {
public:
    JsonWriter(std::ostream& out, bool pretty) : out_(out), pretty_(pretty) {}

    void BeginObject();
    void EndObject();
    // An array on one line, also when pretty.
    void BeginArray(bool oneLine = false);
    void EndArray();
    // The next member's key, a name of plain letters.
    void Key(std::string_view key);
    // A value already written as JSON (JsonText.h): a member's after Key, or
    // an array item.
    void Value(std::string_view json);
    // Values written as JsonText.h spells them, without a string of their own.
    template <std::integral Integer>
        requires(!std::same_as<Integer, bool> && !std::same_as<Integer, char>)
    void Value(Integer number) {
        BeforeItem();
        out_ << number;
    }
    void Value(double number);
    void Value(std::u16string_view text);
    // Key and value in one.
    template <typename Json>
    void Member(std::string_view key, const Json& json) {
        Key(key);
        Value(json);
    }

private:
    struct Level {
        bool oneLine = false;
        bool empty = true;
    };
    void Open(char bracket, bool oneLine);
    void Close(char bracket);
    // Out of line: only pretty output breaks lines.
    void NewLine(std::size_t depth);
    // The separator before an item of the innermost level. Inline for the
    // value after a key, which needs none; the rest is SeparateItem.
    void BeforeItem() {
        if (afterKey_) {
            afterKey_ = false;
            return;
        }
        if (!levels_.empty()) SeparateItem();
    }
    void SeparateItem();

    // The text of recent doubles: a book's values mostly come from a few
    // hundred byte values, and writing 17 digits is the dearest part of
    // its JSON.
    struct DoubleText {
        std::uint64_t bits = 0;
        std::uint8_t size = 0;  // 0: empty
        char text[kJsonDoubleSize];
    };
    // The text of `number`, in its slot: all kJsonDoubleSize characters
    // behind the view's start may be read.
    std::string_view TextOf(double number);

    commandline::OutputBuffer out_;
    std::array<DoubleText, 256> doubleTexts_{};
    bool pretty_;
    bool afterKey_ = false;
    std::vector<Level> levels_;
};

// Inline: a book's dump makes a dozen of these calls per swatch.
inline void JsonWriter::SeparateItem() {
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

inline void JsonWriter::Open(char bracket, bool oneLine) {
    BeforeItem();
    out_ << bracket;
    // Inside a one-line array everything stays on its line.
    const bool insideOneLine = !levels_.empty() && levels_.back().oneLine;
    levels_.push_back({oneLine || insideOneLine, true});
}

inline void JsonWriter::Close(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (pretty_ && !level.oneLine && !level.empty) NewLine(levels_.size());
    out_ << bracket;
    if (levels_.empty()) out_.Flush();
}

inline void JsonWriter::BeginObject() { Open('{', false); }
inline void JsonWriter::EndObject() { Close('}'); }
inline void JsonWriter::BeginArray(bool oneLine) { Open('[', oneLine); }
inline void JsonWriter::EndArray() { Close(']'); }

inline void JsonWriter::Key(std::string_view key) {
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

inline void JsonWriter::Value(std::string_view json) {
    BeforeItem();
    out_ << json;
}

inline std::string_view JsonWriter::TextOf(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    DoubleText& slot = doubleTexts_[(bits * 0x9E3779B97F4A7C15u) >> 56];
    if (slot.size == 0 || slot.bits != bits) {
        slot.bits = bits;
        slot.size = std::uint8_t(WriteJsonDouble(slot.text, number) - slot.text);
    }
    return {slot.text, slot.size};
}

inline void JsonWriter::Value(double number) {
    BeforeItem();
    const std::string_view text = TextOf(number);
    // The whole slot is copied, a fixed size the compiler copies in a few
    // moves; only the text's own characters count.
    out_.WriteAtMost(kJsonDoubleSize, [&text](char* at) {
        std::memcpy(at, text.data(), kJsonDoubleSize);
        return at + text.size();
    });
}

inline void JsonWriter::Value(std::u16string_view text) {
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
