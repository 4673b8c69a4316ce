#include <kelvra/PropertyList.h>

#include "BigEndianReader.h"

#include <ZPPropertyList.h>

#include <algorithm>

namespace kelvra {

namespace {

constexpr std::uint32_t kPropertyCount = 4;

struct Property {
    std::string key;
    std::string data;
};

Property ReadProperty(BigEndianReader& in, std::uint32_t number, const char* expectedKey) {
    const std::string where = "property " + std::to_string(number);
    const std::string vendor = in.Text(4);
    if (vendor != kZPPropertyVendor) in.Fail(where + ": vendor \"" + vendor + "\", expected \"" kZPPropertyVendor "\"");
    Property property;
    property.key = in.Text(4);
    if (property.key != expectedKey)
        in.Fail(where + ": key \"" + property.key + "\", expected \"" + expectedKey + "\"");
    const std::uint32_t id = in.U32();
    if (id != 0) in.Fail(where + " (" + property.key + "): id " + std::to_string(id) + ", expected 0");
    const std::uint32_t length = in.U32();
    if (length > in.Left())
        in.Fail(where + " (" + property.key + "): length " + std::to_string(length) + " runs past the end");
    property.data = in.Text(length);
    return property;
}

std::string EntryName(BigEndianReader& in, const std::string& data) {
    const std::size_t end = data.find('\0');
    if (data.size() % 4 != 0 || end == std::string::npos || end == 0 ||
        std::any_of(data.begin() + std::ptrdiff_t(end), data.end(), [](char c) { return c != 0; }))
        in.Fail("property 3 (" kZPEntryPointProperty "): the entry name must be zero-padded to a multiple of 4 bytes");
    return data.substr(0, end);
}

}  // namespace

PropertyList ParsePropertyList(std::span<const std::uint8_t> bytes) {
    BigEndianReader in(bytes, "property list");
    const std::uint32_t version = in.U32();
    const std::uint32_t reserved = in.U32();
    const std::uint32_t count = in.U32();
    if (version != kZPPropertyListVersion || reserved != 0)
        in.Fail("header " + std::to_string(version) + ", " + std::to_string(reserved) + ", expected 1, 0");
    if (count != kPropertyCount)
        in.Fail(std::to_string(count) + " properties, expected " + std::to_string(kPropertyCount));

    PropertyList list;
    list.kind = ReadProperty(in, 1, kZPKindProperty).data;
    if (list.kind != kZPPluginKind) in.Fail("property 1 (kind): \"" + list.kind + "\", expected \"" kZPPluginKind "\"");

    const std::string version2 = ReadProperty(in, 2, kZPInterfaceVersionProperty).data;
    if (version2.size() != 4) in.Fail("property 2 (ivrs): " + std::to_string(version2.size()) + " bytes, expected 4");
    BigEndianReader versionIn({reinterpret_cast<const std::uint8_t*>(version2.data()), 4}, "property list");
    list.interfaceVersion = std::int32_t(versionIn.U32());
    if (list.interfaceVersion != kZPInterfaceVersion)
        in.Fail("property 2 (ivrs): interface version " + std::to_string(list.interfaceVersion) + ", expected " +
                std::to_string(kZPInterfaceVersion));

    list.entryName = EntryName(in, ReadProperty(in, 3, kZPEntryPointProperty).data);

    list.pluginName = ReadProperty(in, 4, kZPPluginNameProperty).data;
    if (list.pluginName.empty() || list.pluginName.find('\0') != std::string::npos)
        in.Fail("property 4 (pinm): the plug-in name must be non-empty text without a terminator");

    if (in.Left() != 0) in.Fail(std::to_string(in.Left()) + " bytes after the last property");
    return list;
}

}  // namespace kelvra
