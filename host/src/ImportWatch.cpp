#include "ImportWatch.h"

#include "UnicodeText.h"

#include <kelvra/DocumentJson.h>

#include <bit>

namespace kelvra {

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
    watched.definitions.Insert(KeyOf(color.definition));
}

void ImportWatch::Redefined(const CustomColor& color, const KVCustomColor& previous) {
    if (!active_) return;
    Watched& watched = Entry(color);
    if (!watched.made && !watched.redefined) {
        watched.redefined = true;
        watched.before = previous;
    }
    watched.definitions.Insert(KeyOf(color.definition));
}

void ImportWatch::Shown(const CustomColor& color, const Swatch& swatch) {
    if (active_) Entry(color).swatches.Insert(&swatch);
}

std::vector<Event> ImportWatch::End(const DocumentList& documents) {
    std::vector<Event> events;
    for (const Watched& watched : watched_) {
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
        if (watched.swatches.Size() > 1) {
            Event& event = about(Event::Kind::CustomColorShared);
            event.swatches = std::int32_t(watched.swatches.Size());
            event.definitions = std::int32_t(watched.definitions.Size());
        }
    }
    Reset(false);
    return events;
}

}  // namespace kelvra
