// The documents of an import as a swatch sheet (kelvra-host import --sheet):
// one book per document, titled by its name, with its groups and swatches
// as the host keeps them.
#pragma once

#include <nlohmann/json.hpp>

#include "SwatchSheet.h"

namespace kelvra::cli {

// From the documents' JSON form (DocumentJson.h), in order. A direct colour
// is a process swatch; a custom colour's swatch is spot or global by the
// colour's flags, at the swatch's tint. Values are the host's own: gray as
// ink, as the readable output shows them.
sheet::Sheet DocumentsSheet(const nlohmann::json& documents);

}  // namespace kelvra::cli
