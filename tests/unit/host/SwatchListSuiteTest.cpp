// "KV Swatch List Suite" on the host's documents, as a plug-in calls it.
#include "HostTesting.h"

#include <KVSwatchSuites.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using kelvra::testing::Acquire;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

class SwatchListSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    kelvra::testing::Strings strings{host};
    const KVSwatchListSuite* lists = Acquire<KVSwatchListSuite>(host, kKVSwatchListSuite, 7);
    kelvra::Document& document = host.Documents().New("doc");

    // Swatches "a", "b" in the default group, "c" in a named group.
    void AddThreeSwatches() {
        kelvra::SwatchGroup& named = document.InsertGroup(-1);
        document.InsertSwatch(named, -1).name = u"c";
        document.InsertSwatch(*document.Groups()[0], -1).name = u"a";
        document.InsertSwatch(*document.Groups()[0], -1).name = u"b";
    }
    KVSwatchRef Swatch(std::size_t index) const { return kelvra::HandleOf(*document.NthSwatch(index)); }
    KVSwatchRef NewSwatch() { return kelvra::HandleOf(document.InsertSwatch(*document.Groups()[0], -1)); }
};

TEST_F(SwatchListSuiteTest, TheSwatchListOfADocumentOrOfTheCurrentOne) {
    kelvra::Document& other = host.Documents().New("other");
    KVSwatchListRef list = nullptr;
    EXPECT_EQ(lists->GetSwatchList(document.Handle(), &list), 0u);
    EXPECT_EQ(list, document.SwatchList());
    EXPECT_EQ(lists->GetSwatchList(nullptr, &list), 0u);
    EXPECT_EQ(list, other.SwatchList());
    EXPECT_EQ(lists->GetSwatchList(reinterpret_cast<KVDocumentHandle>(&host), &list), kZPBadParameterErr);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(lists->GetSwatchList(nullptr, nullptr), kZPBadParameterErr);
}

TEST_F(SwatchListSuiteTest, WithoutACurrentDocumentANullDocumentOrListIsNoDocument) {
    host.Documents().Close(document);
    KVSwatchListRef list = reinterpret_cast<KVSwatchListRef>(&host);
    EXPECT_EQ(lists->GetSwatchList(nullptr, &list), kZPNoDocumentErr);
    EXPECT_EQ(list, nullptr);
    std::int32_t count = -1;
    EXPECT_EQ(lists->CountSwatches(nullptr, &count), kZPNoDocumentErr);
    EXPECT_EQ(count, 0);
    KVSwatchRef swatch = nullptr;
    EXPECT_EQ(lists->GetNthSwatch(nullptr, 0, &swatch), kZPNoDocumentErr);
}

TEST_F(SwatchListSuiteTest, SwatchesAreCountedAndNumberedOverAllGroups) {
    AddThreeSwatches();
    std::int32_t count = 0;
    EXPECT_EQ(lists->CountSwatches(document.SwatchList(), &count), 0u);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(lists->CountSwatches(nullptr, &count), 0u);
    EXPECT_EQ(count, 3);
    KVSwatchRef swatch = nullptr;
    EXPECT_EQ(lists->GetNthSwatch(nullptr, 2, &swatch), 0u);
    EXPECT_EQ(document.Find(swatch)->name, u"c");
    EXPECT_EQ(lists->GetNthSwatch(document.SwatchList(), 0, &swatch), 0u);
    EXPECT_EQ(document.Find(swatch)->name, u"a");
}

