// "KV Custom Color Suite" on the host's documents, as a plug-in calls it.
#include "HostTesting.h"

#include <KVSwatchSuites.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using kelvra::testing::Acquire;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

KVCustomColor Lab(float l, float a, float b, std::uint32_t flags) {
    KVCustomColor color{};
    color.kind = kKVCustomLabColor;
    color.c.lab = {l, a, b};
    color.flags = flags;
    return color;
}

KVCustomColor Cmyk(float c, float m, float y, float k) {
    KVCustomColor color{};
    color.kind = kKVCustomFourColor;
    color.c.four = {c, m, y, k};
    return color;
}

class CustomColorSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    kelvra::testing::Strings strings{host};
    const KVCustomColorSuite* colors = Acquire<KVCustomColorSuite>(host, kKVCustomColorSuite, 8);
    kelvra::Document& document = host.Documents().New("doc");

    KVCustomColorHandle New(std::u16string_view name, const KVCustomColor& definition) {
        KVCustomColorHandle color = nullptr;
        EXPECT_EQ(colors->NewCustomColor(&definition, strings.Make(name), &color), 0u);
        return color;
    }
};

TEST_F(CustomColorSuiteTest, ANewColourBelongsToTheCurrentDocument) {
    kelvra::Document& other = host.Documents().New("other");
    const KVCustomColorHandle gold = New(u"Gold", Lab(80, 5, 60, kKVCustomSpotColor));
    ASSERT_NE(gold, nullptr);
    EXPECT_TRUE(document.CustomColors().empty());
    ASSERT_EQ(other.CustomColors().size(), 1u);
    const kelvra::CustomColor& made = *other.CustomColors()[0];
    EXPECT_EQ(kelvra::HandleOf(made), gold);
    EXPECT_EQ(made.name, u"Gold");
    EXPECT_EQ(made.definition.kind, kKVCustomLabColor);
    EXPECT_EQ(made.definition.c.lab.b, 60.0f);
    EXPECT_EQ(made.definition.flags, kKVCustomSpotColor);
    EXPECT_EQ(made.bookId, 0);
}

TEST_F(CustomColorSuiteTest, DefinitionsAreReadAndReplaced) {
    const KVCustomColorHandle ink = New(u"Ink", Cmyk(1, 0.5f, 0, 0));
    KVCustomColor read{};
    EXPECT_EQ(colors->GetCustomColor(ink, &read), 0u);
    EXPECT_EQ(read.kind, kKVCustomFourColor);
    EXPECT_EQ(read.c.four.magenta, 0.5f);
    KVCustomColor rgb{};
    rgb.kind = kKVCustomThreeColor;
    rgb.c.three = {0.25f, 0.5f, 0.75f};
    rgb.flags = kKVCustomRegistrationColor;
    EXPECT_EQ(colors->SetCustomColor(ink, &rgb), 0u);
    EXPECT_EQ(colors->GetCustomColor(ink, &read), 0u);
    EXPECT_EQ(read.kind, kKVCustomThreeColor);
    EXPECT_EQ(read.c.three.blue, 0.75f);
    EXPECT_EQ(read.flags, kKVCustomRegistrationColor);
}

TEST_F(CustomColorSuiteTest, NamesAreReadAndFoundInTheCurrentDocument) {
    const KVCustomColorHandle gold = New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    const KVUnicodeStringRef name = strings.Make(u"");
    EXPECT_EQ(colors->GetCustomColorName(gold, name), 0u);
    EXPECT_EQ(strings.Units(name), u"Gold");
    KVCustomColorHandle found = nullptr;
    EXPECT_EQ(colors->FindCustomColor(strings.Make(u"Gold"), &found), 0u);
    EXPECT_EQ(found, gold);
    host.Documents().New("other");
    EXPECT_EQ(colors->FindCustomColor(strings.Make(u"Gold"), &found), kZPNameNotFoundErr);
    // A handle reaches its colour in any open document.
    EXPECT_EQ(colors->GetCustomColorName(gold, name), 0u);
}

TEST_F(CustomColorSuiteTest, AMissingNameIsNameNotFoundWithANullHandle) {
    New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    KVCustomColorHandle found = reinterpret_cast<KVCustomColorHandle>(&host);
    EXPECT_EQ(colors->FindCustomColor(strings.Make(u"gold"), &found), kZPNameNotFoundErr);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(colors->FindCustomColor(strings.Make(u"Gold "), &found), kZPNameNotFoundErr);
}

TEST_F(CustomColorSuiteTest, ASecondColourOfTheSameNameIsRefused) {
    New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    const KVCustomColor other = Cmyk(1, 1, 1, 1);
    KVCustomColorHandle second = reinterpret_cast<KVCustomColorHandle>(&host);
    EXPECT_EQ(colors->NewCustomColor(&other, strings.Make(u"Gold"), &second), kZPBadParameterErr);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(document.CustomColors().size(), 1u);
}

