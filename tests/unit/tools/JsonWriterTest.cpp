#include "JsonWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// {"a": 1, "list": [{"b": true}, []], "one": [1, 2], "empty": {}}
std::string Written(bool pretty) {
    std::ostringstream out;
    tool::JsonWriter json(out, pretty);
    json.BeginObject();
    json.Member("a", "1");
    json.Key("list");
    json.BeginArray();
    json.BeginObject();
    json.Member("b", "true");
    json.EndObject();
    json.BeginArray();
    json.EndArray();
    json.EndArray();
    json.Key("one");
    json.BeginArray(true);
    json.Value("1");
    json.Value("2");
    json.EndArray();
    json.Key("empty");
    json.BeginObject();
    json.EndObject();
    json.EndObject();
    return out.str();
}

TEST(JsonWriterTest, CompactIsOneLineWithBlanksAfterCommasAndColons) {
    EXPECT_EQ(Written(false), R"({"a": 1, "list": [{"b": true}, []], "one": [1, 2], "empty": {}})");
}

TEST(JsonWriterTest, PrettyPutsEachMemberOnItsOwnLineButKeepsOneLineArrays) {
    EXPECT_EQ(Written(true),
              "{\n"
              "  \"a\": 1,\n"
              "  \"list\": [\n"
              "    {\n"
              "      \"b\": true\n"
              "    },\n"
              "    []\n"
              "  ],\n"
              "  \"one\": [1, 2],\n"
              "  \"empty\": {}\n"
              "}");
}

}  // namespace
