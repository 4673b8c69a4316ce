#include "ReferenceBook.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "ColorValueConversion.h"
#include "SwatchbookCodes.h"

using namespace swatchbook;

namespace {

const ReferenceSwatch kNoSwatch{};

}  // namespace

ReferenceBook::ReferenceBook() = default;

ReferenceBook::~ReferenceBook() = default;

std::int32_t ReferenceBook::GetVersion() const { return version_; }
void ReferenceBook::SetVersion(std::int32_t version) { version_ = version; }
std::int32_t ReferenceBook::GetPageSize() const { return pageSize_; }
void ReferenceBook::SetPageSize(std::int32_t pageSize) { pageSize_ = pageSize; }
std::int32_t ReferenceBook::GetPageKeyOffset() const { return pageKeyOffset_; }
void ReferenceBook::SetPageKeyOffset(std::int32_t offset) { pageKeyOffset_ = offset; }
std::u16string ReferenceBook::GetTitle() const { return title_; }
void ReferenceBook::SetTitle(const std::u16string& title) { title_ = title; }
std::int32_t ReferenceBook::GetBookID() const { return bookId_; }
void ReferenceBook::SetBookID(std::int32_t bookId) { bookId_ = bookId; }
std::u16string ReferenceBook::GetCopyright() const { return copyright_; }
void ReferenceBook::SetCopyright(const std::u16string& copyright) { copyright_ = copyright; }
std::u16string ReferenceBook::GetPrefix() const { return prefix_; }
void ReferenceBook::SetPrefix(const std::u16string& prefix) { prefix_ = prefix; }
std::u16string ReferenceBook::GetPostfix() const { return postfix_; }
void ReferenceBook::SetPostfix(const std::u16string& postfix) { postfix_ = postfix; }

std::int32_t ReferenceBook::CountSwatches() const {
    return static_cast<std::int32_t>(swatches_.Count());
}

void ReferenceBook::BeginFill() {
    swatches_.Truncate(0);
    nameIndex_.Release();
    OrvikSwatchbookFormat::BeginFill();
}

void ReferenceBook::EndFill() {
    OrvikSwatchbookFormat::EndFill();
    swatches_.ShrinkToFit();
}

std::int32_t ReferenceBook::AddGroup() { return -1; }
void ReferenceBook::EndGroup(std::int32_t, std::int64_t, std::int32_t) {}
std::int32_t ReferenceBook::CountGroups(std::int32_t*) const { return 0; }
bool ReferenceBook::SelectGroup(std::int32_t) { return false; }
bool ReferenceBook::IsDefaultGroup(std::int32_t) const { return false; }
std::int32_t ReferenceBook::CountGroupSwatches() const { return -1; }
bool ReferenceBook::SetGroupName(const std::u16string&) { return false; }
std::u16string ReferenceBook::GetGroupName() const { return {}; }

const ReferenceSwatch& ReferenceBook::GetSwatchRecord(std::int32_t swatch) const {
    return IsValidSwatch(swatch) ? swatches_[static_cast<std::size_t>(swatch)] : kNoSwatch;
}

std::u16string_view ReferenceBook::NameOf(std::int32_t swatch) const {
    return std::u16string_view(swatches_[static_cast<std::size_t>(swatch)].name);
}

std::u16string ReferenceBook::GetSwatchName(std::int32_t swatch, bool withAffixes) const {
    if (!IsValidSwatch(swatch)) {
        return {};
    }
    std::u16string name(NameOf(swatch));
    return withAffixes ? prefix_ + name + postfix_ : name;
}

std::u16string ReferenceBook::GetSwatchKey(std::int32_t) const { return {}; }

std::int32_t ReferenceBook::GetSwatchKind(std::int32_t swatch) const {
    return GetSwatchRecord(swatch).kind;
}

std::int32_t ReferenceBook::GetSwatchColorSpace(std::int32_t) const { return 0; }
bool ReferenceBook::GetSwatchValuesNative(std::int32_t, std::int32_t, void*) const { return false; }
std::int32_t ReferenceBook::GetValueFormats(std::int32_t, std::int32_t*) const { return 0; }

std::int32_t ReferenceBook::FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const {
    std::u16string key;
    if (!FindSwatchKey(name, stripAffixes, bookQuirks, key)) {
        return -1;
    }
    // A stored name reads back up to its first zero and is never longer than
    // kMaxNameUnits, so a key that holds a zero or is longer equals none.
    if (key.size() > kMaxNameUnits || key.find(u'\0') != std::u16string::npos) {
        return -1;
    }
    const std::size_t units = key.size();
    const std::size_t count = swatches_.Count();
    for (std::size_t i = 0; i < count; ++i) {
        const char16_t* stored = swatches_[i].name;
        if (stored[units] == u'\0' && std::memcmp(stored, key.data(), units * sizeof(char16_t)) == 0) {
            return static_cast<std::int32_t>(i);
        }
    }
    return -1;
}

