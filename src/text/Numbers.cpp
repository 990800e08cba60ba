#include "text/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "errors/Error.h"
#include "text/Lists.h"

namespace vrn::text {

namespace {

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

// Moves digits from the front of `rest` to `out`; how many there were.
std::size_t takeDigits(std::string_view& rest, std::string& out) {
    std::size_t count = 0;
    while (count < rest.size() && isDigit(rest[count])) {
        ++count;
    }
    out.append(rest.substr(0, count));
    rest.remove_prefix(count);
    return count;
}

void takeSign(std::string_view& rest, std::string& out) {
    if (!rest.empty() && (rest.front() == '+' || rest.front() == '-')) {
        if (rest.front() == '-') {
            out.push_back('-');
        }
        rest.remove_prefix(1);
    }
}

// The text with "." as separator and no plus signs, as from_chars wants it; nothing when it is no number text.
std::optional<std::string> plainForm(std::string_view text, std::string_view separator) {
    std::string_view rest = trimBlanks(text);
    std::string plain;
    takeSign(rest, plain);
    std::size_t digits = takeDigits(rest, plain);
    if (!separator.empty() && rest.starts_with(separator)) {
        rest.remove_prefix(separator.size());
        plain.push_back('.');
        digits += takeDigits(rest, plain);
    }
    if (digits == 0) {
        return std::nullopt;
    }
    if (!rest.empty() && (rest.front() == 'e' || rest.front() == 'E')) {
        rest.remove_prefix(1);
        plain.push_back('e');
        takeSign(rest, plain);
        if (takeDigits(rest, plain) == 0) {
            return std::nullopt;
        }
    }
    return rest.empty() ? std::optional(plain) : std::nullopt;
}

// The value of a plain form beyond `double`: an infinity when it is too large, zero when it is too small. from_chars does not tell
// which, and strtod obeys whatever locale the process has set.
double beyondDouble(std::string_view plain) {
    const bool negative = plain.starts_with('-');
    const auto mantissa = plain.substr(0, plain.find('e'));
    const auto exponent = plain.substr(std::min(mantissa.size() + 1, plain.size()));
    const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto firstDigit = static_cast<long long>(mantissa.find_first_of("123456789"));
    long long power = 0;
    if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), power).ec ==
        std::errc::result_out_of_range) {
        power = exponent.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
    const double size = point - firstDigit + power > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negative ? -size : size;
}

}  // namespace

std::optional<double> parseNumber(std::string_view text, std::string_view decimalSeparator) {
    const auto plain = plainForm(text, decimalSeparator);
    if (!plain) {
        return std::nullopt;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(plain->data(), plain->data() + plain->size(), value);
    if (error == std::errc::result_out_of_range) {
        return beyondDouble(*plain);
    }
    return value;
}

std::int32_t roundToInt32(double value) {
    // nearbyint in the default rounding mode takes halves to the even neighbour.
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<std::int32_t>::min() && whole <= std::numeric_limits<std::int32_t>::max())) {
        errors::throwOverflow();
    }
    return static_cast<std::int32_t>(whole);
}

std::string shortestText(float value) {
    // 39 digits before the point at most; a denormal takes about 50 behind it.
    std::array<char, 128> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    return {buffer.data(), result.ptr};
}

std::string twoDigits(std::size_t value) {
    auto digits = std::to_string(value);
    return digits.size() < 2 ? "0" + digits : digits;
}

}  // namespace vrn::text
