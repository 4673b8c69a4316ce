#include "TintoraCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "ToolTesting.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tooltesting::RunTool;
using testsupport::TemporaryFolder;

const std::string kXmlBook =
    R"(<OrvikSwatchbook Version="2" Title="T&#xE9;"><Formats><Format ID="f" ColorSpace="RGB" Encoding="Int8"/>)"
    R"(</Formats><Swatches><Pr N="Red"><C F="f">255 0 7</C></Pr><Spacer/></Swatches></OrvikSwatchbook>)";

const std::string kXmlTrace =
    "{\"op\": \"BeginFill\", \"args\": []}\n"
    "{\"op\": \"SetVersion\", \"args\": [2]}\n"
    "{\"op\": \"SetTitle\", \"args\": [\"T\\u00e9\"]}\n"
    "{\"op\": \"AddFormat\", \"args\": [], \"ret\": 0}\n"
    "{\"op\": \"SetFormatID\", \"args\": [0, \"f\"], \"ret\": true}\n"
    "{\"op\": \"SetFormatColorSpaceName\", \"args\": [0, \"RGB\"], \"ret\": true}\n"
    "{\"op\": \"SetFormatColorSpace\", \"args\": [0, 4], \"ret\": true}\n"
    "{\"op\": \"SetFormatEncoding\", \"args\": [0, 1], \"ret\": true}\n"
    "{\"op\": \"AddSwatch\", \"args\": [-1], \"ret\": 0}\n"
    "{\"op\": \"SetSwatchKind\", \"args\": [0, 2]}\n"
    "{\"op\": \"SetSwatchName\", \"args\": [0, \"Red\"], \"ret\": true}\n"
    "{\"op\": \"FindFormat\", \"args\": [\"f\"], \"ret\": 0}\n"
    "{\"op\": \"GetFormatChannels\", \"args\": [0], \"ret\": 3}\n"
    "{\"op\": \"GetFormatEncoding\", \"args\": [0], \"ret\": 1}\n"
    "{\"op\": \"SetSwatchValuesNative\", \"args\": [0, 0, [255, 0, 7]], \"ret\": true}\n";

testsupport::ColorBookDescription SmallColorBook() {
    testsupport::ColorBookDescription book;
    book.bookId = 7;
    book.title = u"T";
    book.copyright = u"c";
    book.pageSize = 1;
    book.colorSpace = testsupport::kColorBookRGB;
    book.records = {{std::u16string{u'R', char16_t(0xD800)}, "AB", {255, 0, 0}, {}}};
    return book;
}

const std::string kColorBookTrace =
    "{\"op\": \"BeginFill\", \"args\": []}\n"
    "{\"op\": \"SetTitle\", \"args\": [\"T\"]}\n"
    "{\"op\": \"SetPrefix\", \"args\": [\"\"]}\n"
    "{\"op\": \"SetPostfix\", \"args\": [\"\"]}\n"
    "{\"op\": \"SetCopyright\", \"args\": [\"c\"]}\n"
    "{\"op\": \"SetPageSize\", \"args\": [1]}\n"
    "{\"op\": \"SetPageKeyOffset\", \"args\": [0]}\n"
    "{\"op\": \"SetBookID\", \"args\": [7]}\n"
    "{\"op\": \"AddFormat\", \"args\": [], \"ret\": 0}\n"
    "{\"op\": \"SetFormatEncoding\", \"args\": [0, 1], \"ret\": true}\n"
    "{\"op\": \"SetFormatColorSpace\", \"args\": [0, 4], \"ret\": true}\n"
    "{\"op\": \"GetFormatChannels\", \"args\": [0], \"ret\": 3}\n"
    "{\"op\": \"AddSwatch\", \"args\": [-1], \"ret\": 0}\n"
    "{\"op\": \"SetSwatchKind\", \"args\": [0, 2]}\n"
    "{\"op\": \"SetSwatchName\", \"args\": [0, \"R\\ud800\"], \"ret\": true}\n"
    "{\"op\": \"SetSwatchValuesInt8\", \"args\": [0, 0, [255, 0, 0]], \"ret\": true}\n"
    "{\"op\": \"EndFill\", \"args\": []}\n"
    "{\"result\": 0}\n";

testsupport::SwatchExchangeDescription SmallSwatchExchange() {
    testsupport::SwatchExchangeDescription file;
    const float nan = std::nanf("");
    file.blocks = {testsupport::ColorBlock({nan, u"N", {}, "RGB ", {0.1f, nan, 2.0f}, 0}),
                   testsupport::ExchangeBlock{3, {1, 2}, {}}};
    return file;
}

