// One parameter definition of the macro catalogue: fields separated by ";", the first of them name and unit code.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "xml/Dom.h"

namespace vrn::catalogue {

struct ParameterDefinition {
    explicit ParameterDefinition(std::string_view text);

    std::vector<std::string> fields;  ///< never empty

    /// Whether the value is the name of an object; the types are the fields from 1 on.
    [[nodiscard]] bool isObject() const;
    /// Field 0 without "()" and before its first "(".
    [[nodiscard]] std::string displayName() const;
    /// The text in field 0's first parentheses, which may be empty; nothing when there are none.
    [[nodiscard]] std::optional<std::string> unitCode() const;
};

/// The key under which user-defined names for values of a parameter stand: its unit code, or "None" without one.
[[nodiscard]] std::string categoryKey(std::string_view field0);

/// The texts of the macro's parameter definitions, in grid order; none without `Variables`.
[[nodiscard]] std::vector<std::string> definitionTexts(const xml::Node& macro);

}  // namespace vrn::catalogue
