// What a user of the host would have seen: alerts, questions and the answers
// given, error dialogs with a More Info button, and usage events.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelvra {

struct Event {
    enum class Kind { Alert, Question, MoreInfo, Usage };
    Kind kind = Kind::Alert;
    // Alert, Question, MoreInfo: the message as shown, and the localisation
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
};

// "alert", "question", "more-info", "usage".
const char* KindName(Event::Kind kind);

// One line, tabs and line breaks written as \t and \n, for example
//   alert: The selection is not valid for this operation.
//   question: Continue? -> yes
//   more-info 2102: An unknown error occurred. [help: $$$/Kelvra/...]
//   usage: Error Dialog with More Info Button / kCantHappenErr / TintoraPlugin
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
