// What came of one method.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "hosts/cli/ExitStatus.h"

namespace vrn::cli {

struct Outcome {
    std::string out;
    std::string err;
    ExitStatus status = ExitStatus::Well;
    std::string file;                     ///< of a file at fault, its path
    std::string fault;                    ///< and what is wrong with it
    std::vector<std::string> once;        ///< output about what methods have in common, for the command to print once
    std::array<std::size_t, 3> counts{};  ///< whatever the command adds up over all methods
    std::string method;                   ///< the method itself, for the output; reports go elsewhere then
};

}  // namespace vrn::cli
