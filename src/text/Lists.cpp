#include "text/Lists.h"

namespace vrn::text {

std::vector<std::string> split(std::string_view text, std::string_view separator) {
    std::vector<std::string> items;
    std::size_t count = 0;
    forEachItem(text, separator, [&count](std::string_view /*item*/) { ++count; });
    items.reserve(count);
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
