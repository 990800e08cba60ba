#include "hosts/sample/ChangeList.h"

#include <algorithm>
#include <optional>

#include "text/Lists.h"

namespace vrn::sample {

namespace {

using audit::Difference;
using audit::StepDifference;

// Texts of several lines stand side by side, equal lines left out at both ends.
void addLines(std::vector<ChangeRow>& rows, const std::string& name, const Difference& difference) {
    auto before = text::split(difference.before.value_or(""), "\n");
    auto now = text::split(difference.after.value_or(""), "\n");
    while (!before.empty() && !now.empty() && before.back() == now.back()) {
        before.pop_back();
        now.pop_back();
    }
    std::size_t line = 0;
    while (line < std::min(before.size(), now.size()) && before[line] == now[line]) {
        ++line;
    }
    auto what = name;
    for (; line < std::max(before.size(), now.size()); ++line) {
        rows.push_back(
            {what, line < before.size() ? before[line] : std::string(), line < now.size() ? now[line] : std::string()});
        what.clear();
    }
}

bool sameValues(const StepDifference& gone, const StepDifference& come) {
    return gone.cycle == come.cycle &&
           std::equal(gone.values.begin(), gone.values.end(), come.values.begin(), come.values.end(),
                      [](const Difference& a, const Difference& b) { return a.name == b.name && a.before == b.after; });
}

// For each step that is new, the one that is gone and is the same: the step has moved.
class Moves {
  public:
    explicit Moves(const std::vector<StepDifference>& steps) : origins_(steps.size()), gone_(steps.size(), false) {
        for (std::size_t to = 0; to < steps.size(); ++to) {
            for (std::size_t from = 0; !steps[to].before && !origins_[to] && from < steps.size(); ++from) {
                if (!steps[from].after && !gone_[from] && sameValues(steps[from], steps[to])) {
                    gone_[from] = true;
                    origins_[to] = from;
                }
            }
        }
    }
    [[nodiscard]] std::optional<std::size_t> originOf(std::size_t step) const { return origins_[step]; }
    [[nodiscard]] bool isOrigin(std::size_t step) const { return gone_[step]; }

  private:
    std::vector<std::optional<std::size_t>> origins_;
    std::vector<bool> gone_;
};

std::string stepText(const std::optional<std::size_t>& position) {
    return position ? "step " + std::to_string(*position) : std::string();
}

}  // namespace

std::vector<ChangeRow> changeRows(const audit::MethodDiff& diff) {
    std::vector<ChangeRow> rows;
    for (const auto& difference : diff.head) {
        addLines(rows, difference.name, difference);
    }
    const Moves moves(diff.steps);
    for (std::size_t i = 0; i < diff.steps.size(); ++i) {
        const auto& step = diff.steps[i];
        if (moves.isOrigin(i)) {
            continue;
        }
        if (const auto origin = moves.originOf(i)) {
            rows.push_back({"Moved " + step.cycle, stepText(diff.steps[*origin].before), stepText(step.after)});
            continue;
        }
        const char* const how = !step.before ? "Inserted " : !step.after ? "Deleted " : "Changed ";
        rows.push_back({how + step.cycle, stepText(step.before), stepText(step.after)});
        for (const auto& value : step.values) {
            rows.push_back({"    " + value.name, value.before.value_or(""), value.after.value_or("")});
        }
    }
    for (const auto& difference : diff.cycles) {
        addLines(rows, "Cycle " + difference.name, difference);
    }
    for (const auto& difference : diff.rest) {
        // The fingerprint follows from the values above.
        if (difference.name != "@TimingInformationID") {
            addLines(rows, difference.name, difference);
        }
    }
    return rows;
}

std::vector<ChangeRow> changesBetween(const std::string& before, const std::string& now) {
    // Nothing at all is as good as a method with nothing in it.
    const auto documentOf = [](const std::string& text) {
        xml::Document document;
        if (text.empty() || !document.loadXML(text)) {
            document.loadXML("<Method/>");
        }
        return document;
    };
    auto diff = audit::differenceOf(documentOf(before), documentOf(now));
    if (before.empty() || now.empty()) {
        diff.rest.clear();  // all of the other document
    }
    return changeRows(diff);
}

}  // namespace vrn::sample
