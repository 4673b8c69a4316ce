// The state machine that turns the parser's element and text events of an
// XML swatchbook into calls on a swatch book.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "formats/streams/ByteBuffer.h"

class OrvikSwatchbook;
class ReferenceBook;

namespace formats::xml {

// More channels than any colour book uses; a colour whose format claims
// more is dropped, so a hostile channel count cannot demand gigabytes.
inline constexpr std::int32_t kMaxColorChannels = 256;

// A template on the book, instantiated for any book and for a
// ReferenceBook, which it fills through direct calls.
template <typename FilledBook>
class XmlSwatchbookHandler {
public:
    // `flags` are the reader's (XmlSwatchbookReader.h).
    XmlSwatchbookHandler(FilledBook& book, std::uint32_t flags);

    // `attributes` holds name/value pairs in document order, null-terminated.
    void StartElement(const char* name, const char** attributes);
    void EndElement();
    void CharacterData(const char* data, int length);
    // Whether character data arriving now is collected (inside a colour's
    // "C" and not in an element within it); all other text is ignored.
    bool CollectsText() const { return Top() == State::ColorText; }

private:
    enum class State : std::uint8_t {
        Skip = 1,
        Document = 2,
        Book = 3,
        Formats = 4,
        Format = 5,
        Swatches = 6,
        Swatch = 7,
        Alternate = 8,
        Spacer = 9,
        Pairs = 10,
        Pair = 11,
        ColorText = 13,
    };

    // Elements deeper than the stack are skipped; only the depth is counted.
    static constexpr std::size_t kStackSize = 256;

    State Top() const { return depth_ < kStackSize ? stack_[depth_] : State::Skip; }

    State StartInDocument(const char* name, const char** attributes);
    State StartInBook(const char* name) const;
    State StartInFormats(const char* name, const char** attributes);
    State StartInSwatches(const char* name, const char** attributes);
    State StartInSwatch(const char* name, const char** attributes);
    State StartInPairs(const char* name, const char** attributes);
    void EndColor();
    // `value` as UTF-16 in storage kept for the next one.
    const std::u16string& Utf16(std::string_view value);

    // A ReferenceBook takes a swatch's key and keeps nothing of it (its
    // SetSwatchKey is final), so for it the key is neither converted nor
    // handed over; and its formats' answers are kept (below).
    static constexpr bool kFillsReferenceBook = std::is_same_v<FilledBook, ReferenceBook>;

    FilledBook& book_;
    const bool keepKeys_;
    const bool keepSpacers_;
    std::array<State, kStackSize> stack_{};
    std::size_t depth_ = 0;
    ByteBuffer text_;
    bool textLost_ = false;  // the colour's text did not fit in memory
    std::int32_t currentSwatch_ = -1;
    std::int32_t currentColorFormat_ = 0;
    bool firstPairSeen_ = false;
    std::u16string utf16_;

    // A ReferenceBook's FindFormat answers from its format table alone, and
    // only this handler changes that table during a read: the answers for
    // the identifiers seen since the table last changed are kept, so that
    // each colour's format is neither converted nor searched for again.
    struct KnownFormat {
        char id[32];
        std::uint8_t size;
        std::int32_t format;
    };
    static constexpr std::size_t kMostKnownFormats = 16;
    // The format of identifier `id` (UTF-8, as the document gives it).
    std::int32_t FindFormat(std::string_view id);
    std::array<KnownFormat, kMostKnownFormats> knownFormats_{};
    std::size_t knownFormatCount_ = 0;
};

extern template class XmlSwatchbookHandler<OrvikSwatchbook>;
extern template class XmlSwatchbookHandler<ReferenceBook>;

}  // namespace formats::xml
