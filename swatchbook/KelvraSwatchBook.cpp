#include "KelvraSwatchBook.h"

#include <algorithm>
#include <cstring>

#include "ColorValueConversion.h"
#include "KVError.h"
#include "KVSwatchSuites.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"

using namespace swatchbook;

namespace {

const KVSwatchListSuite& SwatchLists() { return kv::RequireSuite<KVSwatchListSuite>(kv::registered::SwatchList()); }
const KVSwatchGroupSuite& SwatchGroups() {
    return kv::RequireSuite<KVSwatchGroupSuite>(kv::registered::SwatchGroup());
}
const KVCustomColorSuite& CustomColors() {
    return kv::RequireSuite<KVCustomColorSuite>(kv::registered::CustomColor());
}
const KVColorConversionSuite& ColorConversion() {
    return kv::RequireSuite<KVColorConversionSuite>(kv::registered::ColorConversion());
}

// The host's failure to make or list a document's groups and swatches.
void ThrowOutOfMemoryIf(ZPErr result) {
    if (result != kv::kNoErr) throw kv::Error(kv::kOutOfMemoryErr, nullptr);
}

// Group `index` of `list`; null when there is none. A host that refuses
// the index has none either.
KVSwatchGroupRef NthGroup(KVSwatchListRef list, std::int32_t index) {
    KVSwatchGroupRef group = nullptr;
    return SwatchGroups().GetNthGroup(list, index, &group) == kv::kNoErr ? group : nullptr;
}

KVSwatchRef NthSwatch(KVSwatchGroupRef group, std::int32_t index) {
    KVSwatchRef swatch = nullptr;
    return SwatchGroups().GetNthSwatch(group, index, &swatch) == kv::kNoErr ? swatch : nullptr;
}

std::int32_t GroupCount(KVSwatchListRef list) {
    std::int32_t count = 0;
    kv::ThrowIfError(SwatchGroups().CountGroups(list, &count));
    return count;
}

std::int32_t SwatchCount(KVSwatchGroupRef group) {
    std::int32_t count = 0;
    kv::ThrowIfError(SwatchGroups().CountSwatches(group, &count));
    return count;
}

float Single(double value) { return static_cast<float>(value); }

// Where the snapshot keeps a swatch's format, by colour space: Gray, RGB,
// Lab, CMYK.
constexpr std::int32_t kValueFormatSpaces[4] = {kGraySpace, kRGBSpace, kLabSpace, kCMYKSpace};

}  // namespace

KelvraSwatchBook::KelvraSwatchBook(KVSwatchListRef swatchList) : swatchList_(swatchList) {
    if (swatchList_ != nullptr) {
        for (std::size_t i = 0; i < 4; ++i) {
            const std::int32_t format = AddFormat();
            SetFormatEncoding(format, kFloatEncoding);
            SetFormatColorSpace(format, kValueFormatSpaces[i]);
            valueFormats_[i] = format;
        }
        snapshotMode_ = true;
    }
    currentGroup_ = NthGroup(swatchList_, 0);
}

KelvraSwatchBook::~KelvraSwatchBook() = default;

std::int32_t KelvraSwatchBook::CountSwatches() const {
    if (snapshotMode_) return snapshotSwatchCount_;
    std::int32_t count = 0;
    kv::ThrowIfError(SwatchLists().CountSwatches(swatchList_, &count));
    return count;
}

void KelvraSwatchBook::BeginFill() {
    snapshot_.clear();
    OrvikSwatchbookFormat::BeginFill();
}

void KelvraSwatchBook::EndFill() {
    OrvikSwatchbookFormat::EndFill();
    for (SnapshotGroup& group : snapshot_) group.swatches.shrink_to_fit();
}

std::int32_t KelvraSwatchBook::AddGroup() {
    const std::int32_t index = GroupCount(swatchList_);
    KVSwatchGroupRef group = nullptr;
    ThrowOutOfMemoryIf(SwatchGroups().InsertGroup(swatchList_, -1, &group));
    return index;
}

void KelvraSwatchBook::EndGroup(std::int32_t, std::int64_t, std::int32_t) {}

std::int32_t KelvraSwatchBook::CountGroups(std::int32_t* ok) const {
    if (ok != nullptr) *ok = 1;
    if (snapshotMode_) return std::int32_t(snapshot_.size());
    return GroupCount(swatchList_);
}

bool KelvraSwatchBook::SelectGroup(std::int32_t group) {
    FlushPendingSwatch();
    currentGroupIndex_ = group;
    if (snapshotMode_) return true;
    currentGroup_ = NthGroup(swatchList_, group);
    return currentGroup_ != nullptr;
}

