// A gmock of the whole swatch book interface, every virtual operation
// included, for checking which calls a reader or the writer makes, in which
// order and with which arguments.
#pragma once

#include <gmock/gmock.h>

#include "swatchbook/OrvikSwatchbook.h"

namespace testsupport {

class MockSwatchbook : public OrvikSwatchbook {
public:
    MOCK_METHOD(std::int32_t, GetVersion, (), (const, override));
    MOCK_METHOD(void, SetVersion, (std::int32_t), (override));
    MOCK_METHOD(std::int32_t, GetPageSize, (), (const, override));
    MOCK_METHOD(void, SetPageSize, (std::int32_t), (override));
    MOCK_METHOD(std::int32_t, GetPageKeyOffset, (), (const, override));
    MOCK_METHOD(void, SetPageKeyOffset, (std::int32_t), (override));
    MOCK_METHOD(std::u16string, GetTitle, (), (const, override));
    MOCK_METHOD(void, SetTitle, (const std::u16string&), (override));
    MOCK_METHOD(std::int32_t, GetBookID, (), (const, override));
    MOCK_METHOD(void, SetBookID, (std::int32_t), (override));
    MOCK_METHOD(std::u16string, GetCopyright, (), (const, override));
    MOCK_METHOD(void, SetCopyright, (const std::u16string&), (override));
    MOCK_METHOD(std::u16string, GetPrefix, (), (const, override));
    MOCK_METHOD(void, SetPrefix, (const std::u16string&), (override));
    MOCK_METHOD(std::u16string, GetPostfix, (), (const, override));
    MOCK_METHOD(void, SetPostfix, (const std::u16string&), (override));
    MOCK_METHOD(std::int32_t, CountSwatches, (), (const, override));
    MOCK_METHOD(void, BeginFill, (), (override));
    MOCK_METHOD(void, EndFill, (), (override));
    MOCK_METHOD(std::int32_t, CountFormats, (), (const, override));
    MOCK_METHOD(std::int32_t, GetFormatColorSpace, (std::int32_t), (const, override));
    MOCK_METHOD(std::int32_t, GetFormatEncoding, (std::int32_t), (const, override));
    MOCK_METHOD(std::u16string, GetFormatCondition, (std::int32_t), (const, override));
    MOCK_METHOD(std::int32_t, GetFormatChannels, (std::int32_t), (const, override));
    MOCK_METHOD(std::u16string, GetFormatColorSpaceName, (std::int32_t, bool), (const, override));
    MOCK_METHOD(std::u16string, GetFormatID, (std::int32_t, bool), (const, override));
    MOCK_METHOD(std::int32_t, AddFormat, (), (override));
    MOCK_METHOD(bool, SetFormatColorSpace, (std::int32_t, std::int32_t), (override));
    MOCK_METHOD(bool, SetFormatEncoding, (std::int32_t, std::int32_t), (override));
    MOCK_METHOD(bool, SetFormatCondition, (std::int32_t, const std::u16string&), (override));
    MOCK_METHOD(bool, SetFormatColorSpaceName, (std::int32_t, const std::u16string&), (override));
    MOCK_METHOD(bool, SetFormatChannels, (std::int32_t, std::int32_t), (override));
    MOCK_METHOD(bool, SetFormatID, (std::int32_t, const std::u16string&), (override));
    MOCK_METHOD(std::int32_t, FindFormat, (const std::u16string&), (const, override));
    MOCK_METHOD(std::int32_t, AddGroup, (), (override));
    MOCK_METHOD(void, EndGroup, (std::int32_t, std::int64_t, std::int32_t), (override));
    MOCK_METHOD(std::int32_t, CountGroups, (std::int32_t*), (const, override));
    MOCK_METHOD(bool, SelectGroup, (std::int32_t), (override));
    MOCK_METHOD(bool, IsDefaultGroup, (std::int32_t), (const, override));
    MOCK_METHOD(std::int32_t, CountGroupSwatches, (), (const, override));
    MOCK_METHOD(bool, SetGroupName, (const std::u16string&), (override));
    MOCK_METHOD(std::u16string, GetGroupName, (), (const, override));
    MOCK_METHOD(std::u16string, GetSwatchName, (std::int32_t, bool), (const, override));
    MOCK_METHOD(std::u16string, GetSwatchKey, (std::int32_t), (const, override));
    MOCK_METHOD(std::int32_t, GetSwatchKind, (std::int32_t), (const, override));
    MOCK_METHOD(std::int32_t, GetSwatchColorSpace, (std::int32_t), (const, override));
    MOCK_METHOD(double, GetSwatchTint, (std::int32_t, std::int32_t*), (const, override));
    MOCK_METHOD(bool, GetSwatchValuesNative, (std::int32_t, std::int32_t, void*), (const, override));
    MOCK_METHOD(std::int32_t, GetValueFormats, (std::int32_t, std::int32_t*), (const, override));
    MOCK_METHOD(std::int32_t, FindSwatch, (const std::u16string&, bool, bool), (const, override));
    MOCK_METHOD(std::u16string, StripAffixes, (const std::u16string&), (const, override));
    MOCK_METHOD(std::int32_t, AddSwatch, (std::int32_t), (override));
    MOCK_METHOD(std::int32_t, SetSwatchKind, (std::int32_t, std::int32_t), (override));
    MOCK_METHOD(bool, SetSwatchName, (std::int32_t, const std::u16string&), (override));
    MOCK_METHOD(bool, SetSwatchKey, (std::int32_t, const std::u16string&), (override));
    MOCK_METHOD(bool, SetSwatchTint, (std::int32_t, double), (override));
    MOCK_METHOD(bool, SetSwatchValuesInt16, (std::int32_t, std::int32_t, const std::uint16_t*), (override));
    MOCK_METHOD(bool, SetSwatchValuesInt8, (std::int32_t, std::int32_t, const std::uint8_t*), (override));
    MOCK_METHOD(bool, SetSwatchValuesFloat, (std::int32_t, std::int32_t, const double*), (override));
    MOCK_METHOD(bool, SetSwatchValues, (std::int32_t, std::int32_t, std::int32_t, const void*), (override));
    MOCK_METHOD(bool, SetSwatchValuesNative, (std::int32_t, std::int32_t, const void*), (override));
};

}  // namespace testsupport
