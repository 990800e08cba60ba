// Where the tool reads and writes. Tests put strings in place of a terminal.
#pragma once

#include <iosfwd>

namespace vrn::cli {

struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool outHasColour = false;  ///< a terminal, and the user did not ask for none
    bool errHasColour = false;
    bool errIsTerminal = false;
};

/// The process's own streams.
[[nodiscard]] Console standardConsole();

}  // namespace vrn::cli
