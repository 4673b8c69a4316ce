#include "SessionFields.h"

#include <limits>

namespace kelvra::cli {

namespace {

[[noreturn]] void Wrong(const char* name, const char* what) {
    throw SessionError(std::string("field \"") + name + "\" must be " + what);
}

}  // namespace

const nlohmann::json* SessionFields::Find(const char* name) const {
    const auto found = command_.find(name);
    return found == command_.end() || found->is_null() ? nullptr : &*found;
}

std::optional<std::string> SessionFields::OptionalText(const char* name) const {
    const nlohmann::json* value = Find(name);
    if (value == nullptr) return std::nullopt;
    if (!value->is_string()) Wrong(name, "a string");
    return value->get<std::string>();
}

std::string SessionFields::Text(const char* name) const {
    std::optional<std::string> text = OptionalText(name);
    if (!text) throw SessionError(std::string("missing field \"") + name + "\"");
    return *text;
}

std::optional<std::int64_t> SessionFields::OptionalInteger(const char* name, std::int64_t least,
                                                           std::int64_t most) const {
    const nlohmann::json* value = Find(name);
    if (value == nullptr) return std::nullopt;
    const std::string range = "a whole number from " + std::to_string(least) + " to " + std::to_string(most);
    std::int64_t number = 0;
    if (value->is_number_unsigned()) {
        const std::uint64_t unsignedNumber = value->get<std::uint64_t>();
        if (unsignedNumber > std::uint64_t(std::numeric_limits<std::int64_t>::max())) Wrong(name, range.c_str());
        number = std::int64_t(unsignedNumber);
    } else if (value->is_number_integer()) {
        number = value->get<std::int64_t>();
    } else {
        Wrong(name, range.c_str());
    }
    if (number < least || number > most) Wrong(name, range.c_str());
    return number;
}

std::int64_t SessionFields::Integer(const char* name, std::int64_t least, std::int64_t most) const {
    const std::optional<std::int64_t> number = OptionalInteger(name, least, most);
    if (!number) throw SessionError(std::string("missing field \"") + name + "\"");
    return *number;
}

bool SessionFields::Flag(const char* name, bool byDefault) const {
    const nlohmann::json* value = Find(name);
    if (value == nullptr) return byDefault;
    if (!value->is_boolean()) Wrong(name, "true or false");
    return value->get<bool>();
}

std::vector<std::string> SessionFields::Texts(const char* name) const {
    const nlohmann::json* value = Find(name);
    if (value == nullptr) throw SessionError(std::string("missing field \"") + name + "\"");
    if (!value->is_array() || value->empty()) Wrong(name, "a list of strings, not empty");
    std::vector<std::string> texts;
    for (const nlohmann::json& item : *value) {
        if (!item.is_string()) Wrong(name, "a list of strings, not empty");
        texts.push_back(item.get<std::string>());
    }
    return texts;
}

}  // namespace kelvra::cli
