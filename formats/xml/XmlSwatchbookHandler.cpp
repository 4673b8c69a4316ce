#include "XmlSwatchbookHandler.h"

#include <string_view>

#include "ColorText.h"
#include "XmlAttributeValues.h"
#include "XmlSwatchbookReader.h"
#include "swatchbook/OrvikSwatchbook.h"
#include "swatchbook/ReferenceBook.h"
#include "text/Utf8.h"

namespace formats::xml {

using kv::Utf8ToUtf16;

namespace {

// Whether the parser's zero-terminated `name` is `literal`, compared byte by
// byte up to the first difference, without measuring the name first.
template <std::size_t N>
bool NameIs(const char* name, const char (&literal)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
        if (name[i] != literal[i]) return false;
    }
    return true;
}

// An attribute's value, resolved by the localisation-key rule only when it
// is used, so that an attribute the book does not take costs nothing.
class AttributeValue {
public:
    AttributeValue(const char* text, bool keepKeys) : text_(text), keepKeys_(keepKeys) {}
    operator std::string_view() const { return ResolveAttributeValue(text_, keepKeys_); }

private:
    const char* text_;
    bool keepKeys_;
};

// Calls apply(name, value) for each attribute in document order.
template <typename Apply>
void ForEachAttribute(const char** attributes, bool keepKeys, Apply apply) {
    for (; attributes[0] != nullptr; attributes += 2) {
        apply(attributes[0], AttributeValue(attributes[1], keepKeys));
    }
}

// Room for the numbers of one colour in any encoding.
union ColorValues {
    std::uint8_t int8[kMaxColorChannels];
    std::uint16_t int16[kMaxColorChannels];
    double float64[kMaxColorChannels];
};

}  // namespace

template <typename FilledBook>
XmlSwatchbookHandler<FilledBook>::XmlSwatchbookHandler(FilledBook& book, std::uint32_t flags)
    : book_(book),
      keepKeys_((flags & kXmlSwatchbookKeepKeys) != 0),
      keepSpacers_((flags & kXmlSwatchbookKeepSpacers) != 0),
      text_(1, kReadChunkSize, kReadChunkSize) {
    stack_[0] = State::Document;
}

template <typename FilledBook>
void XmlSwatchbookHandler<FilledBook>::StartElement(const char* name, const char** attributes) {
    State child = State::Skip;
    switch (Top()) {
    case State::Document: child = StartInDocument(name, attributes); break;
    case State::Book: child = StartInBook(name); break;
    case State::Formats: child = StartInFormats(name, attributes); break;
    case State::Swatches: child = StartInSwatches(name, attributes); break;
    case State::Swatch: child = StartInSwatch(name, attributes); break;
    case State::Pairs: child = StartInPairs(name, attributes); break;
    default: break;
    }
    ++depth_;
    if (depth_ < kStackSize) stack_[depth_] = child;
}

template <typename FilledBook>
void XmlSwatchbookHandler<FilledBook>::EndElement() {
    const State ended = Top();
    --depth_;
    if (ended == State::ColorText && currentColorFormat_ >= 0) EndColor();
}

template <typename FilledBook>
void XmlSwatchbookHandler<FilledBook>::CharacterData(const char* data, int length) {
    if (Top() != State::ColorText || textLost_) return;
    if (text_.Append(data, length) == ByteBuffer::kAppendFailed) textLost_ = true;
}

template <typename FilledBook>
auto XmlSwatchbookHandler<FilledBook>::StartInDocument(const char* name, const char** attributes) -> State {
    if (!NameIs(name, "OrvikSwatchbook")) return State::Skip;
    ForEachAttribute(attributes, keepKeys_, [this](const char* attribute, AttributeValue value) {
        if (NameIs(attribute, "Version")) {
            book_.SetVersion(ParseDecimalInt(value));
        } else if (NameIs(attribute, "Title")) {
            book_.SetTitle(Utf16(value));
        } else if (NameIs(attribute, "BookID")) {
            book_.SetBookID(ParseDecimalInt(value));
        } else if (NameIs(attribute, "Prefix")) {
            book_.SetPrefix(Utf16(value));
        } else if (NameIs(attribute, "Postfix")) {
            book_.SetPostfix(Utf16(value));
        } else if (NameIs(attribute, "Copyright")) {
            book_.SetCopyright(Utf16(value));
        }
    });
    return State::Book;
}

template <typename FilledBook>
auto XmlSwatchbookHandler<FilledBook>::StartInBook(const char* name) const -> State {
    if (NameIs(name, "Formats")) return State::Formats;
    if (NameIs(name, "Swatches")) return State::Swatches;
    if (NameIs(name, "PrefixPostfixPairs")) return State::Pairs;
    return State::Skip;
}

