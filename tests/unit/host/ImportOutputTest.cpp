// The printed forms of kelvra-host import: documents in readable form with
// and without colour chips, the whole report as text and as JSON, and when
// chips are wanted at all.
#include <DocumentText.h>
#include <ImportReport.h>

#include <gtest/gtest.h>

namespace {

using kelvra::cli::DocumentText;
using kelvra::cli::ImportReport;
using nlohmann::json;

constexpr ZPErr kNotThisFormat = ZP_FOURCC('F', 'M', 'T', '?');

const json kDocument = json::parse(R"({
  "name": "pastels.ose",
  "groups": [
    {"name": "", "swatches": [
      {"name": "Paper", "kind": "gray", "values": [0.2]},
      {"name": "Red", "kind": "rgb", "values": [1, 0, 0]},
      {"name": "Ink", "kind": "cmyk", "values": [1, 0.5, 0, 0.5]},
      {"name": "Stripes", "kind": "pattern"}]},
    {"name": "Spot \"A\"", "swatches": [
      {"name": "Gold 25%", "kind": "custom", "customColor": "Gold", "tint": 0.25},
      {"name": "White", "kind": "custom", "customColor": "White", "tint": 0},
      {"name": "Odd", "kind": "rgb", "values": ["NaN", "Infinity", -2]}]},
    {"name": "Empty", "swatches": []}],
  "customColors": [
    {"name": "Gold", "kind": "cmyk", "values": [0, 0.2, 1, 0], "flags": 1, "bookId": 3000},
    {"name": "White", "kind": "lab", "values": [100, 0, 0], "flags": 2, "bookId": 0}]
})");

TEST(ImportOutputTest, ADocumentReadsAsItsGroupsAndSwatches) {
    EXPECT_EQ(DocumentText(kDocument, false),
              "document \"pastels.ose\":\n"
              "  default group:\n"
              "    \"Paper\": gray 0.2\n"
              "    \"Red\": rgb 1 0 0\n"
              "    \"Ink\": cmyk 1 0.5 0 0.5\n"
              "    \"Stripes\": pattern\n"
              "  group \"Spot \\\"A\\\"\":\n"
              "    \"Gold 25%\": custom colour \"Gold\" at tint 0.25 (cmyk 0 0.2 1 0, spot, book id 3000)\n"
              "    \"White\": custom colour \"White\" at tint 0 (lab 100 0 0, global, registration, book id 0)\n"
              "    \"Odd\": rgb NaN Infinity -2\n"
              "  group \"Empty\":\n"
              "    (no swatches)\n");
}

TEST(ImportOutputTest, ChipsShowTheColourEachSwatchShows) {
    const std::string text = DocumentText(kDocument, true);
    // Gray 0.2 is ink on white: 80% light.
    EXPECT_NE(text.find("    \x1b[48;2;204;204;204m  \x1b[0m \"Paper\": gray 0.2\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    \x1b[48;2;255;0;0m  \x1b[0m \"Red\": rgb 1 0 0\n"), std::string::npos);
    // Cyan 1, magenta 0.5, black 0.5: (0, 0.25, 0.5).
    EXPECT_NE(text.find("    \x1b[48;2;0;64;128m  \x1b[0m \"Ink\":"), std::string::npos);
    // No colour, no chip: as wide as one.
    EXPECT_NE(text.find("    " "   " "\"Stripes\": pattern\n"), std::string::npos);
    // Gold (255, 204, 0) at tint 0.25 goes a quarter of the way to white.
    EXPECT_NE(text.find("    \x1b[48;2;255;217;64m  \x1b[0m \"Gold 25%\":"), std::string::npos);
    EXPECT_NE(text.find("    \x1b[48;2;255;255;255m  \x1b[0m \"White\":"), std::string::npos);
    // NaN shows as 0, the rest is clamped.
    EXPECT_NE(text.find("    \x1b[48;2;0;255;0m  \x1b[0m \"Odd\":"), std::string::npos);
}

