// What importing one more colour costs in host calls: a guard that times
// nothing. Two books that differ only in their number of colours are
// imported; the calls the larger one made beyond the smaller one, per extra
// colour, must stay what they are, so that a change adding a call per
// swatch fails here rather than only in a benchmark.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

#include "ModuleImport.h"
#include "tests/support/ColorBookBuilder.h"

namespace {

using CallsByFunction = std::map<std::string, std::uint64_t>;

class HostCallsPerColourTest : public import_testing::ModuleImportTest {
protected:
    struct Import {
        std::uint64_t total = 0;
        CallsByFunction byFunction;
    };

    // The host calls one import of a book of `colors` colours made.
    Import CallsToImport(int colors) {
        const std::filesystem::path file =
            folder_.Write("book" + std::to_string(colors) + ".ocb",
                          testsupport::BuildColorBook(testsupport::NumberedSpotColorBook("Guard", colors)));
        kelvra::Document& document = host_.Documents().New("Import");
        const std::uint64_t totalBefore = host_.Faults().TotalCalls();
        const CallsByFunction before = ByFunction();
        EXPECT_EQ(Go(colorBook_, file, document), kZPNoErr);
        EXPECT_EQ(document.SwatchCount(), std::size_t(colors));
        Import import;
        import.total = host_.Faults().TotalCalls() - totalBefore;
        for (const auto& [function, calls] : ByFunction()) {
            const auto earlier = before.find(function);
            const std::uint64_t made = calls - (earlier == before.end() ? 0 : earlier->second);
            if (made != 0) import.byFunction[function] = made;
        }
        host_.Documents().Close(document);
        return import;
    }

    CallsByFunction ByFunction() {
        CallsByFunction calls;
        for (const auto& [name, count] : host_.Faults().Calls()) calls[name.first + "." + name.second] = count;
        return calls;
    }
};

TEST_F(HostCallsPerColourTest, EachImportedColourCostsTwelveHostCalls) {
    constexpr int kSmaller = 100;
    constexpr int kLarger = 300;
    const Import smaller = CallsToImport(kSmaller);
    const Import larger = CallsToImport(kLarger);
    EXPECT_EQ(larger.total - smaller.total, 12u * (kLarger - kSmaller));
}

TEST_F(HostCallsPerColourTest, EachImportedColourMakesTheseCalls) {
    constexpr int kSmaller = 100;
    constexpr int kLarger = 300;
    const Import smaller = CallsToImport(kSmaller);
    const Import larger = CallsToImport(kLarger);
    CallsByFunction perColour;
    for (const auto& [function, calls] : larger.byFunction) {
        const auto inSmaller = smaller.byFunction.find(function);
        const std::uint64_t extra = calls - (inSmaller == smaller.byFunction.end() ? 0 : inSmaller->second);
        if (extra != 0) {
            EXPECT_EQ(extra % (kLarger - kSmaller), 0u) << function;
            perColour[function] = extra / (kLarger - kSmaller);
        }
    }
    const CallsByFunction expected = {
        {"KV Custom Color Suite.FindCustomColor", 1},  {"KV Custom Color Suite.NewCustomColor", 1},
        {"KV Custom Color Suite.SetCustomColorBookID", 1}, {"KV Swatch Group Suite.CountSwatches", 1},
        {"KV Swatch Group Suite.GetNthSwatch", 1},     {"KV Swatch Group Suite.InsertSwatch", 1},
        {"KV Swatch List Suite.SetSwatchColor", 1},    {"KV Swatch List Suite.SetSwatchName", 1},
        {"KV Unicode String Suite.Dispose", 2},        {"KV Unicode String Suite.NewFromUTF16", 2},
    };
    EXPECT_EQ(perColour, expected);
}

}  // namespace
