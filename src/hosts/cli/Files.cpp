#include "hosts/cli/Files.h"

#include <algorithm>
#include <istream>
#include <utility>

#include "errors/Error.h"
#include "hosts/cli/Output.h"
#include "hosts/cli/System.h"
#include "text/TextFile.h"

namespace vrn::cli {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

[[noreturn]] void fail(const std::string& path, const std::string& what) {
    throw Fault(displayName(path) + ": " + what);
}

std::string readStream(std::istream& in, const std::string& path) {
    constexpr std::size_t block = 65536;
    std::string bytes;
    while (in) {
        const auto size = bytes.size();
        bytes.resize(size + block);
        in.read(bytes.data() + size, block);
        bytes.resize(size + static_cast<std::size_t>(in.gcount()));
        if (bytes.size() > text::largestFile) {
            fail(path, std::string(text::tooLarge));
        }
    }
    if (system::interrupted()) {
        throw system::Interrupted();
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
    std::string text;
    try {
        text = text::decodeXmlFile(bytes);
    } catch (const errors::Error& error) {
        fail(path, error.description());
    }
    if (text.empty()) {
        fail(path, "is empty");
    }
    return text;
}

// The text without its XML declaration and the white space after it.
std::string_view withoutDeclaration(std::string_view text) {
    if (text::declarationData(text)) {
        text.remove_prefix(std::min(text.find("?>") + 2, text.size()));
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    }
    return text;
}

std::string declarationOf(const XmlFile& file) {
    if (const auto data = text::declarationData(file.text)) {
        return "<?xml " + std::string(*data) + "?>";
    }
    return file.isUtf16 ? R"(<?xml version="1.0" encoding="UTF-16"?>)" : "";
}

}  // namespace

std::string readFile(const std::string& path, const Console& console) {
    return path == standardInput ? readStream(console.in, path) : system::readFile(path, text::largestFile);
}

XmlFile xmlFileOf(const std::string& path, std::string_view bytes, std::string_view root) {
    XmlFile file;
    file.path = path;
    file.hasUtf8Mark = bytes.starts_with(utf8Mark);
    file.isUtf16 = looksLikeUtf16(bytes);
    file.isBigEndian = file.isUtf16 && (bytes.starts_with("\xFE\xFF") || bytes.starts_with('\0'));
    file.text = decoded(path, bytes);
    file.document = parsedXml(path, file.text, root);
    return file;
}

XmlFile readXmlFile(const std::string& path, const Console& console, std::string_view root) {
    return xmlFileOf(path, readFile(path, console), root);
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
        auto bytes = text::encodeXmlFile(declarationOf(file) + std::string(withoutDeclaration(text)));
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
