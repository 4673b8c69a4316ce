#include <kelvra/DocumentJson.h>
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
    case Event::Kind::CustomColorRedefined:
        json["document"] = event.document;
        json["customColor"] = event.customColor;
        json["old"] = ToJson(event.before);
        json["new"] = ToJson(event.after);
        break;
    case Event::Kind::CustomColorShared:
        json["document"] = event.document;
        json["customColor"] = event.customColor;
        json["swatches"] = event.swatches;
        json["definitions"] = event.definitions;
        break;
    case Event::Kind::EmptySwatchName:
        json["document"] = event.document;
        json["group"] = event.group;
        json["groupName"] = event.groupName;
        json["swatch"] = event.swatch;
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
