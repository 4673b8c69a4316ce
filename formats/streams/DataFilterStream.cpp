#include "DataFilterStream.h"

#include "KVError.h"
#include "KVFileSuites.h"
#include "RegisteredSuites.h"

namespace {

const KVDataFilterSuite* Suite() { return kv::AcquireSuiteOrThrow<KVDataFilterSuite>(kv::registered::DataFilter()); }

}  // namespace

DataFilterStream::DataFilterStream(KVFilePathRef file, bool reading, std::uint32_t creator, std::uint32_t type)
    : reading_(reading ? 1 : 0) {
    const KVDataFilterSuite* suite = Suite();
    if (suite == nullptr) return;
    KVDataFilterRef filter = nullptr;
    if (suite->NewFileDataFilter(file, reading ? "read" : "write", creator, type, &filter) != kv::kNoErr ||
        filter == nullptr) {
        return;
    }
    if (suite->LinkDataFilter(nullptr, filter) != kv::kNoErr) {
        // Unlinking is the only way to give a filter back, linked or not.
        suite->UnlinkDataFilter(filter, nullptr);
        return;
    }
    filter_ = filter;
    open_ = 1;
}

DataFilterStream::DataFilterStream(KVDataFilterRef filter, bool reading) noexcept
    : reading_(reading ? 1 : 0), open_(filter != nullptr ? 1 : 0), filter_(filter), owned_(false) {}

DataFilterStream::~DataFilterStream() {
    if (open_ == 0 || !owned_) return;
    try {
        if (const KVDataFilterSuite* suite = Suite()) suite->UnlinkDataFilter(filter_, nullptr);
    } catch (...) {
        // A destructor does not throw; the host keeps what it could not close.
    }
}

std::int64_t DataFilterStream::Read(void* destination, std::size_t count) {
    if (open_ == 0) return 0;
    std::size_t moved = count;
    if (Suite()->ReadDataFilter(filter_, static_cast<char*>(destination), &moved) != kv::kNoErr) return 0;
    return std::int64_t(moved);
}

std::int64_t DataFilterStream::Write(const void* source, std::size_t count) {
    if (open_ == 0) return 0;
    std::size_t moved = count;
    if (Suite()->WriteDataFilter(filter_, static_cast<const char*>(source), &moved) != kv::kNoErr) return 0;
    return std::int64_t(moved);
}
