// The real module started in the emulated host with its two file formats,
// and the requests a user's open or place command sends them.
#pragma once

#include <kelvra/Host.h>

#include <KVFileSuites.h>
#include <KVSwatchSuites.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "ImportTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace import_testing {

inline constexpr const char* kTintora = TINTORA_MODULE;

// Suites a module still holds and host blocks still live; empty when none.
std::vector<std::string> SuitesAndBlocks(kelvra::Host& host);
// The same and the host objects it made and did not give back.
std::vector<std::string> Leftovers(kelvra::Host& host);

// What the user saw, one line per event: "alert: <text>", "question: <text>
// -> yes|no", "more-info <number>: <text>", "usage: <category> / <event>".
std::vector<std::string> Shown(kelvra::Host& host);

// The alert of the swatch exchange reader's failure for the file `name`.
std::string SwatchExchangeReadError(const std::string& name);
std::string ColorBookReadError(const std::string& name);
// What the user sees when a file-format request answers "CANT": the usage
// event and the unknown-error dialog of the error report.
std::vector<std::string> CantHappenReport();

class ModuleImportTest : public testing::Test {
protected:
    // Starts the module and finds its two formats.
    void SetUp() override;
    // Shuts the module down, which must leave nothing behind.
    void TearDown() override;

    ZPErr Check(KVFileFormatHandle format, const std::filesystem::path& file);
    // Imports into `document`, made current first as the host does.
    ZPErr Go(KVFileFormatHandle format, const std::filesystem::path& file, kelvra::Document& document);
    // Calls of one host suite function so far.
    std::uint64_t Calls(const std::string& suite, const std::string& function);

    kelvra::Host host_;
    kelvra::Module* module_ = nullptr;
    KVFileFormatHandle colorBook_ = nullptr;
    KVFileFormatHandle swatchExchange_ = nullptr;
    testsupport::TemporaryFolder folder_;
};

}  // namespace import_testing
