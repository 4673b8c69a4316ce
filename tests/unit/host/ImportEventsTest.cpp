// What the host itself logs about an import ("KV Go") that a user would not
// otherwise notice, with the test module that has a file format
// (FormatModule.cpp): a custom colour the import redefined, swatches of the
// import sharing one custom colour, a swatch given an empty name.
#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <kelvra/EventJson.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using kelvra::Event;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ImportEventsTest : public ::testing::Test {
protected:
    ImportEventsTest() { EXPECT_EQ(module.Startup(), 0u); }
    ~ImportEventsTest() override { module.Shutdown(); }

    // Reads `text` into the document as a file of the test format; answers
    // the events the import logged.
    std::vector<Event> Import(const std::string& text) {
        host.Events().Clear();
        const std::string file = folder.Write("in.tsw", text);
        EXPECT_EQ(module.GoFileFormat({host.FileFormats().at(0).handle, kKVFileFormatImportOption, file,
                                       document.Handle()}),
                  0u);
        return host.Events().All();
    }

    kelvra::Host host;
    kelvra::Module& module = host.Load(FORMAT_MODULE);
    kelvra::Document& document = host.Documents().New("Untitled");
    testsupport::TemporaryFolder folder;
};

TEST_F(ImportEventsTest, AColourTheDocumentHadThatAnImportRedefinesIsLoggedWithBothDefinitions) {
    EXPECT_THAT(Import("spot 0 0 0 1 0 7 Black\nrgb 1 0 0 Red\n"), IsEmpty());
    const std::vector<Event> events = Import("spot 0 0 0.25 0.5 0.5 8 Black\n");
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(kelvra::ToJson(events[0]), nlohmann::json::parse(R"({
        "type": "custom-color-redefined", "document": "Untitled", "customColor": "Black",
        "old": {"kind": "cmyk", "values": [0, 0, 0, 1], "flags": 1},
        "new": {"kind": "cmyk", "values": [0, 0, 0.25, 0.5], "flags": 1}})"));
}

TEST_F(ImportEventsTest, GivingAColourTheDefinitionItHasIsNoRedefinition) {
    Import("spot 0 0.2 1 0 0 7 Gold\n");
    EXPECT_THAT(Import("spot 0 0.2 1 0 0.5 7 Gold\n"), IsEmpty());
}

TEST_F(ImportEventsTest, ARedefinitionThatEndsWhereItBeganIsNoRedefinition) {
    Import("spot 0 0 0 1 0 7 Black\n");
    const std::vector<Event> events = Import("spot 0 0 0 0.5 0 7 Black\nspot 0 0 0 1 0 7 Black\n");
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].kind, Event::Kind::CustomColorShared);
}

TEST_F(ImportEventsTest, SwatchesOfOneImportShowingOneColourAreLoggedOnceWithTheirCount) {
    const std::vector<Event> events = Import(
        "spot 0 0 0 1 0 0 Untitled\n"
        "spot 1 0 0 0 0 0 Untitled\n"
        "rgb 0 0 1 Blue\n"
        "spot 1 0 0 0 0.5 0 Untitled\n");
    // Made by this import, so it is not a redefinition of anything the
    // document had; two definitions for three swatches.
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(kelvra::ToJson(events[0]), nlohmann::json::parse(R"({
        "type": "custom-color-shared", "document": "Untitled", "customColor": "Untitled",
        "swatches": 3, "definitions": 2})"));
    EXPECT_EQ(kelvra::ReadableLine(events[0]), "custom-color-shared: \"Untitled\" in \"Untitled\": 3 swatches, 2 definitions");
}

TEST_F(ImportEventsTest, ASharedColourCountsTheDistinctDefinitionsTheImportGaveIt) {
    const std::vector<Event> events = Import(
        "spot 0 0 0 1 0 0 Ink\n"
        "spot 0 0 0 0.5 0 0 Ink\n"
        "spot 0 0 0 1 0 0 Ink\n"
        "spot 0 0 0 0.5 0 0 Ink\n"
        "spot 0 0 0 0.25 0 0 Ink\n");
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].swatches, 5);
    EXPECT_EQ(events[0].definitions, 3);
}

TEST_F(ImportEventsTest, SwatchesOfDifferentImportsShowingOneColourAreNotShared) {
    Import("spot 0 0.2 1 0 0 7 Gold\n");
    EXPECT_THAT(Import("spot 0 0.2 1 0 0 7 Gold\n"), IsEmpty());
    EXPECT_EQ(document.SwatchCount(), 2u);
}

TEST_F(ImportEventsTest, AColourRedefinedAndSharedByOneImportGivesBothEvents) {
    Import("spot 0 0 0 1 0 7 Black\n");
    const std::vector<Event> events = Import("spot 0 0 0 0.5 0 7 Black\nspot 0 0 0 0.5 0.5 7 Black\n");
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].kind, Event::Kind::CustomColorRedefined);
    EXPECT_EQ(events[0].before.c.four.black, 1.0f);
    EXPECT_EQ(events[0].after.c.four.black, 0.5f);
    EXPECT_EQ(events[1].kind, Event::Kind::CustomColorShared);
    EXPECT_EQ(events[1].swatches, 2);
    EXPECT_EQ(events[1].definitions, 1);
}

TEST_F(ImportEventsTest, ASwatchGivenAnEmptyNameIsLoggedWithItsPlace) {
    const std::vector<Event> events = Import("rgb 1 0 0 Red\ngroup Brand\ngray 0.5 Mid\nrgb 0 1 0 \n");
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(kelvra::ToJson(events[0]), nlohmann::json::parse(R"({
        "type": "empty-swatch-name", "document": "Untitled", "group": 1, "groupName": "Brand", "swatch": 1})"));
    EXPECT_EQ(kelvra::ReadableLine(events[0]), "empty-swatch-name: \"Untitled\" group 1 swatch 1");
}

TEST_F(ImportEventsTest, OutsideAnImportARedefinitionIsNotAnImportsEvent) {
    Import("spot 0 0 0 1 0 7 Black\n");
    host.Events().Clear();
    const auto* colors = kelvra::testing::Acquire<KVCustomColorSuite>(host, kKVCustomColorSuite, 8);
    KVCustomColor definition = document.CustomColors().at(0)->definition;
    definition.c.four.black = 0.5f;
    EXPECT_EQ(colors->SetCustomColor(kelvra::HandleOf(*document.CustomColors()[0]), &definition), 0u);
    EXPECT_THAT(host.Events().All(), IsEmpty());
    EXPECT_EQ(host.BasicSuite()->ReleaseSuite(kKVCustomColorSuite, 8), 0u);
}

}  // namespace
