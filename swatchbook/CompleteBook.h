// A swatch book that keeps everything a reader gives it: the book
// properties, the formats, the groups in order, and every swatch's kind,
// name, catalogue key, tint and values, in each format they were given in
// and in that format's own encoding. It answers every read operation, so the
// swatch exchange writer can write it and the tools can show a library file
// as it is; the reference book keeps no groups, tints or native values.
//
// Groups work as in a document's swatch list: group 0 is the unnamed default
// group, and swatch indices count within the selected group.
//
// Storage comes from the standard containers: a failed allocation throws
// std::bad_alloc, which the readers pass on to their caller.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "OrvikSwatchbookFormat.h"

class CompleteBook : public OrvikSwatchbookFormat {
public:
    // A swatch's values in one format, packed in that format's encoding.
    struct Values {
        std::int32_t format = -1;
        std::vector<std::uint8_t> bytes;
    };
    struct Swatch {
        // 0 until set; 1 spot, 2 global, 3 process, 4 an empty place.
        std::int32_t kind = 0;
        std::u16string name;  // without the book's prefix and postfix
        std::u16string key;
        double tint = 0.0;
        std::vector<Values> values;    // in the order their formats were first given
        std::int32_t lastFormat = -1;  // the format the values were last given in
    };
    struct Group {
        std::u16string name;  // empty for the default group
        std::vector<Swatch> swatches;
    };

    CompleteBook();

    const std::vector<Group>& Groups() const { return groups_; }

    std::int32_t GetVersion() const override { return version_; }
    void SetVersion(std::int32_t version) override { version_ = version; }
    std::int32_t GetPageSize() const override { return pageSize_; }
    void SetPageSize(std::int32_t pageSize) override { pageSize_ = pageSize; }
    std::int32_t GetPageKeyOffset() const override { return pageKeyOffset_; }
    void SetPageKeyOffset(std::int32_t offset) override { pageKeyOffset_ = offset; }
    std::u16string GetTitle() const override { return title_; }
    void SetTitle(const std::u16string& title) override { title_ = title; }
    std::int32_t GetBookID() const override { return bookId_; }
    void SetBookID(std::int32_t bookId) override { bookId_ = bookId; }
    std::u16string GetCopyright() const override { return copyright_; }
    void SetCopyright(const std::u16string& copyright) override { copyright_ = copyright; }
    std::u16string GetPrefix() const override { return prefix_; }
    void SetPrefix(const std::u16string& prefix) override { prefix_ = prefix; }
    std::u16string GetPostfix() const override { return postfix_; }
    void SetPostfix(const std::u16string& postfix) override { postfix_ = postfix; }

    // Over all groups.
    std::int32_t CountSwatches() const override;
    // Forgets the groups and swatches (the default group stays) and the
    // formats; the properties stay, as readers set those they have.
    void BeginFill() override;

    std::int32_t AddGroup() override;
    void EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) override;
    // *ok becomes 1: one default group.
    std::int32_t CountGroups(std::int32_t* ok) const override;
    bool SelectGroup(std::int32_t group) override;
    bool IsDefaultGroup(std::int32_t group) const override;
    std::int32_t CountGroupSwatches() const override;
    bool SetGroupName(const std::u16string& name) override;
    std::u16string GetGroupName() const override;

    std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const override;
    std::u16string GetSwatchKey(std::int32_t swatch) const override;
    // 1..3; 0 for an empty place, a swatch never given a kind or a bad index,
    // so that nothing reads an empty place as a colour.
    std::int32_t GetSwatchKind(std::int32_t swatch) const override;
    // The colour space of the format the values were last given in.
    std::int32_t GetSwatchColorSpace(std::int32_t swatch) const override;
    double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const override;
    // False unless the swatch has values in that format.
    bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const override;
    // The formats the swatch has values in, in the order first given.
    std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const override;

    // Inserts into the selected group; a position outside 0..count appends.
    std::int32_t AddSwatch(std::int32_t position) override;
    // Keeps 1..4; other kinds leave the swatch as it is. Answers the kind kept.
    std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) override;
    // Any length: the limits of a host are the caller's to check.
    bool SetSwatchName(std::int32_t swatch, const std::u16string& name) override;
    bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) override;
    bool SetSwatchTint(std::int32_t swatch, double tint) override;
    // Keeps the values in the format's encoding, replacing earlier values in
    // the same format; false for a bad swatch or format index.
    bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) override;

private:
    const Swatch* Find(std::int32_t swatch) const;
    Swatch* Find(std::int32_t swatch);
    std::size_t ValueBytes(std::int32_t format) const;

    std::vector<Group> groups_;
    std::size_t current_ = 0;
    std::int32_t version_ = 0;
    std::int32_t pageSize_ = 0;
    std::int32_t pageKeyOffset_ = 0;
    std::int32_t bookId_ = 0;
    std::u16string title_, copyright_, prefix_, postfix_;
};
