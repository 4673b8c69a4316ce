#include "XmlSwatchbookReader.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <new>
#include <type_traits>

#include "XmlSwatchbookHandler.h"
#include "formats/ReaderResult.h"
#include "formats/streams/OrvikSwatchbookStream.h"
#include "swatchbook/OrvikSwatchbook.h"
#include "swatchbook/ReferenceBook.h"

namespace formats {
namespace {

struct ParserFree {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserPtr = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserFree>;

template <typename Handler>
void XMLCALL OnCharacterData(void* userData, const XML_Char* data, int length);

// What the parser's callbacks reach. An exception must not unwind through
// the parser's C frames: the first one is kept, the parse stopped, and
// every later callback ignored.
template <typename Handler>
struct ParseContext {
    XML_Parser parser;
    Handler& handler;
    std::exception_ptr failure;
    bool textHandlerSet = false;

    // The parser is given a text handler only while the handler collects
    // text, so that the white space between elements reaches no callback.
    void FollowTextState() {
        const bool collects = !failure && handler.CollectsText();
        if (collects == textHandlerSet) return;
        XML_SetCharacterDataHandler(parser, collects ? OnCharacterData<Handler> : nullptr);
        textHandlerSet = collects;
    }

    template <typename Event>
    void Guard(Event event) {
        if (failure) return;
        try {
            event();
        } catch (...) {
            failure = std::current_exception();
            XML_StopParser(parser, XML_FALSE);
        }
    }
};

template <typename Handler>
void XMLCALL OnStartElement(void* userData, const XML_Char* name, const XML_Char** attributes) {
    auto& context = *static_cast<ParseContext<Handler>*>(userData);
    context.Guard([&] { context.handler.StartElement(name, attributes); });
    context.FollowTextState();
}

template <typename Handler>
void XMLCALL OnEndElement(void* userData, const XML_Char*) {
    auto& context = *static_cast<ParseContext<Handler>*>(userData);
    context.Guard([&] { context.handler.EndElement(); });
    context.FollowTextState();
}

template <typename Handler>
void XMLCALL OnCharacterData(void* userData, const XML_Char* data, int length) {
    auto& context = *static_cast<ParseContext<Handler>*>(userData);
    context.Guard([&] { context.handler.CharacterData(data, length); });
}

// Feeds the stream to the parser in chunks; the first short chunk is the
// last, so a document whose size is a multiple of the chunk ends with an
// empty final call. Nothing is read after the parser has failed.
bool FeedStream(XML_Parser parser, OrvikSwatchbookStream& stream, char* chunk) {
    for (;;) {
        std::int64_t got = stream.Read(chunk, kXmlFeedChunkSize);
        if (got < 0 || got > kXmlFeedChunkSize) got = 0;
        const bool last = got < kXmlFeedChunkSize;
        if (XML_Parse(parser, chunk, static_cast<int>(got), last ? XML_TRUE : XML_FALSE) != XML_STATUS_OK) {
            return false;
        }
        if (last) return true;
    }
}

}  // namespace

namespace {

// A template, so that a ReferenceBook is filled through direct calls.
template <typename Book>
std::int32_t ReadInto(OrvikSwatchbookStream& stream, Book& book, std::uint32_t flags) {
    book.BeginFill();

    using Handler = xml::XmlSwatchbookHandler<Book>;
    Handler handler(book, flags);
    const std::unique_ptr<char[]> chunk(new (std::nothrow) char[kXmlFeedChunkSize]);
    const ParserPtr parser(XML_ParserCreate(nullptr));
    if (!chunk || !parser) {
        book.EndFill();
        return kReadStreamNotOpen;
    }
    ParseContext<Handler> context{parser.get(), handler, nullptr};
    context.FollowTextState();
    XML_SetUserData(parser.get(), &context);
    XML_SetElementHandler(parser.get(), OnStartElement<Handler>, OnEndElement<Handler>);

    const bool accepted = FeedStream(parser.get(), stream, chunk.get());
    if (context.failure) std::rethrow_exception(context.failure);
    book.EndFill();
    return accepted ? kReadOK : kReadXmlParseError;
}

}  // namespace

std::int32_t ReadXmlSwatchbook(OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags) {
    if (stream.IsOpen() == 0) return kReadStreamNotOpen;
    if (auto* reference = dynamic_cast<ReferenceBook*>(&book)) return ReadInto(stream, *reference, flags);
    return ReadInto(stream, book, flags);
}

}  // namespace formats
