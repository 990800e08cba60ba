#include "audit/MethodDiff.h"

#include <algorithm>
#include <map>
#include <utility>

#include "text/Lists.h"

namespace vrn::audit {

namespace {

struct NamedValue {
    std::string name;
    std::string value;
};

struct Step {
    std::string text;
    std::string cycle;
    std::vector<NamedValue> values;
};

Step stepFrom(const method::MethodContent& content, const std::string& text) {
    Step step{text, text, {}};
    method::MethodMacroEntry entry;
    try {
        entry = method::stepOf(text);
    } catch (const errors::Error&) {
        return step;  // no step by its form: told as it stands
    }
    step.cycle = entry.MacroName;
    const auto* const cycle = method::findCycle(content.cycles, entry.MacroName);
    const auto names = cycle != nullptr ? method::parameterNames(cycle->definitions) : std::vector<std::string>();
    std::map<std::string, int> seen;
    const auto values = entry.MacroValues.value_or(std::vector<std::string>());
    for (std::size_t i = 0; i < values.size(); ++i) {
        auto name = i < names.size() ? names[i] : "value " + std::to_string(i + 1);
        // Names that come again are told apart by a number.
        if (const int occurrence = ++seen[name]; occurrence > 1) {
            name += " (" + std::to_string(occurrence) + ")";
        }
        step.values.push_back({std::move(name), values[i]});
    }
    return step;
}

std::vector<Step> stepsOf(const method::MethodContent& content) {
    std::vector<Step> steps;
    for (const auto& text : content.steps) {
        steps.push_back(stepFrom(content, text));
    }
    return steps;
}

// Which steps of both go together: pairs of positions, both rising. The longest way through the table of all pairs, where a
// pair of equal steps counts more than one of the same cycle.
class Alignment {
  public:
    Alignment(const std::vector<Step>& before, const std::vector<Step>& after) : before_(&before), after_(&after) {
        const auto shorter = std::min(before.size(), after.size());
        while (head_ < shorter && before[head_].text == after[head_].text) {
            ++head_;
        }
        while (tail_ < shorter - head_ &&
               before[before.size() - 1 - tail_].text == after[after.size() - 1 - tail_].text) {
            ++tail_;
        }
        rows_ = before.size() - head_ - tail_;
        columns_ = after.size() - head_ - tail_;
    }

    // The middle's pairs; what stands before and behind it is equal.
    std::vector<std::pair<std::size_t, std::size_t>> pairs() {
        std::vector<std::pair<std::size_t, std::size_t>> found;
        // No instrument runs so many steps, and the table would take the machine's memory: nothing goes together then.
        constexpr std::size_t largestTable = std::size_t{1} << 25U;
        if (columns_ > 0 && rows_ > largestTable / columns_) {
            return found;
        }
        fill();
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < rows_ && j < columns_) {
            const auto own = weight(i, j);
            if (own > 0 && at(i, j) == own + at(i + 1, j + 1)) {
                found.emplace_back(head_ + i++, head_ + j++);
            } else if (at(i + 1, j) >= at(i, j + 1)) {
                ++i;
            } else {
                ++j;
            }
        }
        return found;
    }

    [[nodiscard]] std::size_t head() const { return head_; }
    [[nodiscard]] std::size_t endBefore() const { return head_ + rows_; }
    [[nodiscard]] std::size_t endAfter() const { return head_ + columns_; }

  private:
    [[nodiscard]] std::uint32_t weight(std::size_t i, std::size_t j) const {
        const auto& a = (*before_)[head_ + i];
        const auto& b = (*after_)[head_ + j];
        if (a.text == b.text) {
            return 3;
        }
        return a.cycle == b.cycle ? 2 : 0;
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

    const std::vector<Step>* before_;
    const std::vector<Step>* after_;
    std::size_t head_ = 0;
    std::size_t tail_ = 0;
    std::size_t rows_ = 0;
    std::size_t columns_ = 0;
    std::vector<std::uint32_t> best_;
};

const NamedValue* find(const std::vector<NamedValue>& values, const std::string& name) {
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const auto& value) { return value.name == name; });
    return found == values.end() ? nullptr : &*found;
}