const std::string kSwatchExchangeTrace =
    "{\"op\": \"BeginFill\", \"args\": []}\n"
    "{\"op\": \"AddFormat\", \"args\": [], \"ret\": 0}\n"
    "{\"op\": \"SetFormatEncoding\", \"args\": [0, 3], \"ret\": true}\n"
    "{\"op\": \"SetFormatColorSpace\", \"args\": [0, 4], \"ret\": true}\n"
    "{\"op\": \"AddSwatch\", \"args\": [-1], \"ret\": 0}\n"
    "{\"op\": \"SetSwatchName\", \"args\": [0, \"N\"], \"ret\": true}\n"
    "{\"op\": \"SetSwatchTint\", \"args\": [0, \"NaN\"], \"ret\": true}\n"
    "{\"op\": \"GetFormatChannels\", \"args\": [0], \"ret\": 3}\n"
    "{\"op\": \"SetSwatchValuesFloat\", \"args\": [0, 0, [0.10000000149011612, \"NaN\", 1]], \"ret\": true}\n"
    "{\"op\": \"SetSwatchKind\", \"args\": [0, 2]}\n"
    "{\"result\": 0}\n";

TEST(TintoraTrace, LogsEveryCallOfTheXmlReaderThenItsResult) {
    TemporaryFolder folder;
    const auto run = RunTool({"trace", "--format", "xml", folder.Write("book.xml", kXmlBook)});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, kXmlTrace + "{\"op\": \"EndFill\", \"args\": []}\n{\"result\": 0}\n");
    EXPECT_EQ(run.err, "");
}

TEST(TintoraTrace, PassesTheFlags) {
    TemporaryFolder folder;
    const auto run = RunTool({"trace", "--flags", "16", folder.Write("book.xml", kXmlBook)});
    EXPECT_EQ(run.out, kXmlTrace +
                           "{\"op\": \"AddSwatch\", \"args\": [-1], \"ret\": 1}\n"
                           "{\"op\": \"SetSwatchKind\", \"args\": [1, 4]}\n"
                           "{\"op\": \"EndFill\", \"args\": []}\n{\"result\": 0}\n");
}

TEST(TintoraTrace, LogsEveryCallOfTheColorBookReader) {
    TemporaryFolder folder;
    const auto file = folder.Write("book.ocb", testsupport::BuildColorBook(SmallColorBook()));
    const auto run = RunTool({"trace", "--format", "ocb", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, kColorBookTrace);
}

TEST(TintoraTrace, LogsEveryCallOfTheSwatchExchangeReader) {
    TemporaryFolder folder;
    const auto file = folder.Write("book.ose", testsupport::BuildSwatchExchange(SmallSwatchExchange()));
    const auto run = RunTool({"trace", "--format", "ose", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, kSwatchExchangeTrace);
}

TEST(TintoraTrace, FindsTheFormatByExtensionThenByContent) {
    TemporaryFolder folder;
    const auto colorBook = testsupport::BuildColorBook(SmallColorBook());
    const auto exchange = testsupport::BuildSwatchExchange(SmallSwatchExchange());
    EXPECT_EQ(RunTool({"trace", folder.Write("a.ocb", colorBook)}).out, kColorBookTrace);
    EXPECT_EQ(RunTool({"trace", "--format", "auto", folder.Write("a.bin", colorBook)}).out, kColorBookTrace);
    EXPECT_EQ(RunTool({"trace", folder.Write("b", exchange)}).out, kSwatchExchangeTrace);
    EXPECT_THAT(RunTool({"trace", folder.Write("c.txt", kXmlBook)}).out, StartsWith(kXmlTrace));
    // The extension wins over the content.
    EXPECT_EQ(RunTool({"trace", folder.Write("d.xml", colorBook)}).out,
              "{\"op\": \"BeginFill\", \"args\": []}\n{\"op\": \"EndFill\", \"args\": []}\n{\"result\": 2}\n");
}

TEST(TintoraTrace, ExitsWithOneWhenTheReaderFailsAndPrintsEverythingAllTheSame) {
    TemporaryFolder folder;
    const auto run = RunTool({"trace", "--format", "ocb", folder.Write("book.xml", kXmlBook)});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "{\"result\": 3}\n");
    EXPECT_EQ(run.err, "");
}

TEST(TintoraDump, PrintsTheBookAfterAnXmlRead) {
    TemporaryFolder folder;
    const auto run = RunTool({"dump", folder.Write("book.xml", kXmlBook)});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, StartsWith("{\"result\": 0, \"book\": {\"version\": 2, \"pageSize\": 0, \"pageKeyOffset\": 0, "
                                    "\"bookId\": 0, \"title\": \"T\\u00e9\", \"copyright\": \"\", \"prefix\": \"\", "
                                    "\"postfix\": \"\", \"formats\": [{\"colorSpace\": 4, \"encoding\": 1, "
                                    "\"channels\": 3, \"condition\": \"\", \"colorSpaceName\": \"RGB\", \"id\": "
                                    "\"f\"}], \"swatches\": [{\"kind\": 2, \"name\": \"Red\", \"colorSpace\": 4, "
                                    "\"values\": [1, 0, "));
    EXPECT_THAT(run.out, testing::EndsWith(", 0]}]}}\n"));
}

