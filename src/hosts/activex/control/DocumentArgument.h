// Documents as a host hands them over.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oaidl.h>

#include <string>

namespace vrn::activex {

/// The XML text (UTF-8) of a DOM node of any version of MSXML, or of an object that answers to `hasChildNodes` and `xml` as one
/// does; empty for null and for a node without children. Fails for any other object; `name` is the argument's.
[[nodiscard]] std::string documentText(IDispatch* node, const char* name);

}  // namespace vrn::activex
