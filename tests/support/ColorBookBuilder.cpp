#include "ColorBookBuilder.h"

#include "Utf16Text.h"

namespace testsupport {

namespace {

void Text(ByteWriter& out, const std::u16string& text) {
    out.U32(std::uint32_t(text.size())).Units(text);
}

}  // namespace

Bytes BuildColorBook(const ColorBookDescription& description) {
    ByteWriter out;
    out.Ascii(description.magic).U16(description.version).U16(description.bookId);
    Text(out, description.title);
    Text(out, description.prefix);
    Text(out, description.postfix);
    Text(out, description.copyright);
    out.U16(description.colorCount.value_or(std::uint16_t(description.records.size())))
        .U16(description.pageSize)
        .U16(description.pageKeyOffset)
        .U16(description.colorSpace);
    for (const ColorBookRecord& record : description.records) {
        out.U32(record.declaredNameLength.value_or(std::uint32_t(record.name.size()))).Units(record.name);
        std::string code = record.code;
        code.resize(6, '\0');
        out.Ascii(code);
        for (std::uint8_t component : record.components) out.U8(component);
    }
    out.Raw(description.trailer);
    return out.Data();
}

Bytes ColorBookTrailer(const std::string& mark) {
    return ByteWriter().Ascii("spfl").Ascii(mark).Data();
}

ColorBookDescription SampleColorBook() {
    ColorBookDescription book;
    book.bookId = 3002;
    book.title = U16("Sample Book");
    book.prefix = U16("P ");
    book.postfix = U16(" C");
    book.copyright = U16("(c) Tintora tests");
    book.pageSize = 7;
    book.pageKeyOffset = 3;
    book.colorSpace = kColorBookRGB;
    book.records = {
        {U16("Red 032"), "RED", {255, 0, 0}, {}},
        {U16(""), "", {0, 0, 0}, {}},
        {U16("Grün"), "123456", {0, 160, 64}, {}},
        {U16("$$$/Book/Sky=Sky"), "SKY", {90, 160, 255}, {}},
    };
    book.trailer = ColorBookTrailer("spot");
    return book;
}

ColorBookDescription NumberedSpotColorBook(const std::string& title, int colors) {
    ColorBookDescription book;
    book.title = U16(title);
    book.bookId = 3100;
    book.colorSpace = kColorBookCMYK;
    for (int i = 0; i < colors; ++i) {
        book.records.push_back({U16("Colour " + std::to_string(i)), std::to_string(i),
                                {std::uint8_t(i), std::uint8_t(i >> 8), std::uint8_t(i * 3), 7}, {}});
    }
    book.trailer = ColorBookTrailer("spot");
    return book;
}

}  // namespace testsupport
