#include "ModuleImport.h"

#include <KVFrameworkSuites.h>
#include <KVSwatchSuites.h>

namespace import_testing {

namespace {

void AddCounts(std::vector<std::string>& left, std::initializer_list<std::pair<const char*, std::size_t>> counts) {
    for (const auto& [what, count] : counts) {
        if (count != 0) left.push_back(std::to_string(count) + " " + what);
    }
}

}  // namespace

std::vector<std::string> SuitesAndBlocks(kelvra::Host& host) {
    std::vector<std::string> left;
    for (const kelvra::SuiteCount& suite : host.SuiteCounts()) {
        if (suite.Held() != 0 || suite.extraReleases != 0) left.push_back(suite.name + " held");
    }
    const kelvra::BlockCounts blocks = host.LiveBlocks();
    AddCounts(left, {{"ZPBasic blocks", blocks.basic},
                     {"ZP Blocks blocks", blocks.blocks},
                     {"bad frees", std::size_t(blocks.badFrees)}});
    return left;
}

std::vector<std::string> Leftovers(kelvra::Host& host) {
    std::vector<std::string> left = SuitesAndBlocks(host);
    const kelvra::ObjectCounts objects = host.LiveObjects();
    AddCounts(left, {{"strings", objects.strings},
                     {"file paths", objects.filePaths},
                     {"data filters", objects.dataFilters}});
    return left;
}

std::vector<std::string> Shown(kelvra::Host& host) {
    std::vector<std::string> shown;
    for (const kelvra::Event& event : host.Events().All()) {
        switch (event.kind) {
            case kelvra::Event::Kind::Alert: shown.push_back("alert: " + event.text); break;
            case kelvra::Event::Kind::Question:
                shown.push_back("question: " + event.text + (event.answer ? " -> yes" : " -> no"));
                break;
            case kelvra::Event::Kind::MoreInfo:
                shown.push_back("more-info " + std::to_string(event.number) + ": " + event.text);
                break;
            case kelvra::Event::Kind::Usage: shown.push_back("usage: " + event.category + " / " + event.event); break;
            // What the host itself saw happen is not something the module showed.
            case kelvra::Event::Kind::CustomColorRedefined:
            case kelvra::Event::Kind::CustomColorShared:
            case kelvra::Event::Kind::EmptySwatchName: break;
        }
    }
    return shown;
}

std::string SwatchExchangeReadError(const std::string& name) {
    return "alert: An error occurred when reading the swatch exchange file '" + name + "'.";
}

std::string ColorBookReadError(const std::string& name) {
    return "alert: An error occurred when reading the color book '" + name + "'.";
}

std::vector<std::string> CantHappenReport() {
    return {"usage: Error Dialog with More Info Button / kCantHappenErr",
            "more-info 2102: An unknown error occurred.\t\t\t\t\t\nClick MORE INFO and try some of the solutions to "
            "fix the issue."};
}

void ModuleImportTest::SetUp() {
    module_ = &host_.Load(kTintora);
    ASSERT_EQ(module_->Startup(), kZPNoErr);
    for (const kelvra::FileFormatRecord& format : host_.FileFormats()) {
        if (format.name == "Orvik Color Book Reader") colorBook_ = format.handle;
        if (format.name == "Orvik Swatch Exchange Reader") swatchExchange_ = format.handle;
    }
    ASSERT_NE(colorBook_, nullptr);
    ASSERT_NE(swatchExchange_, nullptr);
}

void ModuleImportTest::TearDown() {
    EXPECT_EQ(module_->Shutdown(), kZPNoErr);
    EXPECT_EQ(Leftovers(host_), std::vector<std::string>());
}

ZPErr ModuleImportTest::Check(KVFileFormatHandle format, const std::filesystem::path& file) {
    return module_->CheckFileFormat({format, kKVFileFormatImportOption, file, nullptr});
}

ZPErr ModuleImportTest::Go(KVFileFormatHandle format, const std::filesystem::path& file,
                           kelvra::Document& document) {
    host_.Documents().MakeCurrent(document);
    return module_->GoFileFormat({format, kKVFileFormatImportOption, file, document.Handle()});
}

std::uint64_t ModuleImportTest::Calls(const std::string& suite, const std::string& function) {
    const auto& calls = host_.Faults().Calls();
    const auto found = calls.find({suite, function});
    return found != calls.end() ? found->second : 0;
}

}  // namespace import_testing