TEST(ImportOutputTest, ACustomSwatchWithoutItsColourShowsNoColourAndNoChip) {
    const json document = json::parse(R"({"name": "d", "customColors": [], "groups": [{"name": "", "swatches": [
        {"name": "Lost", "kind": "custom", "customColor": null, "tint": 0.5},
        {"name": "Gone", "kind": "custom", "customColor": "Gone", "tint": 0}]}]})");
    EXPECT_EQ(DocumentText(document, true),
              "document \"d\":\n"
              "  default group:\n"
              "       \"Lost\": custom colour null at tint 0.5\n"
              "       \"Gone\": custom colour \"Gone\" at tint 0\n");
}

TEST(ImportOutputTest, WithoutChipsThereAreNoEscapeCodes) {
    EXPECT_EQ(DocumentText(kDocument, false).find('\x1b'), std::string::npos);
}

TEST(ImportOutputTest, ChipsOnlyOnATerminalThatShowsTrueColour) {
    using kelvra::cli::WantsColourChips;
    EXPECT_TRUE(WantsColourChips(true, nullptr, "xterm-256color", "truecolor"));
    EXPECT_TRUE(WantsColourChips(true, "", "xterm", "24bit"));
    EXPECT_FALSE(WantsColourChips(false, nullptr, "xterm", "truecolor"));
    EXPECT_FALSE(WantsColourChips(true, "1", "xterm", "truecolor"));
    EXPECT_FALSE(WantsColourChips(true, nullptr, "dumb", "truecolor"));
    EXPECT_FALSE(WantsColourChips(true, nullptr, "xterm", nullptr));
    EXPECT_FALSE(WantsColourChips(true, nullptr, "xterm", "256"));
}

// A run with one file imported after a question, one that no format took
// and one that is not there.
ImportReport ThreeFiles() {
    ImportReport report;
    report.module = "plugin/Tintora.so";
    kelvra::cli::FileImport imported;
    imported.file = "in/pastels.ose";
    imported.checks = {{"Orvik Color Book Reader", kNotThisFormat}, {"Orvik Swatch Exchange Reader", 0}};
    imported.go = kelvra::FormatMessage{"Orvik Swatch Exchange Reader", 0};
    imported.document = "pastels.ose";
    kelvra::Event question;
    question.kind = kelvra::Event::Kind::Question;
    question.text = "Go on?";
    question.answer = true;
    imported.events = {question};
    kelvra::cli::FileImport refused;
    refused.file = "in/notes.txt";
    refused.checks = {{"Orvik Color Book Reader", kNotThisFormat}, {"Orvik Swatch Exchange Reader", kNotThisFormat}};
    kelvra::cli::FileImport missing;
    missing.file = "in/gone.ose";
    missing.missing = true;
    report.files = {imported, refused, missing};
    report.shutdown = 0;
    report.documents = json::array({json::parse(R"({"name": "pastels.ose", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Red", "kind": "rgb", "values": [1, 0, 0]}]}]})")});
    return report;
}

TEST(ImportOutputTest, TheReportReadsFileByFileThenTheDocuments) {
    EXPECT_EQ(kelvra::cli::ImportText(ThreeFiles(), false),
              "module: plugin/Tintora.so\n"
              "  ZP Interface / Startup -> 0\n"
              "file: in/pastels.ose\n"
              "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
              "  KV Check \"Orvik Swatch Exchange Reader\" -> 0\n"
              "  KV Go \"Orvik Swatch Exchange Reader\", open as document \"pastels.ose\" -> 0\n"
              "  question: Go on? -> yes\n"
              "file: in/notes.txt\n"
              "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
              "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
              "  no format accepts this file\n"
              "file: in/gone.ose\n"
              "  no such file\n"
              "shut-down:\n"
              "  ZP Interface / Shutdown -> 0\n"
              "document \"pastels.ose\":\n"
              "  default group:\n"
              "    \"Red\": rgb 1 0 0\n"
              "3 files: 1 imported, 2 failed\n");
}

