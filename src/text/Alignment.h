// Which items of two sequences go together, so that a comparison reports what was put in, taken out and changed, not all that moved up.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vrn::text {

/// A number for every different text, so that texts are compared once.
class Numbering {
  public:
    std::size_t of(const std::string& text) { return numbers_.try_emplace(text, numbers_.size()).first->second; }

  private:
    std::unordered_map<std::string, std::size_t> numbers_;
};

/// An item of a sequence as two numbers: items of one value are equal, items of one kind can become each other.
struct Alignable {
    std::size_t value = 0;
    std::size_t kind = 0;
};

/// Pairs of positions, both rising: as many items as possible go together with one of their kind, equal ones first. Sequences of
/// thousands of items that have next to nothing in common are compared position by position.
[[nodiscard]] std::vector<std::pair<std::size_t, std::size_t>> alignment(const std::vector<Alignable>& before,
                                                                         const std::vector<Alignable>& after);

}  // namespace vrn::text
