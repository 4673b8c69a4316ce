#include <kelvra/DocumentList.h>
#include <kelvra/HostError.h>

#include <algorithm>

namespace kelvra {

namespace {

template <typename Handle>
Document* FindOwner(const std::vector<std::unique_ptr<Document>>& documents, Handle handle) {
    for (const auto& document : documents) {
        if (document->Find(handle) != nullptr) return document.get();
    }
    return nullptr;
}

}  // namespace

Document& DocumentList::New(std::string name) { return Add(std::make_unique<Document>(std::move(name))); }

Document& DocumentList::Add(std::unique_ptr<Document> document) {
    documents_.push_back(std::move(document));
    current_ = documents_.back().get();
    return *current_;
}

Document& DocumentList::AddHidden(std::unique_ptr<Document> document) {
    documents_.push_back(std::move(document));
    hidden_.insert(documents_.back().get());
    return *documents_.back();
}

void DocumentList::MakeCurrent(const Document& document) {
    Document* open = Find(document.Handle());
    if (open == nullptr) throw HostError("document \"" + document.Name() + "\" is not open");
    current_ = open;
}

void DocumentList::Close(const Document& document) {
    if (current_ == &document) current_ = nullptr;
    hidden_.erase(&document);
    std::erase_if(documents_, [&](const auto& open) { return open.get() == &document; });
}

std::vector<Document*> DocumentList::All() const {
    std::vector<Document*> all;
    for (const auto& document : documents_) all.push_back(document.get());
    return all;
}

Document* DocumentList::Find(KVDocumentHandle document) const {
    for (const auto& open : documents_) {
        if (open->Handle() == document) return open.get();
    }
    return nullptr;
}

Document* DocumentList::OwnerOf(KVSwatchListRef list) const {
    for (const auto& open : documents_) {
        if (open->SwatchList() == list) return open.get();
    }
    return nullptr;
}

Document* DocumentList::OwnerOf(KVSwatchGroupRef group) const { return FindOwner(documents_, group); }

Document* DocumentList::OwnerOf(KVSwatchRef swatch) const { return FindOwner(documents_, swatch); }

Document* DocumentList::OwnerOf(KVCustomColorHandle color) const { return FindOwner(documents_, color); }

ZPErr DocumentList::Resolve(KVDocumentHandle document, Document*& found) const {
    found = document == nullptr ? current_ : Find(document);
    if (found != nullptr) return kZPNoErr;
    return document == nullptr ? kZPNoDocumentErr : kZPBadParameterErr;
}

ZPErr DocumentList::Resolve(KVSwatchListRef list, Document*& found) const {
    found = list == nullptr ? current_ : OwnerOf(list);
    if (found != nullptr) return kZPNoErr;
    return list == nullptr ? kZPNoDocumentErr : kZPBadParameterErr;
}

}  // namespace kelvra
