// A swatch book with groups, held in memory the way a document's swatch list
// is: group 0 is the unnamed default group, swatch indices count within the
// selected group, and every swatch keeps its values in its format's encoding.
// The books of the model keep no groups; this one lets tests and the fuzz
// target write and read back files that have them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "swatchbook/OrvikSwatchbookFormat.h"

namespace testsupport {

class GroupedBook : public OrvikSwatchbookFormat {
public:
    struct Swatch {
        std::int32_t kind = 0;  // 0 until set to 1..3
        std::u16string name;
        double tint = 0.0;
        std::int32_t format = -1;          // the format the values were set in
        std::vector<std::uint8_t> values;  // in that format's encoding
    };
    struct Group {
        std::u16string name;
        std::vector<Swatch> swatches;
    };

    GroupedBook();

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

    std::int32_t CountSwatches() const override;
    void BeginFill() override;

    std::int32_t AddGroup() override;
    void EndGroup(std::int32_t, std::int64_t, std::int32_t) override {}
    std::int32_t CountGroups(std::int32_t* ok) const override;
    bool SelectGroup(std::int32_t group) override;
    bool IsDefaultGroup(std::int32_t group) const override { return group == 0; }
    std::int32_t CountGroupSwatches() const override;
    bool SetGroupName(const std::u16string& name) override;
    std::u16string GetGroupName() const override;

    std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const override;
    std::u16string GetSwatchKey(std::int32_t) const override { return {}; }
    std::int32_t GetSwatchKind(std::int32_t swatch) const override;
    std::int32_t GetSwatchColorSpace(std::int32_t swatch) const override;
    double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const override;
    bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const override;
    std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const override;

    std::int32_t AddSwatch(std::int32_t position) override;
    std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) override;
    bool SetSwatchName(std::int32_t swatch, const std::u16string& name) override;
    bool SetSwatchKey(std::int32_t, const std::u16string&) override { return true; }
    bool SetSwatchTint(std::int32_t swatch, double tint) override;
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

}  // namespace testsupport
