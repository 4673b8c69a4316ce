// kelvra-host import --sheet on the real module: the documents as imported
// written as a swatch sheet, and a sheet that cannot be written failing the
// run without touching what was there.
#include "CommandRunner.h"

#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

using kelvra::testing::RunKelvraHost;
using ::testing::HasSubstr;

std::string FileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

class ImportSheetTest : public ::testing::Test {
protected:
    ImportSheetTest()
        : file_(folder_.Write("sample.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()))) {}

    kelvra::testing::CommandResult Import(const std::string& sheet) {
        return RunKelvraHost({"import", "--module", TINTORA_MODULE, "--answer", "yes", file_, "--sheet", sheet});
    }

    testsupport::TemporaryFolder folder_;
    std::string file_;
};

// The shared sample: a group "Brand" with a tinted spot RGB colour and a
// process CMYK colour, then a global Lab and a gray colour.
TEST_F(ImportSheetTest, WritesTheImportedDocumentAsAnHtmlSheet) {
    const std::string sheet = (folder_.Path() / "imported.html").string();
    const auto result = Import(sheet);
    EXPECT_EQ(result.exitStatus, 0);
    const std::string html = FileText(sheet);
    EXPECT_THAT(html, HasSubstr("<h1>sample.ose</h1>"));
    EXPECT_THAT(html, HasSubstr("<h2>Brand</h2>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"kind\">process</span>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"kind\">spot</span>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"kind\">global</span>"));
    EXPECT_THAT(html, HasSubstr("class=\"chip\" data-swatch="));
}

TEST_F(ImportSheetTest, AnSvgSheetToo) {
    const std::string sheet = (folder_.Path() / "imported.svg").string();
    EXPECT_EQ(Import(sheet).exitStatus, 0);
    EXPECT_THAT(FileText(sheet), HasSubstr("<svg xmlns=\"http://www.w3.org/2000/svg\""));
}

TEST_F(ImportSheetTest, ASheetThatCannotBeWrittenFailsTheRun) {
    // A name of another kind is a wrong command line: nothing is imported.
    const std::string elsewhere = folder_.Write("sheet.pdf", std::string("old"));
    EXPECT_EQ(Import(elsewhere).exitStatus, 2);
    EXPECT_EQ(FileText(elsewhere), "old");
    EXPECT_EQ(Import((folder_.Path() / "no-such-folder" / "sheet.html").string()).exitStatus, 1);
}

}  // namespace
