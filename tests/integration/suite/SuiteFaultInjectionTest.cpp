// The suite's functions, and unloading, reloading and shutting down with
// libraries gathered and opened, with the host failing its 1st, 2nd, 3rd
// ... call or block allocation, once or from then on, until the operation
// goes through: every run answers the code its failure calls for, shows the
// user only the alerts that failure allows, leaves nothing behind and never
// damages a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ZPBasicControl.h>

#include <fstream>
#include <functional>
#include <iterator>

#include "SuiteTesting.h"
#include "tests/support/ColorBookBuilder.h"

namespace {

using import_testing::Shown;
using suite_testing::OtherPlugin;
using testing::AnyOf;
using testing::Eq;
using testing::IsEmpty;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');
constexpr ZPErr kCant = ZP_FOURCC('C', 'A', 'N', 'T');
constexpr ZPErr kParameter = ZP_FOURCC('P', 'A', 'R', 'M');
constexpr ZPErr kNoFormat = ZP_FOURCC('F', 'M', 'T', '?');
constexpr std::uint64_t kAttempts = 3000;

enum class Fault { kCall, kBlock };

struct FaultCase {
    Fault fault;
    bool fromThenOn;
};

std::string CaseName(const testing::TestParamInfo<FaultCase>& info) {
    return std::string(info.param.fault == Fault::kCall ? "Call" : "Block") +
           (info.param.fromThenOn ? "FromThenOn" : "Once");
}

std::vector<std::uint8_t> Contents(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The block count of a swatch exchange file's header.
std::uint32_t BlockCount(const std::vector<std::uint8_t>& file) {
    return std::uint32_t(file[8]) << 24 | std::uint32_t(file[9]) << 16 | std::uint32_t(file[10]) << 8 | file[11];
}

// One run: a fresh host with the home's libraries and the module started,
// the operation under a fault, then the module shut down.
class SuiteFaultInjectionTest : public testing::TestWithParam<FaultCase> {
protected:
    void SetUp() override {
        for (const char* name : {"user-88/Book.ocb", "user-88/Sub/Studio.ose", "user-89/Doc.kv",
                                 "application-33/App.ocb", "elsewhere/Far.ocb"}) {
            Library(name);
        }
        std::filesystem::create_directories(home_.Path() / "application-73");
    }

    void Library(const std::string& relative) {
        const std::filesystem::path path = home_.Path() / relative;
        std::filesystem::create_directories(path.parent_path());
        const testsupport::Bytes bytes = testsupport::BuildColorBook(testsupport::SampleColorBook());
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    }

    // A host, the module loaded and started, the remembered file written.
    std::unique_ptr<kelvra::Host> StartedHost() {
        auto host = std::make_unique<kelvra::Host>();
        host->Folders().UseHome(home_.Path());
        const std::filesystem::path preferences = home_.Path() / "preferences.json";
        std::filesystem::remove(preferences);
        host->Preferences().UseFile(preferences);
        host->Preferences().RememberLibrary(home_.Path() / "elsewhere/Far.ocb");
        module_ = &host->Load(suite_testing::kTintora);
        EXPECT_EQ(module_->Startup(), kZPNoErr);
        return host;
    }

    void Arm(kelvra::Host& host, std::uint64_t nth) {
        before_ = Requests(host);
        if (GetParam().fault == Fault::kCall) {
            host.Faults().FailCall({"", "", nth, GetParam().fromThenOn, kFault});
        } else {
            host.Faults().FailBlockAllocation(nth, GetParam().fromThenOn);
        }
    }
    // Disarms; whether the armed fault struck.
    bool Disarm(kelvra::Host& host, std::uint64_t nth) {
        refused_ = import_testing::RefusedInRun(host);
        host.Faults().Clear();
        return Requests(host) - before_ >= nth;
    }
    std::uint64_t Requests(kelvra::Host& host) const {
        if (GetParam().fault == Fault::kCall) return host.Faults().TotalCalls();
        const zpbasic::Counts counts = zpbasic::GetCounts();
        return counts.allocations + counts.failedAllocations;
    }
    ZPErr OwnFault() const { return GetParam().fault == Fault::kCall ? kFault : kZPOutOfMemoryErr; }

    // Shuts the module down: only what the host refused to take back may stay.
    void ShutDown(kelvra::Host& host, std::uint64_t nth) {
        EXPECT_EQ(module_->Shutdown(), kZPNoErr) << nth;
        EXPECT_THAT(import_testing::LeftoversBeyond(host, refused_), IsEmpty()) << nth;
    }

    // Runs `operation` under the 1st, 2nd, ... fault until one does not
    // strike; `check` judges each run. Answers how many runs there were.
    std::uint64_t Loop(const std::function<void(kelvra::Host&, OtherPlugin&)>& prepare,
                       const std::function<ZPErr(kelvra::Host&, OtherPlugin&)>& operation,
                       const std::function<void(kelvra::Host&, OtherPlugin&, ZPErr, bool, std::uint64_t)>& check) {
        std::uint64_t nth = 1;
        for (; nth <= kAttempts; ++nth) {
            std::unique_ptr<kelvra::Host> host = StartedHost();
            bool struck = false;
            {
                OtherPlugin plugin(*host);
                if (prepare) prepare(*host, plugin);
                host->Events().Clear();
                Arm(*host, nth);
                const ZPErr result = operation(*host, plugin);
                struck = Disarm(*host, nth);
                check(*host, plugin, result, struck, nth);
            }
            ShutDown(*host, nth);
            if (!struck) break;
        }
        EXPECT_LE(nth, kAttempts);
        return nth;
    }

    std::uint64_t ReadBookLoop(const std::string& file, ZPErr (ZPAPI* KVTintoraSuite::*read)(KVFilePathRef,
                                                                                            KVReferenceBookRef),
                               const std::string& readError, std::int32_t bookId);

    testsupport::TemporaryFolder home_;
    kelvra::Module* module_ = nullptr;
    std::uint64_t before_ = 0;
    import_testing::Refused refused_;
};

// The full list: the own library, App, Book, Studio, Doc, Far.
constexpr std::int32_t kLibraries = 6;

void Gather(kelvra::Host&, OtherPlugin& plugin) {
    std::int32_t count = 0;
    ASSERT_EQ(plugin.Tintora()->CountLibraries(&count), kZPNoErr);
    ASSERT_EQ(count, kLibraries);
}

TEST_P(SuiteFaultInjectionTest, CountLibrariesGatheringForTheFirstTime) {
    const std::uint64_t runs = Loop(
        nullptr,
        [](kelvra::Host&, OtherPlugin& plugin) {
            std::int32_t count = -1;
            const ZPErr result = plugin.Tintora()->CountLibraries(&count);
            if (result == kZPNoErr) {
                EXPECT_TRUE(count >= 1 && count <= kLibraries) << count;
            }
            return result;
        },
        [&](kelvra::Host& host, OtherPlugin& plugin, ZPErr result, bool struck, std::uint64_t nth) {
            EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(OwnFault()), Eq(kZPOutOfMemoryErr))) << nth;
            EXPECT_THAT(Shown(host), IsEmpty()) << nth;
            if (!struck) {
                EXPECT_EQ(result, kZPNoErr);
                std::int32_t count = 0;
                EXPECT_EQ(plugin.Tintora()->CountLibraries(&count), kZPNoErr);
                EXPECT_EQ(count, kLibraries);
            }
        });
    EXPECT_GT(runs, 20u);
}

