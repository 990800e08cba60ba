// The generator's own source of numbers (splitmix64), so that a seed gives the same bytes on every machine and library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vrn::samples {

class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    [[nodiscard]] std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
        return mixed ^ (mixed >> 31);
    }

    /// A number from 0 to `count` - 1. The tiny bias of the remainder does not matter here.
    [[nodiscard]] std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }

    [[nodiscard]] std::int64_t between(std::int64_t lowest, std::int64_t highest) {
        return lowest + static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(highest - lowest + 1));
    }

    [[nodiscard]] bool oneIn(std::size_t count) { return below(count) == 0; }

  private:
    std::uint64_t state_;
};

}  // namespace vrn::samples
