#include "HostState.h"

#include <ZPMessages.h>

namespace kelvra {

FormatOpening HostState::OpenWithFormats(const std::filesystem::path& file, const FormatTarget& target) {
    FormatOpening opening;
    FileFormatRequest request;
    request.option = target.placeInto != nullptr ? kKVFileFormatImportOption : kKVFileFormatReadOption;
    request.file = file;
    request.document = target.placeInto != nullptr ? target.placeInto->Handle() : nullptr;
    // Copies: a module may register or withdraw formats while it answers.
    const std::vector<FileFormatRecord> formats = fileFormats.CopiesInOrder();
    const FileFormatRecord* accepted = nullptr;
    for (const FileFormatRecord& format : formats) {
        request.format = format.handle;
        const ZPErr answer = const_cast<Module*>(format.owner)->CheckFileFormat(request);
        opening.checks.push_back({format.name, answer});
        if (answer == kZPNoErr && accepted == nullptr) accepted = &format;
    }
    if (accepted == nullptr) return opening;
    Document& document = target.placeInto != nullptr ? *target.placeInto : target.newDocument();
    documents.MakeCurrent(document);
    request.format = accepted->handle;
    request.document = document.Handle();
    opening.document = &document;
    opening.go = FormatMessage{accepted->name, const_cast<Module*>(accepted->owner)->GoFileFormat(request)};
    return opening;
}

}  // namespace kelvra
