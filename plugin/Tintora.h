// The module's plug-in object, created at start-up and kept until shut-down.
// It owns the library list, the plug-in's own library, the file formats and
// the table of "KV Tintora Suite", the suite other plug-ins reach it by.
#pragma once

#include <cstdint>
#include <memory>

#include "CKVLibraryList.h"
#include "KVTintoraSuite.h"
#include "Plugin.h"
#include "SwatchesCore.h"
#include "formats/handlers/FileFormatHandler.h"

class Tintora final : public kv::Plugin {
public:
    static constexpr const char* kPreferencePrefix = "KVSwatchLibPersistentPrefix";
    static constexpr std::int32_t kOwnLibraryId = 20000;
    static constexpr std::uint32_t kFirstLibraryId = 30000;

    explicit Tintora(ZPPluginRef self) noexcept;
    // Rebuilds the object in place after a reload (kv::RebuildAfterReload):
    // its own fields start over as in the constructor.
    explicit Tintora(State&& kept) noexcept;

    // "CANT" without a suite table; else publishes "KV Tintora Suite",
    // registers the file formats and prepares the library list and the own
    // library. A start-up that fails gives back what it made.
    kv::ResultCode StartupPlugin(ZPInterfaceMessage* message) override;
    // Empties the suite's table and gives back the formats and libraries.
    kv::ResultCode ShutdownPlugin(ZPInterfaceMessage* message) override;
    // Gives back what a reload's fresh fields would leave out of reach.
    kv::ResultCode UnloadPlugin(ZPAccessMessage* message) override;
    // Saves the own library's state; its failure as a code.
    kv::ResultCode SaveUserData() override;
    // Keeps `plugin` as the object that other plug-ins' calls reach.
    kv::ResultCode SetGlobal(kv::Plugin* plugin) override;
    // The suite's table: a host block of its 14 entries, which the host
    // keeps once the suite is published.
    kv::ResultCode AllocateSuiteTables() override;
    kv::ResultCode FillSuiteTables() override;
    kv::ResultCode EmptySuiteTables() override;
    // The file formats take no parameters: these answer 0.
    kv::ResultCode GetFileFormatParameters(KVFileFormatMessage* message) override;
    kv::ResultCode SetFileFormatParameters(KVFileFormatMessage* message) override;
    kv::ResultCode UpdateFileFormat(KVFileFormatMessage* message) override;
    // Handed to the file formats; 0 while there are none. A swatch library
    // request that names no format goes to the host instead: 0, or "PARM"
    // when the host's swatch library suite cannot be had.
    kv::ResultCode GoFileFormat(KVFileFormatMessage* message) override;
    kv::ResultCode CheckFileFormat(KVFileFormatMessage* message) override;

    // The started plug-in object, or null.
    static Tintora* Global() noexcept;

    // Gathers the libraries from the host's folders and the remembered
    // files, once per object. A failure that throws leaves nothing gathered,
    // to be tried again on the next call.
    void EnsureLibraries();
    CKVLibraryList& Libraries() noexcept { return libraries_; }
    // Null before start-up made it and when there was no memory for it.
    SwatchesCore* OwnLibrary() const noexcept { return ownLibrary_.get(); }

    // The list's factory, for the started object: a SwatchesCore per file
    // and folder, numbered from 30000 (a number is used up also when there
    // is no memory for the library); none for the host folder of type 72,
    // which must not be listed. A host failure throws kv::Error.
    static void MakeLibrary(CKVLibrary*& library, KVFilePathRef path, bool isFolder);

private:
    // The formats, the libraries and the own library, given back.
    void ReleaseLibrariesAndFormats() noexcept;
    // Frees a table the host never received; once published the host keeps it.
    void DiscardUnpublishedTable() noexcept;

    KVTintoraSuite* suiteTable_ = nullptr;
    // Null until start-up, and when there was no memory for it.
    std::unique_ptr<formats::FileFormatHandler> fileFormats_;
    CKVLibraryList libraries_;
    bool librariesReady_ = false;
    std::uint32_t nextLibraryId_ = kFirstLibraryId;
    std::unique_ptr<SwatchesCore> ownLibrary_;
};
