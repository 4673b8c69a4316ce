#include "HostTesting.h"

#include <KVFrameworkSuites.h>
#include <KVStringSuites.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using kelvra::testing::Acquire;

class UnicodeStringSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    const KVUnicodeStringSuite* s = Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, 9);

    KVUnicodeStringRef Make(const char* text) {
        KVUnicodeStringRef string = nullptr;
        EXPECT_EQ(s->NewFromPlatformText(text, &string), 0u);
        return string;
    }
    std::string Text(KVUnicodeStringRef string) {
        char buffer[512];
        std::size_t length = 0;
        EXPECT_EQ(s->GetPlatformText(string, buffer, sizeof buffer, &length), 0u);
        return std::string(buffer, std::strlen(buffer));
    }
};

TEST_F(UnicodeStringSuiteTest, PlatformTextResolvesLocalisationKeys) {
    EXPECT_EQ(Text(Make("$$$/CppPlugin/STR/OpenDoc=There is no open document.")), "There is no open document.");
    EXPECT_EQ(Text(Make("$$$/Kelvra/app/Help/OnClickURL")), "$$$/Kelvra/app/Help/OnClickURL");
    EXPECT_EQ(Text(Make("plain")), "plain");
}

TEST_F(UnicodeStringSuiteTest, Utf8AndUtf16TextIsTakenAsItIs) {
    KVUnicodeStringRef fromUtf8 = nullptr;
    ASSERT_EQ(s->NewFromUTF8("$$$/A=b", 7, &fromUtf8), 0u);
    EXPECT_EQ(Text(fromUtf8), "$$$/A=b");
    const std::uint16_t units[] = {0x48, 0xD83D, 0xDE00};
    KVUnicodeStringRef fromUtf16 = nullptr;
    ASSERT_EQ(s->NewFromUTF16(units, 3, &fromUtf16), 0u);
    std::size_t length = 0;
    EXPECT_EQ(s->Length(fromUtf16, &length), 0u);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(Text(fromUtf16), "H\xF0\x9F\x98\x80");
}

TEST_F(UnicodeStringSuiteTest, TheKeyAStringWasMadeFromReachesTheEventLog) {
    const auto* user = Acquire<KVUserSuite>(host, kKVUserSuite, 21);
    ASSERT_EQ(user->ErrorAlert(Make("$$$/CppPlugin/STR/Selection=The selection is not valid.")), 0u);
    ASSERT_EQ(host.Events().All().size(), 1u);
    EXPECT_EQ(host.Events().All()[0].text, "The selection is not valid.");
    EXPECT_EQ(host.Events().All()[0].key, "$$$/CppPlugin/STR/Selection=The selection is not valid.");
}

TEST_F(UnicodeStringSuiteTest, GetUTF16ReportsTheFullLengthOfAShortBuffer) {
    KVUnicodeStringRef string = Make("abcdef");
    std::uint16_t units[4] = {};
    std::size_t count = 0;
    EXPECT_EQ(s->GetUTF16(string, units, 4, &count), 0u);
    EXPECT_EQ(count, 6u);
    EXPECT_EQ(units[3], u'd');
}

TEST_F(UnicodeStringSuiteTest, GetPlatformTextCutsAtACharacterBoundary) {
    KVUnicodeStringRef string = Make("a\xE2\x82\xAC" "b");  // a, euro, b: 5 bytes
    char buffer[4];
    std::size_t length = 0;
    EXPECT_EQ(s->GetPlatformText(string, buffer, sizeof buffer, &length), 0u);
    EXPECT_STREQ(buffer, "a");  // the euro sign's 3 bytes do not fit in 3
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(s->GetPlatformText(string, nullptr, 0, &length), 0u);
    EXPECT_EQ(length, 5u);
}

