// What differs between two methods: step by step and name by name, and all else that their documents hold.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "xml/Dom.h"

namespace vrn::audit {

struct Difference {
    std::string name;                   ///< of the parameter, or what else it is
    std::optional<std::string> before;  ///< nothing when it is not there
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
    std::vector<Difference> cycles;     ///< date, and parameters of embedded cycles, one a line
    std::vector<Difference> rest;       ///< everything else in the documents, by its path; signatures excepted
    [[nodiscard]] bool empty() const { return head.empty() && steps.empty() && cycles.empty() && rest.empty(); }
};

/// Steps are matched in order by their cycle, equal ones first; values by the names that the methods embed. Two methods without
/// differences are the same document but for signature, XML declaration, and white space between elements.
[[nodiscard]] MethodDiff differenceOf(const xml::Document& before, const xml::Document& after);

}  // namespace vrn::audit
