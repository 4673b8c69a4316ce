// File-format registration: what a module registers is recorded (name,
// description, options) with the handle the host returned.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVFileFormatSuite};

ZPErr AddFileFormat(HostState& host, ZPPluginRef plugin, const char* name,
                    const KVFileFormatDescription* description, std::int32_t options,
                    KVFileFormatHandle* fileFormat) {
    if (fileFormat == nullptr) return kZPBadParameterErr;
    *fileFormat = nullptr;
    const Module* owner = host.FindModule(plugin);
    if (owner == nullptr || name == nullptr || description == nullptr) return kZPBadParameterErr;
    if (description->title != nullptr && host.strings.Find(description->title) == nullptr)
        return kZPBadParameterErr;
    auto record = std::make_unique<FileFormatRecord>();
    FileFormatRecord* raw = record.get();
    raw->owner = owner;
    raw->name = name;
    raw->type = description->type;
    raw->title = host.Utf8Of(description->title);
    raw->titleOrder = description->titleOrder;
    raw->extension = description->extension != nullptr ? description->extension : "";
    raw->options = options;
    raw->handle = host.fileFormats.Add<KVFileFormatHandle>(std::move(record));
    *fileFormat = raw->handle;
    return kZPNoErr;
}

const KVFileFormatSuite table = {
    HostFunction<kSuite, "AddFileFormat", &AddFileFormat>::Call,
};

}  // namespace

const void* KVFileFormatSuiteTable() { return &table; }

}  // namespace kelvra
