// Importing with the host failing the 1st, 2nd, 3rd ... of its calls or
// block allocations, once or from then on, until the import goes through:
// every run answers 0 (nothing imported, when the file could not even be
// examined), "CANT" after the read error naming the file, or the code of a
// failure that kept the error from being shown; no exception escapes, no
// block is lost, and what was written before the failure stays.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModuleImport.h"
#include "ZPBasicControl.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using import_testing::DescribeSwatches;
using import_testing::Shown;
using testing::AnyOf;
using testing::Eq;
using testsupport::ColorBlock;
using testsupport::U16;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');
constexpr ZPErr kCantHappen = ZP_FOURCC('C', 'A', 'N', 'T');
// Far more attempts than an import of these files makes calls or allocations.
constexpr std::uint64_t kAttempts = 400;

enum class Fault { kCall, kBlock };

struct FaultCase {
    Fault fault;
    bool fromThenOn;
    bool colorBook;
};

std::string CaseName(const testing::TestParamInfo<FaultCase>& info) {
    return std::string(info.param.colorBook ? "ColorBook" : "SwatchExchange") +
           (info.param.fault == Fault::kCall ? "Call" : "Block") + (info.param.fromThenOn ? "FromThenOn" : "Once");
}

// A group, custom colours, a Lab colour to convert and a block that asks
// the question.
testsupport::Bytes SwatchExchangeFile() {
    testsupport::SwatchExchangeDescription file;
    file.blocks = {
        ColorBlock({{}, U16("Paper"), {}, "Gray", {0.2f}, 2}),
        testsupport::GroupStartBlock(U16("Brand")),
        ColorBlock({0.25f, U16("Signal"), {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 0}),
        {3, {1, 2}, {}},
        ColorBlock({{}, U16("Leaf"), {}, "LAB ", {0.5f, 40.0f, -30.0f}, 0}),
        ColorBlock({{}, U16("Deep"), {}, "LAB ", {0.5f, 40.0f, -30.0f}, 1}),
        testsupport::GroupEndBlock(),
    };
    return testsupport::BuildSwatchExchange(file);
}

// Swatch lines without group lines.
std::vector<std::string> SwatchLines(const kelvra::Document& document) {
    std::vector<std::string> lines;
    for (const std::string& line : DescribeSwatches(document)) {
        if (!line.starts_with("[")) lines.push_back(line);
    }
    return lines;
}

class ImportFaultInjectionTest : public import_testing::ModuleImportTest,
                                 public testing::WithParamInterface<FaultCase> {
protected:
    void SetUp() override {
        ModuleImportTest::SetUp();
        format_ = GetParam().colorBook ? colorBook_ : swatchExchange_;
        file_ = GetParam().colorBook
                    ? folder_.Write("book.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()))
                    : folder_.Write("book.ose", SwatchExchangeFile());
        readError_ = GetParam().colorBook ? import_testing::ColorBookReadError("book.ocb")
                                          : import_testing::SwatchExchangeReadError("book.ose");
        // What a clean import gives.
        kelvra::Document& clean = host_.Documents().New("clean");
        ASSERT_EQ(Go(format_, file_, clean), kZPNoErr);
        expected_ = DescribeSwatches(clean);
        expectedSwatches_ = SwatchLines(clean);
        ASSERT_GT(expectedSwatches_.size(), 2u);
        host_.Events().Clear();
    }

    // A host that refused to dispose of a string or to unlink a filter keeps
    // it; what the module must have given back are its suites and blocks.
    void TearDown() override {
        EXPECT_EQ(module_->Shutdown(), kZPNoErr);
        EXPECT_THAT(import_testing::SuitesAndBlocks(host_), testing::IsEmpty());
    }

    void Arm(std::uint64_t nth) {
        if (GetParam().fault == Fault::kCall) {
            host_.Faults().FailCall({"", "", nth, GetParam().fromThenOn, kFault});
        } else {
            host_.Faults().FailBlockAllocation(nth, GetParam().fromThenOn);
        }
    }

    KVFileFormatHandle format_ = nullptr;
    std::filesystem::path file_;
    std::string readError_;
    // Host calls, or block allocations asked for, so far.
    std::uint64_t Requests() {
        if (GetParam().fault == Fault::kCall) return host_.Faults().TotalCalls();
        const zpbasic::Counts counts = zpbasic::GetCounts();
        return counts.allocations + counts.failedAllocations;
    }

    std::vector<std::string> expected_;
    std::vector<std::string> expectedSwatches_;
};

TEST_P(ImportFaultInjectionTest, EveryRunAnswersItsCodeKeepsWhatWasWrittenAndLosesNoBlock) {
    const ZPErr ownFault = GetParam().fault == Fault::kCall ? kFault : kZPOutOfMemoryErr;
    const std::size_t blocksWhileStarted = host_.LiveBlocks().basic;
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        kelvra::Document& document = host_.Documents().New("run " + std::to_string(nth));
        host_.Events().Clear();
        const std::uint64_t before = Requests();
        Arm(nth);
        const ZPErr result = Go(format_, file_, document);
        host_.Faults().Clear();
        const bool failed = Requests() - before >= nth;
        const std::vector<std::string> shown = Shown(host_);
        const std::vector<std::string> swatches = SwatchLines(document);

        EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(kCantHappen), Eq(ownFault))) << nth;
        EXPECT_EQ(host_.LiveBlocks().basic, blocksWhileStarted) << nth;
        EXPECT_EQ(std::count(shown.begin(), shown.end(), readError_), result == kCantHappen ? 1 : 0) << nth;
        ASSERT_LE(swatches.size(), expectedSwatches_.size()) << nth;
        if (result != kZPNoErr) {
            // A swatch is written when the next one has been added, so the
            // last two may be unfinished; every swatch before them is the
            // swatch a clean import writes there.
            for (std::size_t i = 0; i + 2 < swatches.size(); ++i) {
                EXPECT_EQ(swatches[i], expectedSwatches_[i]) << nth;
            }
        } else {
            // Either the file could not be examined and nothing was read, or
            // the reader went through and wrote what a clean import writes.
            if (!swatches.empty()) {
                EXPECT_EQ(swatches, expectedSwatches_) << nth;
            }
        }
        const std::vector<std::string> all = DescribeSwatches(document);
        host_.Documents().Close(document);
        if (!failed) {
            // The import made fewer requests than the one set to fail.
            EXPECT_EQ(result, kZPNoErr);
            EXPECT_EQ(all, expected_);
            break;
        }
    }
    EXPECT_GT(nth, 5u);
    ASSERT_LE(nth, kAttempts);
}

INSTANTIATE_TEST_SUITE_P(EachFormat, ImportFaultInjectionTest,
                         testing::Values(FaultCase{Fault::kCall, false, true}, FaultCase{Fault::kCall, true, true},
                                         FaultCase{Fault::kBlock, false, true}, FaultCase{Fault::kBlock, true, true},
                                         FaultCase{Fault::kCall, false, false}, FaultCase{Fault::kCall, true, false},
                                         FaultCase{Fault::kBlock, false, false},
                                         FaultCase{Fault::kBlock, true, false}),
                         CaseName);

}  // namespace
