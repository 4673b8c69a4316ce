// The printed forms of kelvra-host import: documents in readable form with
// and without colour chips, the whole report as text and as JSON.
#include <DocumentText.h>
#include <ImportReport.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using kelvra::cli::ChipDepth;
using kelvra::cli::FileImport;
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
      {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0},
      {"name": "White", "kind": "custom", "customColor": "White", "tint": 0},
      {"name": "Odd", "kind": "rgb", "values": ["NaN", "Infinity", -2]}]},
    {"name": "Empty", "swatches": []}],
  "customColors": [
    {"name": "Gold", "kind": "cmyk", "values": [0, 0.2, 1, 0], "flags": 1, "bookId": 3000},
    {"name": "White", "kind": "lab", "values": [100, 0, 0], "flags": 2, "bookId": 0}]
})");

std::string DocumentText(const json& document, ChipDepth chips, std::size_t number = 1,
                         const std::string& source = "") {
    std::ostringstream out;
    kelvra::cli::WriteDocument(out, document, number, source, chips);
    return out.str();
}

std::string ReportText(const ImportReport& report) {
    std::ostringstream out;
    kelvra::cli::WriteImportText(out, report, ChipDepth::None);
    return out.str();
}

TEST(ImportOutputTest, ADocumentReadsAsItsGroupsAndSwatchesInAPersonsUnits) {
    EXPECT_EQ(DocumentText(kDocument, ChipDepth::None, 2, "in/pastels.ose"),
              "document 2 \"pastels.ose\" (from in/pastels.ose):\n"
              "  default group:\n"
              "    #CCCCCC \"Paper\": gray 20%\n"
              "    #FF0000 \"Red\": rgb 255 0 0\n"
              "    #004080 \"Ink\": cmyk 100% 50% 0% 50%\n"
              "            \"Stripes\": pattern\n"
              "  group \"Spot \\\"A\\\"\":\n"
              "    #FFD940 \"Gold 25%\": custom colour \"Gold\", spot cmyk 0% 20% 100% 0%, tint 25%, book 3000\n"
              "    #FFCC00 \"Gold\": spot cmyk 0% 20% 100% 0%, book 3000\n"
              "    #FFFFFF \"White\": global lab 100.0 0.0 0.0, registration\n"
              "    #00FF00 \"Odd\": rgb NaN Infinity -510\n"
              "  group \"Empty\":\n"
              "    (no swatches)\n"
              "  8 swatches in 3 groups, 2 custom colours\n");
}

TEST(ImportOutputTest, ChipsShowTheColourEachSwatchShows) {
    const std::string text = DocumentText(kDocument, ChipDepth::TrueColor);
    EXPECT_NE(text.find("    \x1b[48;2;204;204;204m  \x1b[0m #CCCCCC \"Paper\": gray 20%\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    \x1b[48;2;255;217;64m  \x1b[0m #FFD940 \"Gold 25%\":"), std::string::npos);
    // No colour, no chip: as wide as one.
    EXPECT_NE(text.find("    " "   " "       " " \"Stripes\": pattern\n"), std::string::npos);
    const std::string colors256 = DocumentText(kDocument, ChipDepth::Colors256);
    EXPECT_NE(colors256.find("    \x1b[48;5;196m  \x1b[0m #FF0000 \"Red\": rgb 255 0 0\n"), std::string::npos)
        << colors256;
}

TEST(ImportOutputTest, ACustomSwatchWithoutItsColourShowsNoColourAndNoChip) {
    const json document = json::parse(R"({"name": "d", "customColors": [], "groups": [{"name": "", "swatches": [
        {"name": "Lost", "kind": "custom", "customColor": null, "tint": 0.5},
        {"name": "Gone", "kind": "custom", "customColor": "Gone", "tint": 0}]}]})");
    EXPECT_EQ(DocumentText(document, ChipDepth::TrueColor),
              "document 1 \"d\":\n"
              "  default group:\n"
              "               \"Lost\": custom colour missing, tint 50%\n"
              "               \"Gone\": custom colour \"Gone\" (not in the document)\n"
              "  2 swatches in 1 group, 0 custom colours\n");
}

TEST(ImportOutputTest, WithoutChipsThereAreNoEscapeCodes) {
    EXPECT_EQ(DocumentText(kDocument, ChipDepth::None).find('\x1b'), std::string::npos);
}

