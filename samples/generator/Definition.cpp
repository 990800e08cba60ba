#include "Definition.h"

#include <algorithm>
#include <charconv>

namespace vrn::samples {

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0;;) {
        const std::size_t end = text.find(separator, begin);
        parts.emplace_back(text.substr(begin, end == std::string_view::npos ? end : end - begin));
        if (end == std::string_view::npos) {
            return parts;
        }
        begin = end + 1;
    }
}

std::optional<std::int64_t> tenths(std::string_view text) {
    const std::size_t point = text.find('.');
    std::string digits(text.substr(0, point));
    if (digits.empty() || digits == "-") {
        return std::nullopt;
    }
    digits += point == std::string_view::npos || point + 1 == text.size() ? '0' : text[point + 1];
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

std::string tenthsText(std::int64_t value) {
    std::string text = value < 0 ? "-" : "";
    const std::int64_t magnitude = value < 0 ? -value : value;
    text += std::to_string(magnitude / 10);
    if (magnitude % 10 != 0) {
        text += "." + std::to_string(magnitude % 10);
    }
    return text;
}

Definition::Definition(std::string_view text) : unit("None"), fields(split(text, ';')) {
    name = fields.front();
    fields.erase(fields.begin());
    const std::size_t open = name.find('(');
    if (open != std::string::npos) {
        const std::size_t close = name.find(')', open);
        if (close > open + 1) {
            unit = name.substr(open + 1, close - open - 1);
        }
        name.erase(open);
    }
}

bool Definition::isObject() const {
    const auto isTypeCharacter = [](char c) { return (c >= 'A' && c <= 'Z') || c == '_'; };
    return !fields.empty() && !fields[0].empty() && std::all_of(fields[0].begin(), fields[0].end(), isTypeCharacter);
}

}  // namespace vrn::samples