// The error report of a code no message is kept for, such as the fault's.
const std::string kUnknownCodeAlert =
    "alert: The operation cannot complete because of an unknown error.   [FALT] ";

// What opening a library may show: nothing, or the read error of the file
// and the error report of the import the host asked the module for.
void ExpectOpeningShown(kelvra::Host& host, const std::string& file, std::uint64_t nth) {
    for (const std::string& line : Shown(host)) {
        EXPECT_THAT(line, AnyOf(Eq(import_testing::ColorBookReadError(file)), Eq(kUnknownCodeAlert),
                                testing::StartsWith("usage: Error Dialog with More Info Button"),
                                testing::StartsWith("more-info ")))
            << nth;
    }
}

TEST_P(SuiteFaultInjectionTest, OpenLibrary) {
    const std::uint64_t runs = Loop(
        Gather, [](kelvra::Host&, OtherPlugin& plugin) {
            KVSwatchListRef list = nullptr;
            // "Book", after "App".
            return plugin.Tintora()->OpenLibrary(2, &list);
        },
        [&](kelvra::Host& host, OtherPlugin& plugin, ZPErr result, bool struck, std::uint64_t nth) {
            ExpectOpeningShown(host, "Book.ocb", nth);
            if (result == kZPNoErr) {
                EXPECT_TRUE(plugin.Tintora()->IsLibraryOpen(2)) << nth;
            }
            if (!struck) {
                EXPECT_EQ(result, kZPNoErr);
                EXPECT_THAT(Shown(host), IsEmpty());
            }
        });
    EXPECT_GT(runs, 20u);
}

