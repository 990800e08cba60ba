// The host's documents: XML files through the system's MSXML, which sees to encodings and declarations.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <msxml2.h>

#include <string>

#include "com/Com.h"

namespace vrn::sample {

using XmlDocument = com::ComPtr<IXMLDOMDocument>;

/// An empty document of the newest MSXML that the system has.
[[nodiscard]] XmlDocument newDocument();
/// `errors::Error` with the file's name and the parser's reason when the file cannot be read.
[[nodiscard]] XmlDocument loadDocument(const std::wstring& path);
/// None when the text is not well-formed.
[[nodiscard]] XmlDocument parseDocument(BSTR text);
/// Writes what `GetMethodXml` gave, in the encoding that its declaration names.
void saveDocument(IDispatch* document, const std::wstring& path);

/// What an instrument has beside its methods. A method without such a set means nothing.
struct DocumentSet {
    std::wstring folder;
    XmlDocument macros;   ///< macros.xml, the catalogue
    XmlDocument objects;  ///< objects.xml, the instrument's objects
    XmlDocument config;   ///< config.xml, user-defined names

    [[nodiscard]] bool loaded() const noexcept { return macros != nullptr; }
};

[[nodiscard]] DocumentSet loadDocumentSet(const std::wstring& folder);

}  // namespace vrn::sample
