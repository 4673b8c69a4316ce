// "KV Path Style Suite" 5: library files opened as hidden documents, with
// the test module's format (FormatModule.cpp) for files that are not the
// host's own.
#include "HostCodes.h"
#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <kelvra/DocumentJson.h>

#include <KVFileSuites.h>

#include <ZPBasicControl.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace {

using nlohmann::json;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

const char* const kColours = R"({"name": "Own colours",
  "groups": [{"name": "", "swatches": [{"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0.5}]},
             {"name": "Greys", "swatches": [{"name": "Mid", "kind": "gray", "values": [0.5]}]}],
  "customColors": [{"name": "Gold", "kind": "lab", "values": [80, 5, 60], "flags": 1, "bookId": 3000}]})";

class PathStyleSuiteTest : public ::testing::Test {
protected:
    PathStyleSuiteTest() { EXPECT_EQ(module.Startup(), 0u); }
    ~PathStyleSuiteTest() override { module.Shutdown(); }

    // OpenLibraryDocument's answer, and the open document it handed out;
    // `arm` runs just before the call.
    std::pair<ZPErr, kelvra::Document*> Open(const std::string& file, const std::function<void()>& arm = [] {}) {
        KVFilePathRef path = paths.Make(file);
        // Not null, to see it cleared; an injected fault leaves it alone.
        const auto unset = reinterpret_cast<KVDocumentHandle>(this);
        KVDocumentHandle document = unset;
        arm();
        const ZPErr result = suite->OpenLibraryDocument(path, &document);
        host.Faults().Clear();
        paths.Suite()->Dispose(path);
        if (document == unset) return {result, nullptr};
        kelvra::Document* open = host.Documents().Find(document);
        EXPECT_EQ(open == nullptr, document == nullptr) << "a handle of no open document";
        return {result, open};
    }
    std::size_t DocumentCount() { return host.Documents().All().size(); }

    kelvra::Host host;
    kelvra::Module& module = host.Load(FORMAT_MODULE);
    kelvra::testing::Paths paths{host};
    const KVPathStyleSuite* suite = kelvra::testing::Acquire<KVPathStyleSuite>(host, kKVPathStyleSuite, 14);
    testsupport::TemporaryFolder folder;
};

TEST_F(PathStyleSuiteTest, AFileOfARegisteredFormatBecomesAHiddenDocumentNamedAfterIt) {
    kelvra::Document& mine = host.Documents().New("mine");
    const auto [result, library] = Open(folder.Write("Brights.tsw", "rgb 1 0 0 Red\ngroup Warm\ngray 0.5 Mid\n"));
    EXPECT_EQ(result, kZPNoErr);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library->Name(), "Brights.tsw");
    EXPECT_TRUE(host.Documents().IsHidden(*library));
    EXPECT_EQ(kelvra::ToJson(*library), json::parse(R"({"name": "Brights.tsw", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Red", "kind": "rgb", "values": [1, 0, 0]}]},
                   {"name": "Warm", "swatches": [{"name": "Mid", "kind": "gray", "values": [0.5]}]}]})"));
    EXPECT_EQ(mine.SwatchCount(), 0u);
    EXPECT_EQ(host.Documents().Current(), &mine);
    const auto& messages = host.Messages();
    ASSERT_GE(messages.size(), 2u);
    EXPECT_EQ(messages[messages.size() - 2].selector, "KV Check");
    EXPECT_EQ(messages.back().selector, "KV Go");
}

TEST_F(PathStyleSuiteTest, TheLibraryIsCurrentWhileItIsReadSoItsCustomColoursAreItsOwn) {
    kelvra::Document& mine = host.Documents().New("mine");
    const auto [result, library] = Open(folder.Write("Spots.tsw", "spot 0 0.2 1 0 0.25 3000 Gold\n"));
    EXPECT_EQ(result, kZPNoErr);
    ASSERT_NE(library, nullptr);
    ASSERT_EQ(library->CustomColors().size(), 1u);
    EXPECT_EQ(library->CustomColors()[0]->name, u"Gold");
    EXPECT_TRUE(mine.CustomColors().empty());
    EXPECT_EQ(host.Documents().Current(), &mine);
}

TEST_F(PathStyleSuiteTest, WithNoDocumentCurrentBeforeNoneIsCurrentAfter) {
    const auto [result, library] = Open(folder.Write("a.tsw", "rgb 1 0 0 Red\n"));
    EXPECT_EQ(result, kZPNoErr);
    EXPECT_NE(library, nullptr);
    EXPECT_EQ(host.Documents().Current(), nullptr);
}

TEST_F(PathStyleSuiteTest, EachCallOpensANewDocument) {
    const std::string file = folder.Write("a.tsw", "rgb 1 0 0 Red\n");
    const auto first = Open(file).second;
    const auto second = Open(file).second;
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(DocumentCount(), 2u);
    EXPECT_EQ(second->SwatchCount(), 1u);
}

