// The plug-in object's part in the file formats: the messages it answers
// itself, start-up without memory for the formats or with the host refusing
// one, and the formats after an unload and reload.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModuleImport.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace {

using import_testing::DescribeSwatches;
using import_testing::kTintora;
using import_testing::Leftovers;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');
constexpr ZPErr kNotRecognised = ZP_FOURCC('F', 'M', 'T', '?');

ZPErr SendFileFormat(kelvra::Module& module, const char* selector) {
    KVFileFormatMessage message{};
    return module.Send(kKVFileFormatCaller, selector, message.d);
}

class TintoraFileFormatTest : public import_testing::ModuleImportTest {
protected:
    std::uint64_t Acquisitions(const std::string& suite) {
        for (const kelvra::SuiteCount& count : host_.SuiteCounts()) {
            if (count.name == suite) return count.acquired;
        }
        return 0;
    }

    // A swatch library request for `format` with the sample swatch exchange file.
    ZPErr SwatchLibraryRequest(KVFileFormatHandle format, kelvra::Document& document) {
        const std::filesystem::path file =
            folder_.Write("book.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
        host_.Documents().MakeCurrent(document);
        return module_->GoFileFormat({format, kKVFileFormatSwatchLibraryOption, file, document.Handle()});
    }
};

TEST_F(TintoraFileFormatTest, TheParameterMessagesAnswer0) {
    EXPECT_EQ(SendFileFormat(*module_, kKVGetFileFormatParametersSelector), kZPNoErr);
    EXPECT_EQ(SendFileFormat(*module_, kKVSetFileFormatParametersSelector), kZPNoErr);
    EXPECT_EQ(SendFileFormat(*module_, kKVUpdateFileFormatSelector), kZPNoErr);
    EXPECT_THAT(import_testing::Shown(host_), IsEmpty());
}

// A reload rebuilds the plug-in object without its formats: their requests
// are then answered 0 and nothing is read.
TEST_F(TintoraFileFormatTest, AfterAReloadTheFormatsAnswer0AndImportNothing) {
    const std::filesystem::path file =
        folder_.Write("book.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const std::size_t blocksWhileStarted = host_.LiveBlocks().basic;
    ASSERT_EQ(module_->Unload(), kZPNoErr);
    EXPECT_LT(host_.LiveBlocks().basic, blocksWhileStarted);  // the formats were let go at the unload
    ASSERT_EQ(module_->Reload(), kZPNoErr);
    kelvra::Document& document = host_.Documents().New("Import");
    EXPECT_EQ(Check(swatchExchange_, folder_.Path() / "book.txt"), kZPNoErr);
    EXPECT_EQ(Go(swatchExchange_, file, document), kZPNoErr);
    EXPECT_THAT(DescribeSwatches(document), ElementsAre("[]"));
    EXPECT_EQ(Calls(kKVDataFilterSuite, "NewFileDataFilter"), 0u);
}

TEST_F(TintoraFileFormatTest, ASwatchLibraryRequestThatNamesNoFormatIsHandedToTheHost) {
    kelvra::Document& document = host_.Documents().New("Import");
    EXPECT_EQ(SwatchLibraryRequest(nullptr, document), kZPNoErr);
    EXPECT_EQ(Acquisitions(kKVSwatchLibrariesSuite), 1u);
    EXPECT_EQ(Calls(kKVDataFilterSuite, "NewFileDataFilter"), 0u);
    EXPECT_THAT(DescribeSwatches(document), ElementsAre("[]"));
    EXPECT_THAT(import_testing::Shown(host_), IsEmpty());
}

TEST_F(TintoraFileFormatTest, ASwatchLibraryRequestForAFormatIsImportedByIt) {
    kelvra::Document& document = host_.Documents().New("Import");
    EXPECT_EQ(SwatchLibraryRequest(swatchExchange_, document), kZPNoErr);
    EXPECT_EQ(Acquisitions(kKVSwatchLibrariesSuite), 0u);
    EXPECT_GT(DescribeSwatches(document).size(), 1u);
}

TEST_F(TintoraFileFormatTest, ARequestThatNamesNoFormatAndIsNoSwatchLibraryRequestIsNotHandedOver) {
    KVFileFormatMessage message{};
    message.option = kKVFileFormatImportOption;
    EXPECT_EQ(module_->Send(kKVFileFormatCaller, kKVGoFileFormatSelector, message.d), kZPNoErr);
    EXPECT_EQ(Acquisitions(kKVSwatchLibrariesSuite), 0u);
}

TEST_F(TintoraFileFormatTest, WithoutTheHostsSwatchLibrarySuiteTheHandOverIsABadParameter) {
    host_.Faults().MakeSuiteUnavailable(kKVSwatchLibrariesSuite);
    kelvra::Document& document = host_.Documents().New("Import");
    EXPECT_EQ(SwatchLibraryRequest(nullptr, document), ZP_FOURCC('P', 'A', 'R', 'M'));
    EXPECT_EQ(Calls(kKVDataFilterSuite, "NewFileDataFilter"), 0u);
}

TEST(TintoraStartupTest, WithoutMemoryForTheFormatsStartUpGoesOnAndEveryFileIsTakenAsIs) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    bool found = false;
    for (std::uint64_t nth = 1; nth <= 50 && !found; ++nth) {
        host.Faults().FailBlockAllocation(nth);
        const ZPErr result = module.Startup();
        host.Faults().Clear();
        if (result == kZPNoErr && host.FileFormats().empty()) {
            found = true;
            KVFileFormatMessage message{};
            EXPECT_EQ(module.Send(kKVFileFormatCaller, kKVCheckFileFormatSelector, message.d), kZPNoErr);
            EXPECT_EQ(module.Send(kKVFileFormatCaller, kKVGoFileFormatSelector, message.d), kZPNoErr);
        }
        if (result == kZPNoErr) {
            EXPECT_EQ(module.Shutdown(), kZPNoErr);
        }
        EXPECT_THAT(Leftovers(host), IsEmpty()) << nth;
    }
    EXPECT_TRUE(found);
}

TEST(TintoraStartupTest, AFormatTheHostRefusesFailsStartUpWithTheHostsCode) {
    for (std::uint64_t nth : {1u, 2u}) {
        kelvra::Host host;
        kelvra::Module& module = host.Load(kTintora);
        host.Faults().FailCall({kKVFileFormatSuite, "AddFileFormat", nth, false, kFault});
        EXPECT_EQ(module.Startup(), kFault) << nth;
        EXPECT_EQ(module.Globals(), nullptr);
        EXPECT_THAT(host.FileFormats(), IsEmpty());
        EXPECT_THAT(Leftovers(host), IsEmpty());
    }
}

TEST_F(TintoraFileFormatTest, ShutDownLetsTheFormatsGo) {
    EXPECT_EQ(Check(swatchExchange_, folder_.Path() / "book.txt"), kNotRecognised);
    // TearDown shuts down and finds no block left.
}

}  // namespace

