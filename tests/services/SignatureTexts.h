// Texts that the signature tests share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::services {

/// The signature of `<Method><A>x</A></Method>` under the key "key". Its two values were computed by another program.
inline const std::string signatureOfX =
    R"(<Signature xmlns="http://www.w3.org/2000/09/xmldsig#"><SignedInfo>)"
    R"(<CanonicalizationMethod Algorithm="http://www.w3.org/2001/10/xml-exc-c14n#"/>)"
    R"(<SignatureMethod Algorithm="http://www.w3.org/2001/04/xmldsig-more#hmac-sha256"/><Reference URI=""><Transforms>)"
    R"(<Transform Algorithm="http://www.w3.org/2000/09/xmldsig#enveloped-signature"/>)"
    R"(<Transform Algorithm="http://www.w3.org/2001/10/xml-exc-c14n#"/></Transforms>)"
    R"(<DigestMethod Algorithm="http://www.w3.org/2001/04/xmlenc#sha256"/>)"
    R"(<DigestValue>w0Jw516wAlmCy8LnU0qNH5mqrozYcyr1JQwG5Xl44CE=</DigestValue></Reference></SignedInfo>)"
    R"(<SignatureValue>qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=</SignatureValue>)"
    R"(<KeyInfo><KeyName>vrnMethodEditor</KeyName></KeyInfo></Signature>)";

inline std::string replaced(std::string text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

inline std::string replacedAll(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

inline xml::Document parsed(std::string_view text) {
    xml::Document document;
    EXPECT_TRUE(document.loadXML(text)) << document.parseError().reason << "\n" << text;
    return document;
}

}  // namespace vrn::services
