// What one import (a "KV Go" message) does to custom colours, so that the
// host can say afterwards what a user would otherwise not notice: a colour
// the document had before that the import gave another definition, and
// several swatches of the import showing one colour, which then all show
// its last definition.
#pragma once

#include <kelvra/Document.h>
#include <kelvra/DocumentList.h>
#include <kelvra/EventLog.h>
#include <kelvra/FlatPointerMap.h>

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
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

    // A set that holds one item for nearly every colour an import touches:
    // that one is kept in place, and a set is made only for a second.
    template <typename T>
    class Distinct {
    public:
        void Insert(const T& item) {
            if (!first_) first_ = item;
            else if (more_) more_->insert(item);
            else if (item != *first_) more_ = std::make_unique<std::set<T>>(std::set<T>{*first_, item});
        }
        std::size_t Size() const { return more_ ? more_->size() : first_ ? 1 : 0; }

    private:
        std::optional<T> first_;
        std::unique_ptr<std::set<T>> more_;
    };

    struct Watched {
        const CustomColor* color = nullptr;
        bool made = false;            // by this import
        bool redefined = false;       // by this import, having been there before
        KVCustomColor before{};       // when redefined: the definition the import found
        Distinct<DefinitionKey> definitions;  // given by this import
        Distinct<const Swatch*> swatches;
    };
    Watched& Entry(const CustomColor& color);
    void Reset(bool active);

    bool active_ = false;
    std::deque<Watched> watched_;  // grows without moving what it holds
    FlatPointerMap<const CustomColor*, std::size_t> index_;
};

}  // namespace kelvra
