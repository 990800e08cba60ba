// Documents as they should not be: damaged, in other encodings than they say, changed by somebody, at the limits of the parser.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vrn::test {

struct Variant {
    std::string kind;  ///< for whoever reads a result
    std::string bytes;
};

/// The same seed and files give the same variant on every system: of one of these files, or of a generated document.
[[nodiscard]] Variant variant(const std::vector<std::string>& files, std::uint64_t seed);

/// On this side and on that of every limit of the parser, texts that are large in one way, and every kind of token across the border of
/// two pieces that the parser gets.
[[nodiscard]] std::vector<Variant> limits();

}  // namespace vrn::test
