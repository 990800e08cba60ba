// Exclusive canonical form (W3C Exclusive XML Canonicalization 1.0, without comments).
#pragma once

#include <functional>
#include <string>

#include "xml/Dom.h"

namespace vrn::xml {

/// Answers whether the element at this depth (the visited node's own element has depth 1) is left out with all below it.
using Omit = std::function<bool(const ElementView& element, int depth)>;

/// The exclusive canonical form of the node and all below it, UTF-8. The XML declaration and comments are left out, CDATA is
/// text. `omit` may leave elements out (an enveloped signature).
[[nodiscard]] std::string exclusiveCanonicalForm(const Node& node, const Omit& omit = {});

}  // namespace vrn::xml
