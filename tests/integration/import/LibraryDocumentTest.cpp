// Library files of both registered formats opened as hidden documents
// through "KV Path Style Suite" 5 with the real module started: the host
// offers each file to the module's formats and has the one that accepts it
// read it, entering the module again from inside a host call.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <kelvra/DocumentJson.h>

#include <KVFileSuites.h>
#include <KVStringSuites.h>

#include "ModuleImport.h"
#include "ZPBasicControl.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SampleDocuments.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace {

using nlohmann::json;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');
constexpr ZPErr kCantHappen = ZP_FOURCC('C', 'A', 'N', 'T');
constexpr std::uint64_t kAttempts = 400;

class LibraryDocumentTest : public import_testing::ModuleImportTest {
protected:
    void SetUp() override {
        ModuleImportTest::SetUp();
        const void* suite = nullptr;
        ASSERT_EQ(host_.BasicSuite()->AcquireSuite(kKVPathStyleSuite, 14, &suite), kZPNoErr);
        pathStyle_ = static_cast<const KVPathStyleSuite*>(suite);
        ASSERT_EQ(host_.BasicSuite()->AcquireSuite(kKVUnicodeStringSuite, 9, &suite), kZPNoErr);
        strings_ = static_cast<const KVUnicodeStringSuite*>(suite);
        ASSERT_EQ(host_.BasicSuite()->AcquireSuite(kKVFilePathSuite, 8, &suite), kZPNoErr);
        paths_ = static_cast<const KVFilePathSuite*>(suite);
    }
    void TearDown() override {
        host_.BasicSuite()->ReleaseSuite(kKVPathStyleSuite, 14);
        host_.BasicSuite()->ReleaseSuite(kKVUnicodeStringSuite, 9);
        host_.BasicSuite()->ReleaseSuite(kKVFilePathSuite, 8);
        ModuleImportTest::TearDown();
    }

    std::string Exchange() {
        return folder_.Write("sample.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    }
    std::string Book() { return folder_.Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook())); }

    // OpenLibraryDocument's answer and the open document it handed out;
    // `arm` runs just before the call, and faults are cleared after it.
    std::pair<ZPErr, kelvra::Document*> Open(const std::string& file, const std::function<void()>& arm = [] {}) {
        KVUnicodeStringRef text = nullptr;
        EXPECT_EQ(strings_->NewFromUTF8(file.data(), file.size(), &text), kZPNoErr);
        KVFilePathRef path = nullptr;
        EXPECT_EQ(paths_->NewFromString(text, &path), kZPNoErr);
        strings_->Dispose(text);
        KVDocumentHandle document = nullptr;
        arm();
        const ZPErr result = pathStyle_->OpenLibraryDocument(path, &document);
        host_.Faults().Clear();
        paths_->Dispose(path);
        return {result, host_.Documents().Find(document)};
    }

    const KVPathStyleSuite* pathStyle_ = nullptr;
    const KVUnicodeStringSuite* strings_ = nullptr;
    const KVFilePathSuite* paths_ = nullptr;
};

TEST_F(LibraryDocumentTest, ASwatchExchangeFileOpensAsAHiddenDocumentOfItsOwn) {
    kelvra::Document& mine = host_.Documents().New("mine");
    const std::size_t messages = host_.Messages().size();
    const auto [result, library] = Open(Exchange());
    EXPECT_EQ(result, kZPNoErr);
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(host_.Documents().IsHidden(*library));
    EXPECT_EQ(kelvra::ToJson(*library), json::parse(testsupport::kSampleSwatchExchangeDocument));
    EXPECT_EQ(mine.SwatchCount(), 0u);
    EXPECT_TRUE(mine.CustomColors().empty());
    EXPECT_EQ(host_.Documents().Current(), &mine);
    std::vector<std::string> sent;
    for (std::size_t i = messages; i < host_.Messages().size(); ++i) sent.push_back(host_.Messages()[i].selector);
    EXPECT_EQ(sent, (std::vector<std::string>{"KV Check", "KV Check", "KV Go"}));
}

TEST_F(LibraryDocumentTest, AColourBookOpensAsAHiddenDocumentOfSpotColours) {
    const auto [result, library] = Open(Book());
    EXPECT_EQ(result, kZPNoErr);
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(host_.Documents().IsHidden(*library));
    EXPECT_EQ(kelvra::ToJson(*library), json::parse(testsupport::kSampleColorBookDocument));
    EXPECT_EQ(host_.Documents().Current(), nullptr);
}

TEST_F(LibraryDocumentTest, OpeningTheSameFileTwiceGivesTwoDocuments) {
    const std::string file = Book();
    const auto first = Open(file).second;
    const auto second = Open(file).second;
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(kelvra::ToJson(*second), json::parse(testsupport::kSampleColorBookDocument));
}

