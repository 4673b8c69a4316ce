#include "JsonWriter.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

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

// Doubles are written as JsonDouble spells them, also when a value comes
// again after many others and when two values share the writer's memory of
// recent texts.
TEST(JsonWriterTest, WritesEveryDoubleAsJsonDoubleDoesWhateverCameBefore) {
    std::vector<double> values = {0.0, -0.0, 0.1, 1.0 / 3.0, std::numeric_limits<double>::quiet_NaN(),
                                  -std::numeric_limits<double>::infinity(), 1e300};
    for (int i = 0; i < 2000; ++i) values.push_back(i / 255.0);
    for (int i = 0; i < 600; ++i) values.push_back(values[std::size_t(i * 7) % values.size()]);
    std::ostringstream out;
    std::string expected = "[";
    {
        tool::JsonWriter json(out, false);
        json.BeginArray(true);
        for (const double value : values) {
            json.Value(value);
            expected += (expected.size() > 1 ? ", " : "") + tool::JsonDouble(value);
        }
        json.EndArray();
    }
    EXPECT_EQ(out.str(), expected + "]");
    EXPECT_TRUE(out.str().starts_with("[0, -0, 0.10000000000000001, 0.33333333333333331, \"NaN\", \"-Infinity\", "))
        << out.str().substr(0, 100);
}

}  // namespace