TEST_F(PathStyleSuiteTest, AKvFileIsTheHostsOwnDocumentAndNoFormatIsAsked) {
    const std::size_t messages = host.Messages().size();
    const auto [result, library] = Open(folder.Write("Own.kv", kColours));
    EXPECT_EQ(result, kZPNoErr);
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(host.Documents().IsHidden(*library));
    EXPECT_EQ(kelvra::ToJson(*library), json::parse(kColours));
    EXPECT_EQ(host.Messages().size(), messages);
    EXPECT_EQ(host.Documents().Current(), nullptr);
}

TEST_F(PathStyleSuiteTest, AKvFileThatIsNoDocumentAnswersKvdAndNoDocument) {
    std::filesystem::create_directory(folder.Path() / "folder.kv");
    for (const std::string& file : {folder.Write("broken.kv", "{"), folder.Write("empty.kv", ""),
                                    folder.Write("wrong.kv", R"({"name": "x", "groups": 3})"),
                                    (folder.Path() / "folder.kv").string()}) {
        EXPECT_EQ(Open(file), std::make_pair(ZP_FOURCC('K', 'V', 'D', '?'), static_cast<kelvra::Document*>(nullptr)))
            << file;
    }
    EXPECT_EQ(DocumentCount(), 0u);
}

TEST_F(PathStyleSuiteTest, AnEmptyPathOpensANewEmptyLibraryDocument) {
    const std::size_t messages = host.Messages().size();
    const auto [result, library] = Open(std::string());
    EXPECT_EQ(result, kZPNoErr);
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(host.Documents().IsHidden(*library));
    EXPECT_EQ(library->Name(), "Untitled library");
    EXPECT_EQ(library->SwatchCount(), 0u);
    EXPECT_EQ(host.Messages().size(), messages);
    const auto [again, other] = Open(std::string());
    EXPECT_EQ(again, kZPNoErr);
    EXPECT_NE(other, library);
}

TEST_F(PathStyleSuiteTest, AMissingFileAnswersFnfAndNoFormatIsAsked) {
    const std::size_t messages = host.Messages().size();
    std::filesystem::create_symlink("gone.tsw", folder.Path() / "dangling.tsw");
    for (const std::string& file : {(folder.Path() / "gone.tsw").string(), (folder.Path() / "dangling.tsw").string(),
                                    (folder.Path() / "gone.kv").string()}) {
        EXPECT_EQ(Open(file), std::make_pair(ZP_FOURCC('F', 'N', 'F', '?'), static_cast<kelvra::Document*>(nullptr)))
            << file;
    }
    EXPECT_EQ(host.Messages().size(), messages);
    EXPECT_EQ(DocumentCount(), 0u);
}

TEST_F(PathStyleSuiteTest, AFileNoFormatAcceptsAnswersFmtAndNoDocument) {
    EXPECT_EQ(Open(folder.Write("notes.txt", "rgb 1 0 0 Red\n")),
              std::make_pair(ZP_FOURCC('F', 'M', 'T', '?'), static_cast<kelvra::Document*>(nullptr)));
    EXPECT_EQ(host.Messages().back().selector, "KV Check");
    EXPECT_EQ(DocumentCount(), 0u);
}

TEST_F(PathStyleSuiteTest, AFailedGoAnswersItsOwnCodeAndTakesItsDocumentWithIt) {
    kelvra::Document& mine = host.Documents().New("mine");
    EXPECT_EQ(Open(folder.Write("broken.tsw", "rgb 1 0 0 Red\nfail OOPS\n")),
              std::make_pair(ZP_FOURCC('O', 'O', 'P', 'S'), static_cast<kelvra::Document*>(nullptr)));
    EXPECT_EQ(host.Documents().All(), std::vector<kelvra::Document*>{&mine});
    EXPECT_EQ(host.Documents().Current(), &mine);
}

TEST_F(PathStyleSuiteTest, NullArgumentsAnswerParm) {
    KVDocumentHandle document = nullptr;
    EXPECT_EQ(suite->OpenLibraryDocument(nullptr, &document), kZPBadParameterErr);
    KVFilePathRef path = paths.Make(folder.Write("a.tsw", "rgb 1 0 0 Red\n"));
    EXPECT_EQ(suite->OpenLibraryDocument(path, nullptr), kZPBadParameterErr);
    KVFilePathRef disposed = paths.Make("x.tsw");
    paths.Suite()->Dispose(disposed);
    EXPECT_EQ(suite->OpenLibraryDocument(disposed, &document), kZPBadParameterErr);
    EXPECT_EQ(DocumentCount(), 0u);
}

TEST_F(PathStyleSuiteTest, TheHiddenDocumentsSwatchListWorksThroughTheSwatchSuites) {
    const auto* lists = kelvra::testing::Acquire<KVSwatchListSuite>(host, kKVSwatchListSuite, 7);
    KVFilePathRef path = paths.Make(folder.Write("a.tsw", "rgb 1 0 0 Red\ngray 0.5 Mid\n"));
    KVDocumentHandle document = nullptr;
    ASSERT_EQ(suite->OpenLibraryDocument(path, &document), kZPNoErr);
    KVSwatchListRef list = nullptr;
    ASSERT_EQ(lists->GetSwatchList(document, &list), kZPNoErr);
    std::int32_t count = 0;
    EXPECT_EQ(lists->CountSwatches(list, &count), kZPNoErr);
    EXPECT_EQ(count, 2);
}

