// "KV Tintora Suite" called as another plug-in calls it, through the real
// module in the emulated host, beside the same work done directly on the
// module's classes in this process:
//
// - CountLibraries, then GetLibraryName for every index, on 10,000
//   libraries, beside RefreshAll (which CountLibraries does first),
//   CountListedLibraries and GetLibraryByIndex on a library list gathered
//   from the same folder, each name copied into a host string as the suite
//   does;
// - FindReferenceSwatch for 256 full names of a 65,535-colour book, beside
//   ReferenceBook::FindSwatchIndex for the same names.
#include <benchmark/benchmark.h>

#include <kelvra/Host.h>

#include <KVStringSuites.h>
#include <KVTintoraSuite.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "CKVLibraryList.h"
#include "KVError.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"
#include "bench/LargeColorBook.h"
#include "bench/PairedTiming.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/TemporaryFolder.h"
#include "text/Utf8.h"

namespace {

constexpr std::int32_t kUserFolder = 88;
constexpr int kLibraries = 10'000;

// A home whose user folder holds 100 folders of 100 library files, every
// time stamp long past so that a refresh finds nothing moved.
const testsupport::TemporaryFolder& Home() {
    static const testsupport::TemporaryFolder home;
    static const bool made = [] {
        const timespec past[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
        const std::filesystem::path user = home.Path() / "user-88";
        std::filesystem::create_directories(user);
        for (int f = 0; f < 100; ++f) {
            const std::filesystem::path folder = user / ("Folder " + std::to_string(f));
            std::filesystem::create_directory(folder);
            for (int i = 0; i < kLibraries / 100; ++i) {
                std::ofstream(folder / ("Library " + std::to_string(i) + ".ose")) << "library";
            }
            utimensat(AT_FDCWD, folder.c_str(), past, 0);
        }
        utimensat(AT_FDCWD, user.c_str(), past, 0);
        return true;
    }();
    (void)made;
    return home;
}

template <class Suite>
const Suite* Acquire(kelvra::Host& host, const char* name, std::int32_t version) {
    const void* suite = nullptr;
    return host.BasicSuite()->AcquireSuite(name, version, &suite) == kZPNoErr ? static_cast<const Suite*>(suite)
                                                                               : nullptr;
}

void MakeLibrary(CKVLibrary*& library, KVFilePathRef path, bool isFolder) {
    static std::int32_t nextId = 30000;
    library = new CKVLibrary(nullptr, isFolder, path, nextId++);
}

void BM_ListLibrariesThroughTheSuite(benchmark::State& state) {
    kelvra::Host host;
    host.Folders().UseHome(Home().Path());
    kelvra::Module& module = host.Load(TINTORA_MODULE);
    if (module.Startup() != kZPNoErr) return state.SkipWithError("the module did not start");
    const auto* tintora = Acquire<KVTintoraSuite>(host, kKVTintoraSuite, kKVTintoraSuiteVersion);
    const auto* strings = Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion);
    // The same folder gathered into a list in this process, by the module's
    // own code, through the same host.
    kv::registered::ListRegisteredSuites();
    kv::AcquireRegisteredSuites(host.BasicSuite());
    {
        int context = 0;
        CKVLibraryList list;
        list.Init(&context, &MakeLibrary);
        list.AddLibraryFolder(CKVLibraryList::kUserFolders, kUserFolder);
        KVUnicodeStringRef name = nullptr;
        strings->New(&name);
        std::int32_t count = 0;
        tintora->CountLibraries(&count);  // the first call gathers
        if (count != kLibraries + 1) state.SkipWithError("the module did not find every library");

        PairedTiming timing(state);
        for (auto _ : state) {
            timing.Iteration(
                [&] {
                    tintora->CountLibraries(&count);
                    for (std::int32_t i = 1; i < count; ++i) tintora->GetLibraryName(i, name);
                },
                [&] {
                    list.RefreshAll();
                    const std::int32_t listed = list.CountListedLibraries(false);
                    for (std::int32_t i = 0; i < listed; ++i) {
                        kv::AssignString(name, list.GetLibraryByIndex(i)->Name().Get());
                    }
                });
        }
        strings->Dispose(name);
    }
    kv::ReleaseAllSuites();
    state.counters["libraries"] = kLibraries;
    host.BasicSuite()->ReleaseSuite(kKVTintoraSuite, kKVTintoraSuiteVersion);
    host.BasicSuite()->ReleaseSuite(kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion);
    module.Shutdown();
}

void BM_FindReferenceSwatch(benchmark::State& state) {
    static const testsupport::TemporaryFolder folder;
    const std::string file = folder.Write("book.ocb", LargeColorBook());
    kelvra::Host host;
    kelvra::Module& module = host.Load(TINTORA_MODULE);
    if (module.Startup() != kZPNoErr) return state.SkipWithError("the module did not start");
    const auto* tintora = Acquire<KVTintoraSuite>(host, kKVTintoraSuite, kKVTintoraSuiteVersion);
    const auto* strings = Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion);
    const auto* paths = Acquire<KVFilePathSuite>(host, kKVFilePathSuite, kKVFilePathSuiteVersion);

    KVReferenceBookRef book = nullptr;
    tintora->NewReferenceBook(&book);
    KVUnicodeStringRef pathText = nullptr;
    strings->NewFromUTF8(file.data(), file.size(), &pathText);
    KVFilePathRef path = nullptr;
    paths->NewFromString(pathText, &path);
    if (tintora->ReadColorBook(path, book) != kZPNoErr) state.SkipWithError("the book was not read");
    ReferenceBook local;
    formats::FileStream stream(file.c_str(), true);
    formats::ReadColorBook(stream, local, 0);

    // 256 full names spread over the book, as host strings and as text.
    std::vector<KVUnicodeStringRef> names;
    std::vector<std::u16string> texts;
    for (std::int32_t i = 0; i < 256; ++i) {
        texts.push_back(local.GetSwatchName(i * (kLargeColorBookColors / 256), true));
        const std::string utf8 = kv::Utf16ToUtf8(texts.back());
        KVUnicodeStringRef name = nullptr;
        strings->NewFromUTF8(utf8.data(), utf8.size(), &name);
        names.push_back(name);
    }
    KVReferenceColor color{};
    tintora->FindReferenceSwatch(book, names[0], &color);  // builds the book's index
    local.FindSwatchIndex(texts[0]);

    std::size_t found = 0;
    PairedTiming timing(state);
    for (auto _ : state) {
        timing.Iteration(
            [&] {
                for (KVUnicodeStringRef name : names) found += tintora->FindReferenceSwatch(book, name, &color) == 0;
            },
            [&] {
                for (const std::u16string& text : texts) found += local.FindSwatchIndex(text) >= 0;
            });
    }
    if (found != 2 * 256 * std::size_t(state.iterations())) state.SkipWithError("a name was not found");
    for (KVUnicodeStringRef name : names) strings->Dispose(name);
    strings->Dispose(pathText);
    paths->Dispose(path);
    tintora->DisposeReferenceBook(book);
    host.BasicSuite()->ReleaseSuite(kKVTintoraSuite, kKVTintoraSuiteVersion);
    host.BasicSuite()->ReleaseSuite(kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion);
    host.BasicSuite()->ReleaseSuite(kKVFilePathSuite, kKVFilePathSuiteVersion);
    module.Shutdown();
}

BENCHMARK(BM_ListLibrariesThroughTheSuite)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindReferenceSwatch)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
