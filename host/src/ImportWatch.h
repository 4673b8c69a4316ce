// What one import (a "KV Go" message) does to custom colours, so that the
// host can say afterwards what a user would otherwise not notice: a colour
// the document had before that the import gave another definition, and
// several swatches of the import showing one colour, which then all show
// its last definition.
#pragma once

#include <kelvra/Document.h>
#include <kelvra/DocumentList.h>
#include <kelvra/EventLog.h>

#include <array>
#include <cstdint>
#include <set>
#include <vector>

namespace kelvra {

class ImportWatch {
public:
    void Begin();
    // The suites report here; outside an import nothing is kept.
    void Made(CustomColor& color);
    void Redefined(CustomColor& color, const KVCustomColor& previous);
    void Shown(CustomColor& color, const Swatch& swatch);
    // The import's events, colour by colour in the order the import first
    // touched them; the watch stops.
    std::vector<Event> End(const DocumentList& documents);

private:
    // A definition compared bit for bit, so that NaN equals itself.
    using DefinitionKey = std::array<std::uint32_t, 6>;
    static DefinitionKey KeyOf(const KVCustomColor& definition);
    static constexpr std::uint32_t kNoDetails = ~std::uint32_t(0);

    // What nearly every colour of an import needs, kept small: an import
    // of a large book watches one colour per swatch while the document
    // grows. While the import has given a colour one definition only, that
    // is the colour's own definition, so none is kept here.
    struct Watched {
        const CustomColor* color = nullptr;
        const Swatch* firstSwatch = nullptr;  // the first of the import shown with it
        std::uint32_t details = kNoDetails;   // in details_, once there is more to know
        bool made = false;       // by this import
        bool redefined = false;  // by this import, having been there before
        bool defined = false;    // given a definition by this import (made or redefined)
    };
    // The rest, for the few colours an import redefines or shows in several
    // swatches.
    struct Details {
        KVCustomColor before{};                // when redefined: the definition the import found
        std::set<DefinitionKey> definitions;   // once the import gave more than one
        std::set<const Swatch*> swatches;      // once more than one showed it
    };
    Watched& Entry(CustomColor& color);
    Details& DetailsOf(Watched& watched);
    void Reset(bool active);

    bool active_ = false;
    std::uint64_t import_ = 0;      // the running import's number, the first 1
    std::vector<Watched> watched_;  // in the order the import first touched them
    std::vector<Details> details_;
};

}  // namespace kelvra
