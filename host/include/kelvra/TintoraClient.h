// The host acting as another plug-in of "KV Tintora Suite": it acquires the
// suite through the basic suite as any plug-in does, and calls its 14
// functions with typed C++ results.
//
//   kelvra::TintoraClient tintora(host.BasicSuite());
//   if (!tintora.Acquired()) ...                     // tintora.AcquisitionFailure() says why
//   auto count = tintora.CountLibraries();          // count.call, count.value
//   auto book = tintora.NewReferenceBook();         // book.value disposes of it through the suite
//   tintora.ReadColorBook("book.ocb", book.value);
//   auto red = tintora.FindReferenceSwatch(book.value, "Red 032");
//
// Every entry is checked before it is called: after the module is unloaded
// the suite stays published with null entries, and such a call is reported
// as refused. The strings, paths and data filters a call needs are made
// through the host's suites and given back before it returns.
//
// Release the client (Release(), or its end) before the module shuts down:
// the host frees the suite's table then. A book must not outlive its client.
#pragma once

#include <KVTintoraSuite.h>
#include <ZPBasicSuite.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

struct KVUnicodeStringSuite;
struct KVFilePathSuite;
struct KVDataFilterSuite;

namespace kelvra {

// What one call of the suite came to.
struct TintoraCall {
    ZPErr code = kZPNoErr;  // the function's answer, or the failed host call's
    // The entry was null (or the suite was never acquired): nothing was called.
    bool refused = false;
    // A host call the client made for this call failed before the function
    // was called, e.g. "KV Unicode String Suite NewFromUTF8"; `code` is its
    // answer.
    std::string failedHostCall;

    bool Succeeded() const { return !refused && failedHostCall.empty() && code == kZPNoErr; }
};

// "0", "NAM?", "refused: the entry is null", "KV File Path Suite
// NewFromString answered !MEM".
std::string ReadableText(const TintoraCall& call);

template <typename T>
struct TintoraAnswer {
    TintoraCall call;
    T value{};  // as the function left it; meaningful when the call succeeded
};

// The colour of a reference book's swatch.
struct ReferenceColour {
    // None when the module wrote no model: a swatch whose colour the model
    // cannot express (only `spot` is set then).
    std::optional<KVReferenceColorModel> model;
    std::array<double, 4> values{};
    bool spot = false;
};

class TintoraClient;

// A reference book the module made for a client; disposed of through the
// suite when it ends (Dispose() tells how that went).
class ReferenceBookHandle {
public:
    ReferenceBookHandle() = default;
    ReferenceBookHandle(ReferenceBookHandle&& other) noexcept;
    ReferenceBookHandle& operator=(ReferenceBookHandle&& other) noexcept;
    ~ReferenceBookHandle();

    KVReferenceBookRef Get() const { return book_; }
    explicit operator bool() const { return book_ != nullptr; }
    // DisposeReferenceBook; the handle is empty afterwards whatever it answered.
    TintoraCall Dispose();

private:
    friend class TintoraClient;
    ReferenceBookHandle(TintoraClient& client, KVReferenceBookRef book) : client_(&client), book_(book) {}

    TintoraClient* client_ = nullptr;
    KVReferenceBookRef book_ = nullptr;
};

// A swatches export into a file through a write data filter: unlinked
// after a successful export (the file is replaced then), discarded after a
// failed one (an existing file stays as it was).
struct FileExport {
    TintoraCall exported;          // ExportSwatches, or the making of the filter
    std::optional<ZPErr> unlinked;  // UnlinkDataFilter's answer, when the export succeeded
    std::optional<ZPErr> discarded;  // DiscardDataFilter's answer, when it failed after the filter was made
    bool Written() const { return exported.Succeeded() && unlinked == kZPNoErr; }
};

class TintoraClient {
public:
    // Acquires "KV Tintora Suite" version 1, then the host's string, file
    // path and data filter suites. When one is refused the others are
    // released and every call is refused.
    explicit TintoraClient(const ZPBasicSuite* basic);
    ~TintoraClient();
    TintoraClient(const TintoraClient&) = delete;
    TintoraClient& operator=(const TintoraClient&) = delete;

    bool Acquired() const { return tintora_ != nullptr; }
    // The suite the basic suite refused ("KV Tintora Suite 1") and its
    // answer; empty and 0 when acquired.
    const std::string& RefusedSuite() const { return refusedSuite_; }
    ZPErr AcquisitionFailure() const { return acquisitionFailure_; }
    // Releases every suite; later calls are refused.
    void Release();

    TintoraAnswer<ReferenceBookHandle> NewReferenceBook();
    TintoraAnswer<std::int32_t> GetReferenceBookID(const ReferenceBookHandle& book);
    TintoraAnswer<ReferenceColour> FindReferenceSwatch(const ReferenceBookHandle& book, std::string_view name);
    TintoraAnswer<std::int32_t> CountLibraries();
    TintoraAnswer<KVSwatchListRef> GetLibrarySwatchList(std::int32_t index);
    TintoraAnswer<KVSwatchListRef> OpenLibrary(std::int32_t index);
    TintoraAnswer<bool> IsLibraryOpen(std::int32_t index);
    TintoraAnswer<std::string> GetLibraryName(std::int32_t index);
    TintoraAnswer<KVSwatchListRef> OpenLibraryFile(const std::filesystem::path& file);
    // `filter` is the caller's, made for writing and linked.
    TintoraCall ExportSwatches(KVDataFilterRef filter, KVDocumentHandle document);
    // `filter` is the caller's, made for reading and linked.
    TintoraAnswer<bool> IsColorBookFile(KVDataFilterRef filter);
    TintoraCall ReadColorBook(const std::filesystem::path& file, const ReferenceBookHandle& book);
    TintoraCall ReadLegacyColorBook(const std::filesystem::path& file, const ReferenceBookHandle& book);

    // IsColorBookFile on a read data filter the client makes on `file`.
    TintoraAnswer<bool> IsColorBookFile(const std::filesystem::path& file);
    // ExportSwatches of `document` (null: the current one) into `file`.
    FileExport ExportSwatchesToFile(KVDocumentHandle document, const std::filesystem::path& file);

private:
    friend class ReferenceBookHandle;
    TintoraCall DisposeReferenceBook(KVReferenceBookRef book);
    // Calls `entry` with a host path of `file`, then `rest`.
    template <typename Entry, typename... Args>
    TintoraCall WithPath(Entry entry, const std::filesystem::path& file, Args... rest);

    const ZPBasicSuite* basic_;
    const KVTintoraSuite* tintora_ = nullptr;
    const KVUnicodeStringSuite* strings_ = nullptr;
    const KVFilePathSuite* paths_ = nullptr;
    const KVDataFilterSuite* filters_ = nullptr;
    std::string refusedSuite_;
    ZPErr acquisitionFailure_ = kZPNoErr;
};

}  // namespace kelvra
