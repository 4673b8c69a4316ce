// The fields of one session command, read once into typed values: a field
// that is missing or of the wrong type ends the command with a
// SessionError naming it, never with whatever nlohmann would throw.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace kelvra::cli {

// What is wrong with a command: the session answers it as the error.
class SessionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class SessionFields {
public:
    explicit SessionFields(const nlohmann::json& command) : command_(command) {}

    std::string Text(const char* name) const;
    std::optional<std::string> OptionalText(const char* name) const;
    // A whole number from `least` to `most`.
    std::int64_t Integer(const char* name, std::int64_t least, std::int64_t most) const;
    std::optional<std::int64_t> OptionalInteger(const char* name, std::int64_t least, std::int64_t most) const;
    bool Flag(const char* name, bool byDefault) const;
    // A list of texts (at least one).
    std::vector<std::string> Texts(const char* name) const;

private:
    const nlohmann::json* Find(const char* name) const;

    const nlohmann::json& command_;
};

}  // namespace kelvra::cli
