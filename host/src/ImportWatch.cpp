#include "ImportWatch.h"

#include "UnicodeText.h"

#include <kelvra/DocumentJson.h>

#include <algorithm>
#include <bit>
#include <functional>

namespace kelvra {

namespace {

// How many different items there are; sorts them and drops the repeats.
template <typename T>
std::size_t DistinctCount(std::vector<T>& items) {
    std::sort(items.begin(), items.end(), std::less<>());  // a total order for pointers too
    items.erase(std::unique(items.begin(), items.end()), items.end());
    return items.size();
}

}  // namespace

ImportWatch::DefinitionKey ImportWatch::KeyOf(const KVCustomColor& definition) {
    const DefinitionValues values = ValuesOf(definition);
    DefinitionKey key{std::uint32_t(definition.kind), definition.flags};
    for (std::size_t i = 0; i < values.count; ++i) key[2 + i] = std::bit_cast<std::uint32_t>(values.values[i]);
    return key;
}

void ImportWatch::Begin() { Reset(true); }

void ImportWatch::Reset(bool active) {
    watched_.clear();
    index_.Clear();
    active_ = active;
}

ImportWatch::Watched& ImportWatch::Entry(const CustomColor& color) {
    if (const std::size_t* at = index_.Find(&color)) return watched_[*at];
    watched_.emplace_back().color = &color;
    index_.Emplace(&color, watched_.size() - 1);
    return watched_.back();
}

void ImportWatch::Made(const CustomColor& color) {
    if (!active_) return;
    Watched& watched = Entry(color);
    watched.made = true;
    watched.definitions.push_back(KeyOf(color.definition));
}

void ImportWatch::Redefined(const CustomColor& color, const KVCustomColor& previous) {
    if (!active_) return;
    Watched& watched = Entry(color);
    if (!watched.made && !watched.redefined) {
        watched.redefined = true;
        watched.before = previous;
    }
    watched.definitions.push_back(KeyOf(color.definition));
}

void ImportWatch::Shown(const CustomColor& color, const Swatch& swatch) {
    if (active_) Entry(color).swatches.push_back(&swatch);
}

std::vector<Event> ImportWatch::End(const DocumentList& documents) {
    std::vector<Event> events;
    for (Watched& watched : watched_) {
        // Colours outlive the import unless their document was closed.
        const Document* document = documents.OwnerOf(HandleOf(*watched.color));
        if (document == nullptr) continue;
        const CustomColor& color = *watched.color;
        const auto about = [&](Event::Kind kind) -> Event& {
            Event& event = events.emplace_back();
            event.kind = kind;
            event.document = document->Name();
            event.customColor = Utf16ToUtf8(color.name);
            return event;
        };
        if (watched.redefined && KeyOf(watched.before) != KeyOf(color.definition)) {
            Event& event = about(Event::Kind::CustomColorRedefined);
            event.before = watched.before;
            event.after = color.definition;
        }
        const std::size_t swatches = DistinctCount(watched.swatches);
        if (swatches > 1) {
            Event& event = about(Event::Kind::CustomColorShared);
            event.swatches = std::int32_t(swatches);
            event.definitions = std::int32_t(DistinctCount(watched.definitions));
        }
    }
    Reset(false);
    return events;
}

}  // namespace kelvra
