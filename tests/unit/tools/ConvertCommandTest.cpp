// tintora convert as a user runs it: files in, one swatch exchange file out,
// or an error naming the file and line and the old output left alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "ToolTesting.h"
#include "formats/ReaderResult.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "BookInput.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tooltesting::RunTool;

const std::string kSamples = SAMPLES_DIR;
const std::string kKept = "an older file that must survive";

std::string FileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void ReadExchange(const std::string& path, CompleteBook& book) {
    formats::FileStream stream(path.c_str(), true);
    EXPECT_EQ(formats::ReadSwatchExchange(stream, book, 0), formats::kReadOK);
}

class ConvertCommandTest : public testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text) { return folder_.Write(name, text); }
    std::string Path(const std::string& name) const { return (folder_.Path() / name).string(); }

    testsupport::TemporaryFolder folder_;
};

TEST_F(ConvertCommandTest, APaletteBecomesAnExchangeFileOfProcessColours) {
    const std::string palette = Write("pier.txt", "GIMP Palette\nName: Pier\n# x\n255 0 0 Red\n0 128 255\n");
    const std::string out = Path("pier.ose");
    const auto run = RunTool({"convert", palette, "-o", out});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "wrote " + out + ": 2 swatches, 0 groups\n");
    EXPECT_EQ(run.err, "");
    CompleteBook book;
    ReadExchange(out, book);
    ASSERT_EQ(book.CountSwatches(), 2);
    EXPECT_EQ(book.GetSwatchName(0, false), u"Red");
    EXPECT_EQ(book.GetSwatchName(1, false), u"#0080FF");
    EXPECT_EQ(book.GetSwatchKind(1), swatchbook::kProcessKind);
    double rgb[3] = {};
    ASSERT_TRUE(book.GetSwatchValuesFloat(1, book.ChooseValueFormat(1, 0), rgb));
    EXPECT_THAT(rgb, ElementsAre(0.0, double(float(128 / 255.0)), 1.0));
}

TEST_F(ConvertCommandTest, OptionsGiveAKindAndGroups) {
    const std::string a = Write("a.txt", "1 2 3 One\n");
    const std::string b = Write("b.txt", "#040506 Two\n");
    const std::string out = Path("ab.ose");
    const auto run = RunTool({"convert", a, b, "-o", out, "--kind", "spot", "--group-per-file"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "wrote " + out + ": 2 swatches, 2 groups\n");
    CompleteBook book;
    ReadExchange(out, book);
    ASSERT_EQ(book.Groups().size(), 3u);
    EXPECT_EQ(book.Groups()[1].name, u"a");
    EXPECT_EQ(book.Groups()[2].name, u"b");
    EXPECT_EQ(book.Groups()[2].swatches[0].kind, swatchbook::kSpotKind);

    const auto named = RunTool({"convert", a, b, "-o", out, "--name", "Pier"});
    EXPECT_EQ(named.status, 0) << named.err;
    CompleteBook renamed;
    ReadExchange(out, renamed);
    EXPECT_EQ(renamed.Groups()[1].name, u"Pier");
    EXPECT_NE(RunTool({"convert", a, "-o", out, "--name", "Pier", "--group-per-file"}).status, 0);
}

struct BadInput {
    const char* name;
    std::string file;       // written into the folder, unless empty
    std::string bytes;
    std::string message;    // after "tintora convert: <path>"
};

class ConvertBadInputTest : public ConvertCommandTest, public testing::WithParamInterface<BadInput> {};

TEST_P(ConvertBadInputTest, EndsWithStatusOneAndLeavesTheOutputAlone) {
    const BadInput& bad = GetParam();
    const std::string in = bad.file.empty() ? Path("missing.txt") : Write(bad.file, bad.bytes);
    const std::string out = Write("out.ose", kKept);
    for (const char* command : {"convert", "sheet"}) {
        const std::string sheetOut = Write("out.html", kKept);
        const auto run = RunTool({command, in, "-o", std::string(command) == "sheet" ? sheetOut : out});
        EXPECT_EQ(run.status, 1) << command;
        EXPECT_EQ(run.err, std::string("tintora ") + command + ": " + in + bad.message + "\n");
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(FileText(out), kKept);
        EXPECT_EQ(FileText(sheetOut), kKept);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}),
              bad.file.empty() ? 2 : 3);  // no temporary file left behind
}

testsupport::Bytes TruncatedColorBook() {
    testsupport::ColorBookDescription book;
    book.records = {{u"Red", "R", {255, 0, 0}, {}}};
    testsupport::Bytes bytes = testsupport::BuildColorBook(book);
    bytes.pop_back();
    return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ConvertBadInputTest,
    testing::Values(BadInput{"Missing", "", "", ": no such file"},
                    BadInput{"TruncatedLibrary", "cut.ocb",
                             [] {
                                 const auto bytes = TruncatedColorBook();
                                 return std::string(bytes.begin(), bytes.end());
                             }(),
                             ": ends early: the file is truncated or damaged"},
                    BadInput{"TwoNumbers", "two.txt", "1 2 3 ok\n\n12 34 Red\n",
                             ":3: expected three numbers 0..255 and a name, found 2 numbers"},
                    BadInput{"ValueOf300", "big.txt", "GIMP Palette\n300 0 0 Red\n", ":2: value 300 is out of range 0..255"}),
    [](const testing::TestParamInfo<BadInput>& info) { return std::string(info.param.name); });

