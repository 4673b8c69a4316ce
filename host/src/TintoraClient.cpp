#include <kelvra/TintoraClient.h>

#include <kelvra/ResultText.h>

#include "UnicodeText.h"

#include <KVFileSuites.h>
#include <KVStringSuites.h>

#include <utility>
#include <vector>

namespace kelvra {

namespace {

TintoraCall Refused() { return {kZPNoErr, true, {}}; }

// Calls `entry` unless it is null.
template <typename Entry, typename... Args>
TintoraCall Called(Entry entry, Args... args) {
    if (entry == nullptr) return Refused();
    return {entry(args...), false, {}};
}

// The host objects one call needs, made through the host's suites and given
// back when the call is over. The first host call that fails is kept as the
// call's report; after it nothing more is made.
class CallObjects {
public:
    CallObjects(const KVUnicodeStringSuite* strings, const KVFilePathSuite* paths) : strings_(strings), paths_(paths) {}
    ~CallObjects() {
        for (auto it = madePaths_.rbegin(); it != madePaths_.rend(); ++it) paths_->Dispose(*it);
        for (auto it = madeStrings_.rbegin(); it != madeStrings_.rend(); ++it) strings_->Dispose(*it);
    }
    CallObjects(const CallObjects&) = delete;
    CallObjects& operator=(const CallObjects&) = delete;

    // Null when a host call failed (now or before).
    KVUnicodeStringRef String(std::string_view utf8) {
        KVUnicodeStringRef string = nullptr;
        if (!Ok() || !Check("KV Unicode String Suite NewFromUTF8",
                            strings_->NewFromUTF8(utf8.data(), utf8.size(), &string)))
            return nullptr;
        madeStrings_.push_back(string);
        return string;
    }
    KVFilePathRef Path(const std::filesystem::path& file) {
        KVUnicodeStringRef text = String(file.string());
        KVFilePathRef path = nullptr;
        if (text == nullptr || !Check("KV File Path Suite NewFromString", paths_->NewFromString(text, &path)))
            return nullptr;
        madePaths_.push_back(path);
        return path;
    }
    std::optional<std::string> Text(KVUnicodeStringRef string) {
        std::size_t count = 0;
        if (!Ok() || !Check("KV Unicode String Suite GetUTF16", strings_->GetUTF16(string, nullptr, 0, &count)))
            return std::nullopt;
        std::u16string units(count, u'\0');
        if (!Check("KV Unicode String Suite GetUTF16",
                   strings_->GetUTF16(string, reinterpret_cast<std::uint16_t*>(units.data()), count, &count)))
            return std::nullopt;
        return Utf16ToUtf8(units);
    }
    // False, and kept as the report, when `code` is a failure.
    bool Check(const char* hostCall, ZPErr code) {
        if (code == kZPNoErr) return true;
        if (Ok()) failure_ = TintoraCall{code, false, hostCall};
        return false;
    }
    bool Ok() const { return !failure_; }
    const TintoraCall& Failure() const { return *failure_; }

private:
    const KVUnicodeStringSuite* strings_;
    const KVFilePathSuite* paths_;
    std::vector<KVUnicodeStringRef> madeStrings_;
    std::vector<KVFilePathRef> madePaths_;
    std::optional<TintoraCall> failure_;
};

// A data filter made on a file and linked for one call. Unless it was
// unlinked it is discarded at the end, so nothing half-written is kept.
class FileFilter {
public:
    FileFilter(const KVDataFilterSuite* filters, CallObjects& objects, const std::filesystem::path& file,
               const char* mode)
        : filters_(filters) {
        KVFilePathRef path = objects.Path(file);
        if (path == nullptr ||
            !objects.Check("KV Data Filter Suite NewFileDataFilter",
                           filters_->NewFileDataFilter(path, mode, 0, 0, &filter_)))
            return;
        linked_ = objects.Check("KV Data Filter Suite LinkDataFilter", filters_->LinkDataFilter(nullptr, filter_));
    }
    ~FileFilter() {
        if (filter_ != nullptr) filters_->DiscardDataFilter(filter_);
    }
    FileFilter(const FileFilter&) = delete;
    FileFilter& operator=(const FileFilter&) = delete;

