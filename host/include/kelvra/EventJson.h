// The event log's JSON form: one object per event, with "type" ("alert",
// "question", "more-info", "usage") and the fields of that kind:
//   alert      {"type", "text", "key"}
//   question   {"type", "text", "key", "answer": true|false}
//   more-info  {"type", "text", "key", "helpKey", "number"}
//   usage      {"type", "category", "event", "detail": text or null}
//   custom-color-redefined  {"type", "document", "customColor", "old", "new"}
//   custom-color-shared     {"type", "document", "customColor", "swatches", "definitions"}
//   empty-swatch-name       {"type", "document", "group", "groupName", "swatch"}
// "key" is the localisation key the text was made from, "" for plain text;
// "old" and "new" are definitions {"kind", "values", "flags"} as in the
// document JSON; "group" and "swatch" count from 0.
#pragma once

#include "EventLog.h"

#include <nlohmann/json.hpp>

namespace kelvra {

nlohmann::json ToJson(const Event& event);
// The events in order, as an array (a log's are All()).
nlohmann::json ToJson(const std::vector<Event>& events);

}  // namespace kelvra
