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

namespace {

// An array of `count` copies of `text`, compact.
std::string ArrayOf(const std::u16string& text, int count) {
    std::ostringstream out;
    tool::JsonWriter json(out, false);
    json.BeginArray();
    for (int i = 0; i < count; ++i) json.Value(text);
    json.EndArray();
    return out.str();
}

TEST(JsonWriterTest, StringsAcrossTheBufferEdgeComeOutWhole) {
    // 7 + 2 quotes + 2 separator = 11 characters each: some copies straddle
    // every 64 KiB edge of the writer's buffer.
    const std::string written = ArrayOf(u"a\"b\x01" u"c", 20000);
    const std::string one = R"("a\u0022b\u0001c")";
    std::string expected = "[" + one;
    for (int i = 1; i < 20000; ++i) expected += ", " + one;
    EXPECT_EQ(written, expected + "]");
}

TEST(JsonWriterTest, AStringLongerThanTheBufferTakesIsWrittenWhole) {
    // Escaped, 40,000 units are 240,000 characters, more than the buffer.
    const std::u16string text(40000, u'\\');
    std::string expected = "[\"";
    for (int i = 0; i < 40000; ++i) expected += "\\u005c";
    EXPECT_EQ(ArrayOf(text, 1), expected + "\"]");
}

}  // namespace
