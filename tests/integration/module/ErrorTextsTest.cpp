// What the user sees when the real module fails to start: a start-up step
// the host refuses with a chosen code is reported, without a plug-in object,
// through the module's own string list and the host's list 257.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ZPPluginSuites.h>

#include "ModuleTesting.h"

namespace {

using module_testing::Holdings;
using module_testing::kTintora;
using module_testing::Shown;
using module_testing::UnknownErrorText;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kMemoryText = "The operation cannot complete because there isn't enough memory (RAM) available.";

class ErrorTextsTest : public testing::Test {
protected:
    // Start-up fails where the plug-in names itself, with `code`.
    ZPErr StartupFailingWith(ZPErr code) {
        host_.Faults().FailCall({kZPPluginsSuite, "SetPluginName", 1, false, code});
        const ZPErr result = module_.Startup();
        host_.Faults().Clear();
        EXPECT_THAT(Holdings(host_), IsEmpty());
        return result;
    }

    std::vector<std::string> ShownFor(ZPErr code) {
        host_.Events().Clear();
        EXPECT_EQ(StartupFailingWith(code), code);
        return Shown(host_);
    }

    kelvra::Host host_;
    kelvra::Module& module_ = host_.Load(kTintora);
};

TEST_F(ErrorTextsTest, ACodeOutsideTheListShowsTheFallbackWithItsFourCharacters) {
    EXPECT_THAT(ShownFor(0x41424344), ElementsAre("alert: " + UnknownErrorText("ABCD")));
    ASSERT_EQ(host_.Events().All().size(), 1u);
    EXPECT_EQ(host_.Events().All()[0].key,
              "$$$/CppPlugin/STR/Unknown=The operation cannot complete because of an unknown error.   [ABCD] ");
}

TEST_F(ErrorTextsTest, ASmallCodeShowsTheFallbackWithItsDecimalNumber) {
    EXPECT_THAT(ShownFor(5000), ElementsAre("alert: " + UnknownErrorText("5000")));
    EXPECT_THAT(ShownFor(16384), ElementsAre("alert: " + UnknownErrorText("16384")));
    EXPECT_THAT(ShownFor(0x80000000u), ElementsAre("alert: " + UnknownErrorText("-2147483648")));
}

TEST_F(ErrorTextsTest, TheNoDocumentCodeShowsTheOpenDocMessageUnchanged) {
    EXPECT_THAT(ShownFor(kZPNoDocumentErr),
                ElementsAre("alert: The operation cannot complete because there is no open document."));
}

TEST_F(ErrorTextsTest, EveryCodeOfTheListShowsItsMessage) {
    EXPECT_THAT(ShownFor(static_cast<ZPErr>(-108)), ElementsAre("alert: " + kMemoryText));
    EXPECT_THAT(ShownFor(271), ElementsAre("alert: " + kMemoryText));
    EXPECT_THAT(ShownFor(ZP_FOURCC('N', 'E', 'S', 'S')),
                ElementsAre("alert: The operation cannot complete because a layer is locked or invisible."));
    EXPECT_THAT(ShownFor(ZP_FOURCC('S', 'E', 'G', 'M')),
                ElementsAre("alert: The operation cannot complete because a path has too many anchor points."));
    EXPECT_THAT(ShownFor(ZP_FOURCC('!', 's', 'e', 'l')),
                ElementsAre("alert: The selection is not valid for this operation."));
    EXPECT_THAT(ShownFor(ZP_FOURCC('~', 'V', 'A', 'T')),
                ElementsAre("alert: The operation cannot complete because an art object was of a type not allowed "
                            "by the destination container."));
    EXPECT_THAT(ShownFor(ZP_FOURCC('N', 'E', 'S', 'T')),
                ElementsAre("alert: This layer is 29 sub-levels deep. Actions like new layer, group, clipping, etc. "
                            "cannot be performed at this layer level. Reduce or merge existing layers in this "
                            "hierarchy to continue."));
}

TEST_F(ErrorTextsTest, ACodeTheHostDescribesShowsTheHostsEntryUnformatted) {
    host_.HostStrings().Set(500, "The host's own message for %s.");
    EXPECT_THAT(ShownFor(500), ElementsAre("alert: The host's own message for %s."));
    // Without an entry of the host's, the fallback.
    EXPECT_THAT(ShownFor(501), ElementsAre("alert: " + UnknownErrorText("501")));
    host_.HostStrings().Set(900, "never shown");
    EXPECT_THAT(ShownFor(900), ElementsAre("alert: " + UnknownErrorText("900")));
}

TEST_F(ErrorTextsTest, CantHappenRecordsTheUsageEventAndShowsItsMoreInfoDialog) {
    EXPECT_THAT(ShownFor(kZPCantHappenErr),
                ElementsAre("usage: Error Dialog with More Info Button / kCantHappenErr / (none)",
                            "more-info 2102: An unknown error occurred.\t\t\t\t\t\nClick MORE INFO and try some of "
                            "the solutions to fix the issue. | "
                            "$$$/Kelvra/app/UnknownErrorMessage/UnknownErrorMessageDialog/MoreInfoButton/OnClickURL"));
}

TEST_F(ErrorTextsTest, OutOfMemoryShowsItsMoreInfoDialog) {
    const std::string dialog =
        "more-info 2103: We've hit a roadblock! There isn't enough available memory (RAM).\nTry to update Kelvra and "
        "your graphics card to the latest version and restart your computer.\nStill no luck? Submit the crash "
        "report. | $$$/Kelvra/app/RAMError/RAMErrorDialog/MoreInfoButton/OnClickURL";
    EXPECT_THAT(ShownFor(kZPOutOfMemoryErr), ElementsAre(dialog));

    // Also when the plug-in object itself finds no memory.
    host_.Events().Clear();
    host_.Faults().FailBlockAllocation(1);
    EXPECT_EQ(module_.Startup(), kZPOutOfMemoryErr);
    EXPECT_THAT(Shown(host_), ElementsAre(dialog));
    EXPECT_THAT(Holdings(host_), IsEmpty());
}

TEST_F(ErrorTextsTest, SilentCodesAreAnsweredButNeverShown) {
    const ZPErr silent[] = {
        ZP_FOURCC('F', 'M', 'T', '?'), ZP_FOURCC('R', 'F', 'S', 'E'), ZP_FOURCC('A', 'F', 'T', 'R'),
        ZP_FOURCC('V', 'A', 'L', 'D'), ZP_FOURCC('M', 'O', 'O', 'T'), ZP_FOURCC('T', 'R', 'S', 'H'),
        ZP_FOURCC('C', 'H', 'E', 'K'), ZP_FOURCC('C', 'H', 'I', 'T'), ZP_FOURCC('T', 'L', 'T', 'K'),
        ZP_FOURCC('p', 'F', 'l', 's'), ZP_FOURCC('S', '!', 'F', 'd'), ZP_FOURCC('!', 'A', 'c', 'q'),
        ZP_FOURCC('B', 'c', 'h', 'n'), ZP_FOURCC('d', 's', 'R', 'P'), ZP_FOURCC('s', 'k', 'p', 'E'),
        ZP_FOURCC('D', 'O', 'N', 'E'), ZP_FOURCC('A', 'S', 'T', 'R'), 2139,
        ZP_FOURCC('S', 'T', 'O', 'P'), ZP_FOURCC('C', 'L', 'P', '?'), 361,
    };
    for (ZPErr code : silent) EXPECT_THAT(ShownFor(code), IsEmpty()) << code;
}

TEST_F(ErrorTextsTest, NothingIsShownWhileTheHostAllowsNoDialog) {
    host_.SetCanShowDialogs(false);
    EXPECT_THAT(ShownFor(kZPNoDocumentErr), IsEmpty());
    EXPECT_THAT(ShownFor(kZPOutOfMemoryErr), IsEmpty());
    EXPECT_THAT(ShownFor(kZPCantHappenErr),
                ElementsAre("usage: Error Dialog with More Info Button / kCantHappenErr / (none)"));
}

TEST_F(ErrorTextsTest, AFailedStartupLeavesThePluginNotStartedAndTheNextOneSucceeds) {
    EXPECT_EQ(StartupFailingWith(kZPNoDocumentErr), kZPNoDocumentErr);
    EXPECT_EQ(module_.Globals(), nullptr);
    EXPECT_EQ(module_.Startup(), kZPNoErr);
    EXPECT_EQ(module_.Shutdown(), kZPNoErr);
    EXPECT_THAT(Holdings(host_), IsEmpty());
}

}  // namespace