TEST_P(SuiteFaultInjectionTest, OpenLibraryFile) {
    const std::string other = (home_.Path() / "elsewhere/Other.ocb").string();
    Library("elsewhere/Other.ocb");
    KVFilePathRef path = nullptr;
    const std::uint64_t runs = Loop(
        [&](kelvra::Host& host, OtherPlugin& plugin) {
            Gather(host, plugin);
            path = plugin.NewPath(other);
        },
        [&](kelvra::Host&, OtherPlugin& plugin) {
            KVSwatchListRef list = nullptr;
            return plugin.Tintora()->OpenLibraryFile(path, &list);
        },
        [&](kelvra::Host& host, OtherPlugin& plugin, ZPErr result, bool struck, std::uint64_t nth) {
            // A remembered file that cannot be added answers "PARM"; the
            // opening's own answer comes back as it is, "FMT?" when a fault
            // made the module's format turn the file down.
            EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(kParameter), Eq(kCant), Eq(kNoFormat), Eq(OwnFault()),
                                      Eq(kZPOutOfMemoryErr)))
                << nth;
            ExpectOpeningShown(host, "Other.ocb", nth);
            plugin.Paths().Dispose(path);
            if (!struck) {
                EXPECT_EQ(result, kZPNoErr);
            }
        });
    // Opening a small book takes fewer blocks than host calls.
    EXPECT_GT(runs, GetParam().fault == Fault::kCall ? 20u : 10u);
}

// Reading `file` with the suite function `read` into a new reference book:
// "CANT" only after the user saw `readError`, the book's id once read.
std::uint64_t SuiteFaultInjectionTest::ReadBookLoop(const std::string& file,
                                                    ZPErr (ZPAPI* KVTintoraSuite::*read)(KVFilePathRef,
                                                                                         KVReferenceBookRef),
                                                    const std::string& readError, std::int32_t bookId) {
    KVReferenceBookRef book = nullptr;
    KVFilePathRef path = nullptr;
    return Loop(
        [&](kelvra::Host&, OtherPlugin& plugin) {
            ASSERT_EQ(plugin.Tintora()->NewReferenceBook(&book), kZPNoErr);
            path = plugin.NewPath(file);
        },
        [&](kelvra::Host&, OtherPlugin& plugin) { return (plugin.Tintora()->*read)(path, book); },
        [&](kelvra::Host& host, OtherPlugin& plugin, ZPErr result, bool struck, std::uint64_t nth) {
            EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(kCant), Eq(OwnFault()), Eq(kZPOutOfMemoryErr))) << nth;
            const std::vector<std::string> shown = Shown(host);
            if (result == kCant) {
                EXPECT_EQ(shown, std::vector<std::string>{readError}) << nth;
            } else {
                EXPECT_THAT(shown, IsEmpty()) << nth;
            }
            std::int32_t id = 0;
            EXPECT_EQ(plugin.Tintora()->GetReferenceBookID(book, &id), kZPNoErr);
            if (result == kZPNoErr) {
                EXPECT_EQ(id, bookId) << nth;
            }
            EXPECT_EQ(plugin.Tintora()->DisposeReferenceBook(book), kZPNoErr);
            plugin.Paths().Dispose(path);
            if (!struck) {
                EXPECT_EQ(result, kZPNoErr);
            }
        });
}

