#include "cli/cli.h"

#include <iostream>

int main(int argc, char* argv[]) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    return ampora::cli::RunCli(args, std::cout, std::cerr);
}
