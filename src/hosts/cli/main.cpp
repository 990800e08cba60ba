// vrnmethod: the method editor without windows.
#include <cstdlib>
#include <string_view>

#include "hosts/cli/Commands.h"
#include "hosts/cli/System.h"

namespace {

vrn::cli::Console standardConsole() {
    namespace system = vrn::cli::system;
    // The convention of no-color.org: any value but an empty one switches colours off.
    const char* const noColour = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    const bool mayColour =
        (noColour == nullptr || *noColour == '\0') && !(terminal != nullptr && std::string_view(terminal) == "dumb");
    const bool outIsTerminal = system::isTerminal(system::Stream::Out);
    const bool errIsTerminal = system::isTerminal(system::Stream::Err);
    return {system::input(), system::output(), system::errors(), outIsTerminal && mayColour, errIsTerminal && mayColour,
            errIsTerminal};
}

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = vrn::cli::system::prepare(argc, argv);
    const auto status = vrn::cli::runTool(arguments, standardConsole());
    vrn::cli::system::followInterrupt();
    return static_cast<int>(status);
}
