// Each faster path of the model run beside the plain path it stands for, on
// the same input. Every check answers a description of the first difference
// it found, or an empty string when both paths agreed. Shared by the unit
// tests and the differential fuzz target.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

class OrvikSwatchbook;
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

// FindSwatch for names made from the name of `swatch`: bare and in full,
// with the codes of the book quirks, cut short, grown too long or holding a
// zero unit, with the book's own BookID and with 3002 and 3005 (the BookID
// is set back afterwards).
std::string SwatchLookupDifference(ReferenceBook& book, std::int32_t swatch);

// FindFormat for the identifier of `format` and for its index, as they are,
// grown or holding a zero unit.
std::string FormatLookupDifference(const ReferenceBook& book, std::int32_t format);

// The two look-ups above for every swatch and every format of `book`.
std::string LookupDifferences(ReferenceBook& book);

// A reader run on a ReferenceBook, which it fills through its fast paths
// (direct calls, the swatch count reserved, names taken where they lie, keys
// the book does not keep left out), beside the same reader run on a
// ReferenceBook behind a ForwardingBook, which it fills through the
// interface alone: the same result and the same book, every record byte
// for byte. `read` runs the reader on the book it is given, from the start
// of the same bytes each time.
std::string FilledBookDifference(const std::function<std::int32_t(OrvikSwatchbook&)>& read);

}  // namespace testsupport
