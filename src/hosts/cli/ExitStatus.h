// How a call of the tool ends, and what ends it badly.
#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>

namespace vrn::cli {

enum class ExitStatus {
    Well = 0,
    Findings = 1,       ///< something is wrong with a method
    Fault = 2,          ///< the call or a file was at fault
    Interrupted = 130,  ///< by the user, as shells count it
};

/// The worse of two.
[[nodiscard]] inline ExitStatus worse(ExitStatus a, ExitStatus b) noexcept { return std::max(a, b); }

inline constexpr const char* notEnoughMemory = "there is not enough memory";

/// A call or a file at fault. The text is one line for the user and names the file.
class Fault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace vrn::cli
