// Whether and how a command colours what it prints: `--color auto|always|never`.
// Auto colours only a terminal, never with NO_COLOR set (and not empty) or
// TERM "dumb"; always colours also a pipe or a file; never does not colour.
// Colour is 24-bit when COLORTERM says the terminal shows it ("truecolor",
// "24bit"), else one of the 256 colours every colour terminal knows.
#pragma once

#include <CLI/CLI.hpp>

namespace kelvra::cli {

enum class ColorChoice { Auto, Always, Never };
enum class ChipDepth { None, Colors256, TrueColor };

// What the environment says; null pointers stand for unset variables.
struct TerminalEnvironment {
    bool outputIsTerminal = false;
    const char* noColor = nullptr;
    const char* term = nullptr;
    const char* colorTerm = nullptr;
};

// Standard output and the variables of this process.
TerminalEnvironment CurrentTerminal();

ChipDepth ChooseChipDepth(ColorChoice choice, const TerminalEnvironment& environment);

// The --color option of a command.
CLI::Option* AddColorOption(CLI::App& command, ColorChoice& choice);

}  // namespace kelvra::cli
