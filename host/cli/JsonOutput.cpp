#include "JsonOutput.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <iterator>

namespace kelvra::cli {

void PrettyJson::BeforeItem() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levelEmpty_.empty()) return;
    const bool comma = !levelEmpty_.back();
    levelEmpty_.back() = false;
    NewLine(levelEmpty_.size(), comma);
}

void PrettyJson::NewLine(std::size_t depth, bool comma) {
    // The comma, the line break and the indent of up to 32 levels are copied
    // at one fixed size, a few moves without a length to dispatch on, and
    // the piece's own length is kept.
    static constexpr char kPiece[] = ",\n                                                                ";
    constexpr std::size_t kPieceSize = sizeof(kPiece) - 1;
    constexpr std::size_t kMostInOnePiece = (kPieceSize - 2) / 2;
    const char* const from = comma ? kPiece : kPiece + 1;  // reads at most the final NUL
    const std::size_t size = (comma ? 2 : 1) + 2 * std::min(depth, kMostInOnePiece);
    out_.WriteAtMost(kPieceSize, [&](char* start) {
        std::memcpy(start, from, kPieceSize);
        return start + size;
    });
    for (std::size_t i = kMostInOnePiece; i < depth; ++i) out_ << "  ";
}

void PrettyJson::Open(char bracket) {
    BeforeItem();
    out_ << bracket;
    levelEmpty_.push_back(true);
}

void PrettyJson::Close(char bracket) {
    const bool empty = levelEmpty_.back();
    levelEmpty_.pop_back();
    if (!empty) NewLine(levelEmpty_.size(), false);
    out_ << bracket;
}

void PrettyJson::Key(std::string_view key) {
    BeforeItem();
    WriteJsonString(out_, key);
    out_ << ": ";
    afterKey_ = true;
}

void PrettyJson::String(std::string_view utf8) {
    BeforeItem();
    WriteJsonString(out_, utf8);
}

void PrettyJson::Integer(std::int64_t number) {
    BeforeItem();
    out_ << number;
}

void PrettyJson::Unsigned(std::uint64_t number) {
    BeforeItem();
    out_ << number;
}

void PrettyJson::Float(double number) {
    BeforeItem();
    if (!std::isfinite(number)) {
        out_ << "null";
        return;
    }
    out_ << Spelling(number);
}

std::string_view PrettyJson::Spelling(double number) {
    // A document's values repeat (a book has few distinct inks), so their
    // spellings are kept by the double's bits, in the place those bits hash to.
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(number);
    KnownSpelling& known = spellings_[(bits * 0x9E3779B97F4A7C15u) >> (64 - kSpellingBits)];
    if (known.bits != bits) {
        // The library's own spelling of a double (shortest digits that read
        // back, "1.0" for a whole number), which its dump uses.
        known.size = std::uint8_t(nlohmann::detail::to_chars(known.text, std::end(known.text), number) - known.text);
        known.bits = bits;
    }
    return {known.text, known.size};
}

void PrettyJson::Null() {
    BeforeItem();
    out_ << "null";
}

void PrettyJson::Bool(bool value) {
    BeforeItem();
    out_ << (value ? "true" : "false");
}

void PrettyJson::Value(const nlohmann::json& value) {
    using Type = nlohmann::json::value_t;
    switch (value.type()) {
    case Type::object:
        BeginObject();
        for (const auto& [key, item] : value.items()) {
            Key(key);
            Value(item);
        }
        EndObject();
        return;
    case Type::array:
        BeginArray();
        for (const nlohmann::json& item : value) Value(item);
        EndArray();
        return;
    case Type::string: String(value.get_ref<const std::string&>()); return;
    case Type::boolean: Bool(value.get<bool>()); return;
    case Type::number_integer: Integer(value.get<std::int64_t>()); return;
    case Type::number_unsigned: Unsigned(value.get<std::uint64_t>()); return;
    case Type::number_float: Float(value.get<double>()); return;
    case Type::null:
    case Type::discarded:
    case Type::binary: Null(); return;
    }
}

}  // namespace kelvra::cli
