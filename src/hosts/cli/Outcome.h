// What came of one method.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "hosts/cli/ExitStatus.h"

namespace vrn::cli {

struct Outcome {
    std::string out;
    std::string err;
    ExitStatus status = ExitStatus::Well;
    std::array<std::size_t, 3> counts{};  ///< whatever the command adds up over all methods
    std::string method;                   ///< the method itself, for the output; reports go elsewhere then
};

}  // namespace vrn::cli
