#include "KVUnicodeString.h"

#include <gtest/gtest.h>

#include <utility>

#include "FakeHost.h"
#include "KVError.h"
#include "SuiteNode.h"

namespace {

class KVUnicodeStringTest : public testing::Test {
protected:
    void SetUp() override {
        fake::ResetHost();
        kv::OfferSuiteListBasicSuite(fake::BasicSuite());
    }
    void TearDown() override { kv::ReleaseAllSuites(); }
};

TEST_F(KVUnicodeStringTest, StringsAreMadeFromEachKindOfTextAndDisposedOfWithTheirOwner) {
    {
        const kv::UnicodeString empty;
        const auto key = kv::UnicodeString::FromPlatformText("$$$/Test/Key=Localised text");
        const auto utf8 = kv::UnicodeString::FromUTF8("abcdef", 3);
        const auto utf16 = kv::UnicodeString::FromUTF16(u"wide");
        EXPECT_EQ(fake::TheHost().liveStrings, 4);
        EXPECT_EQ(fake::TextOf(empty.Get()), "");
        EXPECT_EQ(fake::TextOf(key.Get()), "Localised text");
        EXPECT_EQ(fake::TextOf(utf8.Get()), "abc");
        EXPECT_EQ(fake::TextOf(utf16.Get()), "wide");
    }
    EXPECT_EQ(fake::TheHost().liveStrings, 0);
}

TEST_F(KVUnicodeStringTest, TheOperationsForwardToTheHost) {
    auto text = kv::UnicodeString::FromUTF8("Red", 3);
    const auto more = kv::UnicodeString::FromUTF8(" Ink", 4);
    EXPECT_EQ(text.Length(), 3u);
    EXPECT_FALSE(text.IsEmpty());
    EXPECT_TRUE(kv::UnicodeString().IsEmpty());

    text.Append(more);
    EXPECT_EQ(text.ToUTF16(), u"Red Ink");
    char buffer[5];
    EXPECT_EQ(text.GetPlatformText(buffer, sizeof buffer), 7u);
    EXPECT_STREQ(buffer, "Red ");

    EXPECT_LT(more.Compare(text), 0);
    EXPECT_GT(text.Compare(more), 0);
    text.Canonicalize(1);
    EXPECT_EQ(text.ToUTF16(), u"red ink");
    text.Assign(more);
    EXPECT_EQ(text.Compare(more), 0);
}

TEST_F(KVUnicodeStringTest, MovingHandsOverTheHostString) {
    auto first = kv::UnicodeString::FromUTF8("one", 3);
    const KVUnicodeStringRef string = first.Get();
    kv::UnicodeString second = std::move(first);
    EXPECT_EQ(second.Get(), string);
    EXPECT_EQ(first.Get(), nullptr);  // NOLINT(bugprone-use-after-move): a moved-from string is empty

    auto third = kv::UnicodeString::FromUTF8("three", 5);
    third = std::move(second);
    EXPECT_EQ(third.Get(), string);
    EXPECT_EQ(fake::TheHost().liveStrings, 2);
}

TEST_F(KVUnicodeStringTest, AHostFailureThrowsTheHostsCode) {
    auto text = kv::UnicodeString::FromUTF8("x", 1);
    fake::TheHost().unicodeStringResult = kv::FourCC("HOST");
    const auto expectHostCode = [](auto operation) {
        try {
            operation();
            ADD_FAILURE() << "no exception";
        } catch (const kv::Error& error) {
            EXPECT_EQ(error.Code(), kv::FourCC("HOST"));
        }
    };
    expectHostCode([] { kv::UnicodeString(); });
    expectHostCode([] { kv::UnicodeString::FromPlatformText("x"); });
    expectHostCode([&] { text.Length(); });
    expectHostCode([&] { text.IsEmpty(); });
    expectHostCode([&] { text.Append(text); });
    expectHostCode([&] { text.Canonicalize(1); });
}

TEST_F(KVUnicodeStringTest, ASuccessWithoutAStringIsABrokenPromiseOfTheHost) {
    fake::TheHost().newUnicodeStringGivesNull = true;
    try {
        kv::UnicodeString::FromUTF8("x", 1);
        FAIL() << "no exception";
    } catch (const kv::Contract::Violation& violation) {
        EXPECT_STREQ(violation.what(), "Failed Postcondition");
        EXPECT_EQ(violation.Code(), kv::kBadParameterErr);
    }
}

TEST_F(KVUnicodeStringTest, AMissingSuiteThrowsTheHostsCode) {
    fake::TheHost().unavailable.insert("KV Unicode String Suite");
    try {
        kv::UnicodeString::FromUTF8("x", 1);
        FAIL() << "no exception";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kv::kSuiteNotFoundErr);
    }
}

}  // namespace
