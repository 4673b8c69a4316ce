#include "SuiteTesting.h"

#include <kelvra/ResultText.h>

#include <fstream>

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace suite_testing {

namespace {

template <class Suite>
const Suite* Acquire(const ZPBasicSuite* basic, const char* name, std::int32_t version) {
    const void* suite = nullptr;
    if (basic->AcquireSuite(name, version, &suite) != kZPNoErr) return nullptr;
    return static_cast<const Suite*>(suite);
}

constexpr const char* kDocumentJson =
    R"({"name": "Greens", "groups": [{"name": "", "swatches": [{"name": "Leaf", "kind": "rgb", "values": [0, 1, 0]}]}]})";

}  // namespace

std::string CodeText(ZPErr code) { return kelvra::ResultText(code); }

OtherPlugin::OtherPlugin(kelvra::Host& host) : basic_(host.BasicSuite()) {
    tintora_ = Acquire<KVTintoraSuite>(basic_, kKVTintoraSuite, kKVTintoraSuiteVersion);
    strings_ = Acquire<KVUnicodeStringSuite>(basic_, kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion);
    paths_ = Acquire<KVFilePathSuite>(basic_, kKVFilePathSuite, kKVFilePathSuiteVersion);
    filters_ = Acquire<KVDataFilterSuite>(basic_, kKVDataFilterSuite, kKVDataFilterSuiteVersion);
    swatchLists_ = Acquire<KVSwatchListSuite>(basic_, kKVSwatchListSuite, kKVSwatchListSuiteVersion);
}

OtherPlugin::~OtherPlugin() {
    if (tintora_ != nullptr) basic_->ReleaseSuite(kKVTintoraSuite, kKVTintoraSuiteVersion);
    basic_->ReleaseSuite(kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion);
    basic_->ReleaseSuite(kKVFilePathSuite, kKVFilePathSuiteVersion);
    basic_->ReleaseSuite(kKVDataFilterSuite, kKVDataFilterSuiteVersion);
    basic_->ReleaseSuite(kKVSwatchListSuite, kKVSwatchListSuiteVersion);
}

KVUnicodeStringRef OtherPlugin::NewString(const std::string& text) const {
    KVUnicodeStringRef string = nullptr;
    EXPECT_EQ(strings_->NewFromUTF8(text.data(), text.size(), &string), kZPNoErr);
    return string;
}

std::string OtherPlugin::TextOf(KVUnicodeStringRef string) const {
    std::size_t length = 0;
    strings_->GetPlatformText(string, nullptr, 0, &length);
    std::string text(length + 1, '\0');
    strings_->GetPlatformText(string, text.data(), text.size(), &length);
    text.resize(length);
    return text;
}

KVFilePathRef OtherPlugin::NewPath(const std::filesystem::path& path) const {
    KVUnicodeStringRef string = NewString(path.string());
    KVFilePathRef made = nullptr;
    EXPECT_EQ(paths_->NewFromString(string, &made), kZPNoErr);
    strings_->Dispose(string);
    return made;
}

void SuiteTest::SetUp() {
    host_.Folders().UseHome(home_.Path());
    host_.Preferences().UseFile(home_.Path() / "preferences.json");
    for (const char* folder : {kUserFolder, kSecondUserFolder, kApplicationFolder}) {
        std::filesystem::create_directories(home_.Path() / folder);
    }
    module_ = &host_.Load(kTintora);
    ASSERT_EQ(module_->Startup(), kZPNoErr);
    plugin_ = std::make_unique<OtherPlugin>(host_);
    ASSERT_NE(plugin_->Tintora(), nullptr);
}

void SuiteTest::TearDown() {
    plugin_.reset();
    EXPECT_EQ(module_->Shutdown(), kZPNoErr);
    EXPECT_EQ(import_testing::Leftovers(host_), std::vector<std::string>());
}

std::string SuiteTest::Home(const std::string& relative) const { return (home_.Path() / relative).string(); }

std::string SuiteTest::Library(const std::string& relative) {
    const std::filesystem::path path = home_.Path() / relative;
    std::filesystem::create_directories(path.parent_path());
    testsupport::Bytes bytes;
    if (path.extension() == ".ose") {
        bytes = testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange());
    } else if (path.extension() == ".ocb") {
        bytes = testsupport::BuildColorBook(testsupport::SampleColorBook());
    } else if (path.extension() == ".kv") {
        bytes.assign(kDocumentJson, kDocumentJson + std::char_traits<char>::length(kDocumentJson));
    } else {
        bytes = {'l', 'i', 'b'};
    }
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return path.string();
}

void SuiteTest::Remember(const std::string& path) { host_.Preferences().RememberLibrary(path); }

std::int32_t SuiteTest::Count() {
    std::int32_t count = -1;
    EXPECT_EQ(Suite().CountLibraries(&count), kZPNoErr);
    return count;
}

std::string SuiteTest::Name(std::int32_t index) {
    KVUnicodeStringRef name = plugin_->NewString("");
    const ZPErr result = Suite().GetLibraryName(index, name);
    const std::string text = result == kZPNoErr ? plugin_->TextOf(name) : CodeText(result);
    plugin_->Strings().Dispose(name);
    return text;
}

std::vector<std::string> SuiteTest::Names() {
    std::vector<std::string> names;
    const std::int32_t count = Count();
    for (std::int32_t i = 1; i < count; ++i) names.push_back(Name(i));
    return names;
}

kelvra::Document* SuiteTest::DocumentOf(KVSwatchListRef list) { return host_.Documents().OwnerOf(list); }

}  // namespace suite_testing
