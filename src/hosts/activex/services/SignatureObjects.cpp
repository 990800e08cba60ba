#include "hosts/activex/services/SignatureObjects.h"

#include "errors/Error.h"
#include "services/SignatureProfile.h"

namespace vrn::activex {

void SignatureObjectV4::sign(xml::Document& document, std::string_view key, std::string_view xpath) {
    const com::Variant text(document.xml());
    const com::Variant keyText(key);
    const com::Variant path(xpath);
    const auto signedText = com::textOf(object_.call(L"Sign", {text.get(), keyText.get(), path.get()}));
    xml::Document result;
    if (!result.loadXML(signedText)) {
        throw errors::Error(
            errors::vrnMethEdErrorInvalidXML,
            "The signature component gave back a text that is not well-formed: " + result.parseError().reason);
    }
    document = std::move(result);
}

bool SignatureObjectV4::verify(const xml::Document& document, std::string_view key, std::string_view xpath) {
    const com::Variant text(document.xml());
    const com::Variant keyText(key);
    const com::Variant path(xpath);
    return com::truthOf(object_.call(L"Verify", {text.get(), keyText.get(), path.get()}));
}

std::string SignatureObjectV4::signatureValue(const xml::Document& document, std::string_view key,
                                              std::string_view xpath) {
    xml::Document copy;
    copy.load(document);
    sign(copy, key, xpath);
    const auto signatures = services::signatureChildren(copy.documentElement());
    for (const auto& child : signatures.empty() ? std::vector<xml::Node>() : signatures.front().childNodes()) {
        if (child.name().ends_with("SignatureValue")) {
            return child.text();
        }
    }
    errors::throwObjectNotSet();
}

std::string SignatureObjectV23::sign(std::string_view text) {
    const com::Variant argument(text);
    return com::textOf(object_.call(L"Sign", {argument.get()}));
}

std::int32_t SignatureObjectV23::verify(const xml::Document& document, std::string_view reserved) {
    const com::Variant text(document.xml());
    const com::Variant second(reserved);
    return com::numberOf(object_.call(L"Verify", {text.get(), second.get()}));
}

std::string SignatureObjectV23::describe(std::int32_t code) {
    const com::Variant argument(code);
    return com::textOf(object_.call(L"Describe", {argument.get()}));
}

}  // namespace vrn::activex
