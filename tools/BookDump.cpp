#include "BookDump.h"

#include <string>
#include <string_view>

#include "CodeMeanings.h"
#include "JsonText.h"
#include "JsonWriter.h"
#include "swatchbook/ReferenceBook.h"

namespace tool {
namespace {

// A record's name, up to its terminator.
std::u16string_view RecordName(const ReferenceSwatch& swatch) {
    const std::u16string_view name(swatch.name, std::size(swatch.name));
    return name.substr(0, name.find(u'\0'));
}

class BookWriter {
public:
    BookWriter(std::ostream& out, bool pretty) : json_(out, pretty), pretty_(pretty) {}

    void Write(std::int32_t result, const ReferenceBook& book) {
        json_.BeginObject();
        Code("result", result, ReaderResults());
        json_.Key("book");
        json_.BeginObject();
        json_.Member("version", book.GetVersion());
        json_.Member("pageSize", book.GetPageSize());
        json_.Member("pageKeyOffset", book.GetPageKeyOffset());
        json_.Member("bookId", book.GetBookID());
        json_.Member("title", book.GetTitle());
        json_.Member("copyright", book.GetCopyright());
        json_.Member("prefix", book.GetPrefix());
        json_.Member("postfix", book.GetPostfix());
        json_.Key("formats");
        json_.BeginArray();
        for (std::int32_t format = 0; format < book.CountFormats(); ++format) Format(book, format);
        json_.EndArray();
        json_.Key("swatches");
        json_.BeginArray();
        for (std::int32_t swatch = 0; swatch < book.CountSwatches(); ++swatch) Swatch(book.GetSwatchRecord(swatch));
        json_.EndArray();
        json_.EndObject();
        json_.EndObject();
    }

private:
    // A code, and when pretty its meaning beside it.
    void Code(std::string_view key, std::int32_t code, std::span<const CodeMeaning> meanings) {
        json_.Member(key, code);
        if (!pretty_) return;
        const std::string_view meaning = MeaningOf(meanings, code);
        json_.Member(std::string(key) + "Meaning", JsonString(std::u16string(meaning.begin(), meaning.end())));
    }

    void Format(const ReferenceBook& book, std::int32_t format) {
        json_.BeginObject();
        Code("colorSpace", book.GetFormatColorSpace(format), ColorSpaces());
        Code("encoding", book.GetFormatEncoding(format), Encodings());
        json_.Member("channels", book.GetFormatChannels(format));
        json_.Member("condition", book.GetFormatCondition(format));
        json_.Member("colorSpaceName", book.GetFormatColorSpaceName(format, false));
        json_.Member("id", book.GetFormatID(format, false));
        json_.EndObject();
    }

    void Swatch(const ReferenceSwatch& swatch) {
        json_.BeginObject();
        Code("kind", swatch.kind, SwatchKinds());
        json_.Member("name", RecordName(swatch));
        Code("colorSpace", swatch.colorSpace, ColorSpaces());
        json_.Key("values");
        json_.BeginArray(true);
        for (const double value : swatch.values) json_.Value(value);
        json_.EndArray();
        json_.EndObject();
    }

    JsonWriter json_;
    bool pretty_;
};

}  // namespace

void DumpBook(std::ostream& out, std::int32_t result, const ReferenceBook& book, bool pretty) {
    BookWriter(out, pretty).Write(result, book);
}

}  // namespace tool
