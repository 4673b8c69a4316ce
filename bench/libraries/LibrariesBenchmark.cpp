// The library list on trees of 10,000 library files in 100 folders and of
// 100,000 in 1,000, in this process against the emulated host. Each piece
// of work runs beside a bare walk of the same tree in the same iteration:
//
// - gathering (AddLibraryFolder), and listing every library by index
//   (GetLibraryByIndex, the index built on the first call), each beside
//   readdir of every folder and stat of every entry;
// - FindLibraryByPath for every file, beside the same walk;
// - RefreshAll with nothing changed, beside readdir and stat of every
//   folder, which is the least a refresh must do to see that nothing moved.
#include <benchmark/benchmark.h>

#include <kelvra/Host.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "CKVLibraryList.h"
#include "KVError.h"
#include "KVFilePath.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"
#include "bench/PairedTiming.h"
#include "tests/support/TemporaryFolder.h"
#include "text/Utf8.h"

namespace {

constexpr std::int32_t kUserFolder = 88;

// A tree of `folders` folders of `filesPerFolder` files each, every time
// stamp long past so that a refresh finds nothing moved.
struct Tree {
    testsupport::TemporaryFolder root;
    std::vector<std::string> folders;
    std::vector<std::string> files;

    Tree(int folderCount, int filesPerFolder) {
        const timespec past[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
        for (int f = 0; f < folderCount; ++f) {
            const std::filesystem::path folder = root.Path() / ("Folder " + std::to_string(f));
            std::filesystem::create_directory(folder);
            for (int i = 0; i < filesPerFolder; ++i) {
                const std::filesystem::path file = folder / ("Library " + std::to_string(i) + ".ose");
                std::ofstream(file) << "library";
                files.push_back(file.string());
            }
            utimensat(AT_FDCWD, folder.c_str(), past, 0);
            folders.push_back(folder.string());
        }
        utimensat(AT_FDCWD, root.Path().c_str(), past, 0);
    }
};

const Tree& TreeOf(std::int64_t files) {
    static const Tree small(100, 100);
    if (files <= 10'000) return small;
    static const Tree large(1'000, 100);
    return large;
}

// readdir of the tree's folders; with `entries` stat of every entry too.
std::size_t BareWalk(const std::string& folder, bool entries) {
    std::size_t seen = 0;
    DIR* directory = opendir(folder.c_str());
    if (directory == nullptr) return 0;
    struct stat info {};
    stat(folder.c_str(), &info);
    while (const dirent* entry = readdir(directory)) {
        if (entry->d_name[0] == '.') continue;
        if (entry->d_type == DT_DIR) {
            seen += BareWalk(folder + '/' + entry->d_name, entries);
        } else if (entries) {
            stat((folder + '/' + entry->d_name).c_str(), &info);
            ++seen;
        }
    }
    closedir(directory);
    return seen;
}

// Writes over more memory than the caches hold, outside the timed work, so
// that every listing starts from memory as a panel's would after a while:
// a small tree would otherwise be listed from the caches and a large one
// not, and the comparison between them would measure the caches.
void EvictCaches() {
    static std::vector<char> memory(std::size_t(64) << 20);
    for (std::size_t i = 0; i < memory.size(); i += 64) memory[i] = char(memory[i] + 1);
    benchmark::ClobberMemory();
}

void MakeLibrary(CKVLibrary*& library, KVFilePathRef path, bool isFolder) {
    static std::int32_t nextId = 30000;
    library = new CKVLibrary(nullptr, isFolder, path, nextId++);
}

// The emulated host in this process, its user folder the tree.
class InProcessHost {
public:
    explicit InProcessHost(const Tree& tree) {
        host_.Folders().Map(kUserFolder, tree.root.Path());
        kv::registered::ListRegisteredSuites();
        ok_ = kv::AcquireRegisteredSuites(host_.BasicSuite()) == kv::kNoErr;
    }
    ~InProcessHost() { kv::ReleaseAllSuites(); }
    bool Ok() const { return ok_; }

    std::unique_ptr<CKVLibraryList> Gathered() {
        auto list = std::make_unique<CKVLibraryList>();
        static int context = 0;
        list->Init(&context, &MakeLibrary);
        list->AddLibraryFolder(CKVLibraryList::kUserFolders, kUserFolder);
        return list;
    }

private:
    kelvra::Host host_;
    bool ok_ = false;
};

void BM_Gather(benchmark::State& state) {
    const Tree& tree = TreeOf(state.range(0));
    InProcessHost host(tree);
    if (!host.Ok()) return state.SkipWithError("no host suites");
    PairedTiming timing(state);
    std::size_t walked = 0;
    for (auto _ : state) {
        std::unique_ptr<CKVLibraryList> list;
        timing.Iteration([&] { list = host.Gathered(); }, [&] { walked = BareWalk(tree.root.Path().string(), true); });
        if (list->CountListedLibraries(false) != std::int32_t(tree.files.size())) {
            return state.SkipWithError("the gathering missed libraries");
        }
        list.reset();
    }
    state.counters["libraries"] = double(walked);
}

// Every library by index, as a panel lists them; how many there were.
std::int32_t ListAll(CKVLibraryList& list) {
    std::int32_t listed = 0;
    while (CKVLibrary* library = list.GetLibraryByIndex(listed)) {
        benchmark::DoNotOptimize(library);
        ++listed;
    }
    return listed;
}

void BM_ListByIndex(benchmark::State& state) {
    const Tree& tree = TreeOf(state.range(0));
    InProcessHost host(tree);
    if (!host.Ok()) return state.SkipWithError("no host suites");
    PairedTiming timing(state);
    for (auto _ : state) {
        // A list just gathered, whose index the first call builds.
        std::unique_ptr<CKVLibraryList> list = host.Gathered();
        std::int32_t listed = 0;
        EvictCaches();
        timing.Iteration([&] { listed = ListAll(*list); },
                         [&] { benchmark::DoNotOptimize(BareWalk(tree.root.Path().string(), true)); });
        if (listed != std::int32_t(tree.files.size())) return state.SkipWithError("the listing missed libraries");
        list.reset();
    }
    state.counters["libraries"] = double(tree.files.size());
}

// The same listing again: the index stands, each call is a look-up.
void BM_ListByIndexAgain(benchmark::State& state) {
    const Tree& tree = TreeOf(state.range(0));
    InProcessHost host(tree);
    if (!host.Ok()) return state.SkipWithError("no host suites");
    std::unique_ptr<CKVLibraryList> list = host.Gathered();
    list->GetLibraryByIndex(0);
    PairedTiming timing(state);
    for (auto _ : state) {
        std::int32_t listed = 0;
        EvictCaches();
        timing.Iteration([&] { listed = ListAll(*list); },
                         [&] { benchmark::DoNotOptimize(BareWalk(tree.root.Path().string(), true)); });
        if (listed != std::int32_t(tree.files.size())) return state.SkipWithError("the listing missed libraries");
    }
    state.counters["libraries"] = double(tree.files.size());
}

void BM_FindLibraryByPath(benchmark::State& state) {
    const Tree& tree = TreeOf(state.range(0));
    InProcessHost host(tree);
    if (!host.Ok()) return state.SkipWithError("no host suites");
    std::unique_ptr<CKVLibraryList> list = host.Gathered();
    std::vector<kv::FilePath> paths;
    for (const std::string& file : tree.files) paths.push_back(kv::FilePath::FromUTF16(kv::Utf8ToUtf16(file)));
    PairedTiming timing(state);
    for (auto _ : state) {
        std::size_t found = 0;
        timing.Iteration(
            [&] {
                for (const kv::FilePath& path : paths) found += list->FindLibraryByPath(path.Get()) != nullptr;
            },
            [&] { benchmark::DoNotOptimize(BareWalk(tree.root.Path().string(), true)); });
        if (found != paths.size()) return state.SkipWithError("a library was not found");
    }
    state.counters["libraries"] = double(paths.size());
}

void BM_RefreshAllUnchanged(benchmark::State& state) {
    const Tree& tree = TreeOf(state.range(0));
    InProcessHost host(tree);
    if (!host.Ok()) return state.SkipWithError("no host suites");
    std::unique_ptr<CKVLibraryList> list = host.Gathered();
    const std::uint32_t changes = list->ChangeCount();
    PairedTiming timing(state);
    for (auto _ : state) {
        timing.Iteration([&] { list->RefreshAll(); },
                         [&] { benchmark::DoNotOptimize(BareWalk(tree.root.Path().string(), false)); });
    }
    if (list->ChangeCount() != changes) state.SkipWithError("the refresh saw a change");
    state.counters["folders"] = double(tree.folders.size());
}

BENCHMARK(BM_Gather)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ListByIndex)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_ListByIndexAgain)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_FindLibraryByPath)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshAllUnchanged)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
