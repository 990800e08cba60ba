// Documents as a host gets them: of the system's MSXML.
#pragma once

#include "com/Com.h"
// After com/Com.h, which brings what it builds on.
#include <msxml2.h>

#include "xml/Dom.h"

namespace vrn::activex {

/// A document of the newest MSXML that the system has (6.0, 4.0, 3.0), parsed from the document's text: synchronous, white space
/// kept, nothing external ever fetched, XPath as selection language. A declaration that this MSXML refuses, for the
/// encoding that it names, is left out. Throws `errors::Error`.
[[nodiscard]] com::ComPtr<IXMLDOMDocument2> hostDocument(const xml::Document& document);

}  // namespace vrn::activex
