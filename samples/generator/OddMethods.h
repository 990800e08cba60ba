// Methods with which something is the matter, each made from a good one.
#pragma once

#include <string>
#include <vector>

namespace vrn::samples {

struct OddMethod {
    std::string name;  ///< of the file
    std::string (*make)(const std::string& good);
};

[[nodiscard]] std::vector<OddMethod> oddMethods();

}  // namespace vrn::samples
