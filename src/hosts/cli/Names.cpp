#include "hosts/cli/Names.h"

#include <filesystem>

#include "text/Unicode.h"

namespace vrn::cli {

namespace {

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

}  // namespace

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
        uri += '/';  // a drive stands where others have the root
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

}  // namespace vrn::cli
