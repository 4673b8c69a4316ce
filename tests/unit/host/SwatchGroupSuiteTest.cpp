// "KV Swatch Group Suite" on the host's documents, as a plug-in calls it.
#include "HostTesting.h"

#include <KVSwatchSuites.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using kelvra::testing::Acquire;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

class SwatchGroupSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    kelvra::testing::Strings strings{host};
    const KVSwatchGroupSuite* groups = Acquire<KVSwatchGroupSuite>(host, kKVSwatchGroupSuite, 4);
    kelvra::Document& document = host.Documents().New("doc");

    KVSwatchGroupRef DefaultGroup() const { return kelvra::HandleOf(*document.Groups()[0]); }
    std::u16string GroupNames() const {
        std::u16string names;
        for (const auto& group : document.Groups()) names += group->name + u",";
        return names;
    }
};

TEST_F(SwatchGroupSuiteTest, ADocumentStartsWithItsDefaultGroup) {
    std::int32_t count = 0;
    EXPECT_EQ(groups->CountGroups(nullptr, &count), 0u);
    EXPECT_EQ(count, 1);
    KVSwatchGroupRef group = nullptr;
    EXPECT_EQ(groups->GetNthGroup(document.SwatchList(), 0, &group), 0u);
    EXPECT_EQ(group, DefaultGroup());
    const KVUnicodeStringRef name = strings.Make(u"junk");
    EXPECT_EQ(groups->GetGroupName(group, name), 0u);
    EXPECT_EQ(strings.Units(name), u"");
}

TEST_F(SwatchGroupSuiteTest, GroupsAreInsertedAfterTheDefaultGroup) {
    KVSwatchGroupRef group = nullptr;
    ASSERT_EQ(groups->InsertGroup(nullptr, -1, &group), 0u);
    EXPECT_EQ(groups->SetGroupName(group, strings.Make(u"C")), 0u);
    ASSERT_EQ(groups->InsertGroup(document.SwatchList(), 1, &group), 0u);
    EXPECT_EQ(groups->SetGroupName(group, strings.Make(u"A")), 0u);
    ASSERT_EQ(groups->InsertGroup(nullptr, 50, &group), 0u);
    EXPECT_EQ(groups->SetGroupName(group, strings.Make(u"D")), 0u);
    EXPECT_EQ(GroupNames(), u",A,C,D,");
    std::int32_t count = 0;
    EXPECT_EQ(groups->CountGroups(document.SwatchList(), &count), 0u);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(groups->GetNthGroup(nullptr, 3, &group), 0u);
    const KVUnicodeStringRef name = strings.Make(u"");
    EXPECT_EQ(groups->GetGroupName(group, name), 0u);
    EXPECT_EQ(strings.Units(name), u"D");
}

TEST_F(SwatchGroupSuiteTest, NothingGoesBeforeTheDefaultGroupAndItTakesNoName) {
    KVSwatchGroupRef group = DefaultGroup();
    EXPECT_EQ(groups->InsertGroup(nullptr, 0, &group), kZPBadParameterErr);
    EXPECT_EQ(group, nullptr);
    EXPECT_EQ(groups->InsertGroup(nullptr, -2, &group), kZPBadParameterErr);
    EXPECT_EQ(groups->SetGroupName(DefaultGroup(), strings.Make(u"Named")), kZPBadParameterErr);
    EXPECT_EQ(GroupNames(), u",");
}

