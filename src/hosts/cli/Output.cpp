#include "hosts/cli/Output.h"

#include <algorithm>
#include <numeric>

#include "text/Unicode.h"

namespace vrn::cli {

namespace {

constexpr char escape = '\x1B';
constexpr std::size_t columnGap = 2;

bool isWide(char32_t c) {
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
           (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1FAFF) || (c >= 0x20000 && c <= 0x3FFFD);
}

// Nearly all texts are: they are as wide as they are long and shown as they stand.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

bool isCombining(char32_t c) { return (c >= 0x0300 && c <= 0x036F) || (c >= 0x200B && c <= 0x200F) || c == 0xFEFF; }

}  // namespace

std::string Style::marked(std::string_view code, std::string_view text) const {
    if (!colour_ || text.empty()) {
        return std::string(text);
    }
    std::string out("\x1B[");
    out.append(code).append("m").append(text).append("\x1B[0m");
    return out;
}

std::size_t displayWidth(std::string_view text) {
    if (isPlain(text)) {
        return text.size();
    }
    std::size_t width = 0;
    while (!text.empty()) {
        if (text.front() == escape) {
            const auto end = text.find('m');
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
            continue;
        }
        const char32_t c = text::takeCodePoint(text);
        if (!isCombining(c)) {
            width += isWide(c) ? 2 : 1;
        }
    }
    return width;
}

std::string padded(std::string text, std::size_t width) {
    const auto own = displayWidth(text);
    text.append(own < width ? width - own : 0, ' ');
    return text;
}

std::string printable(std::string_view text) {
    if (isPlain(text)) {
        return std::string(text);
    }
    std::string shown;
    while (!text.empty()) {
        auto rest = text;
        const char32_t c = text::takeCodePoint(rest);
        if (c == '\n') {
            shown += "\\n";
        } else if (c == '\t') {
            shown += "\\t";
        } else if (c < 0x20 || c == 0x7F || (c >= 0x80 && c < 0xA0) || c == text::invalidCodePoint) {
            shown += "\xEF\xBF\xBD";
        } else {
            shown += text.substr(0, text.size() - rest.size());
        }
        text = rest;
    }
    return shown;
}

std::string Table::text() const {
    std::vector<std::size_t> own;  // of each cell
    std::vector<std::size_t> widths;
    own.reserve(rows_.empty() ? 0 : rows_.size() * rows_.front().size());
    for (const auto& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            own.push_back(displayWidth(row[i]));
            widths[i] = std::max(widths[i], own.back());
        }
    }
    std::string out;
    out.reserve(2 * std::accumulate(own.begin(), own.end(), rows_.size() * (indent_.size() + columnGap)));
    auto width = own.cbegin();
    for (const auto& row : rows_) {
        out += indent_;
        std::size_t blanks = 0;  // that stand before the next cell, if one comes
        for (std::size_t i = 0; i < row.size(); ++i, ++width) {
            if (!row[i].empty()) {
                out.append(blanks, ' ');
                out += row[i];
                blanks = 0;
            }
            // A column that no row has anything in takes no room.
            blanks += widths[i] > 0 ? widths[i] - *width + columnGap : 0;
        }
        while (!out.empty() && out.back() == ' ') {
            out.pop_back();
        }
        out += '\n';
    }
    return out;
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace vrn::cli
