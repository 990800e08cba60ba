#include <gtest/gtest.h>

#include <optional>

#include "errors/Error.h"
#include "services/Digest.h"
#include "services/EmbeddedSignatures.h"
#include "services/SignatureProfile.h"
#include "services/SignatureTexts.h"
#include "support/Documents.h"
#include "xml/Canonical.h"

namespace vrn::services {
namespace {

const std::string signedX = "<Method><A>x</A>" + signatureOfX + "</Method>";

std::string signedText(const std::string& text, const std::string& key = "key") {
    xml::Document document = parsed(text);
    EmbeddedSignatureV4().sign(document, key, "/*");
    return document.xml();
}

bool verifies(const std::string& text, const std::string& key = "key", const std::string& xpath = "/Method") {
    xml::Document document;
    document.loadXML(text);
    return EmbeddedSignatureV4().verify(document, key, xpath);
}

std::optional<std::int32_t> errorOfSigning(xml::Document document, const std::string& xpath) {
    try {
        EmbeddedSignatureV4().sign(document, "key", xpath);
        return std::nullopt;
    } catch (const errors::Error& error) {
        return error.number();
    }
}

TEST(SignatureV4, WritesThePublishedFormAndTheValuesOfAnotherProgram) {
    EXPECT_EQ(signedText("<Method><A>x</A></Method>"), signedX);
    EXPECT_TRUE(verifies(signedX));

    const xml::Document unsignedDocument = parsed("<Method><A>x</A></Method>");
    EXPECT_EQ(EmbeddedSignatureV4().signatureValue(unsignedDocument, "key", "/Method"),
              "qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=");
    EXPECT_EQ(unsignedDocument.xml(), "<Method><A>x</A></Method>");
}

TEST(SignatureV4, ReplacesAnOldSignature) {
    const std::string old = replaced(signedX, "<Method><A>x</A>", "<Method><A>old</A>");
    xml::Document document = parsed(replaced(old, "</Method>", signatureOfX + "</Method>"));
    EXPECT_FALSE(EmbeddedSignatureV4().verify(document, "key", "/Method"));
    document.selectSingleNode("/Method/A").setText("x");
    EXPECT_EQ(EmbeddedSignatureV4().signatureValue(document, "key", "/Method"),
              "qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=");
    EmbeddedSignatureV4().sign(document, "key", "/Method");
    EXPECT_EQ(document.xml(), signedX);
}

TEST(SignatureV4, SurvivesWritingAndReadingWhateverTheTextHolds) {
    for (const std::string text : {
             "<?xml version=\"1.0\" encoding=\"UTF-16\"?><?before data?><!--c--><Method/><?after?>",
             "<Method b=\"&quot;&#9;&#10;&#13;&lt;&amp;'\" a=\"\"><A>&#13;\n&#32;</A><A>&#32;</A><![CDATA[ "
             "<&]]>]]&gt;</Method>",
             "<p:Method xmlns:p=\"urn:p\" xmlns=\"urn:d\" p:b=\"1\" c=\"2\"><A xmlns=\"\"/><!--c--><p:B/></p:Method>",
             "<Method><Signature>none of ours</Signature>\xC3\xA9\xE6\xB0\xB4\xF0\x9F\x98\x80</Method>",
         }) {
        const std::string written = signedText(text);
        EXPECT_TRUE(verifies(written, "key", "/*")) << written;
        EXPECT_EQ(signedText(written), written);
    }
    // What only a document in memory can hold: a line end of another system, white space alone.
    xml::Document document = parsed("<Method a=\"\"><A/><B/></Method>");
    document.documentElement().setAttribute("a", "\t1\r\n2");
    document.selectSingleNode("/Method/A").setText("1\r\n2\r");
    document.selectSingleNode("/Method/B").setText("  ");
    EmbeddedSignatureV4().sign(document, "key", "/Method");
    EXPECT_TRUE(EmbeddedSignatureV4().verify(document, "key", "/Method"));
    EXPECT_TRUE(verifies(document.xml()));
}

TEST(SignatureV4, RefusesChangedContent) {
    const std::string good = signedText("<?p q?><Method><A b=\"1\">xy</A><A b=\"2\">z</A><C/></Method>");
    ASSERT_TRUE(verifies(good));
    const std::string first = "<A b=\"1\">xy</A>";
    const std::string second = "<A b=\"2\">z</A>";
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string, std::string>>{
             {"xy", "xz"},
             {"xy", "x y"},
             {"xy", "xy "},
             {"xy", ""},
             {"b=\"1\"", "b=\"2\""},
             {"b=\"1\"", "c=\"1\""},
             {"b=\"1\"", ""},
             {"b=\"1\"", "b=\"1\" xml:lang=\"e\""},
             {first + second, second + first},
             {second, ""},
             {second + "<C/>", "<C>" + second + "</C>"},
             {"<C/>", "<C/><C/>"},
             {"<C/>", "<C xmlns=\"urn:c\"/>"},
             {"<C/>", "<C>&#32;</C>"},
             {"<C/>", "<C/><?p q?>"},
             {"<?p q?>", ""},
             {"<?p q?>", "<?p r?>"},
         }) {
        EXPECT_FALSE(verifies(replaced(good, from, to))) << from << " -> " << to;
    }
    EXPECT_FALSE(verifies(good, "kez"));
    EXPECT_FALSE(verifies(good, ""));
}

/// The text with digest and value computed anew, as somebody does who knows the published key: then nothing but the check
/// of the form is left to refuse it.
std::string resealed(const std::string& text) {
    const xml::Document document = parsed(text);
    const xml::Node signature = signatureChildren(document.documentElement()).at(0);
    const auto omit = [](const xml::ElementView& element, int depth) {
        return depth == 2 && element.localName == "Signature";
    };
    const std::string content = xml::exclusiveCanonicalForm(document.node(), omit);
    test::elementsNamed(signature, "DigestValue").at(0).setText(base64(sha256(content)));
    const std::string info = xml::exclusiveCanonicalForm(test::elementsNamed(signature, "SignedInfo").at(0));
    test::elementsNamed(signature, "SignatureValue").at(0).setText(base64(hmacSha256("key", info)));
    return document.xml();
}

const std::string otherSignature = "<Signature xmlns=\"http://www.w3.org/2000/09/xmldsig#\"/>";

TEST(SignatureV4, RefusesAnotherFormEvenWithTheRightValues) {
    ASSERT_EQ(resealed(signedX), signedX);
    ASSERT_TRUE(verifies(resealed(replaced(signedX, "<A>x", "<A>y"))));
    const std::string keyName = "<KeyName>vrnMethodEditor</KeyName>";
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string, std::string>>{
             {"xml-exc-c14n#\"/><SignatureMethod", "xml-exc-c14n#WithComments\"/><SignatureMethod"},
             {"xmldsig-more#hmac-sha256", "xmldsig-more#hmac-sha512"},
             {"hmac-sha256\"/>", "hmac-sha256\"><HMACOutputLength>8</HMACOutputLength></SignatureMethod>"},
             {"xmlenc#sha256", "xmlenc#sha512"},
             {"URI=\"\"", "URI=\"#a\""},
             {"URI=\"\"", "xml:URI=\"\""},
             {"<Reference URI=\"\">", "<Reference>"},
             {"<Reference URI=\"\">", "<Reference URI=\"\" Type=\"t\">"},
             {"<Transform Algorithm=\"http://www.w3.org/2000/09/xmldsig#enveloped-signature\"/>", ""},
             {"</Reference>", "</Reference><Reference URI=\"\"/>"},
             {"<SignedInfo>", "<SignedInfo>text"},
             {"<SignedInfo>", "<SignedInfo Id=\"i\">"},
             {"<SignedInfo>", "<SignedInfo xmlns:p=\"urn:p\">"},
             {"</SignedInfo>", "<!----></SignedInfo>"},
             {"</SignedInfo>", "<?p?></SignedInfo>"},
             {"</SignedInfo>", "<![CDATA[]]></SignedInfo>"},
             {"<SignatureValue>", "<SignatureValue Id=\"v\">"},
             {"</SignatureValue>", "</SignatureValue><SignatureValue/>"},
             {keyName, "<KeyName>other</KeyName>"},
             {keyName, "<KeyName> vrnMethodEditor</KeyName>"},
             {keyName, "<xml:KeyName>vrnMethodEditor</xml:KeyName>"},
             {keyName, keyName + keyName},
             {keyName + "</KeyInfo>", "</KeyInfo>" + keyName},
             {"<KeyInfo>" + keyName + "</KeyInfo>", ""},
             {"</KeyInfo>", "</KeyInfo>text"},
             {"</KeyInfo>", "</KeyInfo><!---->"},
             {"</KeyInfo>", "</KeyInfo><Object/>"},
             {"</KeyInfo>", "</KeyInfo><p:Object xmlns:p=\"urn:p\"/>"},
             {"</KeyInfo>", "</KeyInfo>" + otherSignature},
             {signatureOfX, signatureOfX + otherSignature},
             {"<A>x</A>", "<A>x" + otherSignature + "</A>"},
         }) {
        EXPECT_FALSE(verifies(resealed(replaced(signedX, from, to)))) << from << " -> " << to;
    }
}

