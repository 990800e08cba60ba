#include "hosts/cli/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <system_error>
#include <utility>

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

[[noreturn]] void failTooLarge(const std::string& path) {
    fail(path, "is larger than " + std::to_string(largestFile >> 20U) + " MB: that is no document of an instrument");
}

// `expected` is as large as the content will be, if that is known.
std::string readStream(std::istream& in, const std::string& path, std::size_t expected) {
    constexpr std::size_t block = 65536;
    std::string bytes;
    std::size_t size = 0;
    std::size_t more = expected + 1;  // the one byte shows the end without another round
    do {
        bytes.resize(size + more);
        in.read(bytes.data() + size, static_cast<std::streamsize>(more));
        size += static_cast<std::size_t>(in.gcount());
        more = block;
        if (size > largestFile) {
            failTooLarge(path);
        }
    } while (in);
    if (in.bad()) {
        fail(path, "cannot be read");
    }
    bytes.resize(size);
    return bytes;
}

bool looksLikeUtf16(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") || bytes.starts_with("<\0"sv) ||
           bytes.starts_with("\0<"sv);
}

std::string decoded(const std::string& path, std::string_view bytes) {
    std::string text;
    try {
        text = xml::decodeXmlFile(bytes);
    } catch (const errors::Error& error) {
        fail(path, error.description());
    }
    if (text.empty()) {
        fail(path, "is empty");
    }
    return text;
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
        return readStream(console.in, path, 0);
    }
    const std::filesystem::path name(path);
    std::error_code error;
    const auto size = std::filesystem::file_size(name, error);
    if (error == std::errc::is_a_directory) {
        fail(path, "is a folder");
    }
    if (!error && size > largestFile) {
        failTooLarge(path);
    }
    errno = 0;
    std::ifstream file(name, std::ios::binary);
    if (!file.is_open()) {
        fail(path, "cannot be opened: " + std::generic_category().message(errno));
    }
    return readStream(file, path, error ? 0 : size);
}

XmlFile readXmlFile(const std::string& path, const Console& console, std::string_view root) {
    const auto bytes = readFile(path, console);
    XmlFile file;
    file.path = path;
    file.hasUtf8Mark = bytes.starts_with(utf8Mark);
    file.isUtf16 = looksLikeUtf16(bytes);
    file.isBigEndian = file.isUtf16 && (bytes.starts_with("\xFE\xFF") || bytes.starts_with('\0'));
    file.text = decoded(path, bytes);
    file.document = parsedXml(path, file.text, root);
    return file;
}

std::string readXmlText(const std::string& path, const Console& console) {
    return decoded(path, readFile(path, console));
}

xml::Document parsedXml(const std::string& path, const std::string& text, std::string_view root) {
    xml::Document document;
    if (!document.loadXML(text)) {
        const auto& error = document.parseError();
        throw Fault(displayName(path) + ":" + std::to_string(error.line) + ":" + std::to_string(error.linepos) + ": " +
                    error.reason);
    }
    if (const auto name = document.documentElement().name(); name != root) {
        fail(path, "its root element is <" + name + ">, not <" + std::string(root) + ">");
    }
    return document;
}

std::string bytesFor(const XmlFile& file, const xml::Document& document) {
    const auto text = document.xml();
    try {
        auto bytes = xml::encodeXmlFile(declarationOf(file) + std::string(withoutDeclaration(text)));
        if (file.isBigEndian && bytes.starts_with("\xFF\xFE")) {
            for (std::size_t i = 1; i < bytes.size(); i += 2) {
                std::swap(bytes[i - 1], bytes[i]);
            }
        }
        return file.hasUtf8Mark ? std::string(utf8Mark) + bytes : bytes;
    } catch (const errors::Error& error) {
        fail(file.path, error.description());
    }
}

}  // namespace vrn::cli
