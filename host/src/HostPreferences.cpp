#include <kelvra/HostError.h>
#include <kelvra/HostPreferences.h>

#include "FileDataFilter.h"
#include "HostCodes.h"
#include "WholeFile.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace kelvra {

namespace {

using nlohmann::json;

// The whole file as a JSON object: "NAM?" when there is no file, "PREF"
// when it cannot be read or is no object.
ZPErr ReadPreferences(const std::filesystem::path& file, json& object) {
    std::error_code error;
    if (file.empty() || !std::filesystem::exists(file, error)) return kZPNameNotFoundErr;
    const std::optional<std::string> text = ReadWholeFile(file);
    if (!text) return kPreferencesFileErr;
    object = json::parse(*text, nullptr, false);
    return object.is_object() ? kZPNoErr : kPreferencesFileErr;
}

ZPErr Lookup(const std::filesystem::path& file, const std::string& key, json& value) {
    json object;
    if (const ZPErr error = ReadPreferences(file, object)) return error;
    const auto found = object.find(key);
    if (found == object.end()) return kZPNameNotFoundErr;
    value = std::move(*found);
    return kZPNoErr;
}

// JSON has numbers, not integers: any number without a fractional part
// will do, 2.0 and 2e3 included.
ZPErr IntegerOf(const json& value, std::int32_t& integer) {
    constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
    constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        if (number > std::uint64_t(kMax)) return kPreferenceRangeErr;
        integer = std::int32_t(number);
        return kZPNoErr;
    }
    if (value.is_number_integer()) {
        const auto number = value.get<std::int64_t>();
        if (number < kMin || number > kMax) return kPreferenceRangeErr;
        integer = std::int32_t(number);
        return kZPNoErr;
    }
    if (!value.is_number()) return kPreferenceTypeErr;
    const double number = value.get<double>();
    if (std::isfinite(number) && std::trunc(number) != number) return kPreferenceTypeErr;
    if (!(number >= double(kMin) && number <= double(kMax))) return kPreferenceRangeErr;
    integer = std::int32_t(number);
    return kZPNoErr;
}

void WriteWhole(const std::filesystem::path& file, const std::string& text) {
    std::error_code error;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), error);
    FileDataFilter filter(file.string(), FileDataFilter::Mode::Write);
    std::size_t count = text.size();
    ZPErr result = filter.Open();
    if (result == kZPNoErr) result = filter.Write(text.data(), &count);
    if (result == kZPNoErr) result = filter.Finish();
    if (result != kZPNoErr) throw HostError(file.string() + ": cannot be written");
}

}  // namespace

ZPErr HostPreferences::GetInteger(const std::string& key, std::int32_t& value) const {
    json found;
    if (const ZPErr error = Lookup(file_, key, found)) return error;
    return IntegerOf(found, value);
}

ZPErr HostPreferences::GetString(const std::string& key, std::string& value) const {
    json found;
    if (const ZPErr error = Lookup(file_, key, found)) return error;
    if (!found.is_string()) return kPreferenceTypeErr;
    value = found.get<std::string>();
    return kZPNoErr;
}

RememberedLibrary HostPreferences::RememberLibrary(const std::filesystem::path& library) const {
    if (file_.empty()) throw HostError("no preferences file to remember " + library.string() + " in");
    json object = json::object();
    if (ReadPreferences(file_, object) == kPreferencesFileErr)
        throw HostError(file_.string() + ": not a JSON object, so nothing was remembered");
    const std::string countKey = std::string(kLibraryListPrefix) + kCountSuffix;
    std::int32_t count = 0;
    if (const auto found = object.find(countKey); found != object.end()) {
        if (IntegerOf(*found, count) != kZPNoErr || count < 0 || count == std::numeric_limits<std::int32_t>::max())
            throw HostError(file_.string() + ": " + countKey + " is not a count, so nothing was remembered");
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(library, error);
    if (error) throw HostError(library.string() + ": " + error.message());
    const RememberedLibrary remembered{kLibraryListPrefix + std::to_string(count), absolute.string()};
    object[remembered.key] = remembered.path;
    object[countKey] = count + 1;
    std::string text;
    try {
        text = object.dump(2) + "\n";
    } catch (const json::type_error&) {
        throw HostError(library.string() + ": a path that is not UTF-8 text cannot be remembered");
    }
    WriteWhole(file_, text);
    return remembered;
}

}  // namespace kelvra
