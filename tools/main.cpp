#include <iostream>

#include "TintoraCommand.h"

int main(int argc, char** argv) { return tool::RunTintora(argc, argv, std::cout, std::cerr); }
