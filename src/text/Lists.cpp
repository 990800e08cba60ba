#include "text/Lists.h"

#include <algorithm>

namespace vrn::text {

namespace {

// A character by itself is compared faster than searched for: items are short.
std::vector<std::string> splitAt(std::string_view text, char separator) {
    std::vector<std::string> items;
    items.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)) + 1);
    const char* begin = text.data();
    const char* const end = begin + text.size();
    for (const char* at = begin; at != end; ++at) {
        if (*at == separator) {
            items.emplace_back(begin, at);
            begin = at + 1;
        }
    }
    items.emplace_back(begin, end);
    return items;
}

}  // namespace

std::vector<std::string> split(std::string_view text, std::string_view separator) {
    if (separator.size() == 1 && !text.empty()) {
        return splitAt(text, separator.front());
    }
    std::vector<std::string> items;
    forEachItem(text, separator, [&items](std::string_view item) { items.emplace_back(item); });
    return items;
}

std::string join(const std::vector<std::string>& items, std::string_view separator) {
    std::string out;
    appendJoined(out, items, separator);
    return out;
}

void appendJoined(std::string& out, const std::vector<std::string>& items, std::string_view separator) {
    bool first = true;
    for (const auto& item : items) {
        if (!first) {
            out += separator;
        }
        out += item;
        first = false;
    }
}

std::string_view trimBlanks(std::string_view text) noexcept {
    const auto begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty() || text.find(from) == std::string::npos) {
        return;
    }
    std::string out;
    out.reserve(text.size());
    std::string_view rest = text;
    for (;;) {
        const auto at = rest.find(from);
        out += rest.substr(0, at);
        if (at == std::string_view::npos) {
            break;
        }
        out += to;
        rest.remove_prefix(at + from.size());
    }
    text = std::move(out);
}

std::string replacedAll(std::string text, std::string_view from, std::string_view to) {
    replaceAll(text, from, to);
    return text;
}

std::string_view before(std::string_view text, std::string_view mark) noexcept {
    return text.substr(0, text.find(mark));
}

}  // namespace vrn::text