bool KelvraSwatchBook::IsDefaultGroup(std::int32_t group) const { return group == 0; }

std::int32_t KelvraSwatchBook::CountGroupSwatches() const {
    if (snapshotMode_) {
        const SnapshotGroup* group = CurrentSnapshotGroup();
        return group != nullptr ? std::int32_t(group->swatches.size()) : 0;
    }
    return SwatchCount(currentGroup_);
}

bool KelvraSwatchBook::TakeName(const std::u16string& name) {
    // Put together where it is kept, without a string per swatch.
    if (prefix_.size() + name.size() + postfix_.size() >= kNameUnits) return false;
    std::fill(std::begin(pending_.name), std::end(pending_.name), u'\0');
    char16_t* end = std::copy(prefix_.begin(), prefix_.end(), pending_.name);
    end = std::copy(name.begin(), name.end(), end);
    std::copy(postfix_.begin(), postfix_.end(), end);
    return true;
}

bool KelvraSwatchBook::SetGroupName(const std::u16string& name) {
    if (!TakeName(name)) return false;
    const kv::UnicodeString text = kv::UnicodeString::FromUTF16(pending_.name);
    return SwatchGroups().SetGroupName(currentGroup_, text.Get()) != kv::kNoErr;
}

std::u16string KelvraSwatchBook::GetGroupName() const {
    const SnapshotGroup* group = snapshotMode_ ? CurrentSnapshotGroup() : nullptr;
    return group != nullptr ? group->name : std::u16string();
}

const KelvraSwatchBook::SnapshotGroup* KelvraSwatchBook::CurrentSnapshotGroup() const {
    if (!snapshotMode_ || currentGroupIndex_ < 0 || std::size_t(currentGroupIndex_) >= snapshot_.size()) {
        return nullptr;
    }
    return &snapshot_[std::size_t(currentGroupIndex_)];
}

const KelvraSwatchBook::SnapshotSwatch* KelvraSwatchBook::SnapshotSwatchAt(std::int32_t swatch) const {
    const SnapshotGroup* group = CurrentSnapshotGroup();
    if (group == nullptr || swatch < 0 || std::size_t(swatch) >= group->swatches.size()) return nullptr;
    return &group->swatches[std::size_t(swatch)];
}

std::u16string KelvraSwatchBook::GetSwatchName(std::int32_t swatch, bool) const {
    const SnapshotSwatch* found = SnapshotSwatchAt(swatch);
    return found != nullptr ? found->name : std::u16string();
}

std::u16string KelvraSwatchBook::GetSwatchKey(std::int32_t) const { return {}; }

std::int32_t KelvraSwatchBook::GetSwatchKind(std::int32_t swatch) const {
    const SnapshotSwatch* found = SnapshotSwatchAt(swatch);
    return found != nullptr ? found->kind : 0;
}

std::int32_t KelvraSwatchBook::GetSwatchColorSpace(std::int32_t swatch) const {
    const SnapshotSwatch* found = SnapshotSwatchAt(swatch);
    return found != nullptr ? found->colorSpace : 0;
}

double KelvraSwatchBook::GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const {
    if (ok != nullptr) *ok = 1;
    const SnapshotSwatch* found = SnapshotSwatchAt(swatch);
    return found != nullptr ? found->tint : 0.0;
}

bool KelvraSwatchBook::GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const {
    const SnapshotSwatch* found = SnapshotSwatchAt(swatch);
    if (found == nullptr || found->valueCount < 1 || format < 0 ||
        std::find(std::begin(valueFormats_), std::end(valueFormats_), format) == std::end(valueFormats_)) {
        return false;
    }
    const std::int32_t count = std::min(GetFormatChannels(format), found->valueCount);
    if (count > 0) std::memcpy(values, found->values, std::size_t(count) * sizeof(double));
    return true;
}

std::int32_t KelvraSwatchBook::GetValueFormats(std::int32_t, std::int32_t* formats) const {
    if (formats != nullptr) std::copy(std::begin(valueFormats_), std::end(valueFormats_), formats);
    return 4;
}

std::int32_t KelvraSwatchBook::AddSwatch(std::int32_t position) {
    const std::int32_t count = SwatchCount(currentGroup_);
    if (position < 0 || position > count) position = count;
    KVSwatchRef swatch = nullptr;
    ThrowOutOfMemoryIf(SwatchGroups().InsertSwatch(currentGroup_, position, &swatch));
    MakePending(position);
    return position;
}

