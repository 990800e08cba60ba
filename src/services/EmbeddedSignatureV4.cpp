#include "errors/Error.h"
#include "services/Digest.h"
#include "services/EmbeddedSignatures.h"
#include "services/SignatureProfile.h"
#include "xml/Canonical.h"

namespace vrn::services {

namespace {

/// What the reference of a signature covers: the whole document but the signatures that are children of its root.
struct SignedContent {
    Sha256 digest{};
    int signatures = 0;         ///< children of the root, left out of the digest
    int foreignSignatures = 0;  ///< deeper ones, which are content
};

SignedContent signedContent(const xml::Document& document) {
    SignedContent content;
    const auto omit = [&content](const xml::ElementView& element, int depth) {
        if (!isSignature(element)) {
            return false;
        }
        const bool enveloped = depth == 2;
        ++(enveloped ? content.signatures : content.foreignSignatures);
        return enveloped;
    };
    content.digest = sha256(xml::exclusiveCanonicalForm(document.node(), omit));
    return content;
}

/// The root that the expression selects. The one reference covers the whole document, so nothing smaller can be signed.
xml::Node selectRoot(const xml::Document& document, std::string_view xpath) {
    xml::Node selected = document.selectSingleNode(xpath);
    if (!selected) {
        errors::throwObjectNotSet();
    }
    if (!(selected == document.documentElement())) {
        errors::throwInvalidProcedureCall();
    }
    return selected;
}

bool selectsRoot(const xml::Document& document, std::string_view xpath) {
    try {
        (void)selectRoot(document, xpath);
        return true;
    } catch (const errors::Error&) {  // an expression that is none included
        return false;
    }
}

Sha256 digestToSign(const xml::Document& document) {
    const SignedContent content = signedContent(document);
    if (content.foreignSignatures != 0) {
        // No reader would accept the result: better no file than one that never loads.
        errors::throwInvalidProcedureCall();
    }
    return content.digest;
}

/// What is signed for this digest: the canonical form of `SignedInfo`, in which nothing else changes.
std::string signedInfoFor(const Sha256& digest) {
    static const std::string form = xml::exclusiveCanonicalForm(createSignature(xml::Document(), Sha256{}).signedInfo);
    static const std::size_t place = form.find(base64(Sha256{}));
    return std::string(form).replace(place, base64Length, base64(digest));
}

std::string signatureValueFor(const Sha256& digest, std::string_view key) {
    return base64(hmacSha256(key, signedInfoFor(digest)));
}

std::string makeKey(SignatureV4& component) {
    xml::Document document;
    document.loadXML(signatureElementTextV4());
    component.sign(document, signatureConstant, "/GUID");
    return document.documentElement().xml();  // a component of a host may add a declaration: no part of the key
}

}  // namespace

void EmbeddedSignatureV4::sign(xml::Document& document, std::string_view key, std::string_view xpath) {
    const xml::Node root = selectRoot(document, xpath);
    const Sha256 digest = digestToSign(document);
    const NewSignature made = createSignature(document, digest);
    made.signatureValue.setText(signatureValueFor(digest, key));
    for (const xml::Node& old : signatureChildren(root)) {
        root.removeChild(old);
    }
    (void)root.appendChild(made.signature);
}

std::string EmbeddedSignatureV4::signatureValue(const xml::Document& document, std::string_view key,
                                                std::string_view xpath) {
    (void)selectRoot(document, xpath);
    return signatureValueFor(digestToSign(document), key);
}

bool EmbeddedSignatureV4::verify(const xml::Document& document, std::string_view key, std::string_view xpath) {
    if (!selectsRoot(document, xpath)) {
        return false;
    }
    const SignedContent content = signedContent(document);
    if (content.signatures != 1 || content.foreignSignatures != 0) {
        return false;
    }
    const std::vector<xml::Node> signatures = signatureChildren(document.documentElement());
    const std::optional<ClaimedSignature> claimed = readSignature(signatures.at(0));
    return claimed && equalInConstantTime(claimed->digest, content.digest) &&
           equalInConstantTime(claimed->signatureValue,
                               hmacSha256(key, xml::exclusiveCanonicalForm(claimed->signedInfo)));
}

std::string signatureElementTextV4() { return "<GUID>" + std::string(signatureConstant) + "</GUID>"; }

std::string signatureKeyV4(SignatureV4& component) {
    if (dynamic_cast<EmbeddedSignatureV4*>(&component) == nullptr) {
        return makeKey(component);
    }
    // What a host's component answers is its own affair each time; the embedded one always answers the same.
    static const std::string key = makeKey(component);
    return key;
}

}  // namespace vrn::services
