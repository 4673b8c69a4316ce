#include "XmlSwatchbookHandler.h"

#include <string_view>

#include "ColorText.h"
#include "XmlAttributeValues.h"
#include "XmlSwatchbookReader.h"
#include "swatchbook/OrvikSwatchbook.h"
#include "text/Utf8.h"

namespace formats::xml {

using kv::Utf8ToUtf16;

namespace {

// Calls apply(name, value) for each attribute in document order, the value
// already resolved by the localisation-key rule.
template <typename Apply>
void ForEachAttribute(const char** attributes, bool keepKeys, Apply apply) {
    for (; attributes[0] != nullptr; attributes += 2) {
        apply(std::string_view(attributes[0]), ResolveAttributeValue(attributes[1], keepKeys));
    }
}

// Room for the numbers of one colour in any encoding.
union ColorValues {
    std::uint8_t int8[XmlSwatchbookHandler::kMaxColorChannels];
    std::uint16_t int16[XmlSwatchbookHandler::kMaxColorChannels];
    double float64[XmlSwatchbookHandler::kMaxColorChannels];
};

}  // namespace

XmlSwatchbookHandler::XmlSwatchbookHandler(OrvikSwatchbook& book, std::uint32_t flags)
    : book_(book),
      keepKeys_((flags & kXmlSwatchbookKeepKeys) != 0),
      keepSpacers_((flags & kXmlSwatchbookKeepSpacers) != 0),
      text_(1, kReadChunkSize, kReadChunkSize) {
    stack_[0] = State::Document;
}

void XmlSwatchbookHandler::StartElement(const char* name, const char** attributes) {
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

void XmlSwatchbookHandler::EndElement() {
    const State ended = Top();
    --depth_;
    if (ended == State::ColorText && currentColorFormat_ >= 0) EndColor();
}

void XmlSwatchbookHandler::CharacterData(const char* data, int length) {
    if (Top() != State::ColorText || textLost_) return;
    if (text_.Append(data, length) == ByteBuffer::kAppendFailed) textLost_ = true;
}

XmlSwatchbookHandler::State XmlSwatchbookHandler::StartInDocument(const char* name, const char** attributes) {
    if (std::string_view(name) != "OrvikSwatchbook") return State::Skip;
    ForEachAttribute(attributes, keepKeys_, [this](std::string_view attribute, std::string_view value) {
        if (attribute == "Version") {
            book_.SetVersion(ParseDecimalInt(value));
        } else if (attribute == "Title") {
            book_.SetTitle(Utf16(value));
        } else if (attribute == "BookID") {
            book_.SetBookID(ParseDecimalInt(value));
        } else if (attribute == "Prefix") {
            book_.SetPrefix(Utf16(value));
        } else if (attribute == "Postfix") {
            book_.SetPostfix(Utf16(value));
        } else if (attribute == "Copyright") {
            book_.SetCopyright(Utf16(value));
        }
    });
    return State::Book;
}

XmlSwatchbookHandler::State XmlSwatchbookHandler::StartInBook(const char* name) const {
    const std::string_view element(name);
    if (element == "Formats") return State::Formats;
    if (element == "Swatches") return State::Swatches;
    if (element == "PrefixPostfixPairs") return State::Pairs;
    return State::Skip;
}

XmlSwatchbookHandler::State XmlSwatchbookHandler::StartInFormats(const char* name, const char** attributes) {
    if (std::string_view(name) == "Format") {
        const std::int32_t format = book_.AddFormat();
        ForEachAttribute(attributes, keepKeys_, [this, format](std::string_view attribute, std::string_view value) {
            if (attribute == "ID") {
                book_.SetFormatID(format, Utf16(value));
            } else if (attribute == "ColorSpace") {
                book_.SetFormatColorSpaceName(format, Utf16(value));
                book_.SetFormatColorSpace(format, ColorSpaceFromName(value));
            } else if (attribute == "Encoding") {
                book_.SetFormatEncoding(format, EncodingFromName(value));
            } else if (attribute == "Channels") {
                book_.SetFormatChannels(format, ParseDecimalInt(value));
            } else if (attribute == "Condition") {
                book_.SetFormatCondition(format, Utf16(value));
            }
        });
    }
    // Whatever else "Formats" holds is skipped like the inside of a format.
    return State::Format;
}

XmlSwatchbookHandler::State XmlSwatchbookHandler::StartInSwatches(const char* name, const char** attributes) {
    const std::string_view element(name);
    std::int32_t kind;
    if (element == "Sp") {
        kind = swatchbook::kSpotKind;
    } else if (element == "Pr") {
        kind = swatchbook::kGlobalKind;
    } else if (element == "Pl") {
        kind = swatchbook::kProcessKind;
    } else if (element == "Spacer") {
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
    ForEachAttribute(attributes, keepKeys_, [this](std::string_view attribute, std::string_view value) {
        if (attribute == "N") {
            book_.SetSwatchName(currentSwatch_, Utf16(value));
        } else if (attribute == "ID") {
            book_.SetSwatchKey(currentSwatch_, Utf16(value));
        }
    });
    return State::Swatch;
}

XmlSwatchbookHandler::State XmlSwatchbookHandler::StartInSwatch(const char* name, const char** attributes) {
    const std::string_view element(name);
    if (element == "C") {
        currentColorFormat_ = 0;
        ForEachAttribute(attributes, keepKeys_, [this](std::string_view attribute, std::string_view value) {
            if (attribute == "F") currentColorFormat_ = book_.FindFormat(Utf16(value));
        });
        text_.Clear();
        textLost_ = false;
        return State::ColorText;
    }
    if (element == "A") {
        currentColorFormat_ = 0;
        return State::Alternate;
    }
    return State::Skip;
}

XmlSwatchbookHandler::State XmlSwatchbookHandler::StartInPairs(const char* name, const char** attributes) {
    if (std::string_view(name) != "PrefixPostfixPair") return State::Skip;
    // Only the first pair names the book's affixes.
    if (!firstPairSeen_) {
        firstPairSeen_ = true;
        ForEachAttribute(attributes, keepKeys_, [this](std::string_view attribute, std::string_view value) {
            if (attribute == "Prefix") {
                book_.SetPrefix(Utf16(value));
            } else if (attribute == "Postfix") {
                book_.SetPostfix(Utf16(value));
            }
        });
    }
    return State::Pair;
}

const std::u16string& XmlSwatchbookHandler::Utf16(std::string_view value) {
    Utf8ToUtf16(value, utf16_);
    return utf16_;
}

void XmlSwatchbookHandler::EndColor() {
    const std::int32_t channels = book_.GetFormatChannels(currentColorFormat_);
    const std::int32_t encoding = book_.GetFormatEncoding(currentColorFormat_);
    if (channels < 1 || channels > kMaxColorChannels || textLost_) return;
    ColorValues values;
    const std::string_view text(reinterpret_cast<const char*>(text_.Data()), std::size_t(text_.Count()));
    ParseColorText(text, encoding, channels, &values);
    book_.SetSwatchValuesNative(currentSwatch_, currentColorFormat_, &values);
}

}  // namespace formats::xml
