// What a user of the host would have seen: alerts, questions and the answers
// given, error dialogs with a More Info button and usage events, all as the
// module passed them; and what the host itself sees happen to a document's
// swatches that the user would otherwise not notice.
#pragma once

#include <KVSwatchSuites.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kelvra {

struct Event {
    enum class Kind {
        Alert,
        Question,
        MoreInfo,
        Usage,
        // Seen by the host: an import replaced the definition of a custom
        // colour the document had before it.
        CustomColorRedefined,
        // Seen by the host: several swatches of one import show one custom
        // colour (all of them its last definition).
        CustomColorShared,
        // Seen by the host: a swatch was given an empty name.
        EmptySwatchName,
    };
    Kind kind = Kind::Alert;
    // Alert, Question, MoreInfo: the message as passed, and the localisation
    // key it was made from (empty when it was plain text).
    std::string text;
    std::string key;
    bool answer = false;   // Question: true for yes
    std::string helpKey;   // MoreInfo: the key of the help page's address
    std::int32_t number = 0;  // MoreInfo: the dialog's number
    std::string category;  // Usage
    std::string event;     // Usage
    std::string detail;    // Usage; empty when none was given
    bool hasDetail = false;
    std::string document;     // the host-seen kinds: the document's name
    std::string customColor;  // CustomColorRedefined, CustomColorShared: the colour's name
    KVCustomColor before{};   // CustomColorRedefined: the definition before the import
    KVCustomColor after{};    // CustomColorRedefined: and after it
    std::int32_t swatches = 0;     // CustomColorShared: the import's swatches that show it
    std::int32_t definitions = 0;  // CustomColorShared: the different definitions the import gave it
    std::int32_t group = 0;        // EmptySwatchName: the group's index (0: the default group)
    std::string groupName;         // EmptySwatchName
    std::int32_t swatch = 0;       // EmptySwatchName: the swatch's index in its group
};

// "alert", "question", "more-info", "usage", "custom-color-redefined",
// "custom-color-shared", "empty-swatch-name".
const char* KindName(Event::Kind kind);

// One line with the texts as passed, tabs and line breaks written as \t and
// \n, for example
//   alert: The selection is not valid for this operation.
//   question: Continue? -> yes
//   more-info 2102: An unknown error occurred. [help: $$$/Kelvra/...]
//   usage: Error Dialog with More Info Button / kCantHappenErr / TintoraPlugin
//   custom-color-redefined: "Red" in "Untitled": rgb 1 0 0, spot -> rgb 0.8 0 0, spot
//   custom-color-shared: "Untitled" in "x.ose": 3 swatches, 2 definitions
//   empty-swatch-name: "x.ose" group 1 swatch 0
std::string ReadableLine(const Event& event);

class EventLog {
public:
    void Add(Event event) { events_.push_back(std::move(event)); }
    const std::vector<Event>& All() const { return events_; }
    std::size_t Count(Event::Kind kind) const;
    void Clear() { events_.clear(); }

private:
    std::vector<Event> events_;
};

}  // namespace kelvra
