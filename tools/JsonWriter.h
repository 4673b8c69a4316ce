// Writes the tool's JSON objects to a stream, either compact — one line,
// ", " between items and ": " after keys, as scripts read it — or pretty:
// two spaces of indent per level and one member per line, short arrays of
// numbers kept on one line. The text is gathered and goes to the stream
// when the outermost object or array closes.
#pragma once

#include <OutputBuffer.h>

#include "JsonText.h"

#include <array>
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

}  // namespace tool
