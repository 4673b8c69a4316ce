#include "LibraryListTesting.h"

#include <fstream>

#include "KVUnicodeString.h"
#include "text/Utf8.h"

namespace library_testing {

void TestFactory::Make(CKVLibrary*& library, KVFilePathRef path, bool isFolder) {
    const std::string text = TextOf(kv::PathStringOf(path));
    asked.push_back((isFolder ? "F " : "") + text);
    const std::int32_t id = nextId++;
    if (throwing.contains(text)) throw kv::Error(kv::FourCC("THRW"), nullptr);
    library = refused.contains(text) ? nullptr : new CKVLibrary(nullptr, isFolder, path, id);
}

void TestFactory::Reset() {
    nextId = 30000;
    refused.clear();
    throwing.clear();
    asked.clear();
}

void LibraryListTest::SetUp() {
    LibraryTest::SetUp();
    TestFactory::Reset();
    host_.Preferences().UseFile(tree_.At("preferences.json"));
    list_ = std::make_unique<CKVLibraryList>();
    list_->SetPreferencePrefix(kPrefix);
}

void LibraryListTest::TearDown() {
    list_.reset();
    LibraryTest::TearDown();
}

void LibraryListTest::MapFolder(std::int32_t type, const std::string& relative, bool make) {
    if (make) tree_.Folder(relative);
    host_.Folders().Map(type, tree_.At(relative));
}

void LibraryListTest::WritePreferences(const std::string& json) {
    std::ofstream(tree_.At("preferences.json")) << json;
}

void LibraryListTest::Remember(const std::vector<std::string>& relatives) {
    for (const std::string& relative : relatives) host_.Preferences().RememberLibrary(tree_.At(relative));
}

void LibraryListTest::InitList() { ASSERT_EQ(list_->Init(&context_, &TestFactory::Make), kv::kNoErr); }

std::string LibraryListTest::Relative(KVFilePathRef path) const {
    const std::string text = TextOf(kv::PathStringOf(path));
    const std::string root = tree_.Root().string() + "/";
    return text.starts_with(root) ? text.substr(root.size()) : "?" + text;
}

std::vector<std::string> LibraryListTest::Listed() {
    std::vector<std::string> paths;
    for (std::int32_t i = 0; CKVLibrary* library = list_->GetLibraryByIndex(i); ++i) {
        paths.push_back(Relative(library->Path()));
    }
    return paths;
}

CKVLibrary* LibraryListTest::Find(const std::string& relative) {
    const kv::FilePath path = PathOf(tree_.At(relative));
    return list_->FindLibraryByPath(path.Get());
}

}  // namespace library_testing
