// What differs between two methods, step by step and name by name.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "method/MethodContent.h"

namespace vrn::audit {

struct Difference {
    std::string name;  ///< of the parameter, or what else it is
    std::optional<std::string> before;
    std::optional<std::string> after;
};

struct StepDifference {
    std::optional<std::size_t> before;  ///< from 1; nothing for a step that is new
    std::optional<std::size_t> after;   ///< nothing for a step that is gone
    std::string cycle;
    std::vector<Difference> values;  ///< only what differs; of a step that is new or gone all values
};

struct MethodDiff {
    std::vector<Difference> head;       ///< version, syringe, description lines in one
    std::vector<StepDifference> steps;  ///< without the steps that are the same
    std::vector<Difference> cycles;     ///< dates and parameters of embedded cycles
    [[nodiscard]] bool empty() const { return head.empty() && steps.empty() && cycles.empty(); }
};

/// Steps are matched in order by their cycle, equal ones first; values by the names that the methods embed.
[[nodiscard]] MethodDiff differenceOf(const method::MethodContent& before, const method::MethodContent& after);

}  // namespace vrn::audit
