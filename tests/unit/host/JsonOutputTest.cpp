#include <JsonOutput.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <sstream>

namespace {

using nlohmann::json;

std::string Written(const json& value) {
    std::ostringstream out;
    {
        commandline::OutputBuffer buffer(out);
        kelvra::cli::PrettyJson pretty(buffer);
        pretty.Value(value);
    }
    return out.str();
}

TEST(JsonOutputTest, NestingDeeperThanOneIndentPieceIsIndentedAsTheLibraryDoes) {
    json value = {{"leaf", 1.5}, {"list", {1, 2}}};
    for (int depth = 0; depth < 80; ++depth) value = {{"level", depth}, {"inner", value}, {"after", {true}}};
    EXPECT_EQ(Written(value), value.dump(2));
}

TEST(JsonOutputTest, DoublesAreSpelledAsTheLibraryDoesWhetherNewRepeatedOrSharingAPlace) {
    // Thousands of distinct doubles, so that many share a place among the
    // kept spellings, each written again after others took its place.
    std::mt19937_64 random(12345);
    json values = json::array();
    for (int i = 0; i < 5000; ++i) {
        double number = std::bit_cast<double>(random());
        if (!std::isfinite(number)) number = double(i) / 7;
        values.push_back(number);
        values.push_back(double(i % 97) / 100);
        values.push_back(-0.0);
        values.push_back(double(i));
    }
    for (int i = 0; i < 5000; ++i) values.push_back(values[std::size_t(random() % values.size())]);
    values.push_back(std::numeric_limits<double>::denorm_min());
    values.push_back(-std::numeric_limits<double>::max());
    values.push_back(-2.2250738585072014e-308);
    EXPECT_EQ(Written(values), values.dump(2));
}

TEST(JsonOutputTest, NotFiniteNumbersAreNullAsInTheLibrary) {
    const json values = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 0.25};
    EXPECT_EQ(Written(values), values.dump(2));
    EXPECT_EQ(Written(values), "[\n  null,\n  null,\n  0.25\n]");
}

}  // namespace