template <typename FilledBook>
auto XmlSwatchbookHandler<FilledBook>::StartInFormats(const char* name, const char** attributes) -> State {
    if (NameIs(name, "Format")) {
        knownFormatCount_ = 0;  // the table changes
        const std::int32_t format = book_.AddFormat();
        ForEachAttribute(attributes, keepKeys_, [this, format](const char* attribute, AttributeValue value) {
            if (NameIs(attribute, "ID")) {
                book_.SetFormatID(format, Utf16(value));
            } else if (NameIs(attribute, "ColorSpace")) {
                book_.SetFormatColorSpaceName(format, Utf16(value));
                book_.SetFormatColorSpace(format, ColorSpaceFromName(value));
            } else if (NameIs(attribute, "Encoding")) {
                book_.SetFormatEncoding(format, EncodingFromName(value));
            } else if (NameIs(attribute, "Channels")) {
                book_.SetFormatChannels(format, ParseDecimalInt(value));
            } else if (NameIs(attribute, "Condition")) {
                book_.SetFormatCondition(format, Utf16(value));
            }
        });
    }
    // Whatever else "Formats" holds is skipped like the inside of a format.
    return State::Format;
}

template <typename FilledBook>
auto XmlSwatchbookHandler<FilledBook>::StartInSwatches(const char* name, const char** attributes) -> State {
    std::int32_t kind;
    if (NameIs(name, "Sp")) {
        kind = swatchbook::kSpotKind;
    } else if (NameIs(name, "Pr")) {
        kind = swatchbook::kGlobalKind;
    } else if (NameIs(name, "Pl")) {
        kind = swatchbook::kProcessKind;
    } else if (NameIs(name, "Spacer")) {
        if (keepSpacers_) {
            const std::int32_t spacer = book_.AddSwatch(-1);
            book_.SetSwatchKind(spacer, swatchbook::kEmptyPlaceKind);
        }
        return State::Spacer;
    } else {
        return State::Skip;
    }

    currentSwatch_ = book_.AddSwatch(-1);
    book_.SetSwatchKind(currentSwatch_, kind);
    ForEachAttribute(attributes, keepKeys_, [this](const char* attribute, AttributeValue value) {
        if (NameIs(attribute, "N")) {
            book_.SetSwatchName(currentSwatch_, Utf16(value));
        } else if (NameIs(attribute, "ID")) {
            if (!kFillsReferenceBook) book_.SetSwatchKey(currentSwatch_, Utf16(value));
        }
    });
    return State::Swatch;
}

template <typename FilledBook>
auto XmlSwatchbookHandler<FilledBook>::StartInSwatch(const char* name, const char** attributes) -> State {
    if (NameIs(name, "C")) {
        currentColorFormat_ = 0;
        ForEachAttribute(attributes, keepKeys_, [this](const char* attribute, AttributeValue value) {
            if (NameIs(attribute, "F")) currentColorFormat_ = FindFormat(value);
        });
        text_.Clear();
        textLost_ = false;
        return State::ColorText;
    }
    if (NameIs(name, "A")) {
        currentColorFormat_ = 0;
        return State::Alternate;
    }
    return State::Skip;
}

template <typename FilledBook>
auto XmlSwatchbookHandler<FilledBook>::StartInPairs(const char* name, const char** attributes) -> State {
    if (!NameIs(name, "PrefixPostfixPair")) return State::Skip;
    // Only the first pair names the book's affixes.
    if (!firstPairSeen_) {
        firstPairSeen_ = true;
        ForEachAttribute(attributes, keepKeys_, [this](const char* attribute, AttributeValue value) {
            if (NameIs(attribute, "Prefix")) {
                book_.SetPrefix(Utf16(value));
            } else if (NameIs(attribute, "Postfix")) {
                book_.SetPostfix(Utf16(value));
            }
        });
    }
    return State::Pair;
}

template <typename FilledBook>
std::int32_t XmlSwatchbookHandler<FilledBook>::FindFormat(std::string_view id) {
    if constexpr (kFillsReferenceBook) {
        for (std::size_t i = 0; i < knownFormatCount_; ++i) {
            const KnownFormat& known = knownFormats_[i];
            if (std::string_view(known.id, known.size) == id) return known.format;
        }
    }
    const std::int32_t format = book_.FindFormat(Utf16(id));
    if constexpr (kFillsReferenceBook) {
        if (knownFormatCount_ < kMostKnownFormats && id.size() <= sizeof(KnownFormat::id)) {
            KnownFormat& known = knownFormats_[knownFormatCount_++];
            id.copy(known.id, id.size());
            known.size = std::uint8_t(id.size());
            known.format = format;
        }
    }
    return format;
}

template <typename FilledBook>
const std::u16string& XmlSwatchbookHandler<FilledBook>::Utf16(std::string_view value) {
    Utf8ToUtf16(value, utf16_);
    return utf16_;
}

template <typename FilledBook>
void XmlSwatchbookHandler<FilledBook>::EndColor() {
    const std::int32_t channels = book_.GetFormatChannels(currentColorFormat_);
    const std::int32_t encoding = book_.GetFormatEncoding(currentColorFormat_);
    if (channels < 1 || channels > kMaxColorChannels || textLost_) return;
    ColorValues values;
    const std::string_view text(reinterpret_cast<const char*>(text_.Data()), std::size_t(text_.Count()));
    ParseColorText(text, encoding, channels, &values);
    book_.SetSwatchValuesNative(currentSwatch_, currentColorFormat_, &values);
}

template class XmlSwatchbookHandler<OrvikSwatchbook>;
template class XmlSwatchbookHandler<ReferenceBook>;

}  // namespace formats::xml
