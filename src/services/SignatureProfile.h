// The one form of W3C XML Signature that the editor writes and accepts, described once as a table.
#pragma once

#include <optional>
#include <string_view>

#include "services/Digest.h"
#include "xml/Dom.h"

namespace vrn::services {

/// Whether this is the outermost element of a signature, by name and namespace, whatever its prefix.
[[nodiscard]] bool isSignature(const xml::ElementView& element);
/// The children of an element that are signatures in that sense.
[[nodiscard]] std::vector<xml::Node> signatureChildren(const xml::Node& element);

/// A signature that stands nowhere yet. The element `SignatureValue` is empty.
struct NewSignature {
    xml::Node signature;
    xml::Node signedInfo;
    xml::Node signatureValue;
};
[[nodiscard]] NewSignature createSignature(const xml::Document& document, const Sha256& digest);

/// What a signature claims.
struct ClaimedSignature {
    xml::Node signedInfo;
    Sha256 digest{};
    Sha256 signatureValue{};
};
/// Nothing when the element has anything more, less or else than the profile, white space between elements apart.
[[nodiscard]] std::optional<ClaimedSignature> readSignature(const xml::Node& signature);

}  // namespace vrn::services
