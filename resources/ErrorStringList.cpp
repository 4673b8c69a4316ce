// The module's string list 16050: the messages of the error report, as
// pairs of a code entry and its message. A code entry is a decimal number or
// a four-character code; the last pair is the fallback for every other code,
// whose "%s" receives the code.
#include "ResourceImage.h"
#include "ZPStringList.h"

namespace {

constexpr std::string_view kMemoryMessage =
    "$$$/CppPlugin/STR/Memory=The operation cannot complete because there isn't enough memory (RAM) available.";

constexpr std::string_view kStrings[] = {
    "-108", kMemoryMessage,
    "271", kMemoryMessage,
    "!MEM", kMemoryMessage,
    "NESS", "$$$/CppPlugin/STR/Layer=The operation cannot complete because a layer is locked or invisible.",
    "SEGM", "$$$/CppPlugin/STR/AnchorPoints=The operation cannot complete because a path has too many anchor points.",
    "!sel", "$$$/CppPlugin/STR/Selection=The selection is not valid for this operation.",
    "DOC?", "$$$/CppPlugin/STR/OpenDoc=The operation cannot complete because there is no open document.",
    "~VAT", "$$$/CppPlugin/STR/Insertion=The operation cannot complete because an art object was of a type not "
            "allowed by the destination container.",
    "NEST", "$$$/CppPlugin/STR/ObjectDepth=This layer is 29 sub-levels deep. Actions like new layer, group, "
            "clipping, etc. cannot be performed at this layer level. Reduce or merge existing layers in this "
            "hierarchy to continue.",
    "<Others>", "$$$/CppPlugin/STR/Unknown=The operation cannot complete because of an unknown error.   [%s] ",
};

constexpr std::size_t StringListSize() {
    std::size_t size = 2;
    for (std::string_view text : kStrings) size += 2 + text.size();
    return size;
}

constexpr auto BuildStringList() {
    resources::ResourceImage<StringListSize()> image;
    image.Put16(static_cast<std::uint16_t>(std::size(kStrings)));
    for (std::string_view text : kStrings) {
        image.Put16(static_cast<std::uint16_t>(text.size()));
        image.PutBytes(text);
    }
    return image;
}

constexpr auto kStringListImage = BuildStringList();

__attribute__((section(kZPStringListSectionPrefix "16050"), used)) constexpr auto kErrorStringList =
    kStringListImage.Bytes();

}  // namespace