TEST_F(ConvertCommandTest, ADirectoryIsRefusedByName) {
    for (const std::string command : {"convert", "sheet"}) {
        const std::string out = Write(command == "sheet" ? "out.svg" : "out.ose", kKept);
        const auto run = RunTool({command, folder_.Path().string(), "-o", out});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "tintora " + command + ": " + folder_.Path().string() + ": is a directory, not a file\n");
        EXPECT_EQ(FileText(out), kKept);
    }
}

TEST_F(ConvertCommandTest, LongAndRepeatedNamesAreReportedByNameAndRefused) {
    const std::string palette =
        Write("names.txt", "1 1 1 Red\n2 2 2 " + std::string(40, 'L') + "\n3 3 3 Red\n4 4 4 Blue\n");
    const std::string out = Write("out.ose", kKept);
    const auto run = RunTool({"convert", palette, "-o", out});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tintora convert: " + palette + ":2: name \"" + std::string(40, 'L') +
                           "\" has 40 UTF-16 units; the host holds at most 31 (--cut-names cuts it)\n"
                           "tintora convert: name \"Red\" is used 2 times: " +
                           palette + ":1, " + palette + ":3 (--rename-duplicates numbers the later ones)\n");
    EXPECT_EQ(FileText(out), kKept);

    const auto fixed = RunTool({"convert", palette, "-o", out, "--cut-names", "--rename-duplicates"});
    EXPECT_EQ(fixed.status, 0) << fixed.err;
    EXPECT_THAT(fixed.err, HasSubstr("note: " + palette + ":3: renamed \"Red\" to \"Red 2\""));
    CompleteBook book;
    ReadExchange(out, book);
    EXPECT_EQ(book.GetSwatchName(1, false), std::u16string(31, u'L'));
    EXPECT_EQ(book.GetSwatchName(2, false), u"Red 2");
}

TEST_F(ConvertCommandTest, BlocksTheExchangeReaderLeavesOutAreNoted) {
    const std::string in = kSamples + "/studio.ose";
    const auto run = RunTool({"convert", in, "-o", Path("studio.ose")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "tintora convert: note: " + in +
                           ": left out 1 block of a kind the swatch exchange reader does not import\n");
}

// Each sample library converted and read back: the same groups, and per
// swatch the full name, kind, tint and values, to single precision.
TEST_F(ConvertCommandTest, EverySampleLibraryKeepsItsSwatchesThroughTheExchangeFormat) {
    for (const char* sample : {"harbour.ocb", "studio.ose", "legacy.xml"}) {
        SCOPED_TRACE(sample);
        const std::string in = kSamples + "/" + sample;
        const std::string out = Path(std::string(sample) + ".ose");
        const auto run = RunTool({"convert", in, "-o", out});
        ASSERT_EQ(run.status, 0) << run.err;
        CompleteBook original;
        ASSERT_TRUE(tool::ReadBookInput(in, std::nullopt, original, 0).error.empty());
        CompleteBook copy;
        ReadExchange(out, copy);
        std::int32_t ignored = 0;
        ASSERT_EQ(copy.CountGroups(&ignored), original.CountGroups(&ignored));
        ASSERT_GT(original.CountSwatches(), 0);
        for (std::int32_t group = 0; group < original.CountGroups(&ignored); ++group) {
            original.SelectGroup(group);
            copy.SelectGroup(group);
            EXPECT_EQ(copy.GetGroupName(), original.GetGroupName());
            ASSERT_EQ(copy.CountGroupSwatches(), original.CountGroupSwatches());
            for (std::int32_t swatch = 0; swatch < original.CountGroupSwatches(); ++swatch) {
                EXPECT_EQ(copy.GetSwatchName(swatch, true), original.GetSwatchName(swatch, true));
                EXPECT_EQ(copy.GetSwatchKind(swatch), original.GetSwatchKind(swatch));
                EXPECT_EQ(copy.GetSwatchTint(swatch, &ignored), double(float(original.GetSwatchTint(swatch, &ignored))));
                const std::int32_t from = original.ChooseValueFormat(swatch, original.GetSwatchColorSpace(swatch));
                const std::int32_t to = copy.ChooseValueFormat(swatch, 0);
                ASSERT_EQ(copy.GetFormatColorSpace(to), original.GetFormatColorSpace(from));
                double want[4] = {}, got[4] = {};
                ASSERT_TRUE(original.GetSwatchValuesFloat(swatch, from, want));
                ASSERT_TRUE(copy.GetSwatchValuesFloat(swatch, to, got));
                for (int c = 0; c < original.GetFormatChannels(from); ++c) {
                    EXPECT_NEAR(got[c], want[c], std::abs(want[c]) * 1e-6 + 1e-6) << "channel " << c;
                }
            }
        }
    }
}

}  // namespace
