// The two library file formats the module offers the host, so that a user
// can open or place a colour book or a swatch exchange file and receive its
// colours as swatches of the document: their registration, the answer
// whether a file belongs to one of them, and the import.
#pragma once

#include "KVError.h"
#include "ZPMessages.h"

namespace formats {

class FileFormatHandler {
public:
    explicit FileFormatHandler(ZPPluginRef plugin) noexcept : plugin_(plugin) {}
    FileFormatHandler(const FileFormatHandler&) = delete;
    FileFormatHandler& operator=(const FileFormatHandler&) = delete;

    // Registers "Orvik Color Book Reader", then "Orvik Swatch Exchange
    // Reader"; the host's refusal throws kv::Error with its code.
    void Register();

    // "KV Check": 0 when the file belongs to the format the message names,
    // else "FMT?". A file without extension is examined by its contents.
    kv::ResultCode Check(const KVFileFormatMessage& message) const;
    // "KV Go": imports the file into the current document; 0 (also when the
    // file turns out not to be of the format), "STOP" when the user declined
    // the unsupported-types question, "CANT" after telling the user that the
    // file could not be read.
    kv::ResultCode Go(const KVFileFormatMessage& message) const;

private:
    ZPPluginRef plugin_;
    KVFileFormatHandle colorBookFormat_ = nullptr;
    KVFileFormatHandle swatchExchangeFormat_ = nullptr;
};

}  // namespace formats