    // Null unless made and linked.
    KVDataFilterRef Get() const { return linked_ ? filter_ : nullptr; }
    bool Made() const { return filter_ != nullptr; }
    // A write filter's file replaces its target now. When the unlink fails
    // the filter is still discarded at the end (if the host kept it).
    ZPErr Unlink() {
        const ZPErr answer = filters_->UnlinkDataFilter(filter_, nullptr);
        if (answer == kZPNoErr) filter_ = nullptr;
        return answer;
    }
    ZPErr Discard() { return filters_->DiscardDataFilter(std::exchange(filter_, nullptr)); }

private:
    const KVDataFilterSuite* filters_;
    KVDataFilterRef filter_ = nullptr;
    bool linked_ = false;
};

struct SuiteWanted {
    const char* name;
    std::int32_t version;
    const void** slot;
};

}  // namespace

std::string ReadableText(const TintoraCall& call) {
    if (call.refused) return "refused: the entry is null";
    if (!call.failedHostCall.empty()) return call.failedHostCall + " answered " + ResultText(call.code);
    return ResultText(call.code);
}

ReferenceBookHandle::ReferenceBookHandle(ReferenceBookHandle&& other) noexcept
    : client_(std::exchange(other.client_, nullptr)), book_(std::exchange(other.book_, nullptr)) {}

ReferenceBookHandle& ReferenceBookHandle::operator=(ReferenceBookHandle&& other) noexcept {
    if (this != &other) {
        Dispose();
        client_ = std::exchange(other.client_, nullptr);
        book_ = std::exchange(other.book_, nullptr);
    }
    return *this;
}

ReferenceBookHandle::~ReferenceBookHandle() { Dispose(); }

TintoraCall ReferenceBookHandle::Dispose() {
    if (book_ == nullptr || client_ == nullptr) return {};
    const TintoraCall call = client_->DisposeReferenceBook(std::exchange(book_, nullptr));
    client_ = nullptr;
    return call;
}

TintoraClient::TintoraClient(const ZPBasicSuite* basic) : basic_(basic) {
    const SuiteWanted wanted[] = {
        {kKVTintoraSuite, kKVTintoraSuiteVersion, reinterpret_cast<const void**>(&tintora_)},
        {kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion, reinterpret_cast<const void**>(&strings_)},
        {kKVFilePathSuite, kKVFilePathSuiteVersion, reinterpret_cast<const void**>(&paths_)},
        {kKVDataFilterSuite, kKVDataFilterSuiteVersion, reinterpret_cast<const void**>(&filters_)},
    };
    for (const SuiteWanted& suite : wanted) {
        const void* table = nullptr;
        const ZPErr answer = basic_->AcquireSuite(suite.name, suite.version, &table);
        if (answer == kZPNoErr && table != nullptr) {
            *suite.slot = table;
            continue;
        }
        refusedSuite_ = std::string(suite.name) + " " + std::to_string(suite.version);
        // A suite handed out with success but no table is refused all the same.
        acquisitionFailure_ = answer != kZPNoErr ? answer : kZPSuiteNotFoundErr;
        if (answer == kZPNoErr) basic_->ReleaseSuite(suite.name, suite.version);
        Release();
        return;
    }
}

TintoraClient::~TintoraClient() { Release(); }

void TintoraClient::Release() {
    const SuiteWanted held[] = {
        {kKVDataFilterSuite, kKVDataFilterSuiteVersion, reinterpret_cast<const void**>(&filters_)},
        {kKVFilePathSuite, kKVFilePathSuiteVersion, reinterpret_cast<const void**>(&paths_)},
        {kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion, reinterpret_cast<const void**>(&strings_)},
        {kKVTintoraSuite, kKVTintoraSuiteVersion, reinterpret_cast<const void**>(&tintora_)},
    };
    for (const SuiteWanted& suite : held) {
        if (*suite.slot != nullptr) basic_->ReleaseSuite(suite.name, suite.version);
        *suite.slot = nullptr;
    }
}

template <typename Entry, typename... Args>
TintoraCall TintoraClient::WithPath(Entry entry, const std::filesystem::path& file, Args... rest) {
    if (entry == nullptr) return Refused();
    CallObjects objects(strings_, paths_);
    KVFilePathRef path = objects.Path(file);
    return path != nullptr ? Called(entry, path, rest...) : objects.Failure();
}

TintoraAnswer<ReferenceBookHandle> TintoraClient::NewReferenceBook() {
    TintoraAnswer<ReferenceBookHandle> answer;
    KVReferenceBookRef book = nullptr;
    answer.call = Called(tintora_ ? tintora_->NewReferenceBook : nullptr, &book);
    if (book != nullptr) answer.value = ReferenceBookHandle(*this, book);
    return answer;
}

TintoraCall TintoraClient::DisposeReferenceBook(KVReferenceBookRef book) {
    return Called(tintora_ ? tintora_->DisposeReferenceBook : nullptr, book);
}

TintoraAnswer<std::int32_t> TintoraClient::GetReferenceBookID(const ReferenceBookHandle& book) {
    TintoraAnswer<std::int32_t> answer;
    answer.call = Called(tintora_ ? tintora_->GetReferenceBookID : nullptr, book.Get(), &answer.value);
    return answer;
}

TintoraAnswer<ReferenceColour> TintoraClient::FindReferenceSwatch(const ReferenceBookHandle& book,
                                                                  std::string_view name) {
    TintoraAnswer<ReferenceColour> answer;
    const auto entry = tintora_ ? tintora_->FindReferenceSwatch : nullptr;
    if (entry == nullptr) {
        answer.call = Refused();
        return answer;
    }
    CallObjects objects(strings_, paths_);
    KVUnicodeStringRef text = objects.String(name);
    if (text == nullptr) {
        answer.call = objects.Failure();
        return answer;
    }
    // A model no function writes tells that the module left it as it was.
    KVReferenceColor color{-1, {0, 0, 0, 0}, 0};
    answer.call = Called(entry, book.Get(), text, &color);
    if (color.model == kKVReferenceCMYK || color.model == kKVReferenceRGB || color.model == kKVReferenceLab)
        answer.value.model = KVReferenceColorModel(color.model);
    for (std::size_t i = 0; i < 4; ++i) answer.value.values[i] = color.values[i];
    answer.value.spot = color.spot != 0;
    return answer;
}

TintoraAnswer<std::int32_t> TintoraClient::CountLibraries() {
    TintoraAnswer<std::int32_t> answer;
    answer.call = Called(tintora_ ? tintora_->CountLibraries : nullptr, &answer.value);
    return answer;
}

TintoraAnswer<KVSwatchListRef> TintoraClient::GetLibrarySwatchList(std::int32_t index) {
    TintoraAnswer<KVSwatchListRef> answer;
    answer.call = Called(tintora_ ? tintora_->GetLibrarySwatchList : nullptr, index, &answer.value);
    return answer;
}

TintoraAnswer<KVSwatchListRef> TintoraClient::OpenLibrary(std::int32_t index) {
    TintoraAnswer<KVSwatchListRef> answer;
    answer.call = Called(tintora_ ? tintora_->OpenLibrary : nullptr, index, &answer.value);
    return answer;
}

TintoraAnswer<bool> TintoraClient::IsLibraryOpen(std::int32_t index) {
    TintoraAnswer<bool> answer;
    const auto entry = tintora_ ? tintora_->IsLibraryOpen : nullptr;
    if (entry == nullptr) answer.call = Refused();
    else answer.value = entry(index) != 0;
    return answer;
}

TintoraAnswer<std::string> TintoraClient::GetLibraryName(std::int32_t index) {
    TintoraAnswer<std::string> answer;
    const auto entry = tintora_ ? tintora_->GetLibraryName : nullptr;
    if (entry == nullptr) {
        answer.call = Refused();
        return answer;
    }
    CallObjects objects(strings_, paths_);
    KVUnicodeStringRef name = objects.String("");
    if (name == nullptr) {
        answer.call = objects.Failure();
        return answer;
    }
    answer.call = Called(entry, index, name);
    // The name is emptied first, so a failed call reads back empty.
    if (std::optional<std::string> text = objects.Text(name)) answer.value = std::move(*text);
    else answer.call = objects.Failure();
    return answer;
}

TintoraAnswer<KVSwatchListRef> TintoraClient::OpenLibraryFile(const std::filesystem::path& file) {
    TintoraAnswer<KVSwatchListRef> answer;
    answer.call = WithPath(tintora_ ? tintora_->OpenLibraryFile : nullptr, file, &answer.value);
    return answer;
}

TintoraCall TintoraClient::ExportSwatches(KVDataFilterRef filter, KVDocumentHandle document) {
    return Called(tintora_ ? tintora_->ExportSwatches : nullptr, filter, document);
}

TintoraAnswer<bool> TintoraClient::IsColorBookFile(KVDataFilterRef filter) {
    TintoraAnswer<bool> answer;
    const auto entry = tintora_ ? tintora_->IsColorBookFile : nullptr;
    if (entry == nullptr) answer.call = Refused();
    else answer.value = entry(filter) != 0;
    return answer;
}

TintoraCall TintoraClient::ReadColorBook(const std::filesystem::path& file, const ReferenceBookHandle& book) {
    return WithPath(tintora_ ? tintora_->ReadColorBook : nullptr, file, book.Get());
}

TintoraCall TintoraClient::ReadLegacyColorBook(const std::filesystem::path& file, const ReferenceBookHandle& book) {
    return WithPath(tintora_ ? tintora_->ReadLegacyColorBook : nullptr, file, book.Get());
}

TintoraAnswer<bool> TintoraClient::IsColorBookFile(const std::filesystem::path& file) {
    TintoraAnswer<bool> answer;
    if (tintora_ == nullptr || tintora_->IsColorBookFile == nullptr) {
        answer.call = Refused();
        return answer;
    }
    CallObjects objects(strings_, paths_);
    FileFilter filter(filters_, objects, file, "read");
    if (filter.Get() == nullptr) {
        answer.call = objects.Failure();
        return answer;
    }
    answer = IsColorBookFile(filter.Get());
    // Nothing was written, so the filter goes either way.
    filter.Unlink();
    return answer;
}

FileExport TintoraClient::ExportSwatchesToFile(KVDocumentHandle document, const std::filesystem::path& file) {
    FileExport result;
    if (tintora_ == nullptr || tintora_->ExportSwatches == nullptr) {
        result.exported = Refused();
        return result;
    }
    CallObjects objects(strings_, paths_);
    FileFilter filter(filters_, objects, file, "write");
    if (filter.Get() == nullptr) {
        result.exported = objects.Failure();
        if (filter.Made()) result.discarded = filter.Discard();
        return result;
    }
    result.exported = ExportSwatches(filter.Get(), document);
    if (result.exported.Succeeded()) result.unlinked = filter.Unlink();
    else result.discarded = filter.Discard();
    return result;
}

}  // namespace kelvra
