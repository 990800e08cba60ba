// Number texts: what counts as a number, how numbers are rounded and how they are written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::text {

/// The value of a number text: blanks around it, an optional sign, digits with at most one decimal separator, an optional
/// exponent; nothing else, so no thousands separators, hexadecimal, "inf" or "nan". A value beyond `double` is an infinity.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text, std::string_view decimalSeparator);

/// The nearest whole number, halves to the even neighbour. Error 6 when it is beyond 32 bits.
[[nodiscard]] std::int32_t roundToInt32(double value);

/// The shortest decimal text with "." that gives the same single back; never with an exponent.
[[nodiscard]] std::string shortestText(float value);

/// At least two digits: 1 gives "01", 100 gives "100".
[[nodiscard]] std::string twoDigits(std::size_t value);

}  // namespace vrn::text
