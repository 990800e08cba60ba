// Document sets to measure with: one dimension grows, the others stay those of an ordinary instrument.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vrn::bench {

enum class Dimension { Macros, Objects, Names, Steps, DescriptionLines };

inline constexpr std::array<std::pair<Dimension, std::string_view>, 5> dimensions{
    {{Dimension::Macros, "macros"},
     {Dimension::Objects, "objects"},
     {Dimension::Names, "names"},
     {Dimension::Steps, "steps"},
     {Dimension::DescriptionLines, "description-lines"}}};

inline constexpr std::array<std::size_t, 4> sizes{100, 1000, 4000, 20000};

/// The four documents as the host hands them over.
struct DocumentSet {
    std::string macros;
    std::string objects;
    std::string configuration;
    std::string method;  ///< signed, as the editor writes it
};

/// The set in which this dimension has this size; made on first use.
[[nodiscard]] const DocumentSet& documentSet(Dimension dimension, std::size_t size);

}  // namespace vrn::bench
