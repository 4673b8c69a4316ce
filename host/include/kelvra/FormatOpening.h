// Opening a file through the registered file formats, as the host's open
// and place commands do: the file is offered with "KV Check" to every
// registered format in the order registered, and "KV Go" goes to the first
// that answered 0, reading into its document made current first.
// kelvra-host import and "KV Path Style Suite" 5 both open files so.
#pragma once

#include "Document.h"

#include <ZPTypes.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelvra {

struct FormatMessage {
    std::string format;  // the registered format's name
    ZPErr result = 0;
};

struct FormatOpening {
    std::vector<FormatMessage> checks;  // "KV Check" to every registered format
    std::optional<FormatMessage> go;    // "KV Go" to the first that accepted; none when none did
    Document* document = nullptr;       // the document Go read into
};

// Where the file goes: placed into an open document
// (kKVFileFormatImportOption, which "KV Check" is told too), or else into
// a new document that `newDocument` makes once a format has accepted
// (kKVFileFormatReadOption).
struct FormatTarget {
    Document* placeInto = nullptr;
    std::function<Document&()> newDocument;
};

}  // namespace kelvra
