// Each faster path of the model run beside the plain path it stands for, on
// the same input. Every check answers a description of the first difference
// it found, or an empty string when both paths agreed. Shared by the unit
// tests and the differential fuzz target.
#pragma once

#include <cstdint>
#include <string>

class OrvikSwatchbookFormat;
class ReferenceBook;

namespace testsupport {

// ConvertColorValues beside ConvertColorValuesByRule: the same answer and
// the same bytes written. `source` holds at least 32 bytes.
std::string ConversionDifference(std::int32_t colorSpace, std::int32_t sourceEncoding, std::int32_t targetEncoding,
                                 const std::uint8_t* source);

// Every conversion of `source` (at least 32 bytes): colour spaces 0 to 7,
// encodings 0 to 4 on either side.
std::string AnyConversionDifference(const std::uint8_t* source);

// The reference book's FindSwatch beside the search through GetSwatchName,
// with every combination of its two flags.
std::string FindSwatchDifference(const ReferenceBook& book, const std::u16string& name);

// The format table's FindFormat beside the search through GetFormatID.
std::string FindFormatDifference(const OrvikSwatchbookFormat& book, const std::u16string& id);

// The look-ups above for names and identifiers made from what `book` holds:
// each swatch's name bare and in full, with the codes of the book quirks,
// cut short, grown too long or holding a zero unit, with the book's own
// BookID and with 3002 and 3005; each format's identifier and index.
std::string LookupDifferences(ReferenceBook& book);

}  // namespace testsupport
