#include <gtest/gtest.h>

#include "services/EmbeddedSignatures.h"
#include "services/SignatureTexts.h"

namespace vrn::services {
namespace {

// The signatures of `<Method><A>x</A></Method>`, computed by another program: with the key of a method without `Guid`,
// and with "second" and nothing as text of `Guid`.
const std::string ownKey = "<Signature>a9MLzeoiFIomYVVzCZINxj2Py0/kxxlocH/thA/+I6Y=</Signature>";
const std::string keySecond = "<Signature>WemGCqoxL3zM0PBVKnb+ZLg1QVz8uTcb+Ewir/xKtj8=</Signature>";
const std::string keyEmpty = "<Signature>S83ZfZA4ehEjVuqzHRS9hYEJBh9XwoqAxjUZbUdNH/Q=</Signature>";

std::int32_t codeOf(const std::string& content) {
    return EmbeddedSignatureV23().verify(parsed("<Method>" + content + "</Method>"), "");
}

TEST(SignatureV23, SignsTextUnderTheConstant) {
    EXPECT_EQ(signatureElementTextV23(), "<Guid>{5C1D0E7A-93F4-4B2E-8A61-2F7D94C0B3E8}</Guid>");
    EXPECT_EQ(EmbeddedSignatureV23().sign(signatureElementTextV23()), "Mpuwd+08fCXmfUG7/e+WwIzijhGUQ/iQFoA8ZnHyFc4=");
}

TEST(SignatureV23, IntactWhereverSignatureAndGuidStand) {
    EXPECT_EQ(codeOf("<A>x</A>" + ownKey), 0);
    EXPECT_EQ(codeOf("\n " + ownKey + "\n <A>x</A>\n"), 0);
    EXPECT_EQ(codeOf("<A>x</A>" + replaced(ownKey, "a9ML", "\n a9ML\n ")), 0);
    EXPECT_EQ(
        codeOf("<A>x</A>" + ownKey + "<Guid>" + EmbeddedSignatureV23().sign(signatureElementTextV23()) + "</Guid>"), 0);
    EXPECT_EQ(codeOf("<Guid>second</Guid><A>x</A>" + keySecond), 0);
    EXPECT_EQ(codeOf("<Guid>first</Guid><A>x</A><Guid> second </Guid>" + keySecond), 0);
    EXPECT_EQ(codeOf("<Guid>first</Guid><A>x</A><Guid/>" + keyEmpty), 0);
    EXPECT_EQ(EmbeddedSignatureV23().verify(parsed("<?p?><!--c--><Method><A>x</A>" + ownKey + "</Method>"), ""), 0);
}

TEST(SignatureV23, MissingSignature) {
    EXPECT_EQ(codeOf(""), 1);
    EXPECT_EQ(codeOf("<A>x</A>"), 1);
    EXPECT_EQ(codeOf("<A>x</A><Signature/>"), 1);
    EXPECT_EQ(codeOf("<A>x</A><Signature> \n</Signature>"), 1);
    EXPECT_EQ(codeOf("<A>x" + ownKey + "</A>"), 1);
    EXPECT_EQ(codeOf("<A>x</A>" + replaced(ownKey, "<Signature", "<Signature xmlns=\"urn:other\"")), 1);
    EXPECT_EQ(codeOf("<A>x</A>" + signatureOfX), 1);
}

TEST(SignatureV23, FailedVerification) {
    EXPECT_EQ(codeOf("<A>y</A>" + ownKey), 2);
    EXPECT_EQ(codeOf("<A b=\"1\">x</A>" + ownKey), 2);
    EXPECT_EQ(codeOf("<A>x</A>" + replaced(ownKey, "a9ML", "a9MM")), 2);
    EXPECT_EQ(codeOf("<A>x</A><Signature>garbage</Signature>"), 2);
    EXPECT_EQ(codeOf("<A>x</A>" + ownKey + ownKey), 2);
    EXPECT_EQ(codeOf("<Guid>second</Guid><A>x</A><Guid>first</Guid>" + keySecond), 2);
    // Namesakes in a namespace, or deeper, are content.
    EXPECT_EQ(codeOf("<A>x</A>" + ownKey + "<Guid xmlns=\"urn:other\"/>"), 2);
    EXPECT_EQ(codeOf("<A>x</A>" + ownKey + signatureOfX), 2);
    EXPECT_EQ(codeOf("<A>x<Guid/></A>" + ownKey), 2);
    // What is not signed must not hide elements.
    EXPECT_EQ(codeOf("<A>x</A>" + ownKey + "<Signature><ATOM/></Signature>"), 2);
    EXPECT_EQ(codeOf("<A>x</A>" + replaced(ownKey, "</", "<ATOM/></")), 2);
    EXPECT_EQ(codeOf("<Guid><ATOM/></Guid><A>x</A><Guid>second</Guid>" + keySecond), 2);
}

TEST(SignatureV23, NotReadableAndDescriptions) {
    xml::Document broken;
    EXPECT_EQ(EmbeddedSignatureV23().verify(broken, ""), 3);
    broken.loadXML("<Method>");
    EXPECT_EQ(EmbeddedSignatureV23().verify(broken, ""), 3);

    EmbeddedSignatureV23 component;
    EXPECT_EQ(component.describe(0), "");
    EXPECT_EQ(component.describe(1), "Method has no signature.");
    EXPECT_EQ(component.describe(2), "Method failed verification.");
    EXPECT_EQ(component.describe(3), "Method is not readable.");
    EXPECT_EQ(component.describe(-4), "Method failed verification.");
}

TEST(SignatureV23, MakesTheSignatureThatVerifies) {
    const xml::Document document = parsed("<Method><A>x</A><Guid>second</Guid><Signature/></Method>");
    const std::string signature = EmbeddedSignatureV23().signatureFor(document);
    EXPECT_EQ("<Signature>" + signature + "</Signature>", keySecond);
    document.documentElement().child("Signature").setText(signature);
    EXPECT_EQ(EmbeddedSignatureV23().verify(document, ""), 0);
}

}  // namespace
}  // namespace vrn::services
