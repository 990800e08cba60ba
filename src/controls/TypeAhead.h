// Which row of a list the user means by the letters typed one after the other.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::controls {

/// Letters that follow each other within `pause` are one text; case does not count. It means the row that begins with it, and
/// where there is none, the row that contains it. The row that is selected stays as long as it fits, so that a name typed to its
/// end goes nowhere else. One letter typed again and again, at whatever pace, goes through the rows that begin with it.
class TypeAhead {
  public:
    using Time = std::chrono::milliseconds;
    static constexpr Time pause{1000};

    /// What the rows of a list begin with.
    enum class Rows {
        Plain,  ///< their name
        Numbered,  ///< their number, a blank and their name: digits mean the number, letters the name, both together the whole
    };
    explicit TypeAhead(Rows kind = Rows::Plain) noexcept : kind_(kind) {}

    /// The row meant once `letter`, one character in UTF-8, is typed at the time `now` while the row `selected` is selected
    /// (`noSelection` for none). `noSelection` when no row fits: the selection stays. Times are those of a clock that only
    /// goes forward, with any zero.
    [[nodiscard]] int type(std::string_view letter, Time now, const std::vector<std::string>& rows, int selected);
    /// The user takes the last letter back, within the pause: a slip does not cost the name.
    void takeBack(Time now);
    /// Whether a letter typed now would go on with the text before: a blank does, but begins none.
    [[nodiscard]] bool goesOn(Time now) const noexcept;
    /// The user did something else: the next letter begins a new text.
    void forget() noexcept;

  private:
    [[nodiscard]] bool begins(std::string_view row, std::string_view text) const;
    [[nodiscard]] bool contains(std::string_view row, std::string_view text) const;
    [[nodiscard]] int numbered(const std::vector<std::string>& rows) const;
    [[nodiscard]] int meant(const std::vector<std::string>& rows, int selected, bool again) const;

    Rows kind_;
    std::string typed_;   // in upper case
    std::string letter_;  // the only one in it; empty when there are several
    Time last_{0};
    int found_ = -1;
    int start_ = 0;  // the row after the one that was selected when the text began
};

}  // namespace vrn::controls