std::vector<Difference> valueDifferences(const Step& before, const Step& after) {
    std::vector<Difference> differences;
    for (const auto& old : before.values) {
        const auto* const now = find(after.values, old.name);
        if (now == nullptr) {
            differences.push_back({old.name, old.value, std::nullopt});
        } else if (now->value != old.value) {
            differences.push_back({old.name, old.value, now->value});
        }
    }
    for (const auto& now : after.values) {
        if (find(before.values, now.name) == nullptr) {
            differences.push_back({now.name, std::nullopt, now.value});
        }
    }
    return differences;
}

StepDifference removed(const std::vector<Step>& steps, std::size_t position) {
    StepDifference difference{position + 1, std::nullopt, steps[position].cycle, {}};
    for (const auto& value : steps[position].values) {
        difference.values.push_back({value.name, value.value, std::nullopt});
    }
    return difference;
}

StepDifference added(const std::vector<Step>& steps, std::size_t position) {
    StepDifference difference{std::nullopt, position + 1, steps[position].cycle, {}};
    for (const auto& value : steps[position].values) {
        difference.values.push_back({value.name, std::nullopt, value.value});
    }
    return difference;
}

std::vector<StepDifference> stepDifferences(const std::vector<Step>& before, const std::vector<Step>& after) {
    Alignment alignment(before, after);
    auto pairs = alignment.pairs();
    pairs.emplace_back(alignment.endBefore(), alignment.endAfter());
    std::vector<StepDifference> differences;
    auto i = alignment.head();
    auto j = i;
    for (const auto& [nextBefore, nextAfter] : pairs) {
        for (; i < nextBefore; ++i) {
            differences.push_back(removed(before, i));
        }
        for (; j < nextAfter; ++j) {
            differences.push_back(added(after, j));
        }
        if (i < alignment.endBefore() && before[i].text != after[j].text) {
            differences.push_back({i + 1, j + 1, after[j].cycle, valueDifferences(before[i], after[j])});
        }
        ++i;
        ++j;
    }
    return differences;
}

void addIfDifferent(std::vector<Difference>& differences, std::string name, const std::optional<std::string>& before,
                    const std::optional<std::string>& after) {
    if (before != after) {
        differences.push_back({std::move(name), before, after});
    }
}

std::optional<std::string> textOrNone(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

std::vector<Difference> cycleDifferences(const method::MethodContent& before, const method::MethodContent& after) {
    std::vector<Difference> differences;
    const bool sameFirst =
        !before.cycles.empty() && !after.cycles.empty() && before.cycles.front().name == after.cycles.front().name;
    if (sameFirst) {
        addIfDifferent(differences, before.cycles.front().name + ": date", textOrNone(before.timestamp),
                       textOrNone(after.timestamp));
    }
    for (const auto& cycle : before.cycles) {
        const auto* const now = method::findCycle(after.cycles, cycle.name);
        if (now != nullptr && now->definitions != cycle.definitions) {
            addIfDifferent(differences, cycle.name + ": parameters", text::join(cycle.definitions, "\n"),
                           text::join(now->definitions, "\n"));
        }
    }
    return differences;
}

// The description as lines, without those at its end that hold nothing.
std::string plainDescription(const std::string& description) {
    auto text = text::replacedAll(description, text::crlf, "\n");
    text.resize(text.find_last_not_of('\n') + 1);
    return text;
}

}  // namespace

MethodDiff differenceOf(const method::MethodContent& before, const method::MethodContent& after) {
    MethodDiff diff;
    addIfDifferent(diff.head, "Version", before.version, after.version);
    addIfDifferent(diff.head, "Syringe", before.syringe, after.syringe);
    addIfDifferent(diff.head, "Description", plainDescription(before.description), plainDescription(after.description));
    diff.steps = stepDifferences(stepsOf(before), stepsOf(after));
    diff.cycles = cycleDifferences(before, after);
    return diff;
}

}  // namespace vrn::audit
