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

#include "HostChecks.h"
#include "ImportTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace import_testing {

inline constexpr const char* kTintora = TINTORA_MODULE;

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
