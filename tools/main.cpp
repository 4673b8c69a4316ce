#include <CommandLine.h>

#include <iostream>

#include "TintoraCommand.h"

int main(int argc, char** argv) {
    return commandline::FinishOutput(tool::RunTintora(argc, argv, std::cout, std::cerr), std::cout, std::cerr,
                                     "tintora");
}
