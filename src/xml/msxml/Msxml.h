// The system's MSXML: documents made the way the editor wants them, for itself and for hosts.
#pragma once

#include "com/Com.h"
// After com/Com.h, which brings what it builds on.
#include <msxml2.h>

#include "xml/Dom.h"

namespace vrn::xml {

/// An empty document of the newest MSXML that the system has (6.0, 4.0, 3.0): synchronous, white space kept, nothing
/// external ever fetched, XPath as selection language. A thread that has not initialised COM is made a single-threaded
/// apartment.
[[nodiscard]] com::ComPtr<IXMLDOMDocument2> newMsxmlDocument();

/// A document for a host that holds the same content and shares nothing. A declaration that this MSXML refuses (for the encoding
/// it names) is left out.
[[nodiscard]] com::ComPtr<IXMLDOMDocument2> hostDocument(const Document& document);

}  // namespace vrn::xml
