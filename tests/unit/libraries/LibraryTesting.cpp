#include "LibraryTesting.h"

#include <new>
#include <stdexcept>

#include "KVUnicodeString.h"
#include "text/Utf8.h"

namespace library_testing {

LoggingLibrary::LoggingLibrary(std::vector<std::string>& log, std::string label, KVFilePathRef path, bool isFolder)
    : CKVLibrary(nullptr, isFolder, path, 30000), log_(log), label_(std::move(label)) {}

LoggingLibrary::~LoggingLibrary() { log_.push_back("delete " + label_); }

kv::ResultCode LoggingLibrary::SaveState() {
    log_.push_back("save " + label_);
    switch (saving) {
        case Saving::kBase: return CKVLibrary::SaveState();
        case Saving::kCode: return savingCode;
        case Saving::kKvError: throw kv::Error(savingCode, nullptr);
        case Saving::kStdException: throw std::runtime_error("saving failed");
        case Saving::kBadAlloc: throw std::bad_alloc();
        case Saving::kInteger: throw int(savingCode);
        case Saving::kUnknown: throw Saving::kUnknown;
    }
    return 0;
}

void LoggingLibrary::Reload() {
    log_.push_back("reload " + label_);
    CKVLibrary::Reload();
}

kv::ResultCode LoggingLibrary::Open() {
    log_.push_back("open " + label_);
    CKVLibrary::Open();
    return openResult;
}

void LoggingLibrary::Refresh() {
    log_.push_back("refresh " + label_);
    if (!logRefreshOnly_) CKVLibrary::Refresh();
}

void LoggingLibrary::Close() { log_.push_back("close " + label_); }

LoggingLibrary& LoggingLibrary::Add(const std::u16string& key, std::unique_ptr<LoggingLibrary> child) {
    LoggingLibrary& added = *child;
    AdoptChild(key, std::move(child));
    return added;
}

void LibraryTest::TearDown() {
    const kelvra::ObjectCounts live = host_.LiveObjects();
    EXPECT_EQ(live.strings, keptByHost_.strings);
    EXPECT_EQ(live.filePaths, keptByHost_.filePaths);
    InProcessHostTest::TearDown();
}

kv::FilePath PathOf(const std::string& path) { return kv::FilePath::FromUTF16(kv::Utf8ToUtf16(path)); }

std::string TextOf(const kv::UnicodeString& string) { return kv::Utf16ToUtf8(string.ToUTF16()); }

}  // namespace library_testing
