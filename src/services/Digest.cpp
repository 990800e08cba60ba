#include "services/Digest.h"

#include <algorithm>
#include <iterator>

#include "text/Unicode.h"

namespace vrn::services {

std::optional<Sha256> fromBase64(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char c) { return !text::isXmlSpace(c); });
    Sha256 value{};
    if (digits.size() != base64Length || !decodeBase64(digits, value)) {
        return std::nullopt;
    }
    // The libraries take "=" anywhere as zero bits and drop what a last digit holds too much; only the one text that
    // encoding gives is a valid one.
    return base64(value) == digits ? std::optional(value) : std::nullopt;
}

bool equalInConstantTime(const Sha256& a, const Sha256& b) {
    // Volatile, so that no compiler may see that a first difference settles it.
    volatile std::uint8_t difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        difference = static_cast<std::uint8_t>(difference | (a.at(i) ^ b.at(i)));
    }
    return difference == 0;
}

}  // namespace vrn::services
