#include "hosts/cli/Files.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <system_error>

#include "errors/Error.h"
#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/Names.h"
#include "xml/Prolog.h"
#include "xml/TextFile.h"

namespace vrn::cli {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

[[noreturn]] void fail(const std::string& path, const std::string& what) {
    throw Fault(displayName(path) + ": " + what);
}

std::string readStream(std::istream& in, const std::string& path) {
    std::string bytes;
    std::array<char, 65536> block{};
    while (in.read(block.data(), block.size()) || in.gcount() > 0) {
        bytes.append(block.data(), static_cast<std::size_t>(in.gcount()));
        if (bytes.size() > largestFile) {
            fail(path,
                 "is larger than " + std::to_string(largestFile >> 20U) + " MB: that is no document of an instrument");
        }
    }
    if (in.bad()) {
        fail(path, "cannot be read");
    }
    return bytes;
}

bool looksLikeUtf16(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") || bytes.starts_with("<\0"sv) ||
           bytes.starts_with("\0<"sv);
}

std::string decoded(const std::string& path, std::string_view bytes) {
    try {
        return xml::decodeXmlFile(bytes);
    } catch (const errors::Error& error) {
        fail(path, error.description());
    }
}

// The text without its XML declaration and the white space behind that.
std::string_view withoutDeclaration(std::string_view text) {
    if (xml::declarationData(text)) {
        text.remove_prefix(std::min(text.find("?>") + 2, text.size()));
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    }
    return text;
}

std::string declarationOf(const XmlFile& file) {
    if (const auto data = xml::declarationData(file.text)) {
        return "<?xml " + std::string(*data) + "?>";
    }
    return file.isUtf16 ? R"(<?xml version="1.0" encoding="UTF-16"?>)" : "";
}

}  // namespace

std::string readFile(const std::string& path, const Console& console) {
    if (path == standardInput) {
        return readStream(console.in, path);
    }
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        fail(path, "is a folder");
    }
    const auto size = std::filesystem::file_size(path, error);
    if (!error && size > largestFile) {
        fail(path,
             "is larger than " + std::to_string(largestFile >> 20U) + " MB: that is no document of an instrument");
    }
    errno = 0;
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file.is_open()) {
        fail(path, "cannot be opened: " + std::generic_category().message(errno));
    }
    return readStream(file, path);
}

XmlFile readXmlFile(const std::string& path, const Console& console, std::string_view root) {
    const auto bytes = readFile(path, console);
    XmlFile file;
    file.path = path;
    file.hasUtf8Mark = bytes.starts_with(utf8Mark);
    file.isUtf16 = looksLikeUtf16(bytes);
    file.text = decoded(path, bytes);
    if (file.text.empty()) {
        fail(path, "is empty");
    }
    if (!file.document.loadXML(file.text)) {
        const auto& error = file.document.parseError();
        throw Fault(displayName(path) + ":" + std::to_string(error.line) + ":" + std::to_string(error.linepos) + ": " +
                    error.reason);
    }
    if (const auto name = file.document.documentElement().name(); name != root) {
        fail(path, "its root element is <" + name + ">, not <" + std::string(root) + ">");
    }
    return file;
}

std::string bytesFor(const XmlFile& file, const xml::Document& document) {
    const auto text = document.xml();
    try {
        auto bytes = xml::encodeXmlFile(declarationOf(file) + std::string(withoutDeclaration(text)));
        return file.hasUtf8Mark ? std::string(utf8Mark) + bytes : bytes;
    } catch (const errors::Error& error) {
        fail(file.path, error.description());
    }
}

}  // namespace vrn::cli
