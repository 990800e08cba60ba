#include "hosts/cli/Output.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <numeric>

#include "catalogue/ParameterModel.h"
#include "text/Lists.h"
#include "text/Numbers.h"
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

// Nearly all texts are: they are as wide as they are long and shown as they are.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

bool isCombining(char32_t c) { return (c >= 0x0300 && c <= 0x036F) || (c >= 0x200B && c <= 0x200F) || c == 0xFEFF; }

constexpr std::string_view hexDigits = "0123456789ABCDEF";

void appendByte(std::string& out, std::string_view prefix, char byte) {
    const auto value = static_cast<unsigned char>(byte);
    out += prefix;
    out += hexDigits[value >> 4U];
    out += hexDigits[value & 0x0FU];
}

bool isUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~' || c == '/';
}

constexpr std::size_t fewItems = 6;

std::string listText(const catalogue::Parameter& parameter, bool full) {
    const auto& items = parameter.row.items();
    if (items.empty()) {
        return "no " + parameter.model.text + " on this instrument";
    }
    const auto shown = full ? items.size() : std::min(items.size(), fewItems);
    std::string list = "one of: ";
    for (std::size_t i = 0; i < shown; ++i) {
        list += (i == 0 ? "" : ", ") + items[i];
    }
    return shown < items.size() ? list + ", and " + std::to_string(items.size() - shown) + " more" : list;
}

std::string numberText(const std::optional<float>& number) {
    return number ? text::shortestText(*number) : std::string();
}

// A number of JSON with the digits that the editor shows.
Json numberJson(float number) { return Json::parse(text::shortestText(number)); }

}  // namespace

std::string jsonText(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::string jsonLine(const Json& value) { return jsonText(value) + "\n"; }

std::string displayName(std::string_view path) {
    if (path == standardInput) {
        return "(standard input)";
    }
    std::string shown;
    while (!path.empty()) {
        auto rest = path;
        const char32_t c = text::takeCodePoint(rest);
        const auto taken = path.substr(0, path.size() - rest.size());
        if (c == text::invalidCodePoint || c < 0x20 || c == 0x7F) {
            appendByte(shown, "\\x", taken.front());
        } else {
            shown += taken;
        }
        path = rest;
    }
    return shown;
}

std::string unreadable(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) {
        return "no such file or folder";
    }
    return error == std::errc::is_a_directory ? "is a folder" : "cannot be read: " + error.message();
}

std::string uriOf(std::string_view path) {
    const std::filesystem::path native(path);
    std::string uri = native.is_absolute() ? "file://" : "";
    const auto generic = native.generic_string();
    if (!uri.empty() && !generic.starts_with('/')) {
        uri += '/';  // a drive is where others have the root
    }
    for (const char c : generic) {
        if (isUnreserved(c)) {
            uri += c;
        } else {
            appendByte(uri, "%", c);
        }
    }
    return uri;
}

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
        std::size_t blanks = 0;  // before the next cell, if one comes
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

std::string limitsText(const catalogue::Parameter& parameter, bool full) {
    if (parameter.isObject) {
        return listText(parameter, full);
    }
    const auto& model = parameter.model;
    if (model.anyText) {
        return "any text";
    }
    std::string limits = "any number";
    if (model.minimum) {
        limits = numberText(model.minimum) + (model.maximum ? " to " + numberText(model.maximum) : " or more");
    }
    return model.defaultValue ? limits + ", default " + numberText(model.defaultValue) : limits;
}

void addLimits(Json& json, const catalogue::Parameter& parameter) {
    if (!parameter.unit.empty()) {
        json["unit"] = parameter.unit;
    }
    if (parameter.isObject) {
        json["types"] = text::split(parameter.model.text, " Or ");
        json["list"] = parameter.row.items();
        return;
    }
    const auto add = [&json](const char* key, const std::optional<float>& number) {
        if (number) {
            json[key] = numberJson(*number);
        }
    };
    add("minimum", parameter.model.minimum);
    add("maximum", parameter.model.maximum);
    add("default", parameter.model.defaultValue);
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace vrn::cli
