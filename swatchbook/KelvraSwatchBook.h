// A swatch book over a host document's swatch list. As an import target
// (built over no list, which stands for the current document) every group
// and swatch a reader adds is created in the document at once; a swatch's
// name, kind, values and tint are collected and written when the reader
// turns to another swatch or group, or at FlushPendingSwatch. As an export
// source (built over a list) it answers from a snapshot of that list's
// groups and swatches, taken by LoadSnapshot.
//
// A failing host call throws kv::Error: "!MEM" when a group or swatch cannot
// be inserted, found or listed, otherwise the host's own code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "OrvikSwatchbookFormat.h"
#include "SwatchbookCodes.h"
#include "ZPTypes.h"

class KelvraSwatchBook final : public OrvikSwatchbookFormat {
public:
    // A non-null list makes the book an export source with one Float format
    // per colour space it can hold. Reads the list's first group.
    explicit KelvraSwatchBook(KVSwatchListRef swatchList);
    // Neither writes the pending swatch nor calls the host.
    ~KelvraSwatchBook() override;

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
    void EndFill() override;

    // Appends a group to the document; its index.
    std::int32_t AddGroup() override;
    void EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) override;
    // Sets *ok to 1.
    std::int32_t CountGroups(std::int32_t* ok) const override;
    bool SelectGroup(std::int32_t group) override;
    bool IsDefaultGroup(std::int32_t group) const override;
    std::int32_t CountGroupSwatches() const override;
    // True exactly when the host refused the name: callers have always
    // relied on this answer, so it stays as it is.
    bool SetGroupName(const std::u16string& name) override;
    std::u16string GetGroupName() const override;

    // The snapshot's answers; empty, 0 or false for an import target.
    std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const override;
    std::u16string GetSwatchKey(std::int32_t swatch) const override;
    std::int32_t GetSwatchKind(std::int32_t swatch) const override;
    std::int32_t GetSwatchColorSpace(std::int32_t swatch) const override;
    double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const override;
    bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const override;
    // The four formats of an export source, whatever the swatch; always 4.
    std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const override;

    // Inserts a swatch into the current group (a position outside 0..count
    // appends) and makes it the pending swatch; its position.
    std::int32_t AddSwatch(std::int32_t position) override;
    std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) override;
    // The name goes into the pending swatch even when `swatch` is another
    // one, which is then written with it: readers name a swatch right after
    // adding it, while it is pending.
    bool SetSwatchName(std::int32_t swatch, const std::u16string& name) override;
    bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) override;
    bool SetSwatchTint(std::int32_t swatch, double tint) override;
    bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) override;

    // Writes the pending swatch to the document now, if it has anything to write.
    void FlushPendingSwatch();
    // Takes the snapshot of the swatch list's groups and swatches.
    void LoadSnapshot();

private:
    // Names hold at most 31 code units (64 bytes with the terminator).
    static constexpr std::size_t kNameUnits = 32;

    struct PendingSwatch {
        std::int32_t index = -1;  // -1: none
        bool dirty = false;
        std::int32_t kind = swatchbook::kSpotKind;
        char16_t name[kNameUnits] = {};
        std::int32_t colorSpace = swatchbook::kCMYKSpace;
        double values[swatchbook::kMaxChannels] = {};  // Float, each rounded to single precision
        double tint = 0.0;
    };

    struct SnapshotSwatch {
        std::int32_t kind;
        std::int32_t colorSpace;
        std::int32_t valueCount;
        double values[swatchbook::kMaxChannels];
        std::u16string name;
        double tint;
    };

    struct SnapshotGroup {
        std::u16string name;
        std::vector<SnapshotSwatch> swatches;
    };

    // Prefix + name + Postfix into the pending name; false when it does not fit.
    bool TakeName(const std::u16string& name);
    // Writes the pending swatch unless it is `swatch`, which then becomes
    // pending with nothing set.
    void MakePending(std::int32_t swatch);
    // The swatch of the current snapshot group; null outside snapshot mode.
    const SnapshotSwatch* SnapshotSwatchAt(std::int32_t swatch) const;
    const SnapshotGroup* CurrentSnapshotGroup() const;
    // The pending Lab values as RGB, kept as the pending values from then on.
    void ConvertPendingLabToRGB();
    // The custom colour named by the pending swatch, defined by it.
    KVCustomColorHandle DefinePendingCustomColor();
    void AppendSnapshotSwatch(SnapshotGroup& group, KVSwatchRef swatch);

    KVSwatchListRef swatchList_;
    KVSwatchGroupRef currentGroup_ = nullptr;
    std::int32_t currentGroupIndex_ = 0;
    std::int32_t snapshotSwatchCount_ = 0;
    std::int32_t version_ = 0;
    std::int32_t pageSize_ = 0;
    std::int32_t pageKeyOffset_ = 0;
    std::int32_t bookId_ = 0;
    std::u16string title_, copyright_, prefix_, postfix_;
    PendingSwatch pending_;
    bool snapshotMode_ = false;
    // Gray, RGB, Lab, CMYK.
    std::int32_t valueFormats_[4] = {-1, -1, -1, -1};
    std::vector<SnapshotGroup> snapshot_;
};
