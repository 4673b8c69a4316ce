// Library files opened as hidden documents (DocumentList.h), a new one on
// every call. A ".kv" file is the host's own document in its JSON form
// (DocumentJson.h); any other file goes through the registered file
// formats as the host's open command sends it, so the module that asked
// is entered again while it waits for this call.
#include "../PathText.h"
#include "../SuiteCall.h"
#include "../WholeFile.h"
#include "HostSuites.h"

#include <kelvra/DocumentJson.h>

#include <KVFileSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVPathStyleSuite};

// Makes the document that was current when it was made current again when
// it goes, or none when none was.
class CurrentDocumentKept {
public:
    explicit CurrentDocumentKept(DocumentList& documents)
        : documents_(documents), previous_(documents.Current() != nullptr ? documents.Current()->Handle() : nullptr) {}
    ~CurrentDocumentKept() {
        if (Document* previous = documents_.Find(previous_)) documents_.MakeCurrent(*previous);
        else documents_.MakeNoneCurrent();
    }
    CurrentDocumentKept(const CurrentDocumentKept&) = delete;
    CurrentDocumentKept& operator=(const CurrentDocumentKept&) = delete;

private:
    DocumentList& documents_;
    KVDocumentHandle previous_;
};

ZPErr ReadOwnDocument(HostState& host, const std::string& file, KVDocumentHandle* document) {
    const std::optional<std::string> text = ReadWholeFile(file);
    if (!text) return kNotADocumentErr;
    const nlohmann::json json = nlohmann::json::parse(*text, nullptr, false);
    if (json.is_discarded()) return kNotADocumentErr;
    std::unique_ptr<Document> read;
    try {
        read = DocumentFromJson(json);
    } catch (const HostError&) {
        return kNotADocumentErr;
    }
    *document = host.documents.AddHidden(std::move(read)).Handle();
    return kZPNoErr;
}

// The module's import writes its custom colours into the current document,
// so the new document is current while "KV Go" runs. A Go that fails
// answers its own code and takes its document with it.
ZPErr ReadThroughFormats(HostState& host, const std::string& file, KVDocumentHandle* document) {
    CurrentDocumentKept kept(host.documents);
    Document* made = nullptr;
    FormatTarget target;
    target.newDocument = [&]() -> Document& {
        made = &host.documents.AddHidden(std::make_unique<Document>(FileName(file)));
        return *made;
    };
    FormatOpening opening;
    try {
        opening = host.OpenWithFormats(file, target);
    } catch (...) {
        if (made != nullptr) host.documents.Close(*made);
        throw;
    }
    if (!opening.go) return kNoFormatErr;
    if (opening.go->result != kZPNoErr) {
        host.documents.Close(*made);
        return opening.go->result;
    }
    *document = made->Handle();
    return kZPNoErr;
}

ZPErr OpenLibraryDocument(HostState& host, KVFilePathRef path, KVDocumentHandle* document) {
    const HostFilePath* found = host.filePaths.Find(path);
    if (found == nullptr || document == nullptr) return kZPBadParameterErr;
    *document = nullptr;
    // A copy: the module may dispose of the path while it is entered again.
    const std::string file = found->path;
    // A library without a file (a plug-in's own) opens as a new empty one.
    if (file.empty()) {
        *document = host.documents.AddHidden(std::make_unique<Document>("Untitled library")).Handle();
        return kZPNoErr;
    }
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return kFileNotFoundErr;
    return Extension(file) == "kv" ? ReadOwnDocument(host, file, document) : ReadThroughFormats(host, file, document);
}

const KVPathStyleSuite table = [] {
    KVPathStyleSuite suite{};
    FillReserved(suite.reserved0to4);
    suite.OpenLibraryDocument = HostFunction<kSuite, "OpenLibraryDocument", &OpenLibraryDocument>::Call;
    return suite;
}();

}  // namespace

const void* KVPathStyleSuiteTable() { return &table; }

}  // namespace kelvra
