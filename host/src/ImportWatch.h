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
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kelvra {

class ImportWatch {
public:
    void Begin();
    // The suites report here; outside an import nothing is kept.
    void Made(const CustomColor& color);
    void Redefined(const CustomColor& color, const KVCustomColor& previous);
    void Shown(const CustomColor& color, const Swatch& swatch);
    // The import's events, colour by colour in the order the import first
    // touched them; the watch stops.
    std::vector<Event> End(const DocumentList& documents);

private:
    // A definition compared bit for bit, so that NaN equals itself.
    using DefinitionKey = std::array<std::uint32_t, 6>;
    static DefinitionKey KeyOf(const KVCustomColor& definition);

    struct Watched {
        const CustomColor* color = nullptr;
        bool made = false;            // by this import
        bool redefined = false;       // by this import, having been there before
        KVCustomColor before{};       // when redefined: the definition the import found
        std::set<DefinitionKey> definitions;  // given by this import
        std::unordered_set<const Swatch*> swatches;
    };
    Watched& Entry(const CustomColor& color);
    void Reset(bool active);

    bool active_ = false;
    std::vector<Watched> watched_;
    std::unordered_map<const CustomColor*, std::size_t> index_;
};

}  // namespace kelvra