TEST(SignatureV4, RefusesOtherValuesAndPlaces) {
    const std::string value = "<SignatureValue>qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=</SignatureValue>";
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string, std::string>>{
             {"w0Jw", "w0Jx"},
             {"qkqV", "qkqW"},
             {"S26A=", "S26B="},
             {"S26A=", ""},
             {value, ""},
             {value, "<SignatureValue/>"},
             {value, replaced(replaced(value, ">qkqV", "><![CDATA[qkqV"), "=<", "=]]><")},
             {"qkqV", "qk<!---->qV"},
             {signatureOfX, ""},
             {signatureOfX, otherSignature},
             {signatureOfX, otherSignature + signatureOfX},
             {signatureOfX, signatureOfX + signatureOfX},
             {signatureOfX, "<W>" + signatureOfX + "</W>"},
             {"<A>x</A>" + signatureOfX, "<A>x" + signatureOfX + "</A>"},
             {"09/xmldsig#\"><", "09/xmldsig\"><"},
         }) {
        EXPECT_FALSE(verifies(replaced(signedX, from, to))) << from << " -> " << to;
    }
}

TEST(SignatureV4, AcceptsLayoutPlaceAndPrefixOfOtherWriters) {
    EXPECT_TRUE(verifies("<?xml version=\"1.0\"?>\n" + replacedAll(signedX, "><", ">\r\n\t <")));
    EXPECT_TRUE(verifies(replaced(signedX, "S26A=", "\n  S26A=\n")));
    EXPECT_TRUE(verifies("<!--c-->" + replaced(signedX, "<A>x", "<!--c--><A><!--c--><![CDATA[x]]>")));
    EXPECT_TRUE(verifies("<Method>" + signatureOfX + "<A>x</A></Method>"));

    std::string prefixed = replacedAll(replacedAll(signatureOfX, "<", "<ds:"), "<ds:/", "</ds:");
    prefixed = replaced(prefixed, "xmlns=", "xmlns:ds=");
    // The prefix is part of what is signed, so a mere renaming does not verify.
    EXPECT_FALSE(verifies("<Method><A>x</A>" + prefixed + "</Method>"));
    prefixed = replaced(prefixed,
                        "qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=", "2G2jBG55tz9eRAsalgNUQJS+wF2Z0QVakE9WzYPz52g=");
    EXPECT_TRUE(verifies("<Method><A>x</A>" + prefixed + "</Method>"));
    prefixed = replaced(prefixed, " xmlns:ds=\"http://www.w3.org/2000/09/xmldsig#\"", "");
    EXPECT_TRUE(verifies("<Method xmlns:ds=\"http://www.w3.org/2000/09/xmldsig#\"><A>x</A>" + prefixed + "</Method>"));
}

