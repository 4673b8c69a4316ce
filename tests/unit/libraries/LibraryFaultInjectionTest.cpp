// Gathering the libraries, refreshing them after a change and opening one,
// with the host failing its 1st, 2nd, 3rd ... call, or the 1st, 2nd, 3rd ...
// allocation failing, once or from then on, until the operation goes
// through: every run answers the code its failure calls for, leaves a tree
// that lists only what is on disk in its order, and gives back every host
// string and path.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <array>
#include <new>

#include "CKVLibraryList.h"
#include "HostChecks.h"
#include "LibraryListTesting.h"
#include "SwatchesCore.h"
#include "tests/support/FailingNew.h"

namespace {

using library_testing::kApplicationFolder;
using library_testing::kSecondApplicationFolder;
using library_testing::kSecondUserFolder;
using library_testing::kUserFolder;
using library_testing::PathOf;
using testing::AnyOf;
using testing::Eq;

constexpr kv::ResultCode kFault = kv::FourCC("FALT");
constexpr std::uint64_t kAttempts = 3000;

enum class Fault { kCall, kAllocation };

struct FaultCase {
    Fault fault;
    bool fromThenOn;
};

std::string CaseName(const testing::TestParamInfo<FaultCase>& info) {
    return std::string(info.param.fault == Fault::kCall ? "Call" : "Allocation") +
           (info.param.fromThenOn ? "FromThenOn" : "Once");
}

// What one guarded step gave: its result, or the code of what it threw.
struct Outcome {
    kv::ResultCode result = 0;
    bool threw = false;
};

// Takes the step itself, not a std::function, which could allocate while
// allocations are failing.
template <class Step>
Outcome Guarded(Step&& step) {
    try {
        return {step(), false};
    } catch (const kv::Error& error) {
        return {error.Code(), true};
    } catch (const std::bad_alloc&) {
        return {kv::kOutOfMemoryErr, true};
    }
}

class LibraryFaultInjectionTest : public library_testing::LibraryListTest,
                                  public testing::WithParamInterface<FaultCase> {
protected:
    void SetUp() override {
        LibraryListTest::SetUp();
        for (const char* name : {"app/a.ocb", "app2/b.ocb", "user/c.ose", "user/sub/d.ose", "user/sub/deep/e.ose",
                                 "user2/f.ose", "elsewhere/g.ose", "elsewhere/h.ose"}) {
            tree_.File(name);
        }
        tree_.Link("user/link.ose", tree_.At("elsewhere/h.ose"));
        MapFolder(kApplicationFolder, "app");
        MapFolder(kSecondApplicationFolder, "app2");
        MapFolder(kUserFolder, "user");
        MapFolder(kSecondUserFolder, "user2");
        Remember({"elsewhere/g.ose", "user/c.ose"});
        // The host counts each kind of call it meets the first time in a
        // table that grows; after one clean gathering the host itself no
        // longer needs memory for counting, so a failed allocation is the
        // library code's or the host object's it asked for.
        NewList();
        for (const Outcome& o : Gather()) ASSERT_EQ(o.result, kv::kNoErr);
        DropList(0);
    }

    void Arm(std::uint64_t nth) {
        before_ = Requests();
        if (GetParam().fault == Fault::kCall) {
            host_.Faults().FailCall({"", "", nth, GetParam().fromThenOn, kFault});
        } else {
            testsupport::FailAllocationsAfter(nth - 1, !GetParam().fromThenOn);
        }
    }
    // Whether the armed fault struck.
    bool Disarm(std::uint64_t nth) {
        testsupport::AllowAllocations();
        refused_ = import_testing::RefusedInRun(host_);
        host_.Faults().Clear();
        return Requests() - before_ >= nth;
    }
    std::uint64_t Requests() {
        return GetParam().fault == Fault::kCall ? host_.Faults().TotalCalls() : testsupport::AllocationCount();
    }
    kv::ResultCode OwnFault() const { return GetParam().fault == Fault::kCall ? kFault : kv::kOutOfMemoryErr; }

    // The gathering of the plug-in: the four folders, then the remembered files.
    std::array<Outcome, 5> Gather() {
        return {Guarded([&] { return list_->AddLibraryFolder(0, kApplicationFolder); }),
                Guarded([&] { return list_->AddLibraryFolder(0, kSecondApplicationFolder); }),
                Guarded([&] { return list_->AddLibraryFolder(1, kUserFolder); }),
                Guarded([&] { return list_->AddLibraryFolder(1, kSecondUserFolder); }),
                Guarded([&] { return list_->OpenPersistentLibraries(); })};
    }

    // Everything listed is listed once and in the order of the complete
    // listing; index and count agree; each is found by its path (but the
    // linked file, which lies outside the folders of the root it is listed
    // under, so that its path leads to the remembered files).
    void ExpectConsistent(const std::vector<std::string>& complete, std::uint64_t nth) {
        const std::vector<std::string> listed = Listed();
        EXPECT_EQ(std::int32_t(listed.size()), list_->CountListedLibraries(false)) << nth;
        auto next = complete.begin();
        for (const std::string& path : listed) {
            next = std::find(next, complete.end(), path);
            ASSERT_NE(next, complete.end()) << path << " out of place, run " << nth;
            ++next;
        }
        for (std::int32_t i = 0; CKVLibrary* library = list_->GetLibraryByIndex(i); ++i) {
            if (Relative(library->Path()) == "elsewhere/h.ose") continue;
            EXPECT_EQ(list_->FindLibraryByPath(library->Path()), library) << nth;
        }
    }

    // A fresh list, as the plug-in makes one at each start-up.
    void NewList() {
        list_ = std::make_unique<CKVLibraryList>();
        list_->SetPreferencePrefix(library_testing::kPrefix);
        InitList();
    }
    // Gives the list back; then no host string or path may be left.
    void DropList(std::uint64_t nth) {
        list_.reset();
        ExpectNothingLeft(nth);
    }
    // No host string or path beyond what the host refused to dispose of.
    void ExpectNothingLeft(std::uint64_t nth) {
        const kelvra::ObjectCounts live = host_.LiveObjects();
        if (!refused_.stringDisposal) {
            EXPECT_EQ(live.strings, keptByHost_.strings) << nth;
        }
        if (!refused_.pathDisposal) {
            EXPECT_EQ(live.filePaths, keptByHost_.filePaths) << nth;
        }
        keptByHost_ = live;
    }

    std::uint64_t before_ = 0;
    import_testing::Refused refused_;
};

// The link in the user folder is listed under its target's path.
const std::vector<std::string> kGathered = {"app/a.ocb",      "app2/b.ocb",          "elsewhere/h.ose",
                                            "user/c.ose",     "user/sub/d.ose",      "user/sub/deep/e.ose",
                                            "user2/f.ose",    "elsewhere/g.ose"};

TEST_P(LibraryFaultInjectionTest, Gathering) {
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        NewList();
        Arm(nth);
        const std::array<Outcome, 5> outcomes = Gather();
        const bool struck = Disarm(nth);

        for (std::size_t step = 0; step < 4; ++step) {
            const Outcome& o = outcomes[step];
            // The host's refusal of the folder, no memory for the root, or a
            // failure of the folder's own scan escaping.
            EXPECT_THAT(o.result, AnyOf(Eq(kv::kNoErr), Eq(OwnFault()), Eq(kv::kOutOfMemoryErr))) << nth;
        }
        const Outcome& remembered = outcomes[4];
        EXPECT_THAT(remembered.result,
                    AnyOf(Eq(kv::kNoErr), Eq(kv::FourCC("PARM")), Eq(kv::kOutOfMemoryErr), Eq(OwnFault())))
            << nth;
        ExpectConsistent(kGathered, nth);
        const std::vector<std::string> listed = Listed();
        DropList(nth);
        if (!struck) {
            for (const Outcome& o : outcomes) EXPECT_EQ(o.result, kv::kNoErr) << nth;
            EXPECT_EQ(listed, kGathered);
            break;
        }
    }
    EXPECT_GT(nth, 20u);
    ASSERT_LE(nth, kAttempts);
}

