// kelvra-host import on a real terminal: tmux runs a shell in a pane of its
// own, the test types the command there and reads the pane back with its
// colours (capture-pane -e). The user's tmux set-up plays no part: the
// server has its own socket and no configuration file.
#include "tests/support/ChildProgram.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <regex>

namespace {

using ::testing::HasSubstr;

class TmuxPane {
public:
    explicit TmuxPane(std::filesystem::path socket) : socket_(std::move(socket)) {
        started_ = Tmux({"new-session", "-d", "-x", "200", "-y", "60", "sh"}).exitStatus == 0;
    }
    ~TmuxPane() { Tmux({"kill-server"}); }
    TmuxPane(const TmuxPane&) = delete;
    TmuxPane& operator=(const TmuxPane&) = delete;

    bool Started() const { return started_; }

    // Types `command` and waits, for 60 s at most, for the line a marker
    // printed after it: its exit status, or nothing when it did not come.
    std::optional<int> Run(const std::string& command) {
        const std::string marker = "END" + std::to_string(++runs_) + "-";
        // The typed line shows the marker's echo command, not a line that
        // begins with the marker.
        Tmux({"send-keys", command + "; echo \"" + marker + "$?\"", "Enter"});
        const std::regex ended("(^|\n)" + marker + "([0-9]+)\n");
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (std::chrono::steady_clock::now() < deadline) {
            std::smatch match;
            const std::string text = Tmux({"capture-pane", "-p", "-S", "-", "-E", "-"}).output;
            if (std::regex_search(text, match, ended)) return std::stoi(match[2].str());
        }
        return std::nullopt;
    }

    // Everything the pane shows and showed, with its colours.
    std::string Captured() const { return Tmux({"capture-pane", "-p", "-e", "-S", "-", "-E", "-"}).output; }

private:
    testsupport::ProgramResult Tmux(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"tmux", "-S", socket_.string(), "-f", "/dev/null"});
        return testsupport::RunProgram(arguments);
    }

    std::filesystem::path socket_;
    bool started_ = false;
    int runs_ = 0;
};

std::string Quoted(const std::string& word) { return "'" + word + "'"; }

class TerminalChipTest : public ::testing::Test {
protected:
    std::string Import(const std::string& environment) const {
        return "env " + environment + " " + Quoted(KELVRA_HOST) + " import --answer yes --module " +
               Quoted(TINTORA_MODULE) + " " + Quoted(file_);
    }

    testsupport::TemporaryFolder folder_;
    std::string file_ =
        folder_.Write("sample.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    TmuxPane pane_{folder_.Path() / "tmux.socket"};
};

// Leaf is Lab 50 -20 30, sRGB (97, 128, 65); Signal Red is RGB (255, 64, 0)
// at tint 0.5, (255, 159, 128).
TEST_F(TerminalChipTest, AChipCarriesTheSwatchsSrgbBytes) {
    ASSERT_TRUE(pane_.Started()) << "tmux could not start (scripts/install-deps installs it)";
    ASSERT_EQ(pane_.Run(Import("-u NO_COLOR COLORTERM=truecolor")), 0);
    const std::string shown = pane_.Captured();
    EXPECT_THAT(shown, HasSubstr("\x1b[48;2;97;128;65m  "));
    EXPECT_THAT(shown, HasSubstr("#618041 \"Leaf\": global rgb 97 128 65"));
    EXPECT_THAT(shown, HasSubstr("\x1b[48;2;255;159;128m  "));
    EXPECT_THAT(shown, HasSubstr("#FF9F80 \"Signal Red\": spot rgb 255 64 0, tint 50%"));
}

// Without COLORTERM the nearest of 256 colours: for Leaf the cube's
// (95, 135, 95), colour 16 + 36 + 12 + 1.
TEST_F(TerminalChipTest, ATerminalThatDoesNotSayItShows24BitColourGets256Colours) {
    ASSERT_TRUE(pane_.Started()) << "tmux could not start (scripts/install-deps installs it)";
    ASSERT_EQ(pane_.Run(Import("-u NO_COLOR -u COLORTERM")), 0);
    const std::string shown = pane_.Captured();
    EXPECT_THAT(shown, HasSubstr("\x1b[48;5;65m  "));
    EXPECT_THAT(shown, Not(HasSubstr("\x1b[48;2;")));
}

TEST_F(TerminalChipTest, NoColorLeavesTheTerminalUncoloured) {
    ASSERT_TRUE(pane_.Started()) << "tmux could not start (scripts/install-deps installs it)";
    ASSERT_EQ(pane_.Run(Import("NO_COLOR=1 COLORTERM=truecolor")), 0);
    const std::string shown = pane_.Captured();
    EXPECT_THAT(shown, HasSubstr("    #618041 \"Leaf\": global rgb 97 128 65"));
    EXPECT_THAT(shown, Not(HasSubstr("\x1b[48;")));
}

}  // namespace