TEST_F(SwatchListSuiteTest, BadIndicesAndListsAreBadParameters) {
    AddThreeSwatches();
    KVSwatchRef swatch = Swatch(0);
    EXPECT_EQ(lists->GetNthSwatch(nullptr, 3, &swatch), kZPBadParameterErr);
    EXPECT_EQ(swatch, nullptr);
    EXPECT_EQ(lists->GetNthSwatch(nullptr, -1, &swatch), kZPBadParameterErr);
    EXPECT_EQ(lists->GetNthSwatch(nullptr, 0, nullptr), kZPBadParameterErr);
    const auto notAList = reinterpret_cast<KVSwatchListRef>(document.Handle());
    std::int32_t count = 7;
    EXPECT_EQ(lists->CountSwatches(notAList, &count), kZPBadParameterErr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(lists->CountSwatches(nullptr, nullptr), kZPBadParameterErr);
    EXPECT_EQ(lists->GetNthSwatch(notAList, 0, &swatch), kZPBadParameterErr);
}

TEST_F(SwatchListSuiteTest, NamesAreSetAndReadAsCodeUnits) {
    const KVSwatchRef swatch = NewSwatch();
    const std::u16string name = u"Ro\u0308t \xD800";  // a lone surrogate stays as it is
    EXPECT_EQ(lists->SetSwatchName(swatch, strings.Make(name)), 0u);
    EXPECT_EQ(document.Find(swatch)->name, name);
    KVUnicodeStringRef read = strings.Make(u"old");
    EXPECT_EQ(lists->GetSwatchName(swatch, read), 0u);
    EXPECT_EQ(strings.Units(read), name);
}

TEST_F(SwatchListSuiteTest, NamesNeedALiveSwatchAndString) {
    const KVSwatchRef swatch = NewSwatch();
    const KVUnicodeStringRef name = strings.Make(u"n");
    EXPECT_EQ(lists->SetSwatchName(nullptr, name), kZPBadParameterErr);
    EXPECT_EQ(lists->SetSwatchName(swatch, nullptr), kZPBadParameterErr);
    EXPECT_EQ(lists->GetSwatchName(reinterpret_cast<KVSwatchRef>(name), name), kZPBadParameterErr);
    EXPECT_EQ(lists->GetSwatchName(swatch, nullptr), kZPBadParameterErr);
    EXPECT_EQ(document.Find(swatch)->name, u"");
}

TEST_F(SwatchListSuiteTest, ColoursOfEveryKindAreSetAndRead) {
    const KVSwatchRef swatch = NewSwatch();
    KVColor color{};
    EXPECT_EQ(lists->GetSwatchColor(swatch, &color), 0u);
    EXPECT_EQ(color.kind, kKVNoneColor);

    KVColor four{kKVFourColor, {}};
    four.c.four = {0.1f, 0.2f, 0.3f, 0.4f};
    EXPECT_EQ(lists->SetSwatchColor(swatch, &four), 0u);
    EXPECT_EQ(lists->GetSwatchColor(swatch, &color), 0u);
    EXPECT_EQ(color.kind, kKVFourColor);
    EXPECT_EQ(color.c.four.black, 0.4f);

    KVColor gray{kKVGrayColor, {}};
    gray.c.gray.gray = 0.8f;
    EXPECT_EQ(lists->SetSwatchColor(swatch, &gray), 0u);
    EXPECT_EQ(document.Find(swatch)->color.c.gray.gray, 0.8f);

    for (const std::int32_t kind : {kKVThreeColor, kKVPatternColor, kKVGradientColor, kKVNoneColor}) {
        const KVColor other{kind, {}};
        EXPECT_EQ(lists->SetSwatchColor(swatch, &other), 0u) << kind;
        EXPECT_EQ(document.Find(swatch)->color.kind, kind);
    }
}

TEST_F(SwatchListSuiteTest, ACustomColourMustBeOneOfTheSwatchsDocument) {
    const KVSwatchRef swatch = NewSwatch();
    kelvra::CustomColor& mine = *document.NewCustomColor(u"Gold", KVCustomColor{});
    kelvra::Document& other = host.Documents().New("other");
    kelvra::CustomColor& foreign = *other.NewCustomColor(u"Gold", KVCustomColor{});

    KVColor custom{kKVCustomColor, {}};
    custom.c.custom = {kelvra::HandleOf(mine), 0.25f};
    EXPECT_EQ(lists->SetSwatchColor(swatch, &custom), 0u);
    EXPECT_EQ(document.Find(swatch)->color.c.custom.color, kelvra::HandleOf(mine));
    EXPECT_EQ(document.Find(swatch)->color.c.custom.tint, 0.25f);

    custom.c.custom.color = kelvra::HandleOf(foreign);
    EXPECT_EQ(lists->SetSwatchColor(swatch, &custom), kZPBadParameterErr);
    custom.c.custom.color = nullptr;
    EXPECT_EQ(lists->SetSwatchColor(swatch, &custom), kZPBadParameterErr);
    EXPECT_EQ(document.Find(swatch)->color.c.custom.color, kelvra::HandleOf(mine));
}

TEST_F(SwatchListSuiteTest, BadColoursAndSwatchesAreRefused) {
    const KVSwatchRef swatch = NewSwatch();
    for (const std::int32_t kind : {-1, 7, 1000}) {
        const KVColor bad{kind, {}};
        EXPECT_EQ(lists->SetSwatchColor(swatch, &bad), kZPBadParameterErr) << kind;
    }
    EXPECT_EQ(lists->SetSwatchColor(swatch, nullptr), kZPBadParameterErr);
    const KVColor gray{kKVGrayColor, {}};
    EXPECT_EQ(lists->SetSwatchColor(nullptr, &gray), kZPBadParameterErr);
    KVColor color{};
    EXPECT_EQ(lists->GetSwatchColor(nullptr, &color), kZPBadParameterErr);
    EXPECT_EQ(lists->GetSwatchColor(swatch, nullptr), kZPBadParameterErr);
    EXPECT_EQ(document.Find(swatch)->color.kind, kKVNoneColor);
}

TEST_F(SwatchListSuiteTest, SwatchesOfAClosedDocumentAreStale) {
    const KVSwatchRef swatch = NewSwatch();
    const KVSwatchListRef list = document.SwatchList();
    host.Documents().Close(document);
    const KVColor gray{kKVGrayColor, {}};
    EXPECT_EQ(lists->SetSwatchColor(swatch, &gray), kZPBadParameterErr);
    EXPECT_EQ(lists->SetSwatchName(swatch, strings.Make(u"x")), kZPBadParameterErr);
    std::int32_t count = 0;
    EXPECT_EQ(lists->CountSwatches(list, &count), kZPBadParameterErr);
}

TEST_F(SwatchListSuiteTest, EveryFunctionIsCountedAndCanBeFailed) {
    const KVSwatchRef swatch = NewSwatch();
    const KVUnicodeStringRef name = strings.Make(u"n");
    const KVColor gray{kKVGrayColor, {}};
    KVColor color{};
    std::int32_t count = 0;
    KVSwatchRef found = nullptr;
    KVSwatchListRef list = nullptr;
    const std::pair<const char*, std::function<ZPErr()>> calls[] = {
        {"CountSwatches", [&] { return lists->CountSwatches(nullptr, &count); }},
        {"GetNthSwatch", [&] { return lists->GetNthSwatch(nullptr, 0, &found); }},
        {"SetSwatchName", [&] { return lists->SetSwatchName(swatch, name); }},
        {"GetSwatchName", [&] { return lists->GetSwatchName(swatch, name); }},
        {"GetSwatchColor", [&] { return lists->GetSwatchColor(swatch, &color); }},
        {"SetSwatchColor", [&] { return lists->SetSwatchColor(swatch, &gray); }},
        {"GetSwatchList", [&] { return lists->GetSwatchList(nullptr, &list); }},
    };
    const auto counted = [&](const char* function) {
        auto found = host.Faults().Calls().find({kKVSwatchListSuite, function});
        return found == host.Faults().Calls().end() ? std::uint64_t(0) : found->second;
    };
    for (const auto& [function, call] : calls) {
        const std::uint64_t before = counted(function);
        host.Faults().FailCall({kKVSwatchListSuite, function, 1, false, kFailure});
        EXPECT_EQ(call(), kFailure) << function;
        EXPECT_EQ(call(), 0u) << function;
        EXPECT_EQ(counted(function), before + 2) << function;
    }
}

TEST_F(SwatchListSuiteTest, AFailedSetterChangesNothing) {
    const KVSwatchRef swatch = NewSwatch();
    host.Faults().FailCall({kKVSwatchListSuite, "", 1, true, kFailure});
    const KVColor gray{kKVGrayColor, {}};
    EXPECT_EQ(lists->SetSwatchColor(swatch, &gray), kFailure);
    EXPECT_EQ(lists->SetSwatchName(swatch, strings.Make(u"n")), kFailure);
    EXPECT_EQ(document.Find(swatch)->color.kind, kKVNoneColor);
    EXPECT_EQ(document.Find(swatch)->name, u"");
}

}  // namespace
