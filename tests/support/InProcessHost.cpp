#include "InProcessHost.h"

#include "KVError.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"

namespace testsupport {

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

kv::FilePath PathOf(const std::filesystem::path& path) {
    const std::string text = path.string();
    return kv::FilePath::FromString(kv::UnicodeString::FromUTF8(text.data(), text.size()));
}

}  // namespace

HostPath::HostPath(const std::filesystem::path& path) : path_(PathOf(path)) {}

}  // namespace testsupport
