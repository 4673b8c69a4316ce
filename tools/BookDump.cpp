#include "BookDump.h"

#include <string_view>

#include "JsonText.h"
#include "swatchbook/ReferenceBook.h"

namespace tool {
namespace {

// A record's name, up to its terminator.
std::u16string_view RecordName(const ReferenceSwatch& swatch) {
    const std::u16string_view name(swatch.name, std::size(swatch.name));
    return name.substr(0, name.find(u'\0'));
}

std::string FormatJson(const ReferenceBook& book, std::int32_t format) {
    return "{\"colorSpace\": " + JsonInt(book.GetFormatColorSpace(format)) +
           ", \"encoding\": " + JsonInt(book.GetFormatEncoding(format)) +
           ", \"channels\": " + JsonInt(book.GetFormatChannels(format)) +
           ", \"condition\": " + JsonString(book.GetFormatCondition(format)) +
           ", \"colorSpaceName\": " + JsonString(book.GetFormatColorSpaceName(format, false)) +
           ", \"id\": " + JsonString(book.GetFormatID(format, false)) + "}";
}

std::string SwatchJson(const ReferenceSwatch& swatch) {
    std::string json = "{\"kind\": " + JsonInt(swatch.kind) + ", \"name\": " + JsonString(RecordName(swatch)) +
                       ", \"colorSpace\": " + JsonInt(swatch.colorSpace) + ", \"values\": [";
    for (std::size_t i = 0; i < std::size(swatch.values); ++i) {
        if (i > 0) json += ", ";
        json += JsonDouble(swatch.values[i]);
    }
    return json + "]}";
}

}  // namespace

std::string DumpBook(std::int32_t result, const ReferenceBook& book) {
    std::string json = "{\"result\": " + JsonInt(result) + ", \"book\": {" +
                       "\"version\": " + JsonInt(book.GetVersion()) +
                       ", \"pageSize\": " + JsonInt(book.GetPageSize()) +
                       ", \"pageKeyOffset\": " + JsonInt(book.GetPageKeyOffset()) +
                       ", \"bookId\": " + JsonInt(book.GetBookID()) +
                       ", \"title\": " + JsonString(book.GetTitle()) +
                       ", \"copyright\": " + JsonString(book.GetCopyright()) +
                       ", \"prefix\": " + JsonString(book.GetPrefix()) +
                       ", \"postfix\": " + JsonString(book.GetPostfix()) + ", \"formats\": [";
    for (std::int32_t format = 0; format < book.CountFormats(); ++format) {
        if (format > 0) json += ", ";
        json += FormatJson(book, format);
    }
    json += "], \"swatches\": [";
    for (std::int32_t swatch = 0; swatch < book.CountSwatches(); ++swatch) {
        if (swatch > 0) json += ", ";
        json += SwatchJson(book.GetSwatchRecord(swatch));
    }
    return json + "]}}";
}

}  // namespace tool
