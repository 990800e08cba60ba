// vrnmethod: the method editor without windows.
#include "hosts/cli/Application.h"
#include "hosts/cli/System.h"

int main(int argc, char** argv) {
    const auto arguments = vrn::cli::system::prepare(argc, argv);
    const auto status = vrn::cli::runTool(arguments, vrn::cli::standardConsole());
    vrn::cli::system::followInterrupt();
    return static_cast<int>(status);
}