TEST_F(UnicodeStringSuiteTest, CompareIsByCodeUnits) {
    std::int32_t order = 0;
    EXPECT_EQ(s->Compare(Make("Abc"), Make("abc"), &order), 0u);
    EXPECT_LT(order, 0);
    EXPECT_EQ(s->Compare(Make("abc"), Make("abc"), &order), 0u);
    EXPECT_EQ(order, 0);
    EXPECT_EQ(s->Compare(Make("abd"), Make("abc"), &order), 0u);
    EXPECT_GT(order, 0);
}

TEST_F(UnicodeStringSuiteTest, AssignAppendIsEmptyAndCanonicalize) {
    KVUnicodeStringRef target = nullptr;
    ASSERT_EQ(s->New(&target), 0u);
    ZPBoolean empty = 0;
    EXPECT_EQ(s->IsEmpty(target, &empty), 0u);
    EXPECT_EQ(empty, 1);
    EXPECT_EQ(s->Assign(target, Make("Grün")), 0u);
    EXPECT_EQ(s->Append(target, Make(" ÄB")), 0u);
    EXPECT_EQ(Text(target), "Grün ÄB");
    EXPECT_EQ(s->Canonicalize(target, 1), 0u);
    EXPECT_EQ(Text(target), "grün äb");
    EXPECT_EQ(s->Canonicalize(target, 7), kZPBadParameterErr);
}

TEST_F(UnicodeStringSuiteTest, BadHandlesAndNullsAnswerParm) {
    KVUnicodeStringRef string = Make("x");
    ASSERT_EQ(s->Dispose(string), 0u);
    EXPECT_EQ(s->Dispose(string), kZPBadParameterErr);
    std::size_t length = 0;
    EXPECT_EQ(s->Length(string, &length), kZPBadParameterErr);
    EXPECT_EQ(s->Length(reinterpret_cast<KVUnicodeStringRef>(&length), &length), kZPBadParameterErr);
    EXPECT_EQ(s->NewFromPlatformText(nullptr, &string), kZPBadParameterErr);
    EXPECT_EQ(string, nullptr);
    EXPECT_EQ(s->New(nullptr), kZPBadParameterErr);
}

// Disposed strings are kept for the next ones: a new string keeps nothing
// of the one whose room it takes, neither its text nor its key.
TEST_F(UnicodeStringSuiteTest, AStringMadeAfterADisposalCarriesNothingOfTheDisposedOne) {
    const auto* user = Acquire<KVUserSuite>(host, kKVUserSuite, 21);
    ASSERT_EQ(s->Dispose(Make("$$$/CppPlugin/STR/Gone=A longer text that was disposed of.")), 0u);
    const std::uint16_t units[] = {0x4E, 0x65, 0x77};
    KVUnicodeStringRef made = nullptr;
    ASSERT_EQ(s->NewFromUTF16(units, 3, &made), 0u);
    EXPECT_EQ(Text(made), "New");
    ASSERT_EQ(user->ErrorAlert(made), 0u);
    ASSERT_EQ(host.Events().All().size(), 1u);
    EXPECT_EQ(host.Events().All()[0].text, "New");
    EXPECT_EQ(host.Events().All()[0].key, "");
    ASSERT_EQ(s->Dispose(made), 0u);
    EXPECT_EQ(host.LiveObjects().strings, 0u);
}

TEST_F(UnicodeStringSuiteTest, StringsNotDisposedOfAreCountedButGlobalOnesAreNot) {
    const auto* global = Acquire<KVGlobalUnicodeStringSuite>(host, kKVGlobalUnicodeStringSuite, 1);
    KVUnicodeStringRef kept = nullptr;
    ASSERT_EQ(global->NewGlobalString("$$$/A/B=Kept", &kept), 0u);
    EXPECT_EQ(Text(kept), "Kept");
    EXPECT_EQ(s->Dispose(kept), kZPBadParameterErr);  // the host's, not the caller's
    Make("left over");
    EXPECT_EQ(host.LiveObjects().strings, 1u);
}

}  // namespace
