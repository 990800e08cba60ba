#include "text/Alignment.h"

#include <algorithm>
#include <cstdint>

namespace vrn::text {

namespace {

using Items = std::vector<Alignable>;
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// The longest way through the table of all pairs, where a pair of equal items counts more than one of the same kind.
class Table {
  public:
    Table(const Items& before, const Items& after, std::size_t head, std::size_t tail)
        : before_(&before),
          after_(&after),
          head_(head),
          rows_(before.size() - head - tail),
          columns_(after.size() - head - tail) {}

    // The table would take the machine's memory.
    [[nodiscard]] bool isTooLarge() const {
        constexpr std::size_t largest = std::size_t{1} << 25U;
        return columns_ > 0 && rows_ > largest / columns_;
    }

    void addPairs(Pairs& pairs) {
        fill();
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < rows_ && j < columns_) {
            const auto own = weight(i, j);
            if (own > 0 && at(i, j) == own + at(i + 1, j + 1)) {
                pairs.emplace_back(head_ + i++, head_ + j++);
            } else if (at(i + 1, j) >= at(i, j + 1)) {
                ++i;
            } else {
                ++j;
            }
        }
    }

    void addPairsByPosition(Pairs& pairs) const {
        for (std::size_t i = 0; i < std::min(rows_, columns_); ++i) {
            if (weight(i, i) > 0) {
                pairs.emplace_back(head_ + i, head_ + i);
            }
        }
    }

  private:
    [[nodiscard]] std::uint32_t weight(std::size_t i, std::size_t j) const {
        const auto& a = (*before_)[head_ + i];
        const auto& b = (*after_)[head_ + j];
        if (a.value == b.value) {
            return 3;
        }
        return a.kind == b.kind ? 2 : 0;
    }
    std::uint32_t& at(std::size_t i, std::size_t j) { return best_[i * (columns_ + 1) + j]; }
    void fill() {
        best_.assign((rows_ + 1) * (columns_ + 1), 0);
        for (auto i = rows_; i-- > 0;) {
            for (auto j = columns_; j-- > 0;) {
                const auto own = weight(i, j);
                at(i, j) = std::max({at(i + 1, j), at(i, j + 1), own > 0 ? own + at(i + 1, j + 1) : 0});
            }
        }
    }

    const Items* before_;
    const Items* after_;
    std::size_t head_;
    std::size_t rows_;
    std::size_t columns_;
    std::vector<std::uint32_t> best_;
};

}  // namespace

Pairs alignment(const Items& before, const Items& after) {
    const auto shorter = std::min(before.size(), after.size());
    std::size_t head = 0;
    while (head < shorter && before[head].value == after[head].value) {
        ++head;
    }
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.size() - 1 - tail].value == after[after.size() - 1 - tail].value) {
        ++tail;
    }
    Pairs pairs;
    for (std::size_t i = 0; i < head; ++i) {
        pairs.emplace_back(i, i);
    }
    Table table(before, after, head, tail);
    if (table.isTooLarge()) {
        table.addPairsByPosition(pairs);
    } else {
        table.addPairs(pairs);
    }
    for (auto left = tail; left > 0; --left) {
        pairs.emplace_back(before.size() - left, after.size() - left);
    }
    return pairs;
}

}  // namespace vrn::text
