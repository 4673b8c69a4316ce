// A reported error that repeats within 5 seconds is shown once. The repeat
// limit belongs to the plug-in object, so it survives an unload and reload.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModuleTesting.h"

namespace {

using module_testing::Holdings;
using module_testing::kProbe;
using module_testing::kTintora;
using module_testing::SendProbe;
using module_testing::Shown;
using module_testing::UnknownErrorText;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::time_t kNoon = 1'700'000'000;

// The real module has no error of its own to report while started; a reload
// that finds no host block for its imports is one.
class ReloadRepeatTest : public testing::Test {
protected:
    void SetUp() override {
        host_.Clock().Set(kNoon);
        ASSERT_EQ(module_.Startup(), kZPNoErr);
    }
    void TearDown() override {
        host_.Faults().Clear();
        EXPECT_EQ(module_.Shutdown(), kZPNoErr);
        EXPECT_THAT(Holdings(host_), IsEmpty());
    }

    // Unloads, then reloads without a block for the imports: "!MEM", with
    // the object left unloaded.
    void FailReload() {
        ASSERT_EQ(module_.Unload(), kZPNoErr);
        host_.Faults().FailBlockAllocation(1);
        ASSERT_EQ(module_.Reload(), kZPOutOfMemoryErr);
        host_.Faults().Clear();
    }

    kelvra::Host host_;
    kelvra::Module& module_ = host_.Load(kTintora);
};

TEST_F(ReloadRepeatTest, TheSameErrorWithin5SecondsIsShownOnceAndAgainAfter5Seconds) {
    FailReload();
    EXPECT_THAT(Shown(host_), SizeIs(1));
    host_.Clock().Set(kNoon + 4);
    FailReload();
    EXPECT_THAT(Shown(host_), SizeIs(1));
    host_.Clock().Set(kNoon + 5);
    FailReload();
    EXPECT_THAT(Shown(host_), SizeIs(2));
    EXPECT_THAT(Shown(host_)[1], testing::StartsWith("more-info 2103: "));
}

class ProbeRepeatTest : public testing::Test {
protected:
    void SetUp() override {
        host_.Clock().Set(kNoon);
        ASSERT_EQ(module_.Startup(), kZPNoErr);
    }
    void TearDown() override {
        EXPECT_EQ(module_.Shutdown(), kZPNoErr);
        EXPECT_THAT(Holdings(host_), IsEmpty());
    }

    ZPErr Answer(ZPErr code) { return SendProbe(module_, ProbeCommand::kAnswer, code); }

    kelvra::Host host_;
    kelvra::Module& module_ = host_.Load(kProbe);
};

TEST_F(ProbeRepeatTest, TheSameErrorWithin5SecondsIsShownOnce) {
    EXPECT_EQ(Answer(0x41424344), 0x41424344u);
    host_.Clock().Set(kNoon + 4);
    EXPECT_EQ(Answer(0x41424344), 0x41424344u);
    EXPECT_THAT(Shown(host_), ElementsAre("alert: " + UnknownErrorText("ABCD")));
    host_.Clock().Set(kNoon + 5);
    EXPECT_EQ(Answer(0x41424344), 0x41424344u);
    EXPECT_THAT(Shown(host_), SizeIs(2));
}

TEST_F(ProbeRepeatTest, AnotherErrorInBetweenLetsTheFirstBeShownAgain) {
    Answer(0x41424344);
    Answer(5000);
    Answer(0x41424344);
    EXPECT_THAT(Shown(host_), ElementsAre("alert: " + UnknownErrorText("ABCD"), "alert: " + UnknownErrorText("5000"),
                                          "alert: " + UnknownErrorText("ABCD")));
}

TEST_F(ProbeRepeatTest, ASilentCodeInBetweenDoesNotCount) {
    Answer(0x41424344);
    EXPECT_EQ(Answer(ZP_FOURCC('F', 'M', 'T', '?')), ZP_FOURCC('F', 'M', 'T', '?'));
    Answer(0x41424344);
    EXPECT_THAT(Shown(host_), SizeIs(1));
}

TEST_F(ProbeRepeatTest, ReportingCode0OrASilentCodeShowsNothing) {
    for (ZPErr code : {0u, ZP_FOURCC('F', 'M', 'T', '?'), ZP_FOURCC('S', 'T', 'O', 'P'), 361u, 2139u}) {
        EXPECT_EQ(SendProbe(module_, ProbeCommand::kReportError, code), kZPNoErr);
    }
    EXPECT_THAT(Shown(host_), IsEmpty());
}

}  // namespace
