// The library the plug-in makes for every library file and folder, and its
// own library (id 20000): it opens its file as a host document and hands
// out that document's swatch list.
#pragma once

#include <cstdint>

#include "CKVLibrary.h"

class SwatchesCore : public CKVLibrary {
public:
    // A library without path: the plug-in's own.
    SwatchesCore(void* context, std::int32_t libraryId);
    // A library of `path`, named after it ("Brights.ose" shows as
    // "Brights"). The kind number (1 folders, 7 files) is not kept.
    SwatchesCore(void* context, std::int32_t libraryId, KVFilePathRef path, std::int32_t kindNumber, bool isFolder);
    // The document is the host's and stays open.
    ~SwatchesCore() override;

    // Opens the file as a host document, a new one each time; the host's
    // code. The stamp is left as it is, so a later Refresh reloads whenever
    // the file's time differs from the moment this object was made.
    kv::ResultCode UpdateTimeStamp() override;
    KVDocumentHandle GetDocument() const override;

    bool IsOpen() const noexcept { return document_ != nullptr; }
    // The document's swatch list; null when never opened (without asking the
    // host) or when the host fails.
    KVSwatchListRef GetSwatchList() const;

private:
    KVDocumentHandle document_ = nullptr;
};
