#include "CompleteBook.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "SwatchbookCodes.h"

using namespace swatchbook;

CompleteBook::CompleteBook() : groups_(1) {}

std::int32_t CompleteBook::CountSwatches() const {
    std::size_t count = 0;
    for (const Group& group : groups_) count += group.swatches.size();
    return std::int32_t(count);
}

void CompleteBook::BeginFill() {
    groups_.assign(1, Group{});
    current_ = 0;
    OrvikSwatchbookFormat::BeginFill();
}

std::int32_t CompleteBook::AddGroup() {
    groups_.emplace_back();
    return std::int32_t(groups_.size() - 1);
}

void CompleteBook::EndGroup(std::int32_t, std::int64_t, std::int32_t) {}

std::int32_t CompleteBook::CountGroups(std::int32_t* ok) const {
    if (ok != nullptr) *ok = 1;
    return std::int32_t(groups_.size());
}

bool CompleteBook::SelectGroup(std::int32_t group) {
    if (group < 0 || std::size_t(group) >= groups_.size()) return false;
    current_ = std::size_t(group);
    return true;
}

bool CompleteBook::IsDefaultGroup(std::int32_t group) const { return group == 0; }

std::int32_t CompleteBook::CountGroupSwatches() const {
    return std::int32_t(groups_[current_].swatches.size());
}

bool CompleteBook::SetGroupName(const std::u16string& name) {
    groups_[current_].name = name;
    return true;
}

std::u16string CompleteBook::GetGroupName() const { return groups_[current_].name; }

const CompleteBook::Swatch* CompleteBook::Find(std::int32_t swatch) const {
    const auto& swatches = groups_[current_].swatches;
    return swatch >= 0 && std::size_t(swatch) < swatches.size() ? &swatches[std::size_t(swatch)] : nullptr;
}

CompleteBook::Swatch* CompleteBook::Find(std::int32_t swatch) {
    return const_cast<Swatch*>(std::as_const(*this).Find(swatch));
}

std::size_t CompleteBook::ValueBytes(std::int32_t format) const {
    return std::size_t(std::max(0, GetFormatChannels(format))) * std::size_t(BytesPerChannel(GetFormatEncoding(format)));
}

std::u16string CompleteBook::GetSwatchName(std::int32_t swatch, bool withAffixes) const {
    const Swatch* s = Find(swatch);
    if (s == nullptr) return {};
    return withAffixes ? prefix_ + s->name + postfix_ : s->name;
}

std::u16string CompleteBook::GetSwatchKey(std::int32_t swatch) const {
    const Swatch* s = Find(swatch);
    return s != nullptr ? s->key : std::u16string();
}

std::int32_t CompleteBook::GetSwatchKind(std::int32_t swatch) const {
    const Swatch* s = Find(swatch);
    return s != nullptr && s->kind <= kProcessKind ? s->kind : 0;
}

std::int32_t CompleteBook::GetSwatchColorSpace(std::int32_t swatch) const {
    const Swatch* s = Find(swatch);
    return s != nullptr ? GetFormatColorSpace(s->lastFormat) : 0;
}

double CompleteBook::GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const {
    if (ok != nullptr) *ok = 1;
    const Swatch* s = Find(swatch);
    return s != nullptr ? s->tint : 0.0;
}

bool CompleteBook::GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const {
    const Swatch* s = Find(swatch);
    if (s == nullptr) return false;
    const auto given = std::find_if(s->values.begin(), s->values.end(),
                                    [&](const Values& v) { return v.format == format; });
    // The format's channels or encoding may have changed since; then the
    // values no longer fit it.
    if (given == s->values.end() || given->bytes.size() != ValueBytes(format)) return false;
    std::memcpy(values, given->bytes.data(), given->bytes.size());
    return true;
}

std::int32_t CompleteBook::GetValueFormats(std::int32_t swatch, std::int32_t* formats) const {
    const Swatch* s = Find(swatch);
    if (s == nullptr) return 0;
    if (formats != nullptr) {
        for (std::size_t i = 0; i < s->values.size(); ++i) formats[i] = s->values[i].format;
    }
    return std::int32_t(s->values.size());
}

std::int32_t CompleteBook::AddSwatch(std::int32_t position) {
    auto& swatches = groups_[current_].swatches;
    const std::size_t at =
        position < 0 || std::size_t(position) > swatches.size() ? swatches.size() : std::size_t(position);
    swatches.insert(swatches.begin() + std::ptrdiff_t(at), Swatch{});
    return std::int32_t(at);
}

std::int32_t CompleteBook::SetSwatchKind(std::int32_t swatch, std::int32_t kind) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return 0;
    if (kind >= kSpotKind && kind <= kEmptyPlaceKind) s->kind = kind;
    return s->kind;
}

bool CompleteBook::SetSwatchName(std::int32_t swatch, const std::u16string& name) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return false;
    s->name = name;
    return true;
}

bool CompleteBook::SetSwatchKey(std::int32_t swatch, const std::u16string& key) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return false;
    s->key = key;
    return true;
}

bool CompleteBook::SetSwatchTint(std::int32_t swatch, double tint) {
    Swatch* s = Find(swatch);
    if (s == nullptr) return false;
    s->tint = tint;
    return true;
}

bool CompleteBook::SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) {
    Swatch* s = Find(swatch);
    const std::size_t count = ValueBytes(format);
    if (s == nullptr || !IsValidFormat(format) || (values == nullptr && count > 0)) return false;
    const auto* bytes = static_cast<const std::uint8_t*>(values);
    auto given = std::find_if(s->values.begin(), s->values.end(), [&](const Values& v) { return v.format == format; });
    if (given == s->values.end()) given = s->values.insert(s->values.end(), Values{format, {}});
    given->bytes.assign(bytes, bytes + count);
    s->lastFormat = format;
    return true;
}
