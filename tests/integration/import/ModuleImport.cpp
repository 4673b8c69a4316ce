#include "ModuleImport.h"

namespace import_testing {

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
