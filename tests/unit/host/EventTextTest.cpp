// Events as kelvra-host shows them to a person.
#include <EventText.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using kelvra::Event;

std::string Shown(const Event& event) {
    std::ostringstream out;
    kelvra::cli::WriteEvent(out, event, "  ");
    return out.str();
}

Event Dialog(Event::Kind kind, std::string text) {
    Event event;
    event.kind = kind;
    event.text = std::move(text);
    return event;
}

TEST(EventTextTest, DialogsAreLaidOutAsTheHostShowsThem) {
    EXPECT_EQ(Shown(Dialog(Event::Kind::Alert, "One\nTwo\t\n")), "  alert: One\n         Two\n");
    Event question = Dialog(Event::Kind::Question, "The file ^Qa.ose^Q has odd swatches.");
    EXPECT_EQ(Shown(question), "  question: The file \u201Ca.ose\u201D has odd swatches. -> no\n");
    question.answer = true;
    EXPECT_EQ(Shown(question), "  question: The file \u201Ca.ose\u201D has odd swatches. -> yes\n");
}

TEST(EventTextTest, TheMoreInfoDialogShowsTheAddressItsButtonOpens) {
    Event dialog = Dialog(Event::Kind::MoreInfo,
                          "An unknown error occurred.\t\t\t\t\t\nClick MORE INFO and try some of the solutions to fix "
                          "the issue.");
    dialog.number = 2102;
    dialog.helpKey = "$$$/Kelvra/app/UnknownErrorMessage/UnknownErrorMessageDialog/MoreInfoButton/OnClickURL";
    EXPECT_EQ(Shown(dialog),
              "  more-info 2102: An unknown error occurred.\n"
              "                  Click MORE INFO and try some of the solutions to fix the issue.\n"
              "                  More Info: https://help.kelvra.example/unknown-error\n");
}

TEST(EventTextTest, AUsageEventIsItsLine) {
    Event usage;
    usage.kind = Event::Kind::Usage;
    usage.category = "Error Dialog with More Info Button";
    usage.event = "kCantHappenErr";
    EXPECT_EQ(Shown(usage), "  usage: Error Dialog with More Info Button / kCantHappenErr\n");
}

TEST(EventTextTest, ARedefinitionShowsBothColours) {
    Event redefined;
    redefined.kind = Event::Kind::CustomColorRedefined;
    redefined.document = "Untitled";
    redefined.customColor = "Accent \"Red\"";
    redefined.before.kind = kKVCustomThreeColor;
    redefined.before.c.three = {1, 0, 0};
    redefined.before.flags = kKVCustomSpotColor;
    redefined.after.kind = kKVCustomFourColor;
    redefined.after.c.four = {0, 0, 0, 0.5f};
    EXPECT_EQ(Shown(redefined),
              "  redefined: custom colour \"Accent \\\"Red\\\"\" in \"Untitled\" was spot rgb 255 0 0 #FF0000, now "
              "global cmyk 0% 0% 0% 50% #808080\n");
}

TEST(EventTextTest, SharingTellsHowManySwatchesAndWhetherTheirDefinitionsDiffered) {
    Event shared;
    shared.kind = Event::Kind::CustomColorShared;
    shared.document = "x.ose";
    shared.customColor = "Untitled";
    shared.swatches = 896;
    shared.definitions = 896;
    EXPECT_EQ(Shown(shared), "  shared: 896 swatches show custom colour \"Untitled\" in \"x.ose\", given 896 "
                             "definitions; all show the last\n");
    shared.swatches = 2;
    shared.definitions = 1;
    EXPECT_EQ(Shown(shared), "  shared: 2 swatches show custom colour \"Untitled\" in \"x.ose\"\n");
}

TEST(EventTextTest, AnEmptyNameTellsWhereTheSwatchIsCountingFromOne) {
    Event empty;
    empty.kind = Event::Kind::EmptySwatchName;
    empty.document = "x.ose";
    EXPECT_EQ(Shown(empty), "  empty name: swatch 1 of the default group in \"x.ose\"\n");
    empty.group = 2;
    empty.groupName = "Brand";
    empty.swatch = 4;
    EXPECT_EQ(Shown(empty), "  empty name: swatch 5 of group \"Brand\" in \"x.ose\"\n");
}

}  // namespace