TEST_P(SuiteFaultInjectionTest, ReadColorBook) {
    const std::uint64_t runs = ReadBookLoop((home_.Path() / "user-88/Book.ocb").string(),
                                            &KVTintoraSuite::ReadColorBook,
                                            import_testing::ColorBookReadError("Book.ocb"), 3002);
    EXPECT_GE(runs, 5u);
}

TEST_P(SuiteFaultInjectionTest, ReadLegacyColorBook) {
    const std::string file = (home_.Path() / "legacy.xml").string();
    std::ofstream(file) << R"(<OrvikSwatchbook BookID="4200"><Formats><Format ID="lab" ColorSpace="LAB" )"
                           R"(Encoding="Float"/></Formats><Swatches><Sp N="Green"><C F="lab">35 -45 20</C></Sp>)"
                           R"(<Pr N="Red"><C F="lab">50 60 40</C></Pr></Swatches></OrvikSwatchbook>)";
    const std::uint64_t runs =
        ReadBookLoop(file, &KVTintoraSuite::ReadLegacyColorBook,
                     "alert: An error occurred when reading the legacy color book 'legacy.xml'.", 4200);
    EXPECT_GE(runs, 5u);
}

TEST_P(SuiteFaultInjectionTest, ExportSwatchesNeverDamagesAnExistingFile) {
    const std::string out = (home_.Path() / "out.ose").string();
    const std::string before = "the file that was there";
    KVFilePathRef path = nullptr;
    KVDataFilterRef filter = nullptr;
    std::vector<std::uint8_t> clean;
    const std::uint64_t runs = Loop(
        [&](kelvra::Host& host, OtherPlugin& plugin) {
            std::ofstream(out, std::ios::binary) << before;
            kelvra::Document& document = host.Documents().New("Colours");
            const kelvra::FormatOpening opening =
                host.OpenWithFormats(home_.Path() / "user-88/Book.ocb", kelvra::FormatTarget{&document, {}});
            ASSERT_TRUE(opening.go && opening.go->result == kZPNoErr);
            path = plugin.NewPath(out);
            ASSERT_EQ(plugin.Filters().NewFileDataFilter(path, "write", 0, 0, &filter), kZPNoErr);
            ASSERT_EQ(plugin.Filters().LinkDataFilter(nullptr, filter), kZPNoErr);
        },
        [&](kelvra::Host& host, OtherPlugin& plugin) {
            return plugin.Tintora()->ExportSwatches(filter, host.Documents().Current()->Handle());
        },
        [&](kelvra::Host&, OtherPlugin& plugin, ZPErr result, bool struck, std::uint64_t nth) {
            EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(kCant), Eq(kZPOutOfMemoryErr))) << nth;
            // The caller keeps the file only when the export went through.
            if (result == kZPNoErr) {
                EXPECT_EQ(plugin.Filters().UnlinkDataFilter(filter, nullptr), kZPNoErr) << nth;
            } else {
                EXPECT_EQ(plugin.Filters().DiscardDataFilter(filter), kZPNoErr) << nth;
            }
            plugin.Paths().Dispose(path);
            const std::vector<std::uint8_t> now = Contents(out);
            if (result != kZPNoErr) {
                EXPECT_EQ(std::string(now.begin(), now.end()), before) << nth;
            } else {
                // A swatch the host failed to describe is left out, and the
                // export still goes through: a whole file with fewer blocks.
                ASSERT_GE(now.size(), 12u) << nth;
                EXPECT_EQ(std::string(now.begin(), now.begin() + 4), "OSEF") << nth;
                EXPECT_LE(BlockCount(now), 3u) << nth;
            }
            if (!struck) {
                EXPECT_EQ(result, kZPNoErr);
                clean = now;
            }
        });
    EXPECT_GT(runs, GetParam().fault == Fault::kCall ? 20u : 10u);
    // Undisturbed, the book's three colours.
    ASSERT_GE(clean.size(), 12u);
    EXPECT_EQ(BlockCount(clean), 3u);
}

