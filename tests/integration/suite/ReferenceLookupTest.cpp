// Reference books through the suite: read from a colour book or an XML
// swatchbook, asked for colours by full name, and the user told when a
// file cannot be read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "SuiteTesting.h"
#include "tests/support/ColorBookBuilder.h"

namespace {

using import_testing::Shown;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ZPErr kParameter = ZP_FOURCC('P', 'A', 'R', 'M');
constexpr ZPErr kNameNotFound = ZP_FOURCC('N', 'A', 'M', '?');
constexpr ZPErr kCant = ZP_FOURCC('C', 'A', 'N', 'T');

constexpr const char* kXmlBook = R"(<?xml version="1.0" encoding="UTF-8"?>
<OrvikSwatchbook Version="1" Title="Inks" BookID="4200">
  <PrefixPostfixPairs><PrefixPostfixPair Prefix="LI " Postfix=" C"/></PrefixPostfixPairs>
  <Formats>
    <Format ID="lab" ColorSpace="LAB" Encoding="Float"/>
    <Format ID="cmyk" ColorSpace="CMYK" Encoding="Int8"/>
    <Format ID="rgb" ColorSpace="RGB" Encoding="Int16"/>
    <Format ID="xyz" ColorSpace="XYZ" Encoding="Float"/>
    <Format ID="gray" ColorSpace="Gray" Encoding="Float"/>
  </Formats>
  <Swatches>
    <Sp N="Deep Green"><C F="lab">35 -45 20</C></Sp>
    <Pr N="Copper"><C F="cmyk">0 128 255 51</C></Pr>
    <Pl N="Sky"><C F="rgb">0 32768 65535</C></Pl>
    <Sp N="Measured"><C F="xyz">0.2 0.3 0.4</C></Sp>
    <Sp N="Paper"><C F="gray">0.25</C></Sp>
  </Swatches>
</OrvikSwatchbook>)";

class ReferenceLookupTest : public suite_testing::SuiteTest {
protected:
    void TearDown() override {
        if (book_ != nullptr) {
            EXPECT_EQ(Suite().DisposeReferenceBook(book_), kZPNoErr);
        }
        SuiteTest::TearDown();
    }

    ZPErr Read(bool colorBook, const std::string& file) {
        if (book_ == nullptr) {
            EXPECT_EQ(Suite().NewReferenceBook(&book_), kZPNoErr);
        }
        KVFilePathRef path = plugin_->NewPath(file);
        const ZPErr result = colorBook ? Suite().ReadColorBook(path, book_) : Suite().ReadLegacyColorBook(path, book_);
        plugin_->Paths().Dispose(path);
        return result;
    }

    // The colour of `name`, starting from a record the caller filled with 9s.
    ZPErr Find(const std::string& name, KVReferenceColor& color) {
        color = {9, {9, 9, 9, 9}, 9};
        KVUnicodeStringRef string = plugin_->NewString(name);
        const ZPErr result = Suite().FindReferenceSwatch(book_, string, &color);
        plugin_->Strings().Dispose(string);
        return result;
    }