TEST(SignatureV4, WorksOnTheRootOnly) {
    const xml::Document document = parsed("<Method><A b=\"1\">x</A></Method>");
    EXPECT_EQ(errorOfSigning(document, "/GUID"), errors::number::objectNotSet);
    EXPECT_EQ(errorOfSigning(xml::Document(), "/Method"), errors::number::objectNotSet);
    for (const std::string xpath : {"/", "/Method/A", "/Method/A/@b", "/Method/A/text()", "][", ""}) {
        EXPECT_EQ(errorOfSigning(document, xpath), errors::number::invalidProcedureCall) << xpath;
    }
    EXPECT_EQ(errorOfSigning(parsed("<Method><A>" + signatureOfX + "</A></Method>"), "/Method"),
              errors::number::invalidProcedureCall);
    EXPECT_EQ(document.xml(), "<Method><A b=\"1\">x</A></Method>");
    for (const std::string xpath : {"/", "/GUID", "/Method/A", "//A", "][", "", "p:x", "1", "/*/*"}) {
        EXPECT_FALSE(verifies(signedX, "key", xpath)) << xpath;
    }
    EXPECT_TRUE(verifies(signedX, "key", "Method"));
    EXPECT_TRUE(verifies(signedX, "key", "/*"));
}

TEST(SignatureV4, AnswersFalseForGarbage) {
    for (std::size_t length = 0; length < signedX.size(); length += 7) {
        EXPECT_FALSE(verifies(signedX.substr(0, length)));
    }
    EXPECT_FALSE(verifies(std::string("\0\xff\xfe<", 4)));
    EXPECT_FALSE(verifies(signatureOfX, "key", "/Signature"));
    EXPECT_FALSE(verifies(replaced(signatureOfX, "</Signature>", signatureOfX + "</Signature>"), "key", "/Signature"));
    std::string deep;
    for (int i = 0; i < 200; ++i) {
        deep += "<Method>";
    }
    for (int i = 0; i < 200; ++i) {
        deep += "</Method>";
    }
    EXPECT_FALSE(verifies(deep));
}

TEST(SignatureV4, TheKeyIsTheSignedElement) {
    EmbeddedSignatureV4 component;
    std::string expected = replaced(
        signatureOfX, "w0Jw516wAlmCy8LnU0qNH5mqrozYcyr1JQwG5Xl44CE=", "2SESoUvksLc4+Lss/jfl1bVAs7eUT1BBEMspwt7FQD4=");
    expected = replaced(expected,
                        "qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=", "nu5vClTxfl5+CdBEYPXieidXv7hQ/82MQgfT8C4FkM4=");
    EXPECT_EQ(signatureKeyV4(component), "<GUID>{5C1D0E7A-93F4-4B2E-8A61-2F7D94C0B3E8}" + expected + "</GUID>");
}

}  // namespace
}  // namespace vrn::services
