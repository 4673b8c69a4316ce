#include <kelvra/EventJson.h>

namespace kelvra {

nlohmann::json ToJson(const Event& event) {
    nlohmann::json json = {{"type", KindName(event.kind)}};
    switch (event.kind) {
    case Event::Kind::Alert:
        json["text"] = event.text;
        json["key"] = event.key;
        break;
    case Event::Kind::Question:
        json["text"] = event.text;
        json["key"] = event.key;
        json["answer"] = event.answer;
        break;
    case Event::Kind::MoreInfo:
        json["text"] = event.text;
        json["key"] = event.key;
        json["helpKey"] = event.helpKey;
        json["number"] = event.number;
        break;
    case Event::Kind::Usage:
        json["category"] = event.category;
        json["event"] = event.event;
        json["detail"] = event.hasDetail ? nlohmann::json(event.detail) : nlohmann::json(nullptr);
        break;
    }
    return json;
}

nlohmann::json ToJson(const EventLog& log) {
    nlohmann::json events = nlohmann::json::array();
    for (const Event& event : log.All()) events.push_back(ToJson(event));
    return events;
}

}  // namespace kelvra
