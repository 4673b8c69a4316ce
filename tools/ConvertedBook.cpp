#include "ConvertedBook.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>

#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "text/Utf8.h"

namespace tool {
namespace {

using namespace swatchbook;

// One swatch on its way into the output book.
struct Placed {
    std::size_t group;
    std::u16string name;
    std::string origin;
    const CompleteBook* book;
    const CompleteBook::Swatch* swatch;
    std::int32_t kind;
    std::size_t source;  // which source's format map applies
};

std::string Quoted(const std::u16string& name) { return "\"" + kv::Utf16ToUtf8(name) + "\""; }

std::u16string FirstUnits(const std::u16string& text, std::size_t units) {
    if (text.size() <= units) return text;
    // Never half of a surrogate pair.
    if (units > 0 && text[units - 1] >= 0xD800 && text[units - 1] < 0xDC00) --units;
    return text.substr(0, units);
}

bool ImportsColorSpace(std::int32_t colorSpace) {
    return colorSpace == kGraySpace || colorSpace == kLabSpace || colorSpace == kRGBSpace || colorSpace == kCMYKSpace;
}

// Lightness to the writer's ink, in the format's own encoding.
void InvertGray(std::int32_t encoding, std::vector<std::uint8_t>& bytes) {
    const std::size_t size = std::size_t(BytesPerChannel(encoding));
    for (std::size_t at = 0; size > 0 && at + size <= bytes.size(); at += size) {
        if (encoding == kInt8Encoding) {
            bytes[at] = std::uint8_t(255 - bytes[at]);
        } else if (encoding == kInt16Encoding) {
            std::uint16_t v;
            std::memcpy(&v, &bytes[at], 2);
            v = std::uint16_t(65535 - v);
            std::memcpy(&bytes[at], &v, 2);
        } else {
            double v;
            std::memcpy(&v, &bytes[at], 8);
            v = 1.0 - v;
            std::memcpy(&bytes[at], &v, 8);
        }
    }
}

std::vector<std::int32_t> CopyFormats(const CompleteBook& from, CompleteBook& out) {
    std::vector<std::int32_t> map;
    for (std::int32_t format = 0; format < from.CountFormats(); ++format) {
        const std::int32_t copy = out.AddFormat();
        out.SetFormatEncoding(copy, from.GetFormatEncoding(format));
        out.SetFormatColorSpace(copy, from.GetFormatColorSpace(format));
        out.SetFormatChannels(copy, from.GetFormatChannels(format));
        map.push_back(copy);
    }
    return map;
}

std::u16string FileGroupName(const ConvertSource& source) {
    if (!source.book.GetTitle().empty()) return source.book.GetTitle();
    return kv::Utf8ToUtf16(std::filesystem::path(source.path).stem().string());
}

class Conversion {
public:
    Conversion(const ConvertRules& rules, CompleteBook& out) : rules_(rules), out_(out) {
        groups_.push_back({});
        if (rules_.groupName) groups_.push_back(*rules_.groupName);
    }

    void Take(const ConvertSource& source) {
        maps_.push_back(CopyFormats(source.book, out_));
        std::size_t fileGroup = 0;
        if (rules_.groupName) fileGroup = 1;
        if (rules_.groupPerFile) fileGroup = AddGroup(FileGroupName(source));
        std::size_t counted = 0;
        for (std::size_t g = 0; g < source.book.Groups().size(); ++g) {
            const CompleteBook::Group& group = source.book.Groups()[g];
            std::size_t into = fileGroup;
            if (!rules_.groupName && !rules_.groupPerFile && g > 0) into = AddGroup(group.name);
            for (const CompleteBook::Swatch& swatch : group.swatches) {
                const std::string origin =
                    source.lines.empty() ? source.path + ", swatch " + std::to_string(counted + 1)
                                         : source.path + ":" + std::to_string(source.lines[counted]);
                ++counted;
                Place(source, swatch, into, origin);
            }
        }
    }

    ConvertReport Finish() {
        CheckLengths();
        CheckDuplicates();
        const std::int64_t blocks = std::int64_t(placed_.size()) + 2 * std::int64_t(groups_.size() - 1);
        if (blocks > kMaxExchangeBlocks) {
            report_.errors.push_back("the swatches and groups need " + std::to_string(blocks) +
                                     " blocks; a swatch exchange file holds at most " +
                                     std::to_string(kMaxExchangeBlocks));
        }
        if (report_.errors.empty()) Emit();
        return report_;
    }

private:
    std::size_t AddGroup(const std::u16string& name) {
        groups_.push_back(name);
        return groups_.size() - 1;
    }

