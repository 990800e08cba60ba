// vrnmethod: the method editor without windows.
#include <iostream>

#include "hosts/cli/Application.h"
#include "hosts/cli/System.h"

int main(int argc, char** argv) {
    const auto arguments = vrn::cli::system::prepare(argc, argv);
    std::ios::sync_with_stdio(false);
    // One thread may read a method from standard input while another writes results.
    std::cin.tie(nullptr);
    return static_cast<int>(vrn::cli::runTool(arguments, vrn::cli::standardConsole()));
}
