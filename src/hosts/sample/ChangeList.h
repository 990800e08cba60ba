// What differs between two methods as the rows of a list: what it is about, before, now.
#pragma once

#include <string>
#include <vector>

#include "audit/MethodDiff.h"

namespace vrn::sample {

struct ChangeRow {
    std::string what;
    std::string before;
    std::string now;
    [[nodiscard]] bool operator==(const ChangeRow&) const = default;
};

/// A step that is gone here and new there, with the same values, has moved. The values of other steps follow their step's row.
/// No row when nothing differs.
[[nodiscard]] std::vector<ChangeRow> changeRows(const audit::MethodDiff& diff);

/// What differs between two method documents. An empty text stands for a method without steps.
[[nodiscard]] std::vector<ChangeRow> changesBetween(const std::string& before, const std::string& now);

}  // namespace vrn::sample
