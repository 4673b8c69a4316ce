// Writes the tool's JSON objects to a stream, either compact — one line,
// ", " between items and ": " after keys, as scripts read it — or pretty:
// two spaces of indent per level and one member per line, short arrays of
// numbers kept on one line.
#pragma once

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
    // Key and value in one.
    void Member(std::string_view key, std::string_view json);

private:
    struct Level {
        bool oneLine = false;
        bool empty = true;
    };
    void Open(char bracket, bool oneLine);
    void Close(char bracket);
    void NewLine(std::size_t depth);
    // The separator before an item of the innermost level.
    void BeforeItem();

    std::ostream& out_;
    bool pretty_;
    bool afterKey_ = false;
    std::vector<Level> levels_;
};

}  // namespace tool
