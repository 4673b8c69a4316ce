// The host's client exporting a document into a file through the real
// module while the host fails the 1st, 2nd, 3rd ... of its calls or block
// allocations, once or from then on, until the export goes through: every
// run either replaces the file with the module's whole export or leaves
// the old file as it was, with no temporary file, data filter, suite or
// block left behind.
#include <kelvra/DocumentJson.h>
#include <kelvra/Host.h>
#include <kelvra/TintoraClient.h>

#include "ZPBasicControl.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using testing::AnyOf;
using testing::Eq;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');
constexpr std::uint64_t kAttempts = 400;
constexpr const char* kOld = "the old export";

enum class Fault { kCall, kBlock };

struct FaultCase {
    Fault fault;
    bool fromThenOn;
};

std::string CaseName(const testing::TestParamInfo<FaultCase>& info) {
    return std::string(info.param.fault == Fault::kCall ? "Call" : "Block") +
           (info.param.fromThenOn ? "FromThenOn" : "Once");
}

const char* kDocument = R"({"name": "Brand",
  "groups": [
    {"name": "", "swatches": [{"name": "Red", "kind": "rgb", "values": [1, 0, 0]}]},
    {"name": "Inks", "swatches": [
      {"name": "Ink", "kind": "cmyk", "values": [0.5, 0.25, 0, 0.75]},
      {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0}]}],
  "customColors": [{"name": "Gold", "kind": "lab", "values": [80, 5, 60], "flags": 1}]})";

std::string Contents(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::stringstream contents;
    contents << in.rdbuf();
    return contents.str();
}

class ClientExportFaultTest : public testing::TestWithParam<FaultCase> {
protected:
    void SetUp() override {
        ASSERT_EQ(module_.Startup(), kZPNoErr);
        document_ = &host_.Documents().Add(kelvra::DocumentFromJson(nlohmann::json::parse(kDocument)));
        kelvra::TintoraClient client(host_.BasicSuite());
        ASSERT_TRUE(client.ExportSwatchesToFile(document_->Handle(), out_).Written());
        clean_ = Contents(out_);
        ASSERT_GT(clean_.size(), 40u);
    }
    void TearDown() override {
        EXPECT_EQ(module_.Shutdown(), kZPNoErr);
        EXPECT_EQ(host_.SuitesHeld(), 0u);
        EXPECT_EQ(host_.LiveBlocks().basic, 0u);
        EXPECT_EQ(host_.LiveBlocks().blocks, 0u);
    }

    void Arm(std::uint64_t nth) {
        if (GetParam().fault == Fault::kCall) host_.Faults().FailCall({"", "", nth, GetParam().fromThenOn, kFault});
        else host_.Faults().FailBlockAllocation(nth, GetParam().fromThenOn);
    }
    std::uint64_t Requests() {
        if (GetParam().fault == Fault::kCall) return host_.Faults().TotalCalls();
        const zpbasic::Counts counts = zpbasic::GetCounts();
        return counts.allocations + counts.failedAllocations;
    }
    // A host that refused to dispose of a string or path keeps it.
    bool DisposeFailed() {
        for (const auto& [suite, function] : host_.Faults().FailedCalls()) {
            if (function == "Dispose") return true;
        }
        return false;
    }
    std::size_t FilesInFolder() const {
        return std::size_t(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}));
    }

    kelvra::Host host_;
    kelvra::Module& module_ = host_.Load(TINTORA_MODULE);
    testsupport::TemporaryFolder folder_;
    std::filesystem::path out_ = folder_.Path() / "out.ose";
    kelvra::Document* document_ = nullptr;
    std::string clean_;
};

TEST_P(ClientExportFaultTest, EveryRunWritesTheWholeFileOrLeavesTheOldOne) {
    const std::uint64_t suitesWhileStarted = host_.SuitesHeld();
    const std::size_t blocksWhileStarted = host_.LiveBlocks().basic;
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        std::ofstream(out_, std::ios::binary | std::ios::trunc) << kOld;
        const kelvra::ObjectCounts objectsBefore = host_.LiveObjects();
        const std::uint64_t before = Requests();
        Arm(nth);
        bool written = false;
        {
            kelvra::TintoraClient client(host_.BasicSuite());
            const kelvra::FileExport result = client.ExportSwatchesToFile(document_->Handle(), out_);
            written = result.Written();
            EXPECT_THAT(result.exported.code, AnyOf(Eq(kZPNoErr), Eq(kFault), Eq(kZPCantHappenErr),
                                                   Eq(kZPOutOfMemoryErr), Eq(kZPSuiteNotFoundErr)))
                << nth;
        }
        const bool failed = Requests() - before >= nth;
        const bool disposeFailed = DisposeFailed();
        host_.Faults().Clear();

        // A swatch the module cannot read from the host it leaves out of the
        // export, so a written file is its own; a run without a failure
        // writes the clean export.
        const std::string contents = Contents(out_);
        if (written) {
            EXPECT_TRUE(contents.starts_with("OSEF")) << nth;
        } else {
            EXPECT_EQ(contents, kOld) << nth;
        }
        if (!failed) {
            EXPECT_EQ(contents, clean_) << nth;
        }
        EXPECT_EQ(FilesInFolder(), 1u) << nth;  // no temporary file beside it
        const kelvra::ObjectCounts objects = host_.LiveObjects();
        EXPECT_EQ(objects.dataFilters, 0u) << nth;
        if (!disposeFailed) {
            EXPECT_EQ(objects.strings, objectsBefore.strings) << nth;
            EXPECT_EQ(objects.filePaths, objectsBefore.filePaths) << nth;
        }
        EXPECT_EQ(host_.SuitesHeld(), suitesWhileStarted) << nth;
        EXPECT_EQ(host_.LiveBlocks().basic, blocksWhileStarted) << nth;
        if (!failed) {
            EXPECT_TRUE(written) << nth;
            break;
        }
    }
    EXPECT_GT(nth, 5u);
    ASSERT_LE(nth, kAttempts);
}

INSTANTIATE_TEST_SUITE_P(EachFault, ClientExportFaultTest,
                         testing::Values(FaultCase{Fault::kCall, false}, FaultCase{Fault::kCall, true},
                                         FaultCase{Fault::kBlock, false}, FaultCase{Fault::kBlock, true}),
                         CaseName);

}  // namespace
