// Importing a file the user opened or placed: the question about blocks the
// reader leaves out, the read errors with the file's name, and the files
// that turn out not to be of the format.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModuleImport.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using import_testing::CantHappenReport;
using import_testing::DescribeSwatches;
using import_testing::Shown;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testsupport::ColorBlock;
using testsupport::U16;

constexpr ZPErr kUserCanceled = ZP_FOURCC('S', 'T', 'O', 'P');
constexpr ZPErr kCantHappen = ZP_FOURCC('C', 'A', 'N', 'T');

const char* const kQuestion =
    "question: The file ^Qmixed.ose^Q contains unsupported swatch types.  Some swatches will not be imported.";

// Two colours around a block of type 3, which the reader skips.
testsupport::Bytes MixedSwatchExchange() {
    testsupport::SwatchExchangeDescription file;
    file.blocks = {
        ColorBlock({{}, U16("Sky"), {}, "RGB ", {0.25f, 0.5f, 1.0f}, 2}),
        {3, {0, 1, 2, 3}, {}},
        ColorBlock({{}, U16("Ink"), {}, "CMYK", {0.1f, 0.2f, 0.3f, 0.4f}, 2}),
    };
    return testsupport::BuildSwatchExchange(file);
}

class FileFormatGoTest : public import_testing::ModuleImportTest {
protected:
    void SetUp() override {
        ModuleImportTest::SetUp();
        document_ = &host_.Documents().New("Import");
    }

    std::vector<std::string> Swatches() const { return DescribeSwatches(*document_); }

    kelvra::Document* document_ = nullptr;
};

TEST_F(FileFormatGoTest, DecliningTheQuestionAboutUnsupportedBlocksImportsNothingAndStopsSilently) {
    host_.AnswerQuestions(false);
    EXPECT_EQ(Go(swatchExchange_, folder_.Write("mixed.ose", MixedSwatchExchange()), *document_), kUserCanceled);
    EXPECT_THAT(Shown(host_), ElementsAre(std::string(kQuestion) + " -> no"));
    EXPECT_THAT(Swatches(), ElementsAre("[]"));
}

TEST_F(FileFormatGoTest, AcceptingTheQuestionImportsTheOtherSwatches) {
    host_.AnswerQuestions(true);
    EXPECT_EQ(Go(swatchExchange_, folder_.Write("mixed.ose", MixedSwatchExchange()), *document_), kZPNoErr);
    EXPECT_THAT(Shown(host_), ElementsAre(std::string(kQuestion) + " -> yes"));
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Sky: rgb 0.25 0.5 1", "Ink: cmyk 0.1 0.2 0.3 0.4"));
}

TEST_F(FileFormatGoTest, AFileWithoutUnsupportedBlocksAsksNothing) {
    EXPECT_EQ(Go(swatchExchange_, folder_.Write("plain.ose", testsupport::BuildSwatchExchange(
                                                                testsupport::SampleSwatchExchange())),
                 *document_),
              kZPNoErr);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(FileFormatGoTest, AColourBookOfAnUnknownColourSpaceIsReportedWithItsNameAndAnswersCant) {
    testsupport::ColorBookDescription book = testsupport::SampleColorBook();
    book.colorSpace = 5;
    EXPECT_EQ(Go(colorBook_, folder_.Write("odd.ocb", testsupport::BuildColorBook(book)), *document_), kCantHappen);
    std::vector<std::string> expected = {import_testing::ColorBookReadError("odd.ocb")};
    for (const std::string& line : CantHappenReport()) expected.push_back(line);
    EXPECT_THAT(Shown(host_), ElementsAreArray(expected));
    EXPECT_THAT(Swatches(), ElementsAre("[]"));
}

TEST_F(FileFormatGoTest, ASwatchExchangeFileThatEndsInsideAColourKeepsWhatWasReadAndAnswersCant) {
    // The last block declares no data, so the pre-scan passes, but its
    // colour runs past the end of the file.
    testsupport::ExchangeBlock cut = ColorBlock({{}, U16("Cut"), {}, "RGB ", {0.5f, 0.5f, 0.5f}, 0});
    cut.data.resize(cut.data.size() - 4);
    cut.declaredLength = 0;
    testsupport::SwatchExchangeDescription file;
    file.blocks = {ColorBlock({{}, U16("Sky"), {}, "RGB ", {0.25f, 0.5f, 1.0f}, 2}), cut};
    EXPECT_EQ(Go(swatchExchange_, folder_.Write("cut.ose", testsupport::BuildSwatchExchange(file)), *document_),
              kCantHappen);
    std::vector<std::string> expected = {import_testing::SwatchExchangeReadError("cut.ose")};
    for (const std::string& line : CantHappenReport()) expected.push_back(line);
    EXPECT_THAT(Shown(host_), ElementsAreArray(expected));
    // The swatch being read when the data ended was added but never written.
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Sky: rgb 0.25 0.5 1", ": none"));
}

TEST_F(FileFormatGoTest, AFileThatIsNotOfTheFormatImportsNothingAndSaysNothing) {
    testsupport::ColorBookDescription badMagic = testsupport::SampleColorBook();
    badMagic.magic = "8KCB";
    EXPECT_EQ(Go(colorBook_, folder_.Write("bad.ocb", testsupport::BuildColorBook(badMagic)), *document_), kZPNoErr);
    EXPECT_EQ(Go(colorBook_, folder_.Path() / "nowhere.ocb", *document_), kZPNoErr);
    testsupport::SwatchExchangeDescription truncated = testsupport::SampleSwatchExchange();
    truncated.blockCount = 9;
    EXPECT_EQ(Go(swatchExchange_, folder_.Write("short.ose", testsupport::BuildSwatchExchange(truncated)),
                 *document_),
              kZPNoErr);
    EXPECT_THAT(Shown(host_), IsEmpty());
    EXPECT_THAT(Swatches(), ElementsAre("[]"));
}

TEST_F(FileFormatGoTest, ARequestForNoneOfTheModulesFormatsDoesNothing) {
    const std::filesystem::path file = folder_.Write("plain.ose", MixedSwatchExchange());
    EXPECT_EQ(Go(nullptr, file, *document_), kZPNoErr);
    EXPECT_EQ(Go(reinterpret_cast<KVFileFormatHandle>(&host_), file, *document_), kZPNoErr);
    EXPECT_EQ(Calls(kKVDataFilterSuite, "NewFileDataFilter"), 0u);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

}  // namespace