// A name as long as the host takes (31 code units), in a spot colour of
// four inks at a tint from a book: the line still fits 100 columns.
TEST(ImportOutputTest, ASwatchLineFitsAHundredColumns) {
    const std::string name(31, 'N');
    json document = json::parse(R"({"name": "d", "groups": [{"name": "", "swatches": [
        {"kind": "custom", "tint": 0.25}]}],
        "customColors": [{"kind": "cmyk", "values": [1, 1, 1, 1], "flags": 1, "bookId": 3002}]})");
    document["groups"][0]["swatches"][0]["name"] = name;
    document["groups"][0]["swatches"][0]["customColor"] = name;
    document["customColors"][0]["name"] = name;
    const std::string text = DocumentText(document, ChipDepth::TrueColor);
    const std::string line = "    \x1b[48;2;64;64;64m  \x1b[0m #404040 \"" + name +
                             "\": spot cmyk 100% 100% 100% 100%, tint 25%, book 3002";
    ASSERT_NE(text.find(line + "\n"), std::string::npos) << text;
    // The chip's escape sequences take no columns.
    EXPECT_EQ(line.size() - std::string("\x1b[48;2;64;64;64m\x1b[0m").size(), 100u);
}

// A run with one file imported after a question, one that no format took,
// one that is not there, one that is a directory and one the module took
// but read nothing from.
ImportReport FiveFiles() {
    ImportReport report;
    report.module = "plugin/Tintora.so";
    FileImport imported;
    imported.file = "in/pastels.ose";
    imported.checks = {{"Orvik Color Book Reader", kNotThisFormat}, {"Orvik Swatch Exchange Reader", 0}};
    imported.go = kelvra::FormatMessage{"Orvik Swatch Exchange Reader", 0};
    imported.documentName = "pastels.ose";
    imported.received = {1, 4, 2, 1};
    kelvra::Event question;
    question.kind = kelvra::Event::Kind::Question;
    question.text = "Go on with ^Qpastels.ose^Q?";
    question.answer = true;
    imported.events = {question};
    FileImport refused;
    refused.file = "in/notes.txt";
    refused.status = FileImport::Status::NoFormat;
    refused.checks = {{"Orvik Color Book Reader", kNotThisFormat}, {"Orvik Swatch Exchange Reader", kNotThisFormat}};
    FileImport missing;
    missing.file = "in/gone.ose";
    missing.status = FileImport::Status::Missing;
    FileImport folder;
    folder.file = "in/folder.ose";
    folder.status = FileImport::Status::NotAFile;
    FileImport empty;
    empty.file = "in/empty.ose";
    empty.status = FileImport::Status::NothingReceived;
    empty.why = "the file is empty";
    empty.checks = {{"Orvik Color Book Reader", kNotThisFormat}, {"Orvik Swatch Exchange Reader", 0}};
    empty.go = kelvra::FormatMessage{"Orvik Swatch Exchange Reader", 0};
    empty.document = 1;
    empty.documentName = "empty.ose";
    report.files = {imported, refused, missing, folder, empty};
    report.shutdown = 0;
    report.documents = json::array({json::parse(R"({"name": "pastels.ose", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Red", "kind": "rgb", "values": [1, 0, 0]}]}]})"),
                                    json::parse(R"({"name": "empty.ose", "customColors": [],
        "groups": [{"name": "", "swatches": []}]})")});
    return report;
}

TEST(ImportOutputTest, TheReportReadsFileByFileThenTheDocumentsThenTheTotals) {
    EXPECT_EQ(ReportText(FiveFiles()),
              "module: plugin/Tintora.so\n"
              "  ZP Interface / Startup -> 0\n"
              "file: in/pastels.ose\n"
              "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
              "  KV Check \"Orvik Swatch Exchange Reader\" -> 0\n"
              "  KV Go \"Orvik Swatch Exchange Reader\", open as document 1 \"pastels.ose\" -> 0\n"
              "  question: Go on with \u201Cpastels.ose\u201D? -> yes\n"
              "  received: 1 group, 4 swatches, 2 custom colours made, 1 redefined\n"
              "file: in/notes.txt\n"
              "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
              "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
              "  not imported: no format accepts this file\n"
              "file: in/gone.ose\n"
              "  not imported: no such file\n"
              "file: in/folder.ose\n"
              "  not imported: a directory, not a file\n"
              "file: in/empty.ose\n"
              "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
              "  KV Check \"Orvik Swatch Exchange Reader\" -> 0\n"
              "  KV Go \"Orvik Swatch Exchange Reader\", open as document 2 \"empty.ose\" -> 0\n"
              "  received: 0 groups, 0 swatches, 0 custom colours made, 0 redefined\n"
              "  not imported: \"KV Go\" answered 0 but the document received nothing (the file is empty)\n"
              "shut-down:\n"
              "  ZP Interface / Shutdown -> 0\n"
              "document 1 \"pastels.ose\" (from in/pastels.ose):\n"
              "  default group:\n"
              "    #FF0000 \"Red\": rgb 255 0 0\n"
              "  1 swatch in 1 group, 0 custom colours\n"
              "document 2 \"empty.ose\" (from in/empty.ose):\n"
              "  default group:\n"
              "    (no swatches)\n"
              "  0 swatches in 1 group, 0 custom colours\n"
              "5 files: 1 imported, 4 not imported; 2 documents: 1 swatch in 2 groups, 0 custom colours\n");
}

