// Files as the tool reads them, and the text of a method in the encoding of the file that it goes back to.
#pragma once

#include <string>
#include <string_view>

#include "hosts/cli/Call.h"
#include "xml/Dom.h"

namespace vrn::cli {

/// The bytes of a file or, for "-", of standard input. Throws `Fault`.
[[nodiscard]] std::string readFile(const std::string& path, const Console& console);

/// An XML file as text and as document.
struct XmlFile {
    std::string path;
    std::string text;  ///< UTF-8
    xml::Document document;
    bool hasUtf8Mark = false;
    bool isUtf16 = false;  ///< by its bytes, whatever it declares
    bool isBigEndian = false;
};

/// Reads and parses a file. Throws `Fault` with line and position for one that is not well-formed, or whose root element is not
/// this one.
[[nodiscard]] XmlFile readXmlFile(const std::string& path, const Console& console, std::string_view root);

/// The same of a file's bytes.
[[nodiscard]] XmlFile xmlFileOf(const std::string& path, std::string_view bytes, std::string_view root);

/// Its text alone, decoded. Throws `Fault`, also for an empty one.
[[nodiscard]] std::string readXmlText(const std::string& path, const Console& console);

/// The document of a file's text. Throws `Fault` as `readXmlFile`.
[[nodiscard]] xml::Document parsedXml(const std::string& path, const std::string& text, std::string_view root);

/// The bytes of a document that goes back to a file: with the file's own XML declaration, in the encoding that this names, and the
/// file's byte order. Throws `Fault`.
[[nodiscard]] std::string bytesFor(const XmlFile& file, const xml::Document& document);

}  // namespace vrn::cli