TEST_F(SwatchGroupSuiteTest, BadListsIndicesAndGroupsAreBadParameters) {
    KVSwatchGroupRef group = DefaultGroup();
    EXPECT_EQ(groups->GetNthGroup(nullptr, 1, &group), kZPBadParameterErr);
    EXPECT_EQ(group, nullptr);
    EXPECT_EQ(groups->GetNthGroup(nullptr, -1, &group), kZPBadParameterErr);
    EXPECT_EQ(groups->GetNthGroup(nullptr, 0, nullptr), kZPBadParameterErr);
    const auto notAList = reinterpret_cast<KVSwatchListRef>(DefaultGroup());
    std::int32_t count = 5;
    EXPECT_EQ(groups->CountGroups(notAList, &count), kZPBadParameterErr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(groups->CountGroups(nullptr, nullptr), kZPBadParameterErr);
    EXPECT_EQ(groups->InsertGroup(notAList, -1, &group), kZPBadParameterErr);
    EXPECT_EQ(groups->InsertGroup(nullptr, -1, nullptr), kZPBadParameterErr);
    const auto notAGroup = reinterpret_cast<KVSwatchGroupRef>(document.SwatchList());
    EXPECT_EQ(groups->GetGroupName(notAGroup, strings.Make(u"")), kZPBadParameterErr);
    EXPECT_EQ(groups->SetGroupName(notAGroup, strings.Make(u"x")), kZPBadParameterErr);
    EXPECT_EQ(groups->CountSwatches(notAGroup, &count), kZPBadParameterErr);
    EXPECT_EQ(document.Groups().size(), 1u);
}

TEST_F(SwatchGroupSuiteTest, ANamedGroupNeedsALiveString) {
    KVSwatchGroupRef group = nullptr;
    ASSERT_EQ(groups->InsertGroup(nullptr, -1, &group), 0u);
    EXPECT_EQ(groups->SetGroupName(group, nullptr), kZPBadParameterErr);
    EXPECT_EQ(groups->GetGroupName(group, nullptr), kZPBadParameterErr);
}

TEST_F(SwatchGroupSuiteTest, WithoutACurrentDocumentANullListIsNoDocument) {
    const KVSwatchGroupRef group = DefaultGroup();
    host.Documents().Close(document);
    std::int32_t count = 0;
    EXPECT_EQ(groups->CountGroups(nullptr, &count), kZPNoDocumentErr);
    KVSwatchGroupRef found = nullptr;
    EXPECT_EQ(groups->InsertGroup(nullptr, -1, &found), kZPNoDocumentErr);
    EXPECT_EQ(groups->GetNthGroup(nullptr, 0, &found), kZPNoDocumentErr);
    // The closed document's groups are stale.
    EXPECT_EQ(groups->CountSwatches(group, &count), kZPBadParameterErr);
}

TEST_F(SwatchGroupSuiteTest, SwatchesAreInsertedCountedAndFoundInTheirGroup) {
    KVSwatchGroupRef named = nullptr;
    ASSERT_EQ(groups->InsertGroup(nullptr, -1, &named), 0u);
    KVSwatchRef first = nullptr;
    KVSwatchRef second = nullptr;
    KVSwatchRef before = nullptr;
    ASSERT_EQ(groups->InsertSwatch(named, -1, &first), 0u);
    ASSERT_EQ(groups->InsertSwatch(named, 9, &second), 0u);
    ASSERT_EQ(groups->InsertSwatch(named, 0, &before), 0u);
    std::int32_t count = 0;
    EXPECT_EQ(groups->CountSwatches(named, &count), 0u);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(groups->CountSwatches(DefaultGroup(), &count), 0u);
    EXPECT_EQ(count, 0);
    KVSwatchRef found = nullptr;
    EXPECT_EQ(groups->GetNthSwatch(named, 0, &found), 0u);
    EXPECT_EQ(found, before);
    EXPECT_EQ(groups->GetNthSwatch(named, 2, &found), 0u);
    EXPECT_EQ(found, second);
    const kelvra::Swatch& swatch = *document.Find(first);
    EXPECT_EQ(swatch.name, u"");
    EXPECT_EQ(swatch.color.kind, kKVNoneColor);
    EXPECT_EQ(document.SwatchCount(), 3u);
}

TEST_F(SwatchGroupSuiteTest, BadSwatchIndicesAreBadParameters) {
    KVSwatchRef swatch = nullptr;
    ASSERT_EQ(groups->InsertSwatch(DefaultGroup(), -1, &swatch), 0u);
    KVSwatchRef found = swatch;
    EXPECT_EQ(groups->GetNthSwatch(DefaultGroup(), 1, &found), kZPBadParameterErr);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(groups->GetNthSwatch(DefaultGroup(), -1, &found), kZPBadParameterErr);
    EXPECT_EQ(groups->GetNthSwatch(nullptr, 0, &found), kZPBadParameterErr);
    EXPECT_EQ(groups->GetNthSwatch(DefaultGroup(), 0, nullptr), kZPBadParameterErr);
    EXPECT_EQ(groups->InsertSwatch(DefaultGroup(), -2, &found), kZPBadParameterErr);
    EXPECT_EQ(groups->InsertSwatch(nullptr, -1, &found), kZPBadParameterErr);
    EXPECT_EQ(groups->InsertSwatch(DefaultGroup(), -1, nullptr), kZPBadParameterErr);
    EXPECT_EQ(groups->CountSwatches(DefaultGroup(), nullptr), kZPBadParameterErr);
    EXPECT_EQ(document.SwatchCount(), 1u);
}

TEST_F(SwatchGroupSuiteTest, EveryFunctionIsCountedAndCanBeFailed) {
    KVSwatchGroupRef named = kelvra::HandleOf(document.InsertGroup(-1));
    const KVUnicodeStringRef name = strings.Make(u"n");
    std::int32_t count = 0;
    KVSwatchGroupRef group = nullptr;
    KVSwatchRef swatch = nullptr;
    const std::pair<const char*, std::function<ZPErr()>> calls[] = {
        {"CountGroups", [&] { return groups->CountGroups(nullptr, &count); }},
        {"InsertGroup", [&] { return groups->InsertGroup(nullptr, -1, &group); }},
        {"GetNthGroup", [&] { return groups->GetNthGroup(nullptr, 0, &group); }},
        {"SetGroupName", [&] { return groups->SetGroupName(named, name); }},
        {"GetGroupName", [&] { return groups->GetGroupName(named, name); }},
        {"CountSwatches", [&] { return groups->CountSwatches(named, &count); }},
        {"InsertSwatch", [&] { return groups->InsertSwatch(named, -1, &swatch); }},
        {"GetNthSwatch", [&] { return groups->GetNthSwatch(named, 0, &swatch); }},
    };
    const auto counted = [&](const char* function) {
        auto found = host.Faults().Calls().find({kKVSwatchGroupSuite, function});
        return found == host.Faults().Calls().end() ? std::uint64_t(0) : found->second;
    };
    for (const auto& [function, call] : calls) {
        const std::uint64_t before = counted(function);
        host.Faults().FailCall({kKVSwatchGroupSuite, function, 1, false, kFailure});
        EXPECT_EQ(call(), kFailure) << function;
        EXPECT_EQ(call(), 0u) << function;
        EXPECT_EQ(counted(function), before + 2) << function;
    }
    // Each insertion that failed inserted nothing.
    EXPECT_EQ(document.Groups().size(), 3u);
    EXPECT_EQ(document.SwatchCount(), 1u);
}

}  // namespace