TEST_F(CustomColorSuiteTest, TheBookIdIsKept) {
    const KVCustomColorHandle gold = New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    EXPECT_EQ(colors->SetCustomColorBookID(gold, 3000), 0u);
    EXPECT_EQ(document.CustomColors()[0]->bookId, 3000);
    EXPECT_EQ(colors->SetCustomColorBookID(nullptr, 1), kZPBadParameterErr);
}

TEST_F(CustomColorSuiteTest, WithoutACurrentDocumentNewAndFindAreNoDocument) {
    const KVCustomColorHandle gold = New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    host.Documents().Close(document);
    const KVCustomColor definition = Cmyk(0, 0, 0, 1);
    KVCustomColorHandle color = nullptr;
    EXPECT_EQ(colors->NewCustomColor(&definition, strings.Make(u"Black"), &color), kZPNoDocumentErr);
    EXPECT_EQ(colors->FindCustomColor(strings.Make(u"Gold"), &color), kZPNoDocumentErr);
    // The closed document's colours are stale.
    KVCustomColor read{};
    EXPECT_EQ(colors->GetCustomColor(gold, &read), kZPBadParameterErr);
    EXPECT_EQ(colors->SetCustomColor(gold, &definition), kZPBadParameterErr);
    EXPECT_EQ(colors->GetCustomColorName(gold, strings.Make(u"")), kZPBadParameterErr);
    EXPECT_EQ(colors->SetCustomColorBookID(gold, 1), kZPBadParameterErr);
}

TEST_F(CustomColorSuiteTest, BadDefinitionsHandlesAndStringsAreRefused) {
    const KVCustomColorHandle gold = New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    KVCustomColor bad = Cmyk(0, 0, 0, 0);
    bad.kind = 3;
    KVCustomColorHandle color = nullptr;
    EXPECT_EQ(colors->NewCustomColor(&bad, strings.Make(u"Bad"), &color), kZPBadParameterErr);
    EXPECT_EQ(colors->NewCustomColor(nullptr, strings.Make(u"Bad"), &color), kZPBadParameterErr);
    const KVCustomColor good = Cmyk(0, 0, 0, 1);
    EXPECT_EQ(colors->NewCustomColor(&good, nullptr, &color), kZPBadParameterErr);
    EXPECT_EQ(colors->NewCustomColor(&good, strings.Make(u"Black"), nullptr), kZPBadParameterErr);
    EXPECT_EQ(colors->SetCustomColor(gold, &bad), kZPBadParameterErr);
    EXPECT_EQ(colors->SetCustomColor(gold, nullptr), kZPBadParameterErr);
    EXPECT_EQ(colors->GetCustomColor(gold, nullptr), kZPBadParameterErr);
    KVCustomColor read{};
    EXPECT_EQ(colors->GetCustomColor(nullptr, &read), kZPBadParameterErr);
    EXPECT_EQ(colors->GetCustomColorName(gold, nullptr), kZPBadParameterErr);
    EXPECT_EQ(colors->FindCustomColor(nullptr, &color), kZPBadParameterErr);
    EXPECT_EQ(colors->FindCustomColor(strings.Make(u"Gold"), nullptr), kZPBadParameterErr);
    EXPECT_EQ(document.CustomColors().size(), 1u);
    EXPECT_EQ(document.CustomColors()[0]->definition.c.four.magenta, 0.2f);
}

TEST_F(CustomColorSuiteTest, EveryFunctionIsCountedAndCanBeFailed) {
    const KVCustomColorHandle gold = New(u"Gold", Cmyk(0, 0.2f, 1, 0));
    const KVCustomColor definition = Cmyk(0, 0, 0, 1);
    KVCustomColor read{};
    KVCustomColorHandle color = nullptr;
    int made = 0;
    const std::pair<const char*, std::function<ZPErr()>> calls[] = {
        {"NewCustomColor",
         [&] {
             return colors->NewCustomColor(&definition, strings.Make(u"c" + std::u16string(1, char16_t(u'0' + made++))),
                                           &color);
         }},
        {"GetCustomColor", [&] { return colors->GetCustomColor(gold, &read); }},
        {"SetCustomColor", [&] { return colors->SetCustomColor(gold, &definition); }},
        {"GetCustomColorName", [&] { return colors->GetCustomColorName(gold, strings.Make(u"")); }},
        {"FindCustomColor", [&] { return colors->FindCustomColor(strings.Make(u"Gold"), &color); }},
        {"SetCustomColorBookID", [&] { return colors->SetCustomColorBookID(gold, 7); }},
    };
    const auto counted = [&](const char* function) {
        auto found = host.Faults().Calls().find({kKVCustomColorSuite, function});
        return found == host.Faults().Calls().end() ? std::uint64_t(0) : found->second;
    };
    for (const auto& [function, call] : calls) {
        const std::uint64_t before = counted(function);
        host.Faults().FailCall({kKVCustomColorSuite, function, 1, false, kFailure});
        EXPECT_EQ(call(), kFailure) << function;
        EXPECT_EQ(call(), 0u) << function;
        EXPECT_EQ(counted(function), before + 2) << function;
    }
    // The failed creation made nothing.
    EXPECT_EQ(document.CustomColors().size(), 2u);
}

}  // namespace