TEST_P(LibraryFaultInjectionTest, RefreshingAfterAChange) {
    const std::vector<std::string> changed = {"app/a.ocb",           "app2/b.ocb",          "elsewhere/h.ose",
                                              "user/new/n.ose",      "user/sub/d.ose",      "user/sub/deep/e.ose",
                                              "user/sub/deep/m.ose", "user2/f.ose",         "elsewhere/g.ose"};
    // What a refresh cut short may list: the old and the new.
    const std::vector<std::string> either = {"app/a.ocb",           "app2/b.ocb",     "elsewhere/h.ose",
                                             "user/c.ose",          "user/new/n.ose", "user/sub/d.ose",
                                             "user/sub/deep/e.ose", "user/sub/deep/m.ose", "user2/f.ose",
                                             "elsewhere/g.ose"};
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        NewList();
        for (const Outcome& o : Gather()) ASSERT_EQ(o.result, kv::kNoErr);
        for (const char* folder : {"app", "app2", "user", "user/sub", "user/sub/deep", "user2"}) {
            tree_.SetTime(folder, 1'000'000'000);
        }
        // A file gone, a folder and a file new, three folders deep.
        tree_.Remove("user/c.ose");
        tree_.File("user/new/n.ose");
        tree_.File("user/sub/deep/m.ose");
        for (const char* folder : {"user", "user/new", "user/sub/deep"}) {
            tree_.SetTime(folder, std::time(nullptr) + 3600);
        }

        Arm(nth);
        const Outcome outcome = Guarded([&] {
            list_->RefreshAll();
            return kv::kNoErr;
        });
        const bool struck = Disarm(nth);
        EXPECT_THAT(outcome.result, AnyOf(Eq(kv::kNoErr), Eq(OwnFault()), Eq(kv::kOutOfMemoryErr))) << nth;
        ExpectConsistent(either, nth);
        // The folders whose times moved are still later than the last
        // refresh that went through: the next one completes the change.
        list_->RefreshAll();
        EXPECT_EQ(Listed(), changed) << nth;
        DropList(nth);

        tree_.File("user/c.ose");
        tree_.Remove("user/new");
        tree_.Remove("user/sub/deep/m.ose");
        if (!struck) {
            EXPECT_FALSE(outcome.threw);
            break;
        }
    }
    EXPECT_GT(nth, 20u);
    ASSERT_LE(nth, kAttempts);
}

