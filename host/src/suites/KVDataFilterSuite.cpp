// Data filters with real file I/O. A filter is made, linked (which opens
// it), read or written, and unlinked (which closes it; a written file
// replaces its target only then, and only when every write succeeded) or
// discarded (which closes it and keeps nothing written).
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

#include <cstring>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVDataFilterSuite};

ZPErr NewFileDataFilter(HostState& host, KVFilePathRef file, const char* mode, std::uint32_t, std::uint32_t,
                        KVDataFilterRef* filter) {
    if (filter == nullptr) return kZPBadParameterErr;
    *filter = nullptr;
    const HostFilePath* path = host.filePaths.Find(file);
    if (path == nullptr || path->path.empty() || mode == nullptr) return kZPBadParameterErr;
    FileDataFilter::Mode fileMode;
    if (std::strcmp(mode, "read") == 0) fileMode = FileDataFilter::Mode::Read;
    else if (std::strcmp(mode, "write") == 0) fileMode = FileDataFilter::Mode::Write;
    else return kZPBadParameterErr;
    *filter = host.dataFilters.Add<KVDataFilterRef>(
        std::unique_ptr<HostDataFilter>(new HostDataFilter{FileDataFilter(path->path, fileMode), nullptr, false}));
    return kZPNoErr;
}

ZPErr LinkDataFilter(HostState& host, KVDataFilterRef prev, KVDataFilterRef next) {
    HostDataFilter* filter = host.dataFilters.Find(next);
    if (filter == nullptr || filter->linked) return kZPBadParameterErr;
    if (prev != nullptr && host.dataFilters.Find(prev) == nullptr) return kZPBadParameterErr;
    const ZPErr opened = filter->file.Open();
    if (opened != kZPNoErr) return opened;
    filter->previous = prev;
    filter->linked = true;
    return kZPNoErr;
}

ZPErr UnlinkDataFilter(HostState& host, KVDataFilterRef next, KVDataFilterRef* prev) {
    if (prev != nullptr) *prev = nullptr;
    HostDataFilter* filter = host.dataFilters.Find(next);
    if (filter == nullptr) return kZPBadParameterErr;
    const ZPErr finished = filter->file.Finish();
    if (prev != nullptr) *prev = filter->previous;
    host.dataFilters.Remove(next);
    return finished;
}

ZPErr ReadDataFilter(HostState& host, KVDataFilterRef filter, char* store, std::size_t* count) {
    HostDataFilter* found = host.dataFilters.Find(filter);
    if (found == nullptr || count == nullptr || (store == nullptr && *count != 0)) return kZPBadParameterErr;
    return found->file.Read(store, count);
}

ZPErr WriteDataFilter(HostState& host, KVDataFilterRef filter, const char* store, std::size_t* count) {
    HostDataFilter* found = host.dataFilters.Find(filter);
    if (found == nullptr || count == nullptr || (store == nullptr && *count != 0)) return kZPBadParameterErr;
    return found->file.Write(store, count);
}

// An injected failure of a write must keep the old file like a real one.
ZPErr WriteDataFilterEntry(KVDataFilterRef filter, const char* store, std::size_t* count) noexcept {
    static const CallSite site = CallSiteOf(kSuite.text, "WriteDataFilter");
    return GuardedCall<ZPErr>(
        site, [&](HostState& host) { return WriteDataFilter(host, filter, store, count); },
        [&](HostState& host) {
            if (HostDataFilter* found = host.dataFilters.Find(filter)) found->file.MarkFailed();
            if (count != nullptr) *count = 0;
        });
}

ZPErr DiscardDataFilter(HostState& host, KVDataFilterRef filter) {
    HostDataFilter* found = host.dataFilters.Find(filter);
    if (found == nullptr) return kZPBadParameterErr;
    found->file.Discard();
    host.dataFilters.Remove(filter);
    return kZPNoErr;
}

// A discard is the caller's last word on a filter it cannot use: an
// injected failure answers its code but the filter still goes, with nothing
// written kept, so leak counts stay about the caller.
ZPErr DiscardDataFilterEntry(KVDataFilterRef filter) noexcept {
    static const CallSite site = CallSiteOf(kSuite.text, "DiscardDataFilter");
    return GuardedCall<ZPErr>(
        site, [&](HostState& host) { return DiscardDataFilter(host, filter); },
        [&](HostState& host) { DiscardDataFilter(host, filter); });
}

const KVDataFilterSuite table = {
    HostFunction<kSuite, "NewFileDataFilter", &NewFileDataFilter>::Call,
    HostFunction<kSuite, "LinkDataFilter", &LinkDataFilter>::Call,
    HostFunction<kSuite, "UnlinkDataFilter", &UnlinkDataFilter>::Call,
    HostFunction<kSuite, "ReadDataFilter", &ReadDataFilter>::Call,
    WriteDataFilterEntry,
    DiscardDataFilterEntry,
};

}  // namespace

const void* KVDataFilterSuiteTable() { return &table; }

}  // namespace kelvra
