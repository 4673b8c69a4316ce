#include "ExceptionToResult.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using kv::ResultCode;

TEST(ExceptionToResultTest, AtTheEntryAnErrorGivesItsCodeAndAnythingElseUNEX) {
    const auto answered = kv::ExceptionToResultAtEntry([] { return kv::FourCC("ABCD"); });
    EXPECT_EQ(answered.code, kv::FourCC("ABCD"));
    EXPECT_FALSE(answered.threw);

    const auto error = kv::ExceptionToResultAtEntry([]() -> ResultCode { throw kv::Error(kv::FourCC("WXYZ"), nullptr); });
    EXPECT_EQ(error.code, kv::FourCC("WXYZ"));
    EXPECT_TRUE(error.threw);

    EXPECT_EQ(kv::ExceptionToResultAtEntry([]() -> ResultCode { throw std::bad_alloc(); }).code, 0x554E4558u);
    EXPECT_EQ(kv::ExceptionToResultAtEntry([]() -> ResultCode { throw std::runtime_error("x"); }).code,
              kv::kUnknownExceptionErr);
    EXPECT_EQ(kv::ExceptionToResultAtEntry([]() -> ResultCode { throw 7; }).code, kv::kUnknownExceptionErr);
}

TEST(ExceptionToResultTest, AtTheDispatcherStandardExceptionsBecomeCodesAndOthersPassOn) {
    EXPECT_EQ(kv::ExceptionToResultAtDispatcher([] { return kv::FourCC("ABCD"); }), kv::FourCC("ABCD"));
    EXPECT_EQ(kv::ExceptionToResultAtDispatcher([]() -> ResultCode { throw kv::Error(kv::FourCC("WXYZ"), "m"); }),
              kv::FourCC("WXYZ"));
    EXPECT_EQ(kv::ExceptionToResultAtDispatcher([]() -> ResultCode { throw std::bad_alloc(); }), 0x214D454Du);
    EXPECT_EQ(kv::ExceptionToResultAtDispatcher([]() -> ResultCode { throw std::runtime_error("x"); }), 0x43414E54u);
    EXPECT_THROW(kv::ExceptionToResultAtDispatcher([]() -> ResultCode { throw 7; }), int);
}

TEST(ExceptionToResultTest, AContractViolationYieldsPARMAtEveryBoundary) {
    const auto violate = []() -> ResultCode { throw kv::Contract::Violation("Failed Postcondition"); };
    EXPECT_EQ(kv::ExceptionToResultAtEntry(violate).code, 0x5041524Du);
    EXPECT_EQ(kv::ExceptionToResultAtDispatcher(violate), 0x5041524Du);
}

}  // namespace