// Opening goes through the host, which in this process shares the
// allocator: failing allocations would fail the host's own work (and its
// JSON reader cannot unwind without memory). Host calls fail in turn here;
// the module's allocations while opening are failed through the real
// module, where only they are counted.
class LibraryOpenFaultTest : public LibraryFaultInjectionTest {};

TEST_P(LibraryOpenFaultTest, OpeningALibrary) {
    const std::string file = tree_.File(
        "Greens.kv",
        R"({"name": "Greens", "groups": [{"name": "", "swatches": [{"name": "Leaf", "kind": "rgb", "values": [0, 1, 0]}]}]})");
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        std::unique_ptr<SwatchesCore> library;
        {
            const kv::FilePath path = PathOf(file);
            library = std::make_unique<SwatchesCore>(nullptr, 30000, path.Get(), 7, false);
        }
        Arm(nth);
        const Outcome outcome = Guarded([&] { return library->Open(); });
        const bool struck = Disarm(nth);
        // The host's code, or the fault's: the library is open exactly on 0.
        EXPECT_FALSE(outcome.threw) << nth;
        EXPECT_EQ(library->IsOpen(), outcome.result == kv::kNoErr) << nth;
        if (outcome.result == kv::kNoErr) {
            EXPECT_NE(host_.Documents().Find(library->GetDocument()), nullptr) << nth;
            EXPECT_NE(library->GetSwatchList(), nullptr) << nth;
        }
        library.reset();
        ExpectNothingLeft(nth);
        if (!struck) {
            EXPECT_EQ(outcome.result, kv::kNoErr);
            break;
        }
    }
    EXPECT_GT(nth, 1u);
    ASSERT_LE(nth, kAttempts);
}

INSTANTIATE_TEST_SUITE_P(EachFault, LibraryFaultInjectionTest,
                         testing::Values(FaultCase{Fault::kCall, false}, FaultCase{Fault::kCall, true},
                                         FaultCase{Fault::kAllocation, false}, FaultCase{Fault::kAllocation, true}),
                         CaseName);
INSTANTIATE_TEST_SUITE_P(EachCallFault, LibraryOpenFaultTest,
                         testing::Values(FaultCase{Fault::kCall, false}, FaultCase{Fault::kCall, true}), CaseName);

}  // namespace
