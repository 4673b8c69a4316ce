// The stream the module reads and writes library files through: a file data
// filter of the host, so that the host does the file access.
#pragma once

#include <cstdint>

#include "OrvikSwatchbookStream.h"
#include "ZPTypes.h"

class DataFilterStream final : public OrvikSwatchbookStream {
public:
    // A filter on `file` in the mode "read" (reading) or "write", linked at
    // the start of a chain. When the host refuses either step the stream
    // stays closed. `creator` and `type` go to the host as they are.
    DataFilterStream(KVFilePathRef file, bool reading, std::uint32_t creator = 0, std::uint32_t type = 0);
    // A stream over a filter another plug-in made, linked and keeps: open
    // when there is one; the stream never unlinks it.
    DataFilterStream(KVDataFilterRef filter, bool reading) noexcept;
    // Unlinks a filter the stream made, which closes it; never throws.
    ~DataFilterStream() override;
    DataFilterStream(const DataFilterStream&) = delete;
    DataFilterStream& operator=(const DataFilterStream&) = delete;

    std::int32_t IsOpen() const override { return open_; }
    std::int32_t IsReading() const override { return std::int32_t(reading_); }
    // The bytes the host moved; 0 when the stream is closed or the host fails.
    std::int64_t Read(void* destination, std::size_t count) override;
    std::int64_t Write(const void* source, std::size_t count) override;

private:
    std::uint32_t reading_;
    std::int32_t open_ = 0;
    KVDataFilterRef filter_ = nullptr;
    bool owned_ = true;
};