TEST(ImportOutputTest, LibraryDocumentsTheModuleHadOpenedComeAfterTheUsersAndApart) {
    ImportReport report = FiveFiles();
    report.libraryDocuments = json::array({json::parse(R"({"name": "Brights.ose", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Ink", "kind": "gray", "values": [0.5]}]}]})")});
    const std::string text = ReportText(report);
    EXPECT_NE(text.find("  0 swatches in 1 group, 0 custom colours\n"
                        "library document 1 \"Brights.ose\":\n"
                        "  default group:\n"
                        "    #808080 \"Ink\": gray 50%\n"
                        "  1 swatch in 1 group, 0 custom colours\n"
                        "5 files: 1 imported, 4 not imported;"),
              std::string::npos)
        << text;
    EXPECT_EQ(kelvra::cli::ImportJson(report)["libraryDocuments"], report.libraryDocuments);
}

TEST(ImportOutputTest, APlacedFileAndACodeThatIsNotTextAreShownSo) {
    ImportReport report = FiveFiles();
    report.files.resize(1);
    report.documents.erase(1);
    FileImport& file = report.files[0];
    file.placed = true;
    file.documentName = "Untitled";
    file.go->result = 1;
    file.status = FileImport::Status::GoFailed;
    const std::string text = ReportText(report);
    EXPECT_NE(text.find("  KV Go \"Orvik Swatch Exchange Reader\", placed into document 1 \"Untitled\" -> 1\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("  not imported: \"KV Go\" answered 1\n"), std::string::npos);
    // A document files were placed into came from no one file.
    EXPECT_NE(text.find("document 1 \"pastels.ose\":\n"), std::string::npos);
    EXPECT_NE(text.find("1 file: 0 imported, 1 not imported; 1 document: 1 swatch in 1 group, 0 custom colours\n"),
              std::string::npos);
    EXPECT_FALSE(report.Succeeded());
}

TEST(ImportOutputTest, ARefusedModuleOrFailedStartUpEndsTheReport) {
    ImportReport refused;
    refused.module = "bad.so";
    refused.refusal = "bad.so: no property list";
    EXPECT_EQ(ReportText(refused), "module: bad.so\nrefused: bad.so: no property list\n");
    EXPECT_EQ(kelvra::cli::ImportJson(refused), json({{"module", "bad.so"}, {"error", "bad.so: no property list"}}));
    ImportReport failed;
    failed.module = "m.so";
    failed.startup = ZP_FOURCC('!', 'M', 'E', 'M');
    EXPECT_EQ(ReportText(failed), "module: m.so\n  ZP Interface / Startup -> !MEM\nstart-up failed: no file was offered\n");
    EXPECT_FALSE(failed.Succeeded());
}

TEST(ImportOutputTest, JsonHoldsTheSameReport) {
    const json out = kelvra::cli::ImportJson(FiveFiles());
    EXPECT_EQ(out["module"], "plugin/Tintora.so");
    EXPECT_EQ(out["startup"], json::parse(R"({"result": 0, "resultText": "0", "events": []})"));
    ASSERT_EQ(out["files"].size(), 5u);
    EXPECT_EQ(out["files"][0], json::parse(R"({
        "file": "in/pastels.ose", "found": true, "failed": false, "status": "imported", "reason": null,
        "checks": [{"format": "Orvik Color Book Reader", "result": 1179472959, "resultText": "FMT?"},
                   {"format": "Orvik Swatch Exchange Reader", "result": 0, "resultText": "0"}],
        "go": {"format": "Orvik Swatch Exchange Reader", "placed": false, "document": "pastels.ose",
               "documentIndex": 0, "result": 0, "resultText": "0"},
        "received": {"groups": 1, "swatches": 4, "customColorsMade": 2, "customColorsRedefined": 1},
        "events": [{"type": "question", "text": "Go on with ^Qpastels.ose^Q?", "key": "", "answer": true}]})"));
    EXPECT_EQ(out["files"][1]["go"], nullptr);
    EXPECT_EQ(out["files"][1]["received"], nullptr);
    EXPECT_EQ(out["files"][1]["status"], "no-format");
    EXPECT_EQ(out["files"][1]["failed"], true);
    EXPECT_EQ(out["files"][2]["found"], false);
    EXPECT_EQ(out["files"][2]["status"], "missing");
    EXPECT_EQ(out["files"][3]["status"], "not-a-file");
    EXPECT_EQ(out["files"][3]["found"], true);
    EXPECT_EQ(out["files"][4]["status"], "nothing-received");
    EXPECT_EQ(out["files"][4]["reason"], "\"KV Go\" answered 0 but the document received nothing (the file is empty)");
    EXPECT_EQ(out["files"][4]["go"]["documentIndex"], 1);
    EXPECT_EQ(out["shutdown"]["resultText"], "0");
    EXPECT_EQ(out["documents"], FiveFiles().documents);
    EXPECT_EQ(out["failedFiles"], 4);
    EXPECT_EQ(out["importedFiles"], 1);
}

}  // namespace
