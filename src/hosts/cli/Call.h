// A call of the tool: what it reads and writes, how it ends, and what ends it badly.
#pragma once

#include <algorithm>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vrn::cli {

/// The streams of a call. Tests put strings in place of a terminal.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool outHasColour = false;  ///< a terminal, and the user did not ask for none
    bool errHasColour = false;
    bool errIsTerminal = false;
};

enum class ExitStatus {
    Well = 0,
    Findings = 1,       ///< something is wrong with a method
    Fault = 2,          ///< the call or a file was at fault
    Interrupted = 130,  ///< by the user, as shells count it
};

/// The worse of two.
[[nodiscard]] inline ExitStatus worse(ExitStatus a, ExitStatus b) noexcept { return std::max(a, b); }

/// What a command works with, and how it ended.
struct Call {
    Console console;
    ExitStatus status = ExitStatus::Well;
    /// Which files a call is about that ends with a fault, for its line of JSON.
    std::vector<std::pair<std::string, std::string>> about = {};
    bool outputIsTaken = false;  ///< the output is a document: lines about it go to the error stream
};

/// A call or a file at fault. The text is one line for the user and names the file.
class Fault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

inline constexpr const char* notEnoughMemory = "there is not enough memory";

}  // namespace vrn::cli
