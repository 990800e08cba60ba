#include "hosts/cli/Suggestion.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace vrn::cli {

namespace {

// How many letters have to be put in, taken out, replaced or swapped with their neighbour to make one word of the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> twoBack;
    std::vector<std::size_t> last(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t> row{i};
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row.push_back(std::min({replaced, last[j] + 1, row[j - 1] + 1}));
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], twoBack[j - 2] + 1);
            }
        }
        twoBack = std::exchange(last, std::move(row));
    }
    return last.back();
}

}  // namespace

std::string nearest(std::string_view word, const std::vector<std::string>& known) {
    constexpr std::size_t longestWord = 40;
    std::string found;
    if (word.size() > longestWord) {
        return found;
    }
    auto least = word.size() / 3 + 1;
    for (const auto& candidate : known) {
        if (const auto steps = distance(word, candidate); steps < least) {
            least = steps;
            found = candidate;
        }
    }
    return found;
}

}  // namespace vrn::cli
