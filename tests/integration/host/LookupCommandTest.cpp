// kelvra-host lookup on the real module: a colour book and an XML
// swatchbook read through "KV Tintora Suite", names looked up with their
// affixes, the read error a user sees, and exit statuses that never make a
// failure look like success.
#include "CommandRunner.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using kelvra::testing::RunKelvraHost;
using kelvra::testing::RunKelvraHostOnTerminal;
using kelvra::testing::WithEnvironment;
using ::testing::HasSubstr;
using ::testing::Not;

// Prefix "LI ", postfix " C"; Int8 CMYK 0 128 200 60 is stored as
// 0, 0.5, 0.78, 0.24 (each rounded to whole percent).
const char* kLegacyBook = R"(<?xml version="1.0" encoding="UTF-8"?>
<OrvikSwatchbook Version="1" Title="Inks" BookID="4200">
  <PrefixPostfixPairs><PrefixPostfixPair Prefix="LI " Postfix=" C"/></PrefixPostfixPairs>
  <Formats>
    <Format ID="lab" ColorSpace="LAB" Encoding="Float"/>
    <Format ID="cmyk" ColorSpace="CMYK" Encoding="Int8"/>
  </Formats>
  <Swatches>
    <Sp N="Deep Green"><C F="lab">35 -45 20</C></Sp>
    <Pr N="Copper"><C F="cmyk">0 128 200 60</C></Pr>
  </Swatches>
</OrvikSwatchbook>
)";

class LookupCommandTest : public ::testing::Test {
protected:
    std::string ColorBook() const {
        return folder_.Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()));
    }
    std::string Legacy() const { return folder_.Write("inks.xml", std::string(kLegacyBook)); }
    std::string Write(const std::string& name, const std::string& text) const { return folder_.Write(name, text); }
    std::string Write(const std::string& name, const testsupport::Bytes& bytes) const {
        return folder_.Write(name, bytes);
    }
    std::string Missing() const { return (folder_.Path() / "missing.ocb").string(); }

    static std::vector<std::string> Lookup(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"lookup", "--module", TINTORA_MODULE});
        return arguments;
    }

private:
    testsupport::TemporaryFolder folder_;
};

