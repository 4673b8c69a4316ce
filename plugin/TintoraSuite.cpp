#include "TintoraSuite.h"

#include <cstddef>
#include <exception>
#include <new>

#include "KVError.h"
#include "KVFilePath.h"
#include "KVSwatchSuites.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"
#include "Tintora.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "formats/handlers/BookImport.h"
#include "formats/handlers/FileMessage.h"
#include "formats/handlers/ReadErrorMessages.h"
#include "formats/streams/DataFilterStream.h"
#include "swatchbook/KelvraSwatchBook.h"
#include "swatchbook/ReferenceBook.h"

namespace {

// Nothing leaves a suite function but its answer.
template <class Call>
ZPErr Answer(Call&& call) noexcept {
    try {
        return call();
    } catch (const kv::Error& error) {
        return error.Code();
    } catch (const std::bad_alloc&) {
        return kv::kOutOfMemoryErr;
    } catch (const std::exception&) {
        return kv::kCantHappenErr;
    } catch (...) {
        return kv::kUnknownExceptionErr;
    }
}

// A question answers "no" when anything fails.
template <class Call>
ZPBoolean Whether(Call&& call) noexcept {
    try {
        return call() ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

ReferenceBook* BookOf(KVReferenceBookRef book) { return reinterpret_cast<ReferenceBook*>(book); }

const KVSwatchListSuite& SwatchLists() { return kv::RequireSuite<KVSwatchListSuite>(kv::registered::SwatchList()); }

// Library `index` as the suite numbers them from 1; null when there is none.
CKVLibrary* LibraryAt(Tintora& plugin, std::int32_t index) {
    return index >= 1 ? plugin.Libraries().GetLibraryByIndex(index - 1) : nullptr;
}

// The libraries found and in line with the disk, for the functions that
// count, open or ask about them.
void BringLibrariesUpToDate(Tintora& plugin) {
    plugin.EnsureLibraries();
    plugin.Libraries().RefreshAll();
}

// Every library the plug-in lists is one its factory made.
KVSwatchListRef SwatchListOf(CKVLibrary& library) { return static_cast<SwatchesCore&>(library).GetSwatchList(); }

ZPErr ZPAPI NewReferenceBook(KVReferenceBookRef* book) {
    return Answer([&]() -> ZPErr {
        if (book == nullptr) return kv::kBadParameterErr;
        *book = nullptr;
        auto* made = new (std::nothrow) ReferenceBook();
        if (made == nullptr) return kv::kOutOfMemoryErr;
        *book = reinterpret_cast<KVReferenceBookRef>(made);
        return kv::kNoErr;
    });
}

ZPErr ZPAPI DisposeReferenceBook(KVReferenceBookRef book) {
    return Answer([&]() -> ZPErr {
        if (book == nullptr) return kv::kBadParameterErr;
        delete static_cast<OrvikSwatchbook*>(BookOf(book));
        return kv::kNoErr;
    });
}

ZPErr ZPAPI GetReferenceBookID(KVReferenceBookRef book, std::int32_t* bookId) {
    return Answer([&]() -> ZPErr {
        if (book == nullptr || bookId == nullptr) return kv::kBadParameterErr;
        *bookId = BookOf(book)->GetBookID();
        return kv::kNoErr;
    });
}

ZPErr ZPAPI FindReferenceSwatch(KVReferenceBookRef book, KVUnicodeStringRef name, KVReferenceColor* color) {
    return Answer([&]() -> ZPErr {
        if (book == nullptr || name == nullptr || color == nullptr) return kv::kBadParameterErr;
        // What the book does not write stays as the caller left it.
        ReferenceColor found{color->model, {color->values[0], color->values[1], color->values[2], color->values[3]},
                             color->spot};
        if (!BookOf(book)->GetSwatchColor(kv::UTF16Of(name), found)) return kv::kNameNotFoundErr;
        color->model = found.model;
        for (std::size_t i = 0; i < 4; ++i) color->values[i] = found.values[i];
        color->spot = found.spot;
        return kv::kNoErr;
    });
}

ZPErr ZPAPI CountLibraries(std::int32_t* count) {
    return Answer([&]() -> ZPErr {
        Tintora* plugin = Tintora::Global();
        if (plugin == nullptr) return kv::kOutOfMemoryErr;
        if (count == nullptr) return kv::kBadParameterErr;
        BringLibrariesUpToDate(*plugin);
        // The own library comes first.
        *count = plugin->Libraries().CountListedLibraries(false) + 1;
        return kv::kNoErr;
    });
}

ZPErr ZPAPI GetLibrarySwatchList(std::int32_t index, KVSwatchListRef* list) {
    return Answer([&]() -> ZPErr {
        if (list == nullptr) return kv::kBadParameterErr;
        KVDocumentHandle document = nullptr;
        if (index >= 1) {
            Tintora* plugin = Tintora::Global();
            CKVLibrary* library = plugin != nullptr ? LibraryAt(*plugin, index) : nullptr;
            if (library == nullptr || library->GetDocument() == nullptr) return kv::kBadParameterErr;
            document = library->GetDocument();
        }
        return SwatchLists().GetSwatchList(document, list);
    });
}

ZPErr ZPAPI OpenLibrary(std::int32_t index, KVSwatchListRef* list) {
    return Answer([&]() -> ZPErr {
        if (list == nullptr) return kv::kBadParameterErr;
        Tintora* plugin = Tintora::Global();
        if (plugin != nullptr) BringLibrariesUpToDate(*plugin);
        CKVLibrary* library = nullptr;
        if (index >= 1) {
            library = plugin != nullptr ? LibraryAt(*plugin, index) : nullptr;
            if (library == nullptr) return kv::kBadParameterErr;
        } else {
            library = plugin != nullptr ? plugin->OwnLibrary() : nullptr;
            if (library == nullptr) return kv::kNoDocumentErr;
        }
        if (const kv::ResultCode result = library->Open()) return result;
        *list = SwatchListOf(*library);
        return kv::kNoErr;
    });
}

ZPBoolean ZPAPI IsLibraryOpen(std::int32_t index) {
    return Whether([&] {
        Tintora* plugin = Tintora::Global();
        if (plugin == nullptr) return false;
        BringLibrariesUpToDate(*plugin);
        const CKVLibrary* library = index >= 1 ? LibraryAt(*plugin, index) : plugin->OwnLibrary();
        return library != nullptr && library->GetDocument() != nullptr;
    });
}

ZPErr ZPAPI GetLibraryName(std::int32_t index, KVUnicodeStringRef name) {
    return Answer([&]() -> ZPErr {
        if (name == nullptr) return kv::kBadParameterErr;
        kv::AssignString(name, kv::UnicodeString().Get());
        Tintora* plugin = Tintora::Global();
        const CKVLibrary* library = plugin != nullptr ? LibraryAt(*plugin, index) : nullptr;
        if (library == nullptr) return kv::kBadParameterErr;
        kv::AssignString(name, library->Name().Get());
        return kv::kNoErr;
    });
}

ZPErr ZPAPI OpenLibraryFile(KVFilePathRef path, KVSwatchListRef* list) {
    return Answer([&]() -> ZPErr {
        if (list == nullptr || path == nullptr || kv::IsEmptyPath(path)) return kv::kBadParameterErr;
        Tintora* plugin = Tintora::Global();
        if (plugin == nullptr) return kv::kOutOfMemoryErr;
        CKVLibrary* library = plugin->Libraries().FindLibraryByPath(path);
        if (library == nullptr) library = plugin->Libraries().AddPersistentLibrary(path);
        if (library == nullptr) return kv::kBadParameterErr;
        if (library->GetDocument() == nullptr) {
            if (const kv::ResultCode result = library->Open()) return result;
        }
        *list = SwatchListOf(*library);
        return kv::kNoErr;
    });
}

ZPErr ZPAPI ExportSwatches(KVDataFilterRef filter, KVDocumentHandle document) {
    return Answer([&]() -> ZPErr {
        if (Tintora::Global() == nullptr) return kv::kOutOfMemoryErr;
        try {
            KVSwatchListRef list = nullptr;
            kv::ThrowIfError(SwatchLists().GetSwatchList(document, &list));
            KelvraSwatchBook book(list);
            book.LoadSnapshot();
            DataFilterStream stream(filter, false);
            return formats::WriteSwatchExchange(stream, book) == 1 ? kv::kNoErr : kv::kCantHappenErr;
        } catch (const kv::Error&) {
            return kv::kCantHappenErr;
        }
    });
}

ZPBoolean ZPAPI IsColorBookFile(KVDataFilterRef filter) {
    return Whether([&] {
        DataFilterStream stream(filter, true);
        return formats::IsColorBook(stream) == 1;
    });
}

// Reads `file` into `book` with `read`; when that fails the user is told
// with `message` and the file's name, and the answer is "CANT".
ZPErr ReadBook(KVFilePathRef file, KVReferenceBookRef book, void (*read)(KVFilePathRef, OrvikSwatchbook*),
               const char* message) {
    return Answer([&]() -> ZPErr {
        if (file == nullptr || book == nullptr) return kv::kBadParameterErr;
        try {
            read(file, BookOf(book));
        } catch (const kv::Error&) {
            formats::ShowFileAlert(message, file);
            return kv::kCantHappenErr;
        }
        return kv::kNoErr;
    });
}

ZPErr ZPAPI ReadColorBook(KVFilePathRef file, KVReferenceBookRef book) {
    return ReadBook(file, book, formats::ImportColorBook, formats::kColorBookReadError);
}

ZPErr ZPAPI ReadLegacyColorBook(KVFilePathRef file, KVReferenceBookRef book) {
    return ReadBook(file, book, formats::ImportXmlSwatchbook, formats::kLegacyColorBookReadError);
}

}  // namespace

void FillTintoraSuite(KVTintoraSuite& table) noexcept {
    table = KVTintoraSuite{NewReferenceBook,   DisposeReferenceBook, GetReferenceBookID, FindReferenceSwatch,
                           CountLibraries,     GetLibrarySwatchList, OpenLibrary,        IsLibraryOpen,
                           GetLibraryName,     OpenLibraryFile,      ExportSwatches,     IsColorBookFile,
                           ReadColorBook,      ReadLegacyColorBook};
}