    void Place(const ConvertSource& source, const CompleteBook::Swatch& swatch, std::size_t group,
               const std::string& origin) {
        if (swatch.kind < kSpotKind || swatch.kind > kProcessKind) return;  // an empty place
        const std::u16string name = source.book.GetPrefix() + swatch.name + source.book.GetPostfix();
        const std::int32_t kind = rules_.kind.value_or(swatch.kind);
        const std::int32_t colorSpace = source.book.GetFormatColorSpace(swatch.lastFormat);
        if (swatch.values.empty() || !ImportsColorSpace(colorSpace)) {
            report_.notes.push_back(origin + ": left out " + Quoted(name) + ": " +
                                    (colorSpace == kXYZSpace ? "the host does not import XYZ colours"
                                                             : "it has no colour the host imports"));
            return;
        }
        if (kind == kProcessKind && swatch.tint > 0) {
            report_.notes.push_back(origin + ": left out " + Quoted(name) +
                                    ": a swatch exchange file cannot carry a process colour with a tint");
            return;
        }
        placed_.push_back({group, name, origin, &source.book, &swatch, kind, maps_.size() - 1});
    }

    void CheckLengths() {
        for (Placed& p : placed_) {
            if (p.name.size() <= kMaxHostNameUnits) continue;
            if (rules_.cutNames) {
                const std::u16string cut = FirstUnits(p.name, kMaxHostNameUnits);
                report_.notes.push_back(p.origin + ": cut " + Quoted(p.name) + " to " + Quoted(cut));
                p.name = cut;
            } else {
                report_.errors.push_back(p.origin + ": name " + Quoted(p.name) + " has " +
                                         std::to_string(p.name.size()) + " UTF-16 units; the host holds at most " +
                                         std::to_string(kMaxHostNameUnits) + " (--cut-names cuts it)");
            }
        }
    }

    void CheckDuplicates() {
        std::map<std::u16string, std::vector<Placed*>> uses;
        for (Placed& p : placed_) uses[p.name].push_back(&p);
        std::set<std::u16string> taken;
        for (const auto& [name, list] : uses) taken.insert(name);
        for (Placed& p : placed_) {
            const std::vector<Placed*>& list = uses[p.name];
            if (list.size() < 2 || list.front() == &p) continue;
            if (!rules_.renameDuplicates) continue;
            const std::u16string renamed = FreeName(p.name, taken);
            report_.notes.push_back(p.origin + ": renamed " + Quoted(p.name) + " to " + Quoted(renamed) +
                                    ", used before at " + list.front()->origin);
            taken.insert(renamed);
            p.name = renamed;
        }
        if (rules_.renameDuplicates) return;
        for (const Placed& p : placed_) {
            const std::vector<Placed*>& list = uses[p.name];
            if (list.size() < 2 || list.front() != &p) continue;
            std::string where;
            for (const Placed* use : list) where += (where.empty() ? "" : ", ") + use->origin;
            report_.errors.push_back("name " + Quoted(p.name) + " is used " + std::to_string(list.size()) +
                                     " times: " + where + " (--rename-duplicates numbers the later ones)");
        }
    }

    // "name 2", "name 3", ...: the first not taken, cut to fit the host.
    static std::u16string FreeName(const std::u16string& name, const std::set<std::u16string>& taken) {
        for (unsigned number = 2;; ++number) {
            const std::string suffix = " " + std::to_string(number);
            const std::u16string wide(suffix.begin(), suffix.end());
            const std::u16string candidate = FirstUnits(name, kMaxHostNameUnits - wide.size()) + wide;
            if (taken.count(candidate) == 0) return candidate;
        }
    }

    void Emit() {
        for (std::size_t g = 1; g < groups_.size(); ++g) {
            out_.AddGroup();
            out_.SelectGroup(std::int32_t(g));
            out_.SetGroupName(groups_[g]);
        }
        for (const Placed& p : placed_) {
            out_.SelectGroup(std::int32_t(p.group));
            const std::int32_t swatch = out_.AddSwatch(-1);
            out_.SetSwatchKind(swatch, p.kind);
            out_.SetSwatchName(swatch, p.name);
            out_.SetSwatchTint(swatch, p.swatch->tint);
            for (const CompleteBook::Values& values : p.swatch->values) CopyValues(p, swatch, values);
            // The writer reads the values last given; give those again last.
            for (const CompleteBook::Values& values : p.swatch->values) {
                if (values.format == p.swatch->lastFormat) CopyValues(p, swatch, values);
            }
        }
    }

    void CopyValues(const Placed& p, std::int32_t swatch, const CompleteBook::Values& values) {
        std::vector<std::uint8_t> bytes = values.bytes;
        if (p.book->GetFormatColorSpace(values.format) == kGraySpace) {
            InvertGray(p.book->GetFormatEncoding(values.format), bytes);
        }
        out_.SetSwatchValuesNative(swatch, maps_[p.source][std::size_t(values.format)], bytes.data());
    }

    const ConvertRules& rules_;
    CompleteBook& out_;
    std::vector<std::u16string> groups_;            // index 0: the default group
    std::vector<std::vector<std::int32_t>> maps_;  // each source's formats in `out_`
    std::vector<Placed> placed_;
    ConvertReport report_;
};

}  // namespace

ConvertReport BuildConvertedBook(const std::vector<ConvertSource>& sources, const ConvertRules& rules,
                                 CompleteBook& out) {
    Conversion conversion(rules, out);
    for (const ConvertSource& source : sources) conversion.Take(source);
    return conversion.Finish();
}

}  // namespace tool
