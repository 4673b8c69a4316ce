// A data filter on a file. Reading reads the file; writing goes to a hidden
// temporary file in the same folder that replaces the target only when the
// filter is finished after writes that all succeeded, so a failed export
// never destroys the file it would have replaced.
#pragma once

#include <ZPTypes.h>

#include <string>

namespace kelvra {

class FileDataFilter {
public:
    enum class Mode { Read, Write };

    FileDataFilter(std::string path, Mode mode) : path_(std::move(path)), mode_(mode) {}
    ~FileDataFilter();  // an unfinished temporary file is removed
    FileDataFilter(const FileDataFilter&) = delete;
    FileDataFilter& operator=(const FileDataFilter&) = delete;

    Mode GetMode() const { return mode_; }
    bool IsOpen() const { return fd_ >= 0; }

    ZPErr Open();
    // Up to *count bytes; *count receives the number read (short at the end).
    ZPErr Read(char* store, std::size_t* count);
    ZPErr Write(const char* store, std::size_t* count);
    // A write refused before it reached the file also spoils the result.
    void MarkFailed() { failed_ = true; }
    // Closes; a written file replaces the target now unless a write failed.
    ZPErr Finish();
    // Closes and keeps nothing written: the target stays as it was.
    void Discard();

private:

    std::string path_;
    Mode mode_;
    std::string temporary_;
    int fd_ = -1;
    bool failed_ = false;
};

}  // namespace kelvra
