#include <kelvra/EventJson.h>
#include <kelvra/EventLog.h>

#include <gtest/gtest.h>

namespace {

using kelvra::Event;

Event Alert(std::string text) {
    Event e;
    e.kind = Event::Kind::Alert;
    e.text = std::move(text);
    return e;
}

TEST(EventLogTest, ReadableLinesKeepEachEventOnOneLine) {
    EXPECT_EQ(kelvra::ReadableLine(Alert("Two\nlines\tand a tab")), "alert: Two\\nlines\\tand a tab");
    Event question;
    question.kind = Event::Kind::Question;
    question.text = "Go on?";
    question.answer = false;
    EXPECT_EQ(kelvra::ReadableLine(question), "question: Go on? -> no");
    Event moreInfo;
    moreInfo.kind = Event::Kind::MoreInfo;
    moreInfo.text = "Out of memory";
    moreInfo.helpKey = "$$$/Kelvra/app/RAMError/OnClickURL";
    moreInfo.number = 2103;
    EXPECT_EQ(kelvra::ReadableLine(moreInfo), "more-info 2103: Out of memory [help: $$$/Kelvra/app/RAMError/OnClickURL]");
    Event usage;
    usage.kind = Event::Kind::Usage;
    usage.category = "Error Dialog with More Info Button";
    usage.event = "kCantHappenErr";
    EXPECT_EQ(kelvra::ReadableLine(usage), "usage: Error Dialog with More Info Button / kCantHappenErr");
    usage.hasDetail = true;
    usage.detail = "TintoraPlugin";
    EXPECT_EQ(kelvra::ReadableLine(usage), "usage: Error Dialog with More Info Button / kCantHappenErr / TintoraPlugin");
}

TEST(EventLogTest, WhatTheHostSawReadsOnOneLineWithTheValuesAsStored) {
    Event redefined;
    redefined.kind = Event::Kind::CustomColorRedefined;
    redefined.document = "Untitled";
    redefined.customColor = "Red";
    redefined.before.kind = kKVCustomThreeColor;
    redefined.before.c.three = {1, 0, 0};
    redefined.before.flags = kKVCustomSpotColor;
    redefined.after.kind = kKVCustomLabColor;
    redefined.after.c.lab = {50, -20.5f, 30};
    redefined.after.flags = kKVCustomRegistrationColor;
    EXPECT_EQ(kelvra::ReadableLine(redefined),
              "custom-color-redefined: \"Red\" in \"Untitled\": rgb 1 0 0, spot -> lab 50 -20.5 30, global, "
              "registration");
    EXPECT_EQ(kelvra::ToJson(redefined), nlohmann::json::parse(R"({
        "type": "custom-color-redefined", "document": "Untitled", "customColor": "Red",
        "old": {"kind": "rgb", "values": [1, 0, 0], "flags": 1},
        "new": {"kind": "lab", "values": [50, -20.5, 30], "flags": 2}})"));
}

TEST(EventLogTest, KeepsEventsInOrderAndCountsThemByKind) {
    kelvra::EventLog log;
    log.Add(Alert("one"));
    Event usage;
    usage.kind = Event::Kind::Usage;
    log.Add(usage);
    log.Add(Alert("two"));
    ASSERT_EQ(log.All().size(), 3u);
    EXPECT_EQ(log.All()[2].text, "two");
    EXPECT_EQ(log.Count(Event::Kind::Alert), 2u);
    EXPECT_EQ(log.Count(Event::Kind::Question), 0u);
    log.Clear();
    EXPECT_TRUE(log.All().empty());
}

TEST(EventLogTest, JsonFormHasTheFieldsOfEachKind) {
    kelvra::EventLog log;
    Event alert = Alert("Shown");
    alert.key = "$$$/A=Shown";
    log.Add(alert);
    Event question;
    question.kind = Event::Kind::Question;
    question.text = "Go on?";
    question.answer = true;
    log.Add(question);
    Event moreInfo;
    moreInfo.kind = Event::Kind::MoreInfo;
    moreInfo.text = "m";
    moreInfo.helpKey = "h";
    moreInfo.number = 2102;
    log.Add(moreInfo);
    Event usage;
    usage.kind = Event::Kind::Usage;
    usage.category = "c";
    usage.event = "e";
    log.Add(usage);
    const nlohmann::json json = kelvra::ToJson(log.All());
    EXPECT_EQ(json, nlohmann::json::parse(R"([
        {"type": "alert", "text": "Shown", "key": "$$$/A=Shown"},
        {"type": "question", "text": "Go on?", "key": "", "answer": true},
        {"type": "more-info", "text": "m", "key": "", "helpKey": "h", "number": 2102},
        {"type": "usage", "category": "c", "event": "e", "detail": null}])"));
}

}  // namespace
