// The module's host-facing classes run in this process against the emulated
// host: the host's basic suite goes to the module's suite list, which
// acquires the suites the module registers, as a start-up would.
#pragma once

#include <kelvra/Host.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "KVFilePath.h"

namespace testsupport {

class InProcessHostTest : public testing::Test {
protected:
    void SetUp() override;
    // Gives back every suite the module's code acquired.
    void TearDown() override;

    // Calls of one host suite function so far.
    std::uint64_t Calls(const std::string& suite, const std::string& function);

    kelvra::Host host_;
};

// A host file path for a real path, made and disposed of through the suite
// the module uses.
class HostPath {
public:
    explicit HostPath(const std::filesystem::path& path);

    KVFilePathRef Get() const { return path_.Get(); }

private:
    kv::FilePath path_;
};

}  // namespace testsupport