void KelvraSwatchBook::MakePending(std::int32_t swatch) {
    if (pending_.index == swatch) return;
    FlushPendingSwatch();
    pending_.index = swatch;
    pending_.kind = kProcessKind;
    pending_.colorSpace = kGraySpace;
    std::fill(std::begin(pending_.name), std::end(pending_.name), u'\0');
    // The other values stay until values are set: a gray swatch uses one.
    pending_.values[0] = 0.0;
    pending_.tint = 0.0;
    pending_.dirty = false;
}

std::int32_t KelvraSwatchBook::SetSwatchKind(std::int32_t swatch, std::int32_t kind) {
    if (kind < kSpotKind || kind > kProcessKind) return kind;
    MakePending(swatch);
    pending_.kind = kind;
    pending_.dirty = true;
    return kind;
}

bool KelvraSwatchBook::SetSwatchName(std::int32_t swatch, const std::u16string& name) {
    if (!TakeName(name)) return false;
    MakePending(swatch);
    return true;
}

bool KelvraSwatchBook::SetSwatchKey(std::int32_t, const std::u16string&) { return true; }

bool KelvraSwatchBook::SetSwatchTint(std::int32_t swatch, double tint) {
    MakePending(swatch);
    pending_.tint = tint;
    pending_.dirty = true;
    return true;
}

bool KelvraSwatchBook::SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) {
    if (!IsValidFormat(format)) return false;
    const std::int32_t colorSpace = GetFormatColorSpace(format);
    double converted[kMaxChannels] = {};
    if (!ConvertColorValues(colorSpace, GetFormatEncoding(format), values, kFloatEncoding, converted)) return false;
    MakePending(swatch);
    pending_.dirty = true;
    pending_.colorSpace = colorSpace;
    for (std::size_t i = 0; i < kMaxChannels; ++i) pending_.values[i] = Single(converted[i]);
    return true;
}

void KelvraSwatchBook::ConvertPendingLabToRGB() {
    const float lab[3] = {Single(pending_.values[0]), Single(pending_.values[1]), Single(pending_.values[2])};
    float rgb[3] = {};
    kv::ThrowIfError(ColorConversion().ConvertColor(kKVLabSpace, lab, kKVRGBSpace, rgb));
    for (std::size_t i = 0; i < 3; ++i) pending_.values[i] = rgb[i];
    pending_.colorSpace = kRGBSpace;
}

KVCustomColorHandle KelvraSwatchBook::DefinePendingCustomColor() {
    const bool spot = pending_.kind == kSpotKind;
    KVCustomColor definition{};
    definition.flags = spot ? kKVCustomSpotColor : 0u;
    const double* v = pending_.values;
    switch (pending_.colorSpace) {
        case kGraySpace:
            definition.kind = kKVCustomFourColor;
            definition.c.four = {0.0f, 0.0f, 0.0f, Single(1.0 - v[0])};
            break;
        case kLabSpace:
            if (spot) {
                definition.kind = kKVCustomLabColor;
                definition.c.lab = {Single(v[0]), Single(v[1]), Single(v[2])};
                break;
            }
            ConvertPendingLabToRGB();
            [[fallthrough]];
        case kRGBSpace:
            definition.kind = kKVCustomThreeColor;
            definition.c.three = {Single(v[0]), Single(v[1]), Single(v[2])};
            break;
        case kCMYKSpace:
            definition.kind = kKVCustomFourColor;
            definition.c.four = {Single(v[0]), Single(v[1]), Single(v[2]), Single(v[3])};
            break;
        default:
            return nullptr;  // no custom colour of this space
    }

    const KVCustomColorSuite& colors = CustomColors();
    // The pending name holds at most 31 code units.
    const kv::UnicodeString name = kv::UnicodeString::FromUTF16(pending_.name);
    KVCustomColorHandle color = nullptr;
    const ZPErr found = colors.FindCustomColor(name.Get(), &color);
    if (found != kv::kNoErr && found != kv::kNameNotFoundErr) throw kv::Error(found, nullptr);
    if (found == kv::kNoErr && color != nullptr) {
        kv::ThrowIfError(colors.SetCustomColor(color, &definition));
        return color;
    }
    color = nullptr;
    kv::ThrowIfError(colors.NewCustomColor(&definition, name.Get(), &color));
    if (spot) kv::ThrowIfError(colors.SetCustomColorBookID(color, bookId_));
    return color;
}