TEST(TintoraDump, PrintsTheBookAfterAColorBookRead) {
    TemporaryFolder folder;
    const auto run = RunTool({"dump", folder.Write("book.ocb", testsupport::BuildColorBook(SmallColorBook()))});
    EXPECT_EQ(run.out,
              "{\"result\": 0, \"book\": {\"version\": 0, \"pageSize\": 1, \"pageKeyOffset\": 0, \"bookId\": 7, "
              "\"title\": \"T\", \"copyright\": \"c\", \"prefix\": \"\", \"postfix\": \"\", \"formats\": "
              "[{\"colorSpace\": 4, \"encoding\": 1, \"channels\": 3, \"condition\": \"\", \"colorSpaceName\": \"\", "
              "\"id\": \"\"}], \"swatches\": [{\"kind\": 2, \"name\": \"R\\ud800\", \"colorSpace\": 4, "
              "\"values\": [1, 0, 0, 0]}]}}\n");
}

TEST(TintoraDump, PrintsTheBookAfterASwatchExchangeRead) {
    TemporaryFolder folder;
    const auto run =
        RunTool({"dump", folder.Write("book.ose", testsupport::BuildSwatchExchange(SmallSwatchExchange()))});
    EXPECT_EQ(run.out,
              "{\"result\": 0, \"book\": {\"version\": 0, \"pageSize\": 0, \"pageKeyOffset\": 0, \"bookId\": 0, "
              "\"title\": \"\", \"copyright\": \"\", \"prefix\": \"\", \"postfix\": \"\", \"formats\": "
              "[{\"colorSpace\": 4, \"encoding\": 3, \"channels\": 3, \"condition\": \"\", \"colorSpaceName\": \"\", "
              "\"id\": \"\"}], \"swatches\": [{\"kind\": 2, \"name\": \"N\", \"colorSpace\": 4, "
              "\"values\": [0.10000000149011612, \"NaN\", 1, 0]}]}}\n");
}

TEST(TintoraDump, PrintsTheBookAfterAFailedReadAndExitsWithOne) {
    TemporaryFolder folder;
    const auto run = RunTool({"dump", folder.Write("book.xml", std::string(R"(<OrvikSwatchbook BookID="9"><Swatches>)"))});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, StartsWith("{\"result\": 2, \"book\": {\"version\": 0, \"pageSize\": 0, "
                                    "\"pageKeyOffset\": 0, \"bookId\": 9, "));
}

TEST(TintoraDump, JsonIsTheCompactFormAndPrettyIndentsItAndNamesTheCodes) {
    TemporaryFolder folder;
    const auto file = folder.Write("book.ocb", testsupport::BuildColorBook(SmallColorBook()));
    const auto compact = RunTool({"dump", file});
    EXPECT_EQ(RunTool({"dump", "--json", file}).out, compact.out);
    const auto pretty = RunTool({"dump", "--pretty", file});
    EXPECT_EQ(pretty.status, 0);
    EXPECT_THAT(pretty.out, StartsWith("{\n  \"result\": 0,\n  \"resultMeaning\": \"read completely\",\n  \"book\": {\n"
                                       "    \"version\": 0,\n"));
    EXPECT_THAT(pretty.out, HasSubstr("        \"kind\": 2,\n        \"kindMeaning\": \"global\",\n"));
    EXPECT_THAT(pretty.out, HasSubstr("        \"colorSpace\": 4,\n        \"colorSpaceMeaning\": \"RGB\",\n"));
    EXPECT_THAT(pretty.out, testing::EndsWith("\n}\n"));
}