TEST_F(LookupCommandTest, AColourBookIsReadAndLookedUpByFullName) {
    const std::string file = ColorBook();
    const auto result = RunKelvraHost(Lookup({file, "P Red 032 C", "P Gr\u00fcn C"}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    // 160 and 64 of 255 are 0.6274509803921569 and 0.25098039215686274.
    EXPECT_EQ(result.output, std::string("module: ") + TINTORA_MODULE +
                                 "\n"
                                 "  ZP Interface / Startup -> 0\n"
                                 "file: " + file +
                                 "\n"
                                 "  IsColorBookFile -> yes\n"
                                 "  NewReferenceBook -> 0\n"
                                 "  ReadColorBook -> 0\n"
                                 "  GetReferenceBookID -> 0: book id 3002\n"
                                 "  #FF0000 \"P Red 032 C\": rgb 255 0 0, spot\n"
                                 "  #00A040 \"P Gr\u00fcn C\": rgb 0 160 64, spot\n"
                                 "  DisposeReferenceBook -> 0\n"
                                 "shut-down:\n"
                                 "  ZP Interface / Shutdown -> 0\n"
                                 "2 names: 2 found, 0 not found\n");
}

TEST_F(LookupCommandTest, ANameWithoutItsAffixesIsNotFoundAndTheCommandFails) {
    const auto result = RunKelvraHost(Lookup({ColorBook(), "Red 032", "P Red 032 C"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("          \"Red 032\" -> NAM?\n  #FF0000 \"P Red 032 C\": rgb 255 0 0, spot\n"));
    EXPECT_THAT(result.output, HasSubstr("\n2 names: 1 found, 1 not found\n"));
}

TEST_F(LookupCommandTest, AnXmlSwatchbookIsReadAsALegacyColourBook) {
    const auto result = RunKelvraHost(Lookup({Legacy(), "LI Deep Green C", "LI Copper C", "Copper"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  IsColorBookFile -> no\n"
                                         "  NewReferenceBook -> 0\n"
                                         "  ReadLegacyColorBook -> 0\n"
                                         "  GetReferenceBookID -> 0: book id 4200\n"));
    // Ink 0 0.5 0.78 0.24 on white: 255 * 0.76, 255 * 0.5 * 0.76, 255 * 0.22 * 0.76.
    EXPECT_THAT(result.output, HasSubstr("  #00632F \"LI Deep Green C\": lab 35.0 -45.0 20.0, spot\n"
                                             "  #C2612B \"LI Copper C\": cmyk 0% 50% 78% 24%, process\n"
                                             "          \"Copper\" -> NAM?\n"));
}

TEST_F(LookupCommandTest, AFileThatCannotBeReadShowsTheReadErrorAndLooksNothingUp) {
    const std::string file = Write("damaged.xml", "<OrvikSwatchbook");
    const auto result = RunKelvraHost(Lookup({file, "LI Copper C"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  ReadLegacyColorBook -> CANT\n"
                                         "  DisposeReferenceBook -> 0\n"
                                         "  alert: An error occurred when reading the legacy color book "
                                         "'damaged.xml'.\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("GetReferenceBookID")));
    EXPECT_THAT(result.output, HasSubstr("\nthe book was not read: no name was looked up\n"));
}

TEST_F(LookupCommandTest, ADamagedColourBookShowsItsOwnReadError) {
    testsupport::ColorBookDescription book = testsupport::SampleColorBook();
    book.colorSpace = 99;
    const std::string damaged = Write("odd.ocb", testsupport::BuildColorBook(book));
    const auto result = RunKelvraHost(Lookup({damaged, "P Red 032 C"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  ReadColorBook -> CANT\n"));
    EXPECT_THAT(result.output, HasSubstr("  alert: An error occurred when reading the color book 'odd.ocb'.\n"));
}

TEST_F(LookupCommandTest, AMissingFileIsNotOffered) {
    const auto result = RunKelvraHost(Lookup({Missing(), "P Red 032 C"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("file: " + Missing() + "\n  no such file\nshut-down:\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("NewReferenceBook")));
}

TEST_F(LookupCommandTest, AModuleWithoutTheSuiteIsReported) {
    const std::string module = std::string(TEST_MODULES_DIR) + "/WellBehavedModule.so";
    const auto result = RunKelvraHost({"lookup", "--module", module, ColorBook(), "P Red 032 C"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output,
                HasSubstr("  acquiring KV Tintora Suite 1 -> S!Fd: the module's suite was not called\nshut-down:\n"));
}

TEST_F(LookupCommandTest, ARefusedModuleFileIsReported) {
    const std::string notAModule = Write("notes.so", "text");
    const auto result = RunKelvraHost({"lookup", "--module", notAModule, ColorBook()});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("\nrefused: " + notAModule));
}

TEST_F(LookupCommandTest, JsonGivesTheSameAnswers) {
    const std::string file = ColorBook();
    const auto result = RunKelvraHost(Lookup({"--json", file, "P Red 032 C", "Nope"}));
    EXPECT_EQ(result.exitStatus, 1);
    const nlohmann::json out = nlohmann::json::parse(result.output);
    EXPECT_EQ(out["module"], TINTORA_MODULE);
    EXPECT_EQ(out["file"], file);
    EXPECT_EQ(out["found"], true);
    EXPECT_EQ(out["colorBook"], true);
    EXPECT_EQ(out["bookId"], 3002);
    EXPECT_EQ(out["failed"], true);
    EXPECT_EQ(out["suite"], nlohmann::json::parse(R"({"acquired": true, "refused": null, "result": 0,
                                                     "resultText": "0"})"));
    EXPECT_EQ(out["names"], nlohmann::json::parse(R"([
      {"name": "P Red 032 C", "result": 0, "resultText": "0", "refused": false, "failedHostCall": null,
       "color": {"model": "rgb", "values": [1, 0, 0, 0], "spot": true}},
      {"name": "Nope", "result": 1312902463, "resultText": "NAM?", "refused": false, "failedHostCall": null,
       "color": null}])"));
    ASSERT_EQ(out["calls"].size(), 5u);
    EXPECT_EQ(out["calls"][0]["function"], "IsColorBookFile");
    EXPECT_EQ(out["calls"][0]["answer"], true);
    EXPECT_EQ(out["calls"][2]["function"], "ReadColorBook");
    EXPECT_EQ(out["events"], nlohmann::json::array());
    EXPECT_EQ(out["shutdown"]["resultText"], "0");
}

TEST_F(LookupCommandTest, OnATerminalEachColourHasAChip) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> trueColour = {
        {"COLORTERM", "truecolor"}, {"TERM", "xterm-256color"}, {"NO_COLOR", std::nullopt}};
    const auto result = RunKelvraHostOnTerminal(Lookup({Legacy(), "LI Copper C", "Nope"}), "", WithEnvironment(trueColour));
    // Ink 0 0.5 0.78 0.24 on white: 255 * 0.76, 255 * 0.5 * 0.76, 255 * 0.22 * 0.76.
    EXPECT_THAT(result.output, HasSubstr("  \x1b[48;2;194;97;43m  \x1b[0m #C2612B \"LI Copper C\": cmyk 0% 50% 78% 24%"));
    EXPECT_THAT(result.output, HasSubstr("             \"Nope\" -> NAM?"));
    const auto piped = RunKelvraHost(Lookup({Legacy(), "LI Copper C"}));
    EXPECT_THAT(piped.output, Not(HasSubstr("\x1b")));
}

}  // namespace
