#include <algorithm>
#include <vector>

#include "errors/Error.h"
#include "services/Digest.h"
#include "services/EmbeddedSignatures.h"
#include "xml/Canonical.h"

namespace vrn::services {

namespace {

enum Code : std::int32_t { intact = 0, noSignature = 1, failed = 2, notReadable = 3 };

std::vector<xml::Node> childrenNamed(const xml::Node& root, std::string_view name) {
    std::vector<xml::Node> found;
    for (xml::Node node = root.child(name); node; node = node.nextOfSameName()) {
        found.push_back(node);
    }
    return found;
}

/// Whether an element has text and nothing else. What is left out of the signed text must not hold elements: a reader
/// that looks for its elements anywhere in the document would find them there, unsigned.
bool holdsTextOnly(const xml::Node& element) {
    const std::vector<xml::Node> children = element.childNodes();
    return std::all_of(children.begin(), children.end(), [](const xml::Node& child) {
        return child.kind() == xml::NodeKind::Text || child.kind() == xml::NodeKind::CData;
    });
}

std::string keyOf(const std::vector<xml::Node>& guids) {
    return guids.empty() ? EmbeddedSignatureV23().sign(signatureElementTextV23()) : guids.back().text();
}

Sha256 codeFor(const xml::Node& root, std::string_view key) {
    const auto omit = [](const xml::ElementView& element, int depth) {
        return depth == 2 && element.namespaceUri.empty() &&
               (element.localName == signatureElementV23 || element.localName == keyElementV23);
    };
    return hmacSha256(key, xml::exclusiveCanonicalForm(root, omit));
}

}  // namespace

std::string EmbeddedSignatureV23::sign(std::string_view text) { return base64(hmacSha256(signatureConstant, text)); }

std::int32_t EmbeddedSignatureV23::verify(const xml::Document& document, std::string_view /*reserved*/) {
    const xml::Node root = document.documentElement();
    if (!root) {
        return notReadable;
    }
    const std::vector<xml::Node> signatures = childrenNamed(root, signatureElementV23);
    const std::vector<xml::Node> guids = childrenNamed(root, keyElementV23);
    std::string text;  // several signatures make one that does not decode
    for (const xml::Node& signature : signatures) {
        text += signature.text();
    }
    if (text.empty()) {
        return noSignature;
    }
    if (!std::all_of(signatures.begin(), signatures.end(), holdsTextOnly) ||
        !std::all_of(guids.begin(), guids.end(), holdsTextOnly)) {
        return failed;
    }
    const std::optional<Sha256> claimed = fromBase64(text);
    return claimed && equalInConstantTime(*claimed, codeFor(root, keyOf(guids))) ? intact : failed;
}

std::string EmbeddedSignatureV23::describe(std::int32_t code) {
    switch (code) {
        case intact:
            return "";
        case noSignature:
            return "Method has no signature.";
        case notReadable:
            return "Method is not readable.";
        default:
            return "Method failed verification.";
    }
}

std::string EmbeddedSignatureV23::signatureFor(const xml::Document& document) {
    const xml::Node root = document.documentElement();
    if (!root) {
        errors::throwObjectNotSet();
    }
    return base64(codeFor(root, keyOf(childrenNamed(root, keyElementV23))));
}

std::string signatureElementTextV23() {
    const std::string name(keyElementV23);
    return "<" + name + ">" + std::string(signatureConstant) + "</" + name + ">";
}

}  // namespace vrn::services
