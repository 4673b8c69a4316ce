// Test doubles and fixtures of the library tests.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "CKVLibrary.h"
#include "FileTree.h"
#include "tests/support/InProcessHost.h"

namespace library_testing {

// A library that logs what is done to it ("open a", "close a", "reload a",
// "refresh a", "save a", "delete a") and fails its state saving on demand.
class LoggingLibrary : public CKVLibrary {
public:
    enum class Saving { kBase, kCode, kKvError, kStdException, kBadAlloc, kInteger, kUnknown };

    LoggingLibrary(std::vector<std::string>& log, std::string label, KVFilePathRef path = nullptr,
                   bool isFolder = false);
    ~LoggingLibrary() override;

    kv::ResultCode SaveState() override;
    void Reload() override;
    kv::ResultCode Open() override;
    void Refresh() override;
    void Close() override;
    KVDocumentHandle GetDocument() const override { return document_; }

    // Adds a child under `key`; the child itself.
    LoggingLibrary& Add(const std::u16string& key, std::unique_ptr<LoggingLibrary> child);
    // Whether Refresh logs itself instead of doing its work.
    void LogRefreshOnly() { logRefreshOnly_ = true; }

    Saving saving = Saving::kBase;
    kv::ResultCode savingCode = 0;
    kv::ResultCode openResult = 0;
    KVDocumentHandle document_ = nullptr;

private:
    std::vector<std::string>& log_;
    std::string label_;
    bool logRefreshOnly_ = false;
};

// The emulated host in this process, with a real tree to work on; at the
// end the test must have given back every host string and path.
class LibraryTest : public testsupport::InProcessHostTest {
protected:
    void TearDown() override;

    testsupport::FileTree tree_;
    // Strings and paths the host kept because it refused to dispose of them
    // when a test told it to.
    kelvra::ObjectCounts keptByHost_;
};

// A host path for a path of the tree.
kv::FilePath PathOf(const std::string& path);
std::string TextOf(const kv::UnicodeString& string);

}  // namespace library_testing