TEST(ImportOutputTest, APlacedFileAndACodeThatIsNotTextAreShownSo) {
    ImportReport report = ThreeFiles();
    report.files.resize(1);
    report.files[0].placed = true;
    report.files[0].document = "Untitled";
    report.files[0].go->result = 1;
    const std::string text = kelvra::cli::ImportText(report, false);
    EXPECT_NE(text.find("  KV Go \"Orvik Swatch Exchange Reader\", placed into document \"Untitled\" -> 1\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("1 file: 0 imported, 1 failed\n"), std::string::npos);
    EXPECT_FALSE(report.Succeeded());
}

TEST(ImportOutputTest, ARefusedModuleOrFailedStartUpEndsTheReport) {
    ImportReport refused;
    refused.module = "bad.so";
    refused.refusal = "bad.so: no property list";
    EXPECT_EQ(kelvra::cli::ImportText(refused, false), "module: bad.so\nrefused: bad.so: no property list\n");
    EXPECT_EQ(kelvra::cli::ImportJson(refused), json({{"module", "bad.so"}, {"error", "bad.so: no property list"}}));
    ImportReport failed;
    failed.module = "m.so";
    failed.startup = ZP_FOURCC('!', 'M', 'E', 'M');
    EXPECT_EQ(kelvra::cli::ImportText(failed, false),
              "module: m.so\n  ZP Interface / Startup -> !MEM\nstart-up failed: no file was offered\n");
    EXPECT_FALSE(failed.Succeeded());
}

TEST(ImportOutputTest, JsonHoldsTheSameReport) {
    const json out = kelvra::cli::ImportJson(ThreeFiles());
    EXPECT_EQ(out["module"], "plugin/Tintora.so");
    EXPECT_EQ(out["startup"], json::parse(R"({"result": 0, "resultText": "0", "events": []})"));
    ASSERT_EQ(out["files"].size(), 3u);
    EXPECT_EQ(out["files"][0], json::parse(R"({
        "file": "in/pastels.ose", "found": true, "failed": false,
        "checks": [{"format": "Orvik Color Book Reader", "result": 1179472959, "resultText": "FMT?"},
                   {"format": "Orvik Swatch Exchange Reader", "result": 0, "resultText": "0"}],
        "go": {"format": "Orvik Swatch Exchange Reader", "placed": false, "document": "pastels.ose",
               "result": 0, "resultText": "0"},
        "events": [{"type": "question", "text": "Go on?", "key": "", "answer": true}]})"));
    EXPECT_EQ(out["files"][1]["go"], nullptr);
    EXPECT_EQ(out["files"][1]["failed"], true);
    EXPECT_EQ(out["files"][2]["found"], false);
    EXPECT_EQ(out["shutdown"]["resultText"], "0");
    EXPECT_EQ(out["documents"], ThreeFiles().documents);
    EXPECT_EQ(out["failedFiles"], 2);
}

TEST(ImportOutputTest, LibraryDocumentsTheModuleHadOpenedComeAfterTheUsersAndApart) {
    ImportReport report = ThreeFiles();
    report.libraryDocuments = json::array({json::parse(R"({"name": "Brights.ose", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Ink", "kind": "gray", "values": [0.5]}]}]})")});
    const std::string text = kelvra::cli::ImportText(report, false);
    EXPECT_NE(text.find("document \"pastels.ose\":\n"
                        "  default group:\n"
                        "    \"Red\": rgb 1 0 0\n"
                        "library document \"Brights.ose\":\n"
                        "  default group:\n"
                        "    \"Ink\": gray 0.5\n"
                        "3 files: 1 imported, 2 failed\n"),
              std::string::npos)
        << text;
    const json out = kelvra::cli::ImportJson(report);
    EXPECT_EQ(out["documents"], ThreeFiles().documents);
    EXPECT_EQ(out["libraryDocuments"], report.libraryDocuments);
    EXPECT_EQ(kelvra::cli::ImportJson(ThreeFiles())["libraryDocuments"], json::array());
}

}  // namespace
