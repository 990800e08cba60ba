// libxml2 as the peer that the editor's parser and canonical form are held against.
#pragma once

#include <libxml/tree.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vrn::test {

using PeerDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

/// The text as the peer reads it: UTF-8 whatever its declaration says; null when it is not well-formed or breaks the rules of
/// namespaces.
[[nodiscard]] PeerDocument peerDocument(const std::string& text);

/// All elements, in document order.
[[nodiscard]] std::vector<const xmlNode*> peerElements(const xmlDoc& document);

/// Answers whether an element, with its attributes and all it holds, is part of the canonical form. A node that is in no element is
/// asked about with null.
using PeerSelection = std::function<bool(const xmlNode* element)>;
[[nodiscard]] bool isWithin(const xmlNode* element, const xmlNode* ancestor) noexcept;

/// The exclusive canonical form, without comments, of all that is selected; of the whole document without a selection. Nothing where
/// the peer refuses: it wants absolute names of namespaces.
[[nodiscard]] std::optional<std::string> peerCanonicalForm(xmlDoc& document, const PeerSelection& selection = {});

/// The peer's own words would mix with the result.
void silencePeer();

}  // namespace vrn::test
