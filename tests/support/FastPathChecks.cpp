#include "FastPathChecks.h"

#include <cstring>
#include <vector>

#include "ForwardingBook.h"
#include "Utf16Text.h"
#include "swatchbook/ColorValueConversion.h"
#include "swatchbook/ReferenceBook.h"

namespace testsupport {

namespace {

std::string Number(std::int64_t value) { return std::to_string(value); }

// A name as it can be shown in a message: its code units in hexadecimal.
std::string Units(const std::u16string& text) {
    static const char kHex[] = "0123456789abcdef";
    std::string shown = "[";
    for (char16_t unit : text) {
        if (shown.size() > 1) shown += ' ';
        for (int shift = 12; shift >= 0; shift -= 4) shown += kHex[(unit >> shift) & 0xF];
    }
    return shown + "]";
}

// Names to look up that are made from one swatch name: as it is, in full,
// with the quirks' codes, shorter, longer and with a zero unit in it.
std::vector<std::u16string> NamesAround(const std::u16string& name, const std::u16string& prefix,
                                        const std::u16string& postfix) {
    const std::u16string full = prefix + name + postfix;
    std::vector<std::u16string> names = {name, full, full + u"CVU", full + u"CVC", prefix + name + u"CVU",
                                         prefix + name + u"CVC", name + u'\0', full + u'\0' + postfix,
                                         name + std::u16string(40, u'x')};
    if (!name.empty()) {
        names.push_back(name.substr(0, name.size() - 1));
        names.push_back(prefix + name.substr(0, name.size() - 1) + postfix);
        std::u16string withZero = full;
        withZero.insert(prefix.size() + name.size() / 2, 1, u'\0');
        names.push_back(withZero);
    }
    if (full.size() >= 1) {
        const std::u16string stem = full.substr(0, full.size() - 1);
        names.push_back(stem + u"CVU");
        names.push_back(stem + u"CVC");
    }
    return names;
}

}  // namespace

std::string ConversionDifference(std::int32_t colorSpace, std::int32_t sourceEncoding, std::int32_t targetEncoding,
                                 const std::uint8_t* source) {
    // Both targets start out alike, so that bytes one path leaves alone
    // must be left alone by the other as well.
    std::uint8_t fast[40];
    std::uint8_t plain[40];
    std::memset(fast, 0xA5, sizeof fast);
    std::memset(plain, 0xA5, sizeof plain);
    const bool fastResult = swatchbook::ConvertColorValues(colorSpace, sourceEncoding, source, targetEncoding, fast);
    const bool plainResult =
        swatchbook::ConvertColorValuesByRule(colorSpace, sourceEncoding, source, targetEncoding, plain);
    if (fastResult == plainResult && std::memcmp(fast, plain, sizeof fast) == 0) return {};
    std::string difference = "conversion of colour space " + Number(colorSpace) + " from encoding " +
                             Number(sourceEncoding) + " to " + Number(targetEncoding) + ": answers " +
                             Number(fastResult) + " and " + Number(plainResult) + "; bytes";
    for (std::size_t i = 0; i < sizeof fast; ++i) {
        if (fast[i] != plain[i]) difference += " [" + Number(std::int64_t(i)) + "] " + Number(fast[i]) + "/" +
                                               Number(plain[i]);
    }
    return difference;
}

std::string AnyConversionDifference(const std::uint8_t* source) {
    for (std::int32_t colorSpace = 0; colorSpace <= 7; ++colorSpace) {
        for (std::int32_t from = 0; from <= 4; ++from) {
            for (std::int32_t to = 0; to <= 4; ++to) {
                std::string difference = ConversionDifference(colorSpace, from, to, source);
                if (!difference.empty()) return difference;
            }
        }
    }
    return {};
}

std::string FindSwatchDifference(const ReferenceBook& book, const std::u16string& name) {
    for (bool strip : {false, true}) {
        for (bool quirks : {false, true}) {
            const std::int32_t fast = book.FindSwatch(name, strip, quirks);
            // From position 0 the base's search asks GetSwatchName for each swatch.
            const std::int32_t plain = book.FindSwatch(name, strip, quirks, 0);
            if (fast != plain) {
                return "FindSwatch of " + Units(name) + " with stripping " + Number(strip) + " and quirks " +
                       Number(quirks) + " in book " + Number(book.GetBookID()) + ": " + Number(fast) + " and " +
                       Number(plain);
            }
        }
    }
    return {};
}

std::string FindFormatDifference(const OrvikSwatchbookFormat& book, const std::u16string& id) {
    const std::int32_t fast = book.FindFormat(id);
    const std::int32_t plain = book.OrvikSwatchbook::FindFormat(id);
    if (fast == plain) return {};
    return "FindFormat of " + Units(id) + ": " + Number(fast) + " and " + Number(plain);
}

std::string SwatchLookupDifference(ReferenceBook& book, std::int32_t swatch) {
    const std::int32_t bookId = book.GetBookID();
    const std::vector<std::u16string> names =
        NamesAround(book.GetSwatchName(swatch, false), book.GetPrefix(), book.GetPostfix());
    std::string difference;
    for (std::int32_t quirkBook : {bookId, 3002, 3005}) {
        book.SetBookID(quirkBook);
        for (const std::u16string& name : names) {
            difference = FindSwatchDifference(book, name);
            if (!difference.empty()) break;
        }
        if (!difference.empty()) break;
    }
    book.SetBookID(bookId);
    return difference;
}

std::string FormatLookupDifference(const ReferenceBook& book, std::int32_t format) {
    for (const std::u16string& id : {book.GetFormatID(format, false), book.GetFormatID(format, true),
                                     U16(std::to_string(format)), U16(std::to_string(format) + "0"),
                                     book.GetFormatID(format, false) + u'\0'}) {
        std::string difference = FindFormatDifference(book, id);
        if (!difference.empty()) return difference;
    }
    return {};
}

std::string LookupDifferences(ReferenceBook& book) {
    for (std::int32_t swatch = 0; swatch < book.CountSwatches(); ++swatch) {
        std::string difference = SwatchLookupDifference(book, swatch);
        if (!difference.empty()) return difference;
    }
    for (std::int32_t format = 0; format < book.CountFormats(); ++format) {
        std::string difference = FormatLookupDifference(book, format);
        if (!difference.empty()) return difference;
    }
    return {};
}

namespace {

std::string StringDifference(const char* what, const std::u16string& fast, const std::u16string& plain) {
    return fast == plain ? std::string() : std::string(what) + ": " + Units(fast) + " and " + Units(plain);
}

std::string NumberDifference(const char* what, std::int64_t fast, std::int64_t plain) {
    return fast == plain ? std::string() : std::string(what) + ": " + Number(fast) + " and " + Number(plain);
}

// The first difference of two books' properties, formats and records.
std::string BookDifference(const ReferenceBook& fast, const ReferenceBook& plain) {
    for (const std::string& difference : {
             NumberDifference("version", fast.GetVersion(), plain.GetVersion()),
             NumberDifference("page size", fast.GetPageSize(), plain.GetPageSize()),
             NumberDifference("page key offset", fast.GetPageKeyOffset(), plain.GetPageKeyOffset()),
             NumberDifference("book id", fast.GetBookID(), plain.GetBookID()),
             StringDifference("title", fast.GetTitle(), plain.GetTitle()),
             StringDifference("copyright", fast.GetCopyright(), plain.GetCopyright()),
             StringDifference("prefix", fast.GetPrefix(), plain.GetPrefix()),
             StringDifference("postfix", fast.GetPostfix(), plain.GetPostfix()),
             NumberDifference("formats", fast.CountFormats(), plain.CountFormats()),
             NumberDifference("swatches", fast.CountSwatches(), plain.CountSwatches()),
         }) {
        if (!difference.empty()) return difference;
    }
    for (std::int32_t f = 0; f < fast.CountFormats(); ++f) {
        for (const std::string& difference : {
                 NumberDifference("format colour space", fast.GetFormatColorSpace(f), plain.GetFormatColorSpace(f)),
                 NumberDifference("format encoding", fast.GetFormatEncoding(f), plain.GetFormatEncoding(f)),
                 NumberDifference("format channels", fast.GetFormatChannels(f), plain.GetFormatChannels(f)),
                 StringDifference("format condition", fast.GetFormatCondition(f), plain.GetFormatCondition(f)),
                 StringDifference("format colour space name", fast.GetFormatColorSpaceName(f, false),
                                  plain.GetFormatColorSpaceName(f, false)),
                 StringDifference("format id", fast.GetFormatID(f, false), plain.GetFormatID(f, false)),
             }) {
            if (!difference.empty()) return "format " + Number(f) + ": " + difference;
        }
    }
    for (std::int32_t i = 0; i < fast.CountSwatches(); ++i) {
        if (std::memcmp(&fast.GetSwatchRecord(i), &plain.GetSwatchRecord(i), sizeof(ReferenceSwatch)) != 0) {
            return "record of swatch " + Number(i);
        }
    }
    return {};
}

}  // namespace

std::string FilledBookDifference(const std::function<std::int32_t(OrvikSwatchbook&)>& read) {
    ReferenceBook fast;
    ReferenceBook plain;
    ForwardingBook hidden(plain);
    const std::int32_t fastResult = read(fast);
    const std::int32_t plainResult = read(hidden);
    if (fastResult != plainResult) return NumberDifference("reader result", fastResult, plainResult);
    const std::string difference = BookDifference(fast, plain);
    return difference.empty() ? std::string() : "filled books differ in " + difference;
}

}  // namespace testsupport