TEST_F(LibraryDocumentTest, AReadErrorIsShownAndAnswersTheModulesCodeWithoutADocument) {
    testsupport::ColorBookDescription book = testsupport::SampleColorBook();
    book.colorSpace = 5;  // no colour space of the format
    const auto [result, library] = Open(folder_.Write("bad.ocb", testsupport::BuildColorBook(book)));
    EXPECT_EQ(result, kCantHappen);
    EXPECT_EQ(library, nullptr);
    EXPECT_TRUE(host_.Documents().All().empty());
    EXPECT_THAT(import_testing::Shown(host_), testing::Contains(import_testing::ColorBookReadError("bad.ocb")));
}

TEST_F(LibraryDocumentTest, DecliningTheUnsupportedTypesQuestionAnswersStopWithoutADocument) {
    testsupport::SwatchExchangeDescription file;
    file.blocks = {testsupport::ColorBlock({{}, u"Red", {}, "RGB ", {1.0f, 0.0f, 0.0f}, 2}),
                   testsupport::ExchangeBlock{3, {0, 0, 0, 0}, {}}};
    host_.AnswerQuestions(false);
    const auto [result, library] = Open(folder_.Write("odd.ose", testsupport::BuildSwatchExchange(file)));
    EXPECT_EQ(result, ZP_FOURCC('S', 'T', 'O', 'P'));
    EXPECT_EQ(library, nullptr);
    EXPECT_TRUE(host_.Documents().All().empty());
}

TEST_F(LibraryDocumentTest, AnXmlSwatchbookIsAcceptedByNoFormat) {
    EXPECT_EQ(Open(folder_.Write("legacy.xml", "<a/>")),
              std::make_pair(ZP_FOURCC('F', 'M', 'T', '?'), static_cast<kelvra::Document*>(nullptr)));
}

enum class Fault { kCall, kBlock };

class LibraryDocumentFaultTest : public LibraryDocumentTest, public testing::WithParamInterface<Fault> {
protected:
    // A host that refused to dispose of a string or to unlink a filter keeps
    // it; what the module must have given back are its suites and blocks.
    void TearDown() override {
        host_.BasicSuite()->ReleaseSuite(kKVPathStyleSuite, 14);
        host_.BasicSuite()->ReleaseSuite(kKVUnicodeStringSuite, 9);
        host_.BasicSuite()->ReleaseSuite(kKVFilePathSuite, 8);
        EXPECT_EQ(module_->Shutdown(), kZPNoErr);
        EXPECT_THAT(import_testing::SuitesAndBlocks(host_), testing::IsEmpty());
    }
    std::uint64_t Requests() {
        if (GetParam() == Fault::kCall) return host_.Faults().TotalCalls();
        const zpbasic::Counts counts = zpbasic::GetCounts();
        return counts.allocations + counts.failedAllocations;
    }
};

// The 1st, 2nd, 3rd … host call or block allocation while a library is
// opened fails, until the opening goes through: each run answers 0 and a
// document, or a code and none; the document current before is current
// again, and the module loses no block. What a Go that answered 0 read is
// the module's affair: nothing when the file could not be examined, else
// every swatch (a failed group name does not stop the reader).
TEST_P(LibraryDocumentFaultTest, EveryRunGivesADocumentOrACodeAndLosesNoBlock) {
    const std::string file = Exchange();
    kelvra::Document& mine = host_.Documents().New("mine");
    const std::size_t blocksWhileStarted = host_.LiveBlocks().basic;
    // The started module holds its own library's path.
    const std::size_t pathsWhileStarted = host_.LiveObjects().filePaths;
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        std::uint64_t before = 0;
        const auto [result, library] = Open(file, [&] {
            before = Requests();
            if (GetParam() == Fault::kCall) host_.Faults().FailCall({"", "", nth, false, kFault});
            else host_.Faults().FailBlockAllocation(nth, false);
        });
        // The path's disposal after the call is one more host call.
        const bool failed = Requests() - before - (GetParam() == Fault::kCall ? 1 : 0) >= nth;
        EXPECT_EQ(result == kZPNoErr, library != nullptr) << nth;
        if (library != nullptr) {
            EXPECT_THAT(library->SwatchCount(), testing::AnyOf(0u, 4u)) << nth;
            host_.Documents().Close(*library);
        }
        EXPECT_EQ(host_.Documents().All(), std::vector<kelvra::Document*>{&mine}) << nth;
        EXPECT_EQ(host_.Documents().Current(), &mine) << nth;
        EXPECT_TRUE(mine.CustomColors().empty()) << nth;
        EXPECT_EQ(host_.LiveBlocks().basic, blocksWhileStarted) << nth;
        EXPECT_EQ(host_.LiveObjects().filePaths, pathsWhileStarted) << nth;
        host_.Events().Clear();
        if (!failed) {
            ASSERT_NE(library, nullptr);
            break;
        }
    }
    EXPECT_GT(nth, 5u);
    ASSERT_LE(nth, kAttempts);
}

INSTANTIATE_TEST_SUITE_P(CallsAndBlocks, LibraryDocumentFaultTest, testing::Values(Fault::kCall, Fault::kBlock),
                         [](const testing::TestParamInfo<Fault>& info) {
                             return info.param == Fault::kCall ? "Call" : "Block";
                         });

}  // namespace
