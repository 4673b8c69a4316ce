// The plug-in property list, by which the host recognises the module file
// before loading it and learns the name of its entry point.
#include "ResourceImage.h"
#include "ZPPropertyList.h"

namespace {

struct Property {
    std::string_view key;
    std::string_view data;
};

constexpr auto kInterfaceVersion = resources::BigEndian32(kZPInterfaceVersion);

constexpr Property kProperties[] = {
    {kZPKindProperty, kZPPluginKind},
    {kZPInterfaceVersionProperty, {kInterfaceVersion.data(), kInterfaceVersion.size()}},
    // The entry point's name, zero-terminated and padded with zero bytes to 8 bytes.
    {kZPEntryPointProperty, {"main\0\0\0\0", 8}},
    // The internal name, without terminator.
    {kZPPluginNameProperty, "TintoraPlugin"},
};

constexpr std::size_t kPropertyCount = std::size(kProperties);
constexpr std::size_t kHeaderSize = 3 * 4;
constexpr std::size_t kPropertyHeaderSize = 4 + 4 + 4 + 4;

constexpr std::size_t PropertyListSize() {
    std::size_t size = kHeaderSize;
    for (const Property& property : kProperties) size += kPropertyHeaderSize + property.data.size();
    return size;
}

constexpr auto BuildPropertyList() {
    resources::ResourceImage<PropertyListSize()> image;
    image.Put32(kZPPropertyListVersion);
    image.Put32(0);
    image.Put32(kPropertyCount);
    for (const Property& property : kProperties) {
        image.PutBytes(kZPPropertyVendor);
        image.PutBytes(property.key);
        image.Put32(0);  // property id
        image.Put32(static_cast<std::uint32_t>(property.data.size()));
        image.PutBytes(property.data);
    }
    return image;
}

constexpr auto kPropertyListImage = BuildPropertyList();

__attribute__((section(kZPPropertyListSection), used)) constexpr auto kPropertyList = kPropertyListImage.Bytes();

}  // namespace
