#include "EntryBasicSuite.h"

namespace kv {

namespace {
const ZPBasicSuite* gEntryBasicSuite = nullptr;
}  // namespace

const ZPBasicSuite* EntryBasicSuite() noexcept { return gEntryBasicSuite; }

void KeepEntryBasicSuite(const ZPBasicSuite* basic) noexcept {
    if (gEntryBasicSuite == nullptr) gEntryBasicSuite = basic;
}

}  // namespace kv
