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

void ImportWatch::Begin() {
    Reset(true);
    ++import_;
}

void ImportWatch::Reset(bool active) {
    watched_.clear();
    details_.clear();
    active_ = active;
}

ImportWatch::Watched& ImportWatch::Entry(CustomColor& color) {
    // The colour's own mark finds its entry; the entry's address tells a
    // copy of a watched colour, which carries the mark along, from it.
    if (color.watchedBy == import_ && watched_[color.watchEntry].color == &color) return watched_[color.watchEntry];
    Watched& watched = watched_.emplace_back();
    watched.color = &color;
    color.watchedBy = import_;
    color.watchEntry = std::uint32_t(watched_.size() - 1);
    return watched;
}

ImportWatch::Details& ImportWatch::DetailsOf(Watched& watched) {
    if (watched.details == kNoDetails) {
        details_.emplace_back();
        watched.details = std::uint32_t(details_.size() - 1);
    }
    return details_[watched.details];
}

void ImportWatch::Made(CustomColor& color) {
    if (!active_) return;
    Watched& watched = Entry(color);
    watched.made = true;
    watched.defined = true;
}

void ImportWatch::Redefined(CustomColor& color, const KVCustomColor& previous) {
    if (!active_) return;
    Watched& watched = Entry(color);
    if (!watched.made && !watched.redefined) {
        DetailsOf(watched).before = previous;
        watched.redefined = true;
    }
    if (!watched.defined) {
        watched.defined = true;
        return;
    }
    const DefinitionKey now = KeyOf(color.definition);
    if (watched.details == kNoDetails || details_[watched.details].definitions.empty()) {
        // One definition so far: the one the colour had until now.
        const DefinitionKey before = KeyOf(previous);
        if (before == now) return;
        DetailsOf(watched).definitions = {before, now};
    } else {
        details_[watched.details].definitions.insert(now);
    }
}

void ImportWatch::Shown(CustomColor& color, const Swatch& swatch) {
    if (!active_) return;
    Watched& watched = Entry(color);
    if (watched.firstSwatch == nullptr) {
        watched.firstSwatch = &swatch;
    } else if (watched.details != kNoDetails && !details_[watched.details].swatches.empty()) {
        details_[watched.details].swatches.insert(&swatch);
    } else if (&swatch != watched.firstSwatch) {
        DetailsOf(watched).swatches = {watched.firstSwatch, &swatch};
    }
}

std::vector<Event> ImportWatch::End(const DocumentList& documents) {
    std::vector<Event> events;
    for (const Watched& watched : watched_) {
        // Only a colour with details has anything to tell.
        if (watched.details == kNoDetails) continue;
        const Details& details = details_[watched.details];
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
        if (watched.redefined && KeyOf(details.before) != KeyOf(color.definition)) {
            Event& event = about(Event::Kind::CustomColorRedefined);
            event.before = details.before;
            event.after = color.definition;
        }
        if (details.swatches.size() > 1) {
            Event& event = about(Event::Kind::CustomColorShared);
            event.swatches = std::int32_t(details.swatches.size());
            event.definitions = std::int32_t(!details.definitions.empty() ? details.definitions.size()
                                             : watched.defined                ? 1
                                                                              : 0);
        }
    }
    Reset(false);
    return events;
}

}  // namespace kelvra
