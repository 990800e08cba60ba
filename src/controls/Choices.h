// The entries of a drop-down list in the grid.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace vrn::controls {

/// Entries that never change, so that any number of rows can share them: an instrument's objects are listed once, not for
/// every parameter that may be one of them.
class Choices {
  public:
    explicit Choices(std::vector<std::string> items) noexcept : items_(std::move(items)) {}
    Choices(const Choices&) = delete;
    Choices& operator=(const Choices&) = delete;

    [[nodiscard]] const std::vector<std::string>& items() const noexcept { return items_; }
    /// Whether some entry is exactly this text.
    [[nodiscard]] bool contains(std::string_view text) const;

  private:
    const std::vector<std::string> items_;
    mutable std::unordered_set<std::string_view> known_;  ///< made on the first look-up
};

}  // namespace vrn::controls
