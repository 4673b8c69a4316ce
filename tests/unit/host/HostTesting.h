// Helpers for tests that act as a plug-in talking to the emulated host.
#pragma once

#include <kelvra/Host.h>

#include <KVStringSuites.h>

#include <gtest/gtest.h>

#include <string>

namespace kelvra::testing {

// The suite `name` in `version`, acquired through the host's basic suite.
template <typename Suite>
const Suite* Acquire(const Host& host, const char* name, std::int32_t version) {
    const void* suite = nullptr;
    EXPECT_EQ(host.BasicSuite()->AcquireSuite(name, version, &suite), 0u) << name;
    return static_cast<const Suite*>(suite);
}

// Host strings made and read as a plug-in would.
class Strings {
public:
    explicit Strings(const Host& host) : suite_(Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, 9)) {}
    KVUnicodeStringRef Make(std::u16string_view units) const {
        KVUnicodeStringRef string = nullptr;
        EXPECT_EQ(suite_->NewFromUTF16(reinterpret_cast<const std::uint16_t*>(units.data()), units.size(), &string),
                  0u);
        return string;
    }
    std::u16string Units(KVUnicodeStringRef string) const {
        std::size_t count = 0;
        EXPECT_EQ(suite_->GetUTF16(string, nullptr, 0, &count), 0u);
        std::u16string units(count, u'\0');
        EXPECT_EQ(suite_->GetUTF16(string, reinterpret_cast<std::uint16_t*>(units.data()), count, &count), 0u);
        return units;
    }
    const KVUnicodeStringSuite* Suite() const { return suite_; }

private:
    const KVUnicodeStringSuite* suite_;
};

// Host file paths made and read as a plug-in would, from and to UTF-8.
class Paths {
public:
    explicit Paths(const Host& host)
        : strings_(Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, 9)),
          suite_(Acquire<KVFilePathSuite>(host, kKVFilePathSuite, 8)) {}
    KVFilePathRef Make(const std::string& text) const {
        KVUnicodeStringRef string = nullptr;
        EXPECT_EQ(strings_->NewFromUTF8(text.data(), text.size(), &string), 0u);
        KVFilePathRef path = nullptr;
        EXPECT_EQ(suite_->NewFromString(string, &path), 0u);
        strings_->Dispose(string);
        return path;
    }
    // What `get` (one of the suite's functions that answer a string) gives.
    std::string Text(KVFilePathRef path, ZPErr (*get)(KVFilePathRef, KVUnicodeStringRef)) const {
        KVUnicodeStringRef string = nullptr;
        EXPECT_EQ(strings_->New(&string), 0u);
        EXPECT_EQ(get(path, string), 0u);
        std::size_t length = 0;
        EXPECT_EQ(strings_->GetPlatformText(string, nullptr, 0, &length), 0u);
        std::string text(length + 1, '\0');
        EXPECT_EQ(strings_->GetPlatformText(string, text.data(), text.size(), &length), 0u);
        strings_->Dispose(string);
        text.resize(length);
        return text;
    }
    // The path's string form.
    std::string Text(KVFilePathRef path) const { return Text(path, suite_->GetAsString); }
    const KVFilePathSuite* Suite() const { return suite_; }

private:
    const KVUnicodeStringSuite* strings_;
    const KVFilePathSuite* suite_;
};

}  // namespace kelvra::testing
