// The host's open documents and its current document: the one made current
// last. A null document or swatch list in a suite call stands for the
// current document; with none the call answers kZPNoDocumentErr ("DOC?").
//
// Hidden documents are the library files the host opened for a module
// ("KV Path Style Suite" 5): open like any other, so their handles work in
// every suite, but not the user's documents, and not made current by
// being opened.
#pragma once

#include "Document.h"

#include <ZPTypes.h>

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace kelvra {

class DocumentList {
public:
    // A new empty document, made current.
    Document& New(std::string name);
    // A document made elsewhere (DocumentFromJson), now open and current.
    Document& Add(std::unique_ptr<Document> document);
    // A hidden document, now open; the current one stays current.
    Document& AddHidden(std::unique_ptr<Document> document);
    // HostError when the document is not open here.
    void MakeCurrent(const Document& document);
    void MakeNoneCurrent() { current_ = nullptr; }
    // Closing the current document leaves none current. Its handles go
    // stale: suites answer kZPBadParameterErr for them.
    void Close(const Document& document);

    // Null when there is none.
    Document* Current() const { return current_; }
    // In the order they were opened, hidden ones included.
    std::vector<Document*> All() const;
    bool IsHidden(const Document& document) const { return hidden_.contains(&document); }

    // The open document of a handle; null for anything else.
    Document* Find(KVDocumentHandle document) const;
    Document* OwnerOf(KVSwatchListRef list) const;
    Document* OwnerOf(KVSwatchGroupRef group) const;
    Document* OwnerOf(KVSwatchRef swatch) const;
    Document* OwnerOf(KVCustomColorHandle color) const;

    // The document a suite call means: `document` (or `list`), the current
    // one for null. kZPNoDocumentErr when null and none is current,
    // kZPBadParameterErr for a handle of no open document.
    ZPErr Resolve(KVDocumentHandle document, Document*& found) const;
    ZPErr Resolve(KVSwatchListRef list, Document*& found) const;

private:
    std::vector<std::unique_ptr<Document>> documents_;
    std::unordered_set<const Document*> hidden_;
    Document* current_ = nullptr;
};

}  // namespace kelvra
