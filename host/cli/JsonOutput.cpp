#include "JsonOutput.h"

#include <cmath>
#include <iterator>

namespace kelvra::cli {

void PrettyJson::BeforeItem() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levelEmpty_.empty()) return;
    if (!levelEmpty_.back()) out_ << ',';
    levelEmpty_.back() = false;
    out_ << '\n';
    for (std::size_t i = 0; i < levelEmpty_.size(); ++i) out_ << "  ";
}

void PrettyJson::Open(char bracket) {
    BeforeItem();
    out_ << bracket;
    levelEmpty_.push_back(true);
}

void PrettyJson::Close(char bracket) {
    const bool empty = levelEmpty_.back();
    levelEmpty_.pop_back();
    if (!empty) {
        out_ << '\n';
        for (std::size_t i = 0; i < levelEmpty_.size(); ++i) out_ << "  ";
    }
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
    // The library's own spelling of a double (shortest digits that read
    // back, "1.0" for a whole number), which its dump uses.
    char text[64];
    out_ << std::string_view(text, nlohmann::detail::to_chars(text, std::end(text), number));
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