double ReferenceBook::GetSwatchTint(std::int32_t, std::int32_t* ok) const {
    if (ok != nullptr) {
        *ok = 1;
    }
    return 0.0;
}

bool ReferenceBook::SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) {
    if (!IsValidFormat(format) || !IsValidSwatch(swatch)) {
        return false;
    }
    const FormatRecord& row = FormatRow(format);
    // The only colour spaces the conversion refuses; refused before the
    // record is touched, so that it keeps its values.
    if (DefaultChannelCount(row.colorSpace) == 0) {
        return false;
    }
    ReferenceSwatch& record = swatches_[static_cast<std::size_t>(swatch)];
    const auto at = reinterpret_cast<std::uintptr_t>(values);
    const auto first = reinterpret_cast<std::uintptr_t>(record.values);
    if (values == nullptr || (at >= first && at < first + sizeof record.values)) {
        // Beside the record: a missing buffer fails (unless the encoding
        // converts nothing), and values handed in from the record itself are
        // read before it changes.
        double converted[kMaxChannels] = {};
        if (!ConvertColorValues(row.colorSpace, row.encoding, values, kFloatEncoding, converted)) {
            return false;
        }
        std::memcpy(record.values, converted, sizeof converted);
    } else {
        // Straight into the record: loading the values back from a copy just
        // stored, channel by channel, stalls on every swatch. With a known
        // colour space and both buffers given the conversion cannot fail.
        std::memset(record.values, 0, sizeof record.values);
        ConvertColorValues(row.colorSpace, row.encoding, values, kFloatEncoding, record.values);
    }
    record.colorSpace = row.colorSpace;
    return true;
}

bool ReferenceBook::ReserveSwatches(std::size_t count) {
    return count <= std::size_t(std::numeric_limits<std::int32_t>::max()) - swatches_.Count() &&
           swatches_.ReserveExactly(swatches_.Count() + count);
}

bool ReferenceBook::BuildNameIndex() const {
    const std::int32_t count = CountSwatches();
    if (!nameIndex_.Append(static_cast<std::size_t>(count))) {
        return false;
    }
    std::int32_t* first = nameIndex_.Data();
    for (std::int32_t i = 0; i < count; ++i) {
        first[i] = i;
    }
    // char16_t is unsigned, so views compare code unit by code unit as
    // unsigned 16-bit values, a prefix before the longer name.
    std::sort(first, first + count, [this](std::int32_t a, std::int32_t b) {
        const int order = NameOf(a).compare(NameOf(b));
        return order < 0 || (order == 0 && a < b);
    });
    return true;
}

std::int32_t ReferenceBook::FindSwatchIndex(const std::u16string& fullName) const {
    const std::u16string name = StripAffixes(fullName);
    if (name.empty() || name.size() > kMaxNameUnits) {
        return -1;
    }
    if (nameIndex_.Count() == 0 && !BuildNameIndex()) {
        // Without memory for the index, a scan finds the same first match.
        for (std::int32_t i = 0; i < CountSwatches(); ++i) {
            if (NameOf(i) == name) {
                return i;
            }
        }
        return -1;
    }
    const std::int32_t* first = nameIndex_.Data();
    const std::int32_t* last = first + nameIndex_.Count();
    const std::int32_t* found = std::lower_bound(
        first, last, name, [this](std::int32_t swatch, const std::u16string& key) { return NameOf(swatch) < key; });
    return found != last && NameOf(*found) == name ? *found : -1;
}

bool ReferenceBook::GetSwatchColor(const std::u16string& fullName, ReferenceColor& color) const {
    const std::int32_t swatch = FindSwatchIndex(fullName);
    if (swatch < 0) {
        return false;
    }
    const ReferenceSwatch& record = swatches_[static_cast<std::size_t>(swatch)];
    color.spot = record.kind == kSpotKind ? 1 : 0;
    switch (record.colorSpace) {
        case kGraySpace:
            color.model = ReferenceColor::kCMYK;
            color.values[0] = 0;
            color.values[1] = 0;
            color.values[2] = 0;
            color.values[3] = 1 - record.values[0];
            break;
        case kLabSpace:
            color.model = ReferenceColor::kLab;
            std::copy_n(record.values, 3, color.values);
            break;
        case kRGBSpace:
            color.model = ReferenceColor::kRGB;
            std::copy_n(record.values, 3, color.values);
            break;
        case kCMYKSpace:
            color.model = ReferenceColor::kCMYK;
            std::copy_n(record.values, 4, color.values);
            break;
        default:
            // No colour model for it: the caller's colour stays as it was.
            break;
    }
    return true;
}
