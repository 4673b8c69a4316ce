#include "TerminalColor.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace kelvra::cli {

namespace {

bool Is(const char* variable, const char* value) { return variable != nullptr && std::strcmp(variable, value) == 0; }

}  // namespace

TerminalEnvironment CurrentTerminal() {
    return {isatty(STDOUT_FILENO) != 0, std::getenv("NO_COLOR"), std::getenv("TERM"), std::getenv("COLORTERM")};
}

ChipDepth ChooseChipDepth(ColorChoice choice, const TerminalEnvironment& environment) {
    if (choice == ColorChoice::Never) return ChipDepth::None;
    if (choice == ColorChoice::Auto) {
        const bool noColor = environment.noColor != nullptr && *environment.noColor != '\0';
        if (!environment.outputIsTerminal || noColor || Is(environment.term, "dumb")) return ChipDepth::None;
    }
    const bool trueColor = Is(environment.colorTerm, "truecolor") || Is(environment.colorTerm, "24bit");
    return trueColor ? ChipDepth::TrueColor : ChipDepth::Colors256;
}

CLI::Option* AddColorOption(CLI::App& command, ColorChoice& choice) {
    return command
        .add_option_function<std::string>(
            "--color",
            [&choice](const std::string& word) {
                choice = word == "always" ? ColorChoice::Always : word == "never" ? ColorChoice::Never
                                                                                  : ColorChoice::Auto;
            },
            "colour chips: auto (on a terminal, unless NO_COLOR is set or TERM is dumb), always (also into a pipe "
            "or file) or never; 24-bit when COLORTERM is truecolor or 24bit, else 256 colours")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->default_str("auto");
}

}  // namespace kelvra::cli