void KelvraSwatchBook::FlushPendingSwatch() {
    if (pending_.index < 0 || !pending_.dirty) return;
    const KVSwatchRef swatch = NthSwatch(currentGroup_, pending_.index);
    if (swatch == nullptr) throw kv::Error(kv::kOutOfMemoryErr, nullptr);
    {
        const kv::UnicodeString name = kv::UnicodeString::FromUTF16(pending_.name);
        kv::ThrowIfError(SwatchLists().SetSwatchName(swatch, name.Get()));
    }

    KVColor color{};
    const double* v = pending_.values;
    bool described = true;
    if (pending_.kind == kProcessKind) {
        switch (pending_.colorSpace) {
            case kGraySpace:
                color.kind = kKVGrayColor;
                color.c.gray.gray = Single(1.0 - v[0]);
                break;
            case kLabSpace:
                ConvertPendingLabToRGB();
                [[fallthrough]];
            case kRGBSpace:
                color.kind = kKVThreeColor;
                color.c.three = {Single(v[0]), Single(v[1]), Single(v[2])};
                break;
            case kCMYKSpace:
                color.kind = kKVFourColor;
                color.c.four = {Single(v[0]), Single(v[1]), Single(v[2]), Single(v[3])};
                break;
            default:
                described = false;  // the host has no colour of this space
        }
    } else {
        color.kind = kKVCustomColor;
        color.c.custom = {DefinePendingCustomColor(), Single(pending_.tint)};
        described = color.c.custom.color != nullptr;
    }
    if (described) kv::ThrowIfError(SwatchLists().SetSwatchColor(swatch, &color));
    pending_.dirty = false;
}

void KelvraSwatchBook::AppendSnapshotSwatch(SnapshotGroup& group, KVSwatchRef swatch) {
    KVColor color{};
    if (SwatchLists().GetSwatchColor(swatch, &color) != kv::kNoErr) return;
    SnapshotSwatch taken{};
    taken.kind = kProcessKind;
    auto take = [&taken](std::int32_t colorSpace, std::initializer_list<float> values) {
        taken.colorSpace = colorSpace;
        taken.valueCount = std::int32_t(values.size());
        std::copy(values.begin(), values.end(), taken.values);
    };
    switch (color.kind) {
        case kKVGrayColor:
            take(kGraySpace, {color.c.gray.gray});
            break;
        case kKVFourColor:
            take(kCMYKSpace, {color.c.four.cyan, color.c.four.magenta, color.c.four.yellow, color.c.four.black});
            break;
        case kKVThreeColor:
            take(kRGBSpace, {color.c.three.red, color.c.three.green, color.c.three.blue});
            break;
        case kKVCustomColor: {
            KVCustomColor definition{};
            if (CustomColors().GetCustomColor(color.c.custom.color, &definition) != kv::kNoErr ||
                (definition.flags & kKVCustomRegistrationColor) != 0) {
                return;
            }
            taken.kind = (definition.flags & kKVCustomSpotColor) != 0 ? kSpotKind : kGlobalKind;
            taken.tint = color.c.custom.tint;
            const auto& c = definition.c;
            switch (definition.kind) {
                case kKVCustomFourColor:
                    take(kCMYKSpace, {c.four.cyan, c.four.magenta, c.four.yellow, c.four.black});
                    break;
                case kKVCustomThreeColor:
                    take(kRGBSpace, {c.three.red, c.three.green, c.three.blue});
                    break;
                case kKVCustomLabColor:
                    take(kLabSpace, {c.lab.l, c.lab.a, c.lab.b});
                    break;
                default:
                    return;
            }
            break;
        }
        default:
            return;  // patterns, gradients and no colour have no values
    }
    const kv::UnicodeString name;
    if (SwatchLists().GetSwatchName(swatch, name.Get()) != kv::kNoErr) return;
    taken.name = name.ToUTF16();
    group.swatches.push_back(std::move(taken));
    ++snapshotSwatchCount_;
}

void KelvraSwatchBook::LoadSnapshot() {
    std::int32_t groupCount = 0;
    ThrowOutOfMemoryIf(SwatchGroups().CountGroups(swatchList_, &groupCount));
    snapshot_.clear();
    snapshot_.resize(std::size_t(std::max(groupCount, 0)));
    snapshotSwatchCount_ = 0;
    for (std::int32_t index = 0; index < groupCount; ++index) {
        const KVSwatchGroupRef group = NthGroup(swatchList_, index);
        if (group == nullptr) continue;
        SnapshotGroup& taken = snapshot_[std::size_t(index)];
        const kv::UnicodeString name;
        ThrowOutOfMemoryIf(SwatchGroups().GetGroupName(group, name.Get()));
        taken.name = name.ToUTF16();
        std::int32_t swatchCount = 0;
        ThrowOutOfMemoryIf(SwatchGroups().CountSwatches(group, &swatchCount));
        for (std::int32_t i = 0; i < swatchCount; ++i) {
            if (const KVSwatchRef swatch = NthSwatch(group, i)) AppendSnapshotSwatch(taken, swatch);
        }
    }
}
