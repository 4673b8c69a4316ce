// The owner of the host's own resources, for its string list 257.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kLexoHostInitSuite};

ZPErr GetHostResourceOwner(HostState& host, KVResourceOwner* owner) {
    if (owner == nullptr) return kZPBadParameterErr;
    *owner = host.HostResourceOwner();
    return kZPNoErr;
}

const LexoHostInitSuite table = {
    HostFunction<kSuite, "GetHostResourceOwner", &GetHostResourceOwner>::Call,
};

}  // namespace

const void* LexoHostInitSuiteTable() { return &table; }

}  // namespace kelvra
