#include "KVError.h"

#include <gtest/gtest.h>

namespace {

TEST(KVErrorTest, CodesArePackedFirstCharacterMostSignificant) {
    EXPECT_EQ(kv::FourCC("PARM"), 0x5041524Du);
    EXPECT_EQ(kv::kUnhandledMsgErr, 0x214D5347u);
    EXPECT_EQ(kv::kCachesFlushedResponse, 0x70466C73u);
}

TEST(KVErrorTest, AnErrorCarriesItsCodeAndMessage) {
    const kv::Error error(kv::FourCC("CANT"), "broken");
    EXPECT_EQ(error.Code(), kv::kCantHappenErr);
    EXPECT_STREQ(error.Message(), "broken");
    EXPECT_STREQ(error.what(), "broken");

    const kv::Error copy = error;
    EXPECT_EQ(copy.Code(), kv::kCantHappenErr);
    EXPECT_STREQ(copy.what(), "broken");
}

TEST(KVErrorTest, AnErrorWithoutMessageSaysKVException) {
    const kv::Error error(kv::kBadParameterErr, nullptr);
    EXPECT_EQ(error.Message(), nullptr);
    EXPECT_STREQ(error.what(), "KV Exception ");
}

TEST(KVErrorTest, ALogicErrorAnswersItsOwnMessage) {
    const kv::LogicError error(kv::kBadFormatErr, "outer", "inner");
    EXPECT_STREQ(error.Message(), "outer");
    EXPECT_STREQ(error.what(), "inner");
}

TEST(KVErrorTest, AContractViolationIsPARMWithItsTextAsTheLogicMessage) {
    const kv::Contract::Violation violation("Failed Postcondition");
    EXPECT_EQ(violation.Code(), 0x5041524Du);
    EXPECT_EQ(violation.Message(), nullptr);
    EXPECT_STREQ(violation.what(), "Failed Postcondition");
    const kv::Error& asError = violation;
    EXPECT_STREQ(asError.what(), "Failed Postcondition");
}

TEST(KVErrorTest, ThrowIfErrorThrowsOnlyForNonZeroCodes) {
    EXPECT_NO_THROW(kv::ThrowIfError(kv::kNoErr));
    try {
        kv::ThrowIfError(kv::kNameNotFoundErr);
        FAIL() << "no exception";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kv::kNameNotFoundErr);
        EXPECT_EQ(error.Message(), nullptr);
    }
}

}  // namespace
