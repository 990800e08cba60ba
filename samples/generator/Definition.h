// A parameter definition taken apart, as far as the generator needs it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::samples {

[[nodiscard]] std::vector<std::string> split(std::string_view text, char separator);

/// A plain decimal number in tenths, so that no floating point decides what the samples look like. Further decimals are cut;
/// nothing when the text is no such number.
[[nodiscard]] std::optional<std::int64_t> tenths(std::string_view text);
[[nodiscard]] std::string tenthsText(std::int64_t value);

struct Definition {
    explicit Definition(std::string_view text);

    [[nodiscard]] bool isObject() const;
    [[nodiscard]] bool takesAnyText() const { return fields.empty(); }

    std::string name;                 ///< as the user sees it
    std::string unit;                 ///< the unit code; "None" when there is none
    std::vector<std::string> fields;  ///< object types, or default, lowest and highest value
};

}  // namespace vrn::samples
