// kelvra-host's JSON written as it goes rather than built first: the same
// bytes as nlohmann::json's dump(2) of the same value — two spaces of
// indent a level, ": " after keys, [] and {} when empty, strings escaped
// and numbers spelled as that library spells them — so that the output of
// a large document does not first hold the whole document as JSON values.
#pragma once

#include <OutputBuffer.h>
#include <kelvra/DocumentJson.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kelvra::cli {

// A JSON string as nlohmann::json(std::string(text)).dump() writes it, to
// a stream or an OutputBuffer: printable ASCII as it is; anything else is
// left to the JSON library, which escapes it and refuses text that is not
// UTF-8.
template <typename Out>
void WriteJsonString(Out& out, std::string_view text) {
    const bool plain = std::all_of(text.begin(), text.end(),
                                   [](char c) { return c >= 0x20 && c <= 0x7E && c != '"' && c != '\\'; });
    if (plain) out << '"' << text << '"';
    else out << std::string_view(nlohmann::json(std::string(text)).dump());
}

class PrettyJson final : public JsonParts {
public:
    explicit PrettyJson(commandline::OutputBuffer& out) : out_(out) {}

    void BeginObject() override { Open('{'); }
    void EndObject() override { Close('}'); }
    void BeginArray() override { Open('['); }
    void EndArray() override { Close(']'); }
    void Key(std::string_view key) override;
    void String(std::string_view utf8) override;
    void Integer(std::int64_t number) override;
    void Unsigned(std::uint64_t number) override;
    void Float(double number) override;
    void Null() override;
    void Bool(bool value);
    // A value already built, written part by part.
    void Value(const nlohmann::json& value);

private:
    void Open(char bracket);
    void Close(char bracket);
    // The comma, line break and indent before an item of the innermost level.
    void BeforeItem();
    void NewLine(std::size_t depth, bool comma);
    // A finite double as the library spells it.
    std::string_view Spelling(double number);

    struct KnownSpelling {
        std::uint64_t bits = 0x7FF8000000000001;  // a NaN's, which is never spelled
        std::uint8_t size = 0;
        char text[31];  // the longest spelling, "-2.2250738585072014e-308", is 24
    };
    static constexpr int kSpellingBits = 9;

    commandline::OutputBuffer& out_;
    std::vector<bool> levelEmpty_;  // per open object or array, the innermost last
    bool afterKey_ = false;
    std::array<KnownSpelling, std::size_t(1) << kSpellingBits> spellings_{};
};

}  // namespace kelvra::cli