    std::string Write(const std::string& name, const std::string& bytes) {
        const std::string path = Home(name);
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    KVReferenceBookRef book_ = nullptr;
};

TEST_F(ReferenceLookupTest, AColourBookIsLookedUpByFullNames) {
    testsupport::ColorBookDescription description = testsupport::SampleColorBook();
    const testsupport::Bytes bytes = testsupport::BuildColorBook(description);
    ASSERT_EQ(Read(true, Write("book.ocb", std::string(bytes.begin(), bytes.end()))), kZPNoErr);
    std::int32_t id = 0;
    ASSERT_EQ(Suite().GetReferenceBookID(book_, &id), kZPNoErr);
    EXPECT_EQ(id, 3002);

    KVReferenceColor color{};
    ASSERT_EQ(Find("P Red 032 C", color), kZPNoErr);
    EXPECT_EQ(color.model, kKVReferenceRGB);
    // Three channels: the fourth value stays as the caller left it.
    EXPECT_THAT(color.values, ElementsAre(1.0, 0.0, 0.0, 9.0));
    EXPECT_EQ(color.spot, 1);
    ASSERT_EQ(Find("P Grün C", color), kZPNoErr);
    EXPECT_THAT(color.values, ElementsAre(0.0, 160.0 / 255, 64.0 / 255, 9.0));
    // Without the prefix and postfix there is no such swatch.
    EXPECT_EQ(Find("Red 032", color), kNameNotFound);
    EXPECT_EQ(Find("P Blue C", color), kNameNotFound);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(ReferenceLookupTest, AnXmlSwatchbookAnswersEachColourModel) {
    ASSERT_EQ(Read(false, Write("inks.xml", kXmlBook)), kZPNoErr);
    std::int32_t id = 0;
    ASSERT_EQ(Suite().GetReferenceBookID(book_, &id), kZPNoErr);
    EXPECT_EQ(id, 4200);
    KVReferenceColor color{};

    ASSERT_EQ(Find("LI Deep Green C", color), kZPNoErr);
    EXPECT_EQ(color.model, kKVReferenceLab);
    EXPECT_THAT(color.values, ElementsAre(35.0, -45.0, 20.0, 9.0));
    EXPECT_EQ(color.spot, 1);

    ASSERT_EQ(Find("LI Copper C", color), kZPNoErr);
    EXPECT_EQ(color.model, kKVReferenceCMYK);
    EXPECT_THAT(color.values, ElementsAre(0.0, 0.5, 1.0, 0.2));
    EXPECT_EQ(color.spot, 0);

    ASSERT_EQ(Find("LI Sky C", color), kZPNoErr);
    EXPECT_EQ(color.model, kKVReferenceRGB);
    EXPECT_THAT(color.values, ElementsAre(0.0, 32768.0 / 65535, 1.0, 9.0));

    EXPECT_EQ(Find("Deep Green", color), kNameNotFound);
}

TEST_F(ReferenceLookupTest, AColourTheModelCannotExpressAnswersOnlyItsSpotFlag) {
    ASSERT_EQ(Read(false, Write("inks.xml", kXmlBook)), kZPNoErr);
    KVReferenceColor color{};
    ASSERT_EQ(Find("LI Measured C", color), kZPNoErr);
    EXPECT_EQ(color.model, 9);
    EXPECT_THAT(color.values, ElementsAre(9.0, 9.0, 9.0, 9.0));
    EXPECT_EQ(color.spot, 1);
    // A gray format of this file is no colour space the book knows: its
    // swatch has no colour either.
    ASSERT_EQ(Find("LI Paper C", color), kZPNoErr);
    EXPECT_EQ(color.model, 9);
    EXPECT_EQ(color.spot, 1);
}

TEST_F(ReferenceLookupTest, AFileThatCannotBeReadIsToldToTheUserWithItsName) {
    ASSERT_EQ(Read(true, Write("broken.ocb", "7KCB and then nothing")), kCant);
    EXPECT_THAT(Shown(host_), ElementsAre("alert: An error occurred when reading the color book 'broken.ocb'."));
    host_.Events().Clear();
    ASSERT_EQ(Read(false, Write("broken.xml", "<OrvikSwatchbook><Swatches>")), kCant);
    EXPECT_THAT(Shown(host_),
                ElementsAre("alert: An error occurred when reading the legacy color book 'broken.xml'."));
    host_.Events().Clear();
    ASSERT_EQ(Read(true, Home("missing.ocb")), kCant);
    EXPECT_THAT(Shown(host_), ElementsAre("alert: An error occurred when reading the color book 'missing.ocb'."));
}

TEST_F(ReferenceLookupTest, NullArgumentsAreBadParametersAndNothingIsShown) {
    KVFilePathRef path = plugin_->NewPath(Write("book.ocb", "7KCB"));
    EXPECT_EQ(Suite().ReadColorBook(path, nullptr), kParameter);
    EXPECT_EQ(Suite().ReadLegacyColorBook(path, nullptr), kParameter);
    plugin_->Paths().Dispose(path);
    EXPECT_EQ(Suite().NewReferenceBook(nullptr), kParameter);
    EXPECT_EQ(Suite().DisposeReferenceBook(nullptr), kParameter);
    std::int32_t id = 0;
    EXPECT_EQ(Suite().GetReferenceBookID(nullptr, &id), kParameter);
    KVReferenceColor color{};
    KVUnicodeStringRef name = plugin_->NewString("x");
    EXPECT_EQ(Suite().FindReferenceSwatch(nullptr, name, &color), kParameter);
    plugin_->Strings().Dispose(name);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(ReferenceLookupTest, ANewBookIsEmptyAndItsIdIs0) {
    ASSERT_EQ(Suite().NewReferenceBook(&book_), kZPNoErr);
    std::int32_t id = 7;
    ASSERT_EQ(Suite().GetReferenceBookID(book_, &id), kZPNoErr);
    EXPECT_EQ(id, 0);
    KVReferenceColor color{};
    EXPECT_EQ(Find("anything", color), kNameNotFound);
}

}  // namespace
