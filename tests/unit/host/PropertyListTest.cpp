#include <kelvra/HostError.h>
#include <kelvra/PropertyList.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

void Put32(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(std::uint8_t(value >> shift));
}

void PutText(Bytes& bytes, const std::string& text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

void PutProperty(Bytes& bytes, const std::string& vendor, const std::string& key, const Bytes& data,
                 std::uint32_t id = 0) {
    PutText(bytes, vendor);
    PutText(bytes, key);
    Put32(bytes, id);
    Put32(bytes, std::uint32_t(data.size()));
    bytes.insert(bytes.end(), data.begin(), data.end());
}

Bytes Data(const std::string& text) { return Bytes(text.begin(), text.end()); }

Bytes Version(std::uint32_t version) {
    Bytes bytes;
    Put32(bytes, version);
    return bytes;
}

struct ListParts {
    std::uint32_t header1 = 1, header2 = 0, count = 4;
    std::string vendor = "ORVK";
    Bytes kind = Data("ZPEA");
    Bytes version = Version(2);
    Bytes entry = Data(std::string("main\0\0\0\0", 8));
    Bytes name = Data("TintoraPlugin");
    std::string secondKey = "ivrs";
    std::uint32_t firstId = 0;
};

Bytes Build(const ListParts& p) {
    Bytes bytes;
    Put32(bytes, p.header1);
    Put32(bytes, p.header2);
    Put32(bytes, p.count);
    PutProperty(bytes, p.vendor, "kind", p.kind, p.firstId);
    PutProperty(bytes, "ORVK", p.secondKey, p.version);
    PutProperty(bytes, "ORVK", "wx86", p.entry);
    PutProperty(bytes, "ORVK", "pinm", p.name);
    return bytes;
}

std::string Refusal(const Bytes& bytes) {
    try {
        kelvra::ParsePropertyList(bytes);
    } catch (const kelvra::HostError& error) {
        return error.what();
    }
    return "accepted";
}

TEST(PropertyListTest, ReadsAGoodList) {
    const kelvra::PropertyList list = kelvra::ParsePropertyList(Build({}));
    EXPECT_EQ(list.kind, "ZPEA");
    EXPECT_EQ(list.interfaceVersion, 2);
    EXPECT_EQ(list.entryName, "main");
    EXPECT_EQ(list.pluginName, "TintoraPlugin");
}

TEST(PropertyListTest, EntryNameMayFillWholeWordsOfPadding) {
    ListParts parts;
    parts.entry = Data(std::string("go\0\0", 4));
    EXPECT_EQ(kelvra::ParsePropertyList(Build(parts)).entryName, "go");
}

TEST(PropertyListTest, RefusesAWrongHeader) {
    ListParts parts;
    parts.header1 = 2;
    EXPECT_EQ(Refusal(Build(parts)), "property list: header 2, 0, expected 1, 0");
    parts = {};
    parts.count = 5;
    EXPECT_EQ(Refusal(Build(parts)), "property list: 5 properties, expected 4");
}

TEST(PropertyListTest, RefusesAWrongVendorKeyOrId) {
    ListParts parts;
    parts.vendor = "XXXX";
    EXPECT_EQ(Refusal(Build(parts)), "property list: property 1: vendor \"XXXX\", expected \"ORVK\"");
    parts = {};
    parts.secondKey = "wx86";
    EXPECT_EQ(Refusal(Build(parts)), "property list: property 2: key \"wx86\", expected \"ivrs\"");
    parts = {};
    parts.firstId = 7;
    EXPECT_EQ(Refusal(Build(parts)), "property list: property 1 (kind): id 7, expected 0");
}

TEST(PropertyListTest, RefusesAWrongKindOrInterfaceVersion) {
    ListParts parts;
    parts.kind = Data("ZPEX");
    EXPECT_EQ(Refusal(Build(parts)), "property list: property 1 (kind): \"ZPEX\", expected \"ZPEA\"");
    parts = {};
    parts.version = Version(3);
    EXPECT_EQ(Refusal(Build(parts)), "property list: property 2 (ivrs): interface version 3, expected 2");
    parts = {};
    parts.version = Bytes{0, 0, 2};
    EXPECT_EQ(Refusal(Build(parts)), "property list: property 2 (ivrs): 3 bytes, expected 4");
}

TEST(PropertyListTest, RefusesAnEntryNameThatIsNotZeroPadded) {
    const char* expected =
        "property list: property 3 (wx86): the entry name must be zero-padded to a multiple of 4 bytes";
    for (const std::string& entry : {std::string("main"), std::string("main\0\0", 6),
                                     std::string("\0\0\0\0", 4), std::string("ma\0n", 4)}) {
        ListParts parts;
        parts.entry = Data(entry);
        EXPECT_EQ(Refusal(Build(parts)), expected) << entry.size();
    }
}

TEST(PropertyListTest, RefusesAnEmptyOrTerminatedPluginName) {
    ListParts parts;
    parts.name = {};
    EXPECT_NE(Refusal(Build(parts)).find("property 4 (pinm)"), std::string::npos);
    parts.name = Data(std::string("Name\0", 5));
    EXPECT_NE(Refusal(Build(parts)).find("property 4 (pinm)"), std::string::npos);
}

TEST(PropertyListTest, RefusesBytesAfterTheLastProperty) {
    Bytes bytes = Build({});
    bytes.push_back(0);
    EXPECT_EQ(Refusal(bytes), "property list: 1 bytes after the last property");
}

TEST(PropertyListTest, EveryTruncationIsRefusedWithoutReadingPastTheEnd) {
    const Bytes whole = Build({});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + std::ptrdiff_t(length));
        EXPECT_NE(Refusal(cut), "accepted") << length;
    }
}

TEST(PropertyListTest, AHugeDeclaredLengthIsRefused) {
    Bytes bytes;
    Put32(bytes, 1);
    Put32(bytes, 0);
    Put32(bytes, 4);
    PutText(bytes, "ORVKkind");
    Put32(bytes, 0);
    Put32(bytes, 0xFFFFFFFF);
    EXPECT_EQ(Refusal(bytes), "property list: property 1 (kind): length 4294967295 runs past the end");
}

}  // namespace
