// When kelvra-host colours its output, and in how many colours.
#include <TerminalColor.h>

#include <gtest/gtest.h>

namespace {

using kelvra::cli::ChipDepth;
using kelvra::cli::ChooseChipDepth;
using kelvra::cli::ColorChoice;
using kelvra::cli::TerminalEnvironment;

TerminalEnvironment Terminal(const char* colorTerm) { return {true, nullptr, "xterm-256color", colorTerm}; }

TEST(TerminalColorTest, AutoColoursATerminalIn24BitWhenItSaysSoElseIn256) {
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, Terminal("truecolor")), ChipDepth::TrueColor);
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, Terminal("24bit")), ChipDepth::TrueColor);
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, Terminal(nullptr)), ChipDepth::Colors256);
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, Terminal("yes")), ChipDepth::Colors256);
}

TEST(TerminalColorTest, AutoLeavesAPipeNoColorAndADumbTerminalUncoloured) {
    TerminalEnvironment pipe = Terminal("truecolor");
    pipe.outputIsTerminal = false;
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, pipe), ChipDepth::None);
    TerminalEnvironment noColor = Terminal("truecolor");
    noColor.noColor = "1";
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, noColor), ChipDepth::None);
    noColor.noColor = "";  // set but empty counts as unset
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, noColor), ChipDepth::TrueColor);
    TerminalEnvironment dumb = Terminal(nullptr);
    dumb.term = "dumb";
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Auto, dumb), ChipDepth::None);
}

TEST(TerminalColorTest, AlwaysAndNeverOverruleTheEnvironment) {
    const TerminalEnvironment pipe = {false, "1", "dumb", nullptr};
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Always, pipe), ChipDepth::Colors256);
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Always, {false, "1", "dumb", "truecolor"}), ChipDepth::TrueColor);
    EXPECT_EQ(ChooseChipDepth(ColorChoice::Never, Terminal("truecolor")), ChipDepth::None);
}

}  // namespace