// The module asks for a library document while it imports a file of its
// own: the host sends it "KV Check" and "KV Go" for the library before the
// first import is done.
TEST_F(PathStyleSuiteTest, TheModuleIsEnteredAgainWhileItWaitsForTheCall) {
    const std::string library = folder.Write("library.tsw", "spot 0 0 0 1 0 7 Ink\n");
    kelvra::Document& mine = host.Documents().New("mine");
    const kelvra::FormatOpening opening = host.OpenWithFormats(
        folder.Write("outer.tsw", "rgb 1 0 0 Before\nopen " + library + "\nspot 1 0 0 0 0 8 After\n"),
        {&mine, nullptr});
    EXPECT_EQ(opening.go->result, kZPNoErr);
    std::vector<std::string> selectors;
    for (const kelvra::MessageRecord& message : host.Messages()) selectors.push_back(message.selector);
    EXPECT_EQ(selectors, (std::vector<std::string>{"Startup", "KV Check", "KV Check", "KV Go", "KV Go"}));
    ASSERT_EQ(host.Documents().All().size(), 2u);
    kelvra::Document& opened = *host.Documents().All()[1];
    EXPECT_TRUE(host.Documents().IsHidden(opened));
    EXPECT_EQ(opened.Name(), "library.tsw");
    ASSERT_EQ(opened.CustomColors().size(), 1u);
    EXPECT_EQ(opened.CustomColors()[0]->name, u"Ink");
    // The outer import goes on in its own document, current again.
    EXPECT_EQ(mine.SwatchCount(), 2u);
    ASSERT_EQ(mine.CustomColors().size(), 1u);
    EXPECT_EQ(mine.CustomColors()[0]->name, u"After");
    EXPECT_EQ(host.Documents().Current(), &mine);
}

TEST_F(PathStyleSuiteTest, AnInjectedFaultAnswersItsCodeAndOpensNothing) {
    const std::string file = folder.Write("a.tsw", "rgb 1 0 0 Red\n");
    const std::size_t messages = host.Messages().size();
    const auto arm = [&] { host.Faults().FailCall({kKVPathStyleSuite, "OpenLibraryDocument", 1, false, kFailure}); };
    EXPECT_EQ(Open(file, arm), std::make_pair(kFailure, static_cast<kelvra::Document*>(nullptr)));
    EXPECT_EQ(host.Messages().size(), messages);
    EXPECT_EQ(DocumentCount(), 0u);
    EXPECT_EQ(host.LiveObjects().filePaths, 0u);
}

// Every host call made while the library is read fails in turn, the 1st,
// 2nd, … until the call goes through: each run answers 0 and the whole
// library, or a code and no document; the document current before stays
// current, and neither the host's message paths nor the module's blocks
// are left. (A string or filter whose disposal was the call that failed is
// kept by the host, as a real host would, so those are not counted.)
TEST_F(PathStyleSuiteTest, AFaultInsideTheReadLeavesNoDocumentAndNothingOfItsOwn) {
    const std::string file = folder.Write("a.tsw", "rgb 1 0 0 Red\ngroup Warm\nspot 0 0 1 0 0.5 5 Gold\n");
    const json whole = json::parse(R"({"name": "a.tsw",
        "groups": [{"name": "", "swatches": [{"name": "Red", "kind": "rgb", "values": [1, 0, 0]}]},
                   {"name": "Warm", "swatches": [{"name": "Gold", "kind": "custom", "customColor": "Gold",
                                                  "tint": 0.5}]}],
        "customColors": [{"name": "Gold", "kind": "cmyk", "values": [0, 0, 1, 0], "flags": 1, "bookId": 5}]})");
    kelvra::Document& mine = host.Documents().New("mine");
    const std::size_t blocks = zpbasic::GetCounts().liveBlocks;
    std::uint64_t nth = 1;
    for (; nth < 200; ++nth) {
        std::uint64_t before = 0;
        const auto [result, library] = Open(file, [&] {
            host.Faults().FailCall({"", "", nth, false, kFailure});
            before = host.Faults().TotalCalls();
        });
        // Open's Dispose counts one call after the suite call.
        const bool failed = host.Faults().TotalCalls() - before - 1 >= nth;
        EXPECT_EQ(result == kZPNoErr, library != nullptr) << nth;
        if (library != nullptr) {
            EXPECT_EQ(kelvra::ToJson(*library), whole) << nth;
        }
        EXPECT_EQ(DocumentCount(), library != nullptr ? 2u : 1u) << nth;
        EXPECT_EQ(host.Documents().Current(), &mine) << nth;
        EXPECT_TRUE(mine.CustomColors().empty()) << nth;
        EXPECT_EQ(host.LiveObjects().filePaths, 0u) << nth;
        EXPECT_EQ(zpbasic::GetCounts().liveBlocks, blocks) << nth;
        if (library != nullptr) host.Documents().Close(*library);
        if (!failed) break;
    }
    EXPECT_GT(nth, 10u);
    EXPECT_LT(nth, 200u);
}

}  // namespace
