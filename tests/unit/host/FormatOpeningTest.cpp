// Opening a file through the registered file formats, as import and the
// library documents do it, with the test module's format (FormatModule.cpp).
#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

constexpr ZPErr kNotThisFormat = ZP_FOURCC('F', 'M', 'T', '?');

class FormatOpeningTest : public ::testing::Test {
protected:
    FormatOpeningTest() { EXPECT_EQ(module.Startup(), 0u); }
    ~FormatOpeningTest() override { module.Shutdown(); }

    // A new document named "new", counting how often it was asked for.
    kelvra::FormatTarget NewDocument() {
        kelvra::FormatTarget target;
        target.newDocument = [this]() -> kelvra::Document& {
            ++made;
            return host.Documents().New("new");
        };
        return target;
    }

    kelvra::Host host;
    kelvra::Module& module = host.Load(FORMAT_MODULE);
    testsupport::TemporaryFolder folder;
    int made = 0;
};

TEST_F(FormatOpeningTest, AnAcceptedFileIsReadIntoANewDocumentMadeCurrent) {
    kelvra::Document& before = host.Documents().New("before");
    const kelvra::FormatOpening opening =
        host.OpenWithFormats(folder.Write("a.tsw", "rgb 1 0 0 Red\n"), NewDocument());
    ASSERT_EQ(opening.checks.size(), 1u);
    EXPECT_EQ(opening.checks[0].format, "Test Swatch Text Reader");
    EXPECT_EQ(opening.checks[0].result, 0u);
    ASSERT_TRUE(opening.go);
    EXPECT_EQ(opening.go->format, "Test Swatch Text Reader");
    EXPECT_EQ(opening.go->result, 0u);
    EXPECT_EQ(made, 1);
    ASSERT_NE(opening.document, nullptr);
    EXPECT_EQ(opening.document->Name(), "new");
    EXPECT_EQ(opening.document->SwatchCount(), 1u);
    EXPECT_EQ(host.Documents().Current(), opening.document);
    EXPECT_EQ(before.SwatchCount(), 0u);
    const auto& messages = host.Messages();
    ASSERT_GE(messages.size(), 2u);
    EXPECT_EQ(messages[messages.size() - 2].selector, "KV Check");
    EXPECT_EQ(messages.back().selector, "KV Go");
}

TEST_F(FormatOpeningTest, AFileNoFormatAcceptsMakesNoDocumentAndGetsNoGo) {
    const std::size_t messages = host.Messages().size();
    const kelvra::FormatOpening opening = host.OpenWithFormats(folder.Write("a.txt", "rgb 1 0 0 Red\n"), NewDocument());
    ASSERT_EQ(opening.checks.size(), 1u);
    EXPECT_EQ(opening.checks[0].result, kNotThisFormat);
    EXPECT_FALSE(opening.go);
    EXPECT_EQ(opening.document, nullptr);
    EXPECT_EQ(made, 0);
    EXPECT_TRUE(host.Documents().All().empty());
    EXPECT_EQ(host.Messages().size(), messages + 1);
}

TEST_F(FormatOpeningTest, PlacingReadsIntoTheGivenDocument) {
    kelvra::Document& into = host.Documents().New("into");
    host.Documents().New("other");
    kelvra::FormatTarget target = NewDocument();
    target.placeInto = &into;
    const kelvra::FormatOpening opening = host.OpenWithFormats(folder.Write("a.tsw", "gray 0.5 Mid\n"), target);
    EXPECT_EQ(opening.document, &into);
    EXPECT_EQ(opening.go->result, 0u);
    EXPECT_EQ(into.SwatchCount(), 1u);
    EXPECT_EQ(made, 0);
    EXPECT_EQ(host.Documents().Current(), &into);
}

TEST_F(FormatOpeningTest, GoAnswersWhatTheModuleAnswered) {
    const kelvra::FormatOpening opening =
        host.OpenWithFormats(folder.Write("a.tsw", "rgb 1 0 0 Red\nfail OOPS\n"), NewDocument());
    EXPECT_EQ(opening.go->result, ZP_FOURCC('O', 'O', 'P', 'S'));
    EXPECT_EQ(opening.document->SwatchCount(), 1u);
}

TEST_F(FormatOpeningTest, WithNoFormatRegisteredNothingIsAsked) {
    module.Shutdown();
    const kelvra::FormatOpening opening = host.OpenWithFormats(folder.Write("a.tsw", ""), NewDocument());
    EXPECT_TRUE(opening.checks.empty());
    EXPECT_FALSE(opening.go);
    EXPECT_EQ(made, 0);
    module.Startup();
}

}  // namespace
