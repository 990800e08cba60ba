#include "controls/TypeAhead.h"

#include <algorithm>
#include <utility>

#include "controls/ItemList.h"
#include "text/Unicode.h"

namespace vrn::controls {

namespace {

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

std::string_view withoutZeros(std::string_view digits) noexcept {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

std::string_view numberOf(std::string_view row) noexcept {
    return row.substr(0, static_cast<std::size_t>(std::find_if_not(row.begin(), row.end(), isDigit) - row.begin()));
}

// After the number and the blank.
std::string_view nameOf(std::string_view row) noexcept {
    const auto number = numberOf(row).size();
    return number > 0 && number < row.size() && row[number] == ' ' ? row.substr(number + 1) : row;
}

// The first row from `start` on, round the end to the row before it, that passes.
template <typename Test>
int firstFrom(const std::vector<std::string>& rows, int start, Test&& test) {
    const int count = static_cast<int>(rows.size());
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        if (test(text::upperCase(rows[static_cast<std::size_t>(row)]))) {
            return row;
        }
    }
    return noSelection;
}

}  // namespace

bool TypeAhead::goesOn(Time now) const noexcept { return !typed_.empty() && now - last_ <= pause; }

void TypeAhead::forget() noexcept {
    typed_.clear();
    letter_.clear();
    found_ = noSelection;
}

bool TypeAhead::begins(std::string_view row, std::string_view text) const {
    return row.starts_with(text) || (kind_ == Rows::Numbered && nameOf(row).starts_with(text));
}

bool TypeAhead::contains(std::string_view row, std::string_view text) const {
    return (kind_ == Rows::Numbered ? nameOf(row) : row).find(text) != std::string_view::npos;
}

// The row with the typed number.
int TypeAhead::numbered(const std::vector<std::string>& rows) const {
    if (kind_ != Rows::Numbered || !std::all_of(typed_.begin(), typed_.end(), isDigit)) {
        return noSelection;
    }
    return firstFrom(rows, 0, [&](std::string_view row) {
        const auto number = withoutZeros(numberOf(row));
        return !number.empty() && number == withoutZeros(typed_);
    });
}

int TypeAhead::meant(const std::vector<std::string>& rows, int selected, bool again) const {
    if (const int row = numbered(rows); row != noSelection) {
        return row;
    }
    const auto find = [&](auto&& test) {
        const bool stays = !again && std::cmp_less(selected, rows.size()) && selected >= 0 &&
                           test(text::upperCase(rows[static_cast<std::size_t>(selected)]));
        return stays ? selected : firstFrom(rows, start_, test);
    };
    int row = find([&](std::string_view text) { return begins(text, typed_); });
    if (row == noSelection && typed_.size() > letter_.size() && !letter_.empty()) {
        row = firstFrom(rows, selected + 1, [&](std::string_view text) { return begins(text, letter_); });
    }
    if (row == noSelection) {
        row = find([&](std::string_view text) { return contains(text, typed_); });
    }
    return row;
}

void TypeAhead::takeBack(Time now) {
    if (!goesOn(now)) {
        return forget();
    }
    while (!typed_.empty() && (static_cast<unsigned char>(typed_.back()) & 0xC0U) == 0x80U) {
        typed_.pop_back();
    }
    typed_.pop_back();
    letter_ = typed_.size() == 1 ? typed_ : std::string();
    last_ = now;
}

int TypeAhead::type(std::string_view letter, Time now, const std::vector<std::string>& rows, int selected) {
    const auto upper = text::upperCase(letter);
    const bool further = goesOn(now);
    // The same letter after a pause, where the last one led: the user goes on to the next row with it.
    const bool again = !further && upper == letter_ && found_ != noSelection && found_ == selected;
    if (!further) {
        typed_.clear();
        start_ = selected + 1;
    }
    letter_ = typed_.empty() || upper == letter_ ? upper : std::string();
    typed_ += upper;
    last_ = now;
    found_ = meant(rows, selected, again);
    return found_;
}

}  // namespace vrn::controls
