#include "FileFormatHandler.h"

#include <exception>
#include <memory>
#include <new>

#include "BookImport.h"
#include "FileMessage.h"
#include "KVFilePath.h"
#include "KVFileSuites.h"
#include "KVUnicodeString.h"
#include "ReadErrorMessages.h"
#include "RegisteredSuites.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangePrescan.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/streams/DataFilterStream.h"
#include "swatchbook/KelvraSwatchBook.h"

namespace formats {

namespace {

// Both formats carry the colour book's file type.
constexpr std::uint32_t kFileType = kv::FourCC("7KCB");
// A swatch library: the host offers the file where swatch libraries go.
constexpr std::int32_t kFormatOptions = kKVFileFormatSwatchLibraryOption;

struct FormatEntry {
    const char* name;
    const char* titleKey;
    const char* extension;
};

constexpr FormatEntry kColorBookEntry{"Orvik Color Book Reader", "$$$/Tintor/Str/OCBReaderTitle=Orvik Color Book",
                                      "ocb"};
constexpr FormatEntry kSwatchExchangeEntry{"Orvik Swatch Exchange Reader",
                                           "$$$/Tintor/Str/OSEReaderTitle=Orvik Swatch Exchange", "ose"};

constexpr char kUnsupportedTypesQuestion[] =
    "$$$/Tintor/Str/OSEReadAlert=The file ^Q%s^Q contains unsupported swatch types.  Some swatches will not be "
    "imported.";

KVFileFormatHandle Register(ZPPluginRef plugin, const FormatEntry& entry) {
    const kv::UnicodeString title = kv::UnicodeString::FromPlatformText(entry.titleKey);
    const KVFileFormatDescription description{kFileType, title.Get(), 0, entry.extension};
    KVFileFormatHandle format = nullptr;
    const auto& suite = kv::RequireSuite<KVFileFormatSuite>(kv::registered::FileFormat());
    kv::ThrowIfError(suite.AddFileFormat(plugin, entry.name, &description, kFormatOptions, &format));
    return format;
}

bool IsColorBookStream(OrvikSwatchbookStream& stream) { return IsColorBook(stream) == 1; }

bool IsSwatchExchangeStream(OrvikSwatchbookStream& stream) {
    std::int32_t unsupported = 0;
    return CountUnsupportedSwatchExchangeEntries(stream, unsupported) == 1;
}

// Asks `examine` about the file's contents; an exception while the file is
// open counts as no.
bool ContentsPass(KVFilePathRef file, bool (*examine)(OrvikSwatchbookStream&)) {
    try {
        DataFilterStream stream(file, true);
        return examine(stream);
    } catch (const std::exception&) {
        return false;
    }
}

bool HasExtension(const kv::UnicodeString& extension, const char* expected) {
    return extension.Compare(kv::UnicodeString::FromPlatformText(expected)) == 0;
}

// Reads the file into the current document and writes its last swatch.
void ReadIntoDocument(KVFilePathRef file, BookReader reader) {
    const std::unique_ptr<KelvraSwatchBook> book(new (std::nothrow) KelvraSwatchBook(nullptr));
    if (book == nullptr) throw kv::Error(kv::kOutOfMemoryErr, nullptr);
    ReadFileIntoBook(file, book.get(), reader);
    book->FlushPendingSwatch();
}

void ImportColorBookFile(KVFilePathRef file) {
    if (!ContentsPass(file, IsColorBookStream)) return;
    ReadIntoDocument(file, ReadColorBook);
}

void ImportSwatchExchangeFile(KVFilePathRef file) {
    std::int32_t unsupported = 0;
    {
        DataFilterStream stream(file, true);
        if (CountUnsupportedSwatchExchangeEntries(stream, unsupported) != 1) return;
    }
    if (unsupported > 0 && !AskFileQuestion(kUnsupportedTypesQuestion, file)) {
        throw kv::Error(kv::kUserCanceledErr, nullptr);
    }
    ReadIntoDocument(file, ReadSwatchExchange);
}

}  // namespace

void FileFormatHandler::Register() {
    colorBookFormat_ = formats::Register(plugin_, kColorBookEntry);
    swatchExchangeFormat_ = formats::Register(plugin_, kSwatchExchangeEntry);
}

kv::ResultCode FileFormatHandler::Check(const KVFileFormatMessage& message) const {
    if (message.fileFormat == nullptr) return kv::kBadFormatErr;
    KVFilePathRef file = message.data.file;
    const kv::UnicodeString extension = kv::FileExtensionOf(file);
    if (message.fileFormat == swatchExchangeFormat_) {
        if (HasExtension(extension, kSwatchExchangeEntry.extension)) return kv::kNoErr;
        if (extension.IsEmpty() && ContentsPass(file, IsSwatchExchangeStream)) return kv::kNoErr;
    } else if (message.fileFormat == colorBookFormat_) {
        if (HasExtension(extension, kColorBookEntry.extension)) return kv::kNoErr;
        if (extension.IsEmpty() && ContentsPass(file, IsColorBookStream)) return kv::kNoErr;
    }
    return kv::kBadFormatErr;
}

kv::ResultCode FileFormatHandler::Go(const KVFileFormatMessage& message) const {
    const KVFileFormatHandle format = message.fileFormat;
    if (format == nullptr || (format != colorBookFormat_ && format != swatchExchangeFormat_)) return kv::kNoErr;
    const bool colorBook = format == colorBookFormat_;
    try {
        if (colorBook) {
            ImportColorBookFile(message.data.file);
        } else {
            ImportSwatchExchangeFile(message.data.file);
        }
    } catch (const kv::Error& error) {
        if (error.Code() == kv::kUserCanceledErr) return kv::kUserCanceledErr;
        ShowFileAlert(colorBook ? kColorBookReadError : kSwatchExchangeReadError, message.data.file);
        return kv::kCantHappenErr;
    }
    return kv::kNoErr;
}

}  // namespace formats
