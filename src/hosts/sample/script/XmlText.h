// An XML text as an object that the control takes for a document: whatever has the members `hasChildNodes` and `xml`.
//
// MSXML does not give a document of a text that is not well-formed, but a script must be able to hand one over.
#pragma once

#include <string_view>

#include "com/Com.h"

namespace vrn::sample {

/// The document of the text; null for an empty text, which stands for no document.
[[nodiscard]] com::ComPtr<IDispatch> documentOf(std::string_view text);

/// The text of a document that the control gave.
[[nodiscard]] std::string textOf(IDispatch* document);

}  // namespace vrn::sample