// Unloading, reloading and shutting down with libraries gathered and one
// opened: every block and every host object goes back.
TEST_P(SuiteFaultInjectionTest, UnloadReloadAndShutdownWithLibrariesOpen) {
    const auto openOne = [](kelvra::Host& host, OtherPlugin& plugin) {
        Gather(host, plugin);
        KVSwatchListRef list = nullptr;
        ASSERT_EQ(plugin.Tintora()->OpenLibrary(2, &list), kZPNoErr);
    };
    const std::uint64_t unloads = Loop(
        openOne, [&](kelvra::Host&, OtherPlugin&) { return module_->Unload(); },
        [&](kelvra::Host&, OtherPlugin&, ZPErr result, bool, std::uint64_t nth) {
            EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(OwnFault()))) << nth;
            EXPECT_EQ(module_->Reload(), kZPNoErr) << nth;
        });
    // Unloading and shutting down give blocks back and allocate none.
    const bool calls = GetParam().fault == Fault::kCall;
    EXPECT_GT(unloads, calls ? 1u : 0u);
    const std::uint64_t reloads = Loop(
        [&](kelvra::Host& host, OtherPlugin& plugin) {
            openOne(host, plugin);
            ASSERT_EQ(module_->Unload(), kZPNoErr);
        },
        [&](kelvra::Host&, OtherPlugin&) { return module_->Reload(); },
        [&](kelvra::Host&, OtherPlugin&, ZPErr, bool, std::uint64_t) {});
    EXPECT_GT(reloads, calls ? 1u : 0u);
}

TEST_P(SuiteFaultInjectionTest, ShutdownWithLibrariesOpen) {
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        std::unique_ptr<kelvra::Host> host = StartedHost();
        {
            OtherPlugin plugin(*host);
            Gather(*host, plugin);
            KVSwatchListRef list = nullptr;
            ASSERT_EQ(plugin.Tintora()->OpenLibrary(2, &list), kZPNoErr);
        }
        Arm(*host, nth);
        const ZPErr result = module_->Shutdown();
        const bool struck = Disarm(*host, nth);
        EXPECT_THAT(result, AnyOf(Eq(kZPNoErr), Eq(OwnFault()))) << nth;
        EXPECT_EQ(module_->Globals(), nullptr) << nth;
        EXPECT_THAT(import_testing::LeftoversBeyond(*host, refused_), IsEmpty()) << nth;
        if (!struck) break;
    }
    EXPECT_GT(nth, GetParam().fault == Fault::kCall ? 5u : 0u);
    EXPECT_LE(nth, kAttempts);
}

INSTANTIATE_TEST_SUITE_P(EachFault, SuiteFaultInjectionTest,
                         testing::Values(FaultCase{Fault::kCall, false}, FaultCase{Fault::kCall, true},
                                         FaultCase{Fault::kBlock, false}, FaultCase{Fault::kBlock, true}),
                         CaseName);

}  // namespace
