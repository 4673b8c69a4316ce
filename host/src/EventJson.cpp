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

nlohmann::json ToJson(const std::vector<Event>& events) {
    nlohmann::json array = nlohmann::json::array();
    for (const Event& event : events) array.push_back(ToJson(event));
    return array;
}

}  // namespace kelvra
