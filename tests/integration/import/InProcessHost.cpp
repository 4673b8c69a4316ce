#include "InProcessHost.h"

#include "KVError.h"
#include "KVStringSuites.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"

namespace import_testing {

void InProcessHostTest::SetUp() {
    kv::registered::ListRegisteredSuites();
    ASSERT_EQ(kv::AcquireRegisteredSuites(host_.BasicSuite()), kv::kNoErr);
}

void InProcessHostTest::TearDown() {
    kv::ReleaseAllSuites();
    EXPECT_EQ(host_.SuitesHeld(), 0u);
}

std::uint64_t InProcessHostTest::Calls(const std::string& suite, const std::string& function) {
    const auto& calls = host_.Faults().Calls();
    const auto found = calls.find({suite, function});
    return found != calls.end() ? found->second : 0;
}

namespace {

const KVFilePathSuite& FilePaths() { return kv::RequireSuite<KVFilePathSuite>(kv::registered::FilePath()); }

}  // namespace

HostPath::HostPath(const std::filesystem::path& path) {
    const std::string text = path.string();
    const kv::UnicodeString string = kv::UnicodeString::FromUTF8(text.data(), text.size());
    kv::ThrowIfError(FilePaths().NewFromString(string.Get(), &path_));
}

HostPath::~HostPath() { FilePaths().Dispose(path_); }

}  // namespace import_testing
