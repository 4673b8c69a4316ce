// The real module started in the emulated host with a home of library
// folders, and "KV Tintora Suite" called through the basic suite as
// another plug-in calls it.
#pragma once

#include <kelvra/Host.h>

#include <KVFileSuites.h>
#include <KVStringSuites.h>
#include <KVSwatchSuites.h>
#include <KVTintoraSuite.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "HostChecks.h"
#include "tests/support/TemporaryFolder.h"

namespace suite_testing {

inline constexpr const char* kTintora = TINTORA_MODULE;

// The folders of the host's home (HostFolders.h).
inline constexpr const char* kUserFolder = "user-88";
inline constexpr const char* kSecondUserFolder = "user-89";
inline constexpr const char* kApplicationFolder = "application-33";
inline constexpr const char* kExcludedFolder = "user-88/excluded-72";

// Another plug-in's view of the host: the suites it acquires and keeps
// until it goes.
class OtherPlugin {
public:
    explicit OtherPlugin(kelvra::Host& host);
    ~OtherPlugin();
    OtherPlugin(const OtherPlugin&) = delete;
    OtherPlugin& operator=(const OtherPlugin&) = delete;

    // Null when the host refused it.
    const KVTintoraSuite* Tintora() const { return tintora_; }
    const KVUnicodeStringSuite& Strings() const { return *strings_; }
    const KVFilePathSuite& Paths() const { return *paths_; }
    const KVDataFilterSuite& Filters() const { return *filters_; }
    const KVSwatchListSuite& SwatchLists() const { return *swatchLists_; }

    // A host string of `text`, and the text of one; both through the suite.
    KVUnicodeStringRef NewString(const std::string& text) const;
    std::string TextOf(KVUnicodeStringRef string) const;
    KVFilePathRef NewPath(const std::filesystem::path& path) const;

private:
    const ZPBasicSuite* basic_;
    const KVTintoraSuite* tintora_ = nullptr;
    const KVUnicodeStringSuite* strings_ = nullptr;
    const KVFilePathSuite* paths_ = nullptr;
    const KVDataFilterSuite* filters_ = nullptr;
    const KVSwatchListSuite* swatchLists_ = nullptr;
};

class SuiteTest : public testing::Test {
protected:
    // The home's folders exist and no preferences are written yet; the
    // module is started.
    void SetUp() override;
    // Shuts the module down: nothing may be left behind.
    void TearDown() override;

    const KVTintoraSuite& Suite() const { return *plugin_->Tintora(); }
    std::string Home(const std::string& relative) const;
    // Writes a small library file of the kind its extension names (".ose",
    // ".ocb", ".kv" or anything else: plain bytes) under the home.
    std::string Library(const std::string& relative);
    void Remember(const std::string& path);

    std::int32_t Count();
    // Library `index`'s display name, or the code when the suite refused.
    std::string Name(std::int32_t index);
    // Every library's name from 1 to the count.
    std::vector<std::string> Names();
    kelvra::Document* DocumentOf(KVSwatchListRef list);

    kelvra::Host host_;
    kelvra::Module* module_ = nullptr;
    testsupport::TemporaryFolder home_;
    std::unique_ptr<OtherPlugin> plugin_;
};

// A result as its four characters when printable, else as a number.
std::string CodeText(ZPErr code);

}  // namespace suite_testing
