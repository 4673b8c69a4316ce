#include "GroupedBook.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace testsupport {

GroupedBook::GroupedBook() : groups_(1) {}

std::int32_t GroupedBook::CountSwatches() const {
    std::size_t count = 0;
    for (const Group& group : groups_) count += group.swatches.size();
    return std::int32_t(count);
}

void GroupedBook::BeginFill() {
    groups_.assign(1, Group{});
    current_ = 0;
    OrvikSwatchbookFormat::BeginFill();
}

std::int32_t GroupedBook::AddGroup() {
    groups_.emplace_back();
    return std::int32_t(groups_.size() - 1);
}

std::int32_t GroupedBook::CountGroups(std::int32_t* ok) const {
    if (ok != nullptr) *ok = 1;  // one default group
    return std::int32_t(groups_.size());
}

bool GroupedBook::SelectGroup(std::int32_t group) {
    if (group < 0 || std::size_t(group) >= groups_.size()) return false;
    current_ = std::size_t(group);
    return true;
}

std::int32_t GroupedBook::CountGroupSwatches() const {
    return std::int32_t(groups_[current_].swatches.size());
}

bool GroupedBook::SetGroupName(const std::u16string& name) {
    groups_[current_].name = name;
    return true;
}

std::u16string GroupedBook::GetGroupName() const {
    return groups_[current_].name;
}

const GroupedBook::Swatch* GroupedBook::Find(std::int32_t swatch) const {
    const auto& swatches = groups_[current_].swatches;
    return swatch >= 0 && std::size_t(swatch) < swatches.size() ? &swatches[std::size_t(swatch)] : nullptr;
}

GroupedBook::Swatch* GroupedBook::Find(std::int32_t swatch) {
    return const_cast<Swatch*>(std::as_const(*this).Find(swatch));
}

std::size_t GroupedBook::ValueBytes(std::int32_t format) const {
    return std::size_t(std::max(0, GetFormatChannels(format))) *
           std::size_t(swatchbook::BytesPerChannel(GetFormatEncoding(format)));
}

std::u16string GroupedBook::GetSwatchName(std::int32_t swatch, bool withAffixes) const {
    const Swatch* s = Find(swatch);
    if (s == nullptr) return {};
    return withAffixes ? prefix_ + s->name + postfix_ : s->name;
}

std::int32_t GroupedBook::GetSwatchKind(std::int32_t swatch) const {
    const Swatch* s = Find(swatch);
    return s != nullptr ? s->kind : 0;
}

std::int32_t GroupedBook::GetSwatchColorSpace(std::int32_t swatch) const {
    const Swatch* s = Find(swatch);
    return s != nullptr ? GetFormatColorSpace(s->format) : 0;
}

double GroupedBook::GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const {
    if (ok != nullptr) *ok = 1;
    const Swatch* s = Find(swatch);
    return s != nullptr ? s->tint : 0.0;
}

bool GroupedBook::GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const {
    const Swatch* s = Find(swatch);
    if (s == nullptr || s->format != format || !IsValidFormat(format) || s->values.size() != ValueBytes(format)) {
        return false;
    }
    std::memcpy(values, s->values.data(), s->values.size());
    return true;
}

std::int32_t GroupedBook::GetValueFormats(std::int32_t swatch, std::int32_t* formats) const {
    const Swatch* s = Find(swatch);
    if (s == nullptr || !IsValidFormat(s->format)) return 0;
    if (formats != nullptr) formats[0] = s->format;
    return 1;
}

std::int32_t GroupedBook::AddSwatch(std::int32_t position) {
    auto& swatches = groups_[current_].swatches;
    const std::size_t at = position < 0 || std::size_t(position) > swatches.size() ? swatches.size()
                                                                                    : std::size_t(position);
    swatches.insert(swatches.begin() + std::ptrdiff_t(at), Swatch{});
    return std::int32_t(at);
}

std::int32_t GroupedBook::SetSwatchKind(std::int32_t swatch, std::int32_t kind) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return 0;
    if (kind >= swatchbook::kSpotKind && kind <= swatchbook::kProcessKind) s->kind = kind;
    return s->kind;
}

bool GroupedBook::SetSwatchName(std::int32_t swatch, const std::u16string& name) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return false;
    s->name = name;
    return true;
}

bool GroupedBook::SetSwatchTint(std::int32_t swatch, double tint) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return false;
    s->tint = tint;
    return true;
}

bool GroupedBook::SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) {
    Swatch* s = Find(swatch);
    if (s == nullptr || !IsValidFormat(format)) return false;
    const auto* bytes = static_cast<const std::uint8_t*>(values);
    s->format = format;
    s->values.assign(bytes, bytes + ValueBytes(format));
    return true;
}

}  // namespace testsupport