TEST(TintoraPrescan, CountsUnsupportedBlocks) {
    TemporaryFolder folder;
    const auto file = folder.Write("book.ose", testsupport::BuildSwatchExchange(SmallSwatchExchange()));
    auto run = RunTool({"prescan", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "unsupported blocks: 1\nwell formed: yes\n");
    run = RunTool({"prescan", "--json", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{\"unsupported\": 1, \"wellFormed\": true}\n");
    run = RunTool({"prescan", "--pretty", file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{\n  \"unsupported\": 1,\n  \"wellFormed\": true\n}\n");
}

TEST(TintoraPrescan, TellsAFileThatIsNotWellFormed) {
    TemporaryFolder folder;
    auto bytes = testsupport::BuildSwatchExchange(SmallSwatchExchange());
    // The unsupported block, now short by a byte, is counted before the fault shows.
    bytes.pop_back();
    const auto file = folder.Write("book.ose", bytes);
    EXPECT_EQ(RunTool({"prescan", file}).out, "unsupported blocks: 1\nwell formed: no\n");
    const auto run = RunTool({"prescan", "--json", file});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "{\"unsupported\": 1, \"wellFormed\": false}\n");
}

TEST(Tintora, FailsToRunOnABadCommandLine) {
    TemporaryFolder folder;
    const auto file = folder.Write("book.xml", kXmlBook);
    for (const auto& args : std::vector<std::vector<std::string>>{
             {},
             {"unknown"},
             {"trace"},
             {"trace", "--bogus", file},
             {"trace", "--format", "pdf", file},
             {"dump", "--flags", "x", file},
             {"dump", "--flags", "-1", file},
             {"prescan", "--flags", "1", file},
             {"trace", file, file}}) {
        const auto run = RunTool(args);
        EXPECT_EQ(run.status, 2) << testing::PrintToString(args);
        EXPECT_EQ(run.out, "") << testing::PrintToString(args);
        EXPECT_THAT(run.err, HasSubstr("Run \"tintora")) << testing::PrintToString(args);
    }
}

TEST(Tintora, NamesAnUnknownCommandAndTheOptionThatIsWrong) {
    auto run = RunTool({"frob", "x"});
    EXPECT_EQ(run.err, "tintora: unknown command \"frob\" (the commands are trace, dump, prescan, convert, sheet)\n"
                       "Run \"tintora --help\" for help.\n");
    run = RunTool({"dump", "--format", "pdf", "x"});
    EXPECT_THAT(run.err, StartsWith("tintora dump: --format: pdf not in {"));
}

TEST(Tintora, TellsItsVersion) {
    const auto run = RunTool({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "tintora 0.1.0\n");
}

TEST(Tintora, FailsToRunOnAFileItCannotReadAndSaysWhy) {
    TemporaryFolder folder;
    const std::string missing = (folder.Path() / "missing.xml").string();
    const std::string directory = folder.Path().string();
    for (const std::string command : {"trace", "dump", "prescan"}) {
        auto run = RunTool({command, missing});
        EXPECT_EQ(run.status, 2) << command;
        EXPECT_EQ(run.out, "") << command;
        EXPECT_EQ(run.err, "tintora: cannot read " + missing + ": No such file or directory\n") << command;
        run = RunTool({command, directory});
        EXPECT_EQ(run.status, 2) << command;
        EXPECT_EQ(run.err, "tintora: cannot read " + directory + ": Is a directory\n") << command;
    }
}

TEST(Tintora, ExplainsEachSubcommand) {
    auto run = RunTool({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("trace"));
    EXPECT_THAT(run.out, HasSubstr("dump"));
    EXPECT_THAT(run.out, HasSubstr("prescan"));

    run = RunTool({"trace", "--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("Usage: tintora trace"));
    EXPECT_THAT(run.out, HasSubstr("--format"));
    EXPECT_THAT(run.out, HasSubstr("--flags"));
    EXPECT_THAT(run.out, HasSubstr("{\"result\": N}"));
    EXPECT_THAT(run.out, HasSubstr("\\uXXXX"));

    run = RunTool({"dump", "--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("Usage: tintora dump"));
    EXPECT_THAT(run.out, HasSubstr("\"swatches\""));
    EXPECT_THAT(run.out, HasSubstr("--pretty"));
    EXPECT_THAT(run.out, HasSubstr("result 0 read completely, 1 the file could not be opened or read, "));
    EXPECT_THAT(run.out, HasSubstr("kind 0 no kind (an empty place), 1 spot, 2 global, 3 process"));
    EXPECT_THAT(run.out, HasSubstr("colorSpace 0 none, 1 custom, 2 gray, 3 Lab, 4 RGB, 5 CMYK, 6 XYZ"));
    EXPECT_THAT(run.out, HasSubstr("Exit status: 0 when the reader read the file completely (result 0); 1 "));

    run = RunTool({"prescan", "--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("Usage: tintora prescan"));
    EXPECT_THAT(run.out, HasSubstr("--json"));
    EXPECT_THAT(run.out, HasSubstr("Exit status: 0 when the file is well formed; 1 when it is not; 2 when"));
}

}  // namespace
