// What this back end does beyond the contract of the port: documents for hosts, and trees that MSXML itself would not copy.
#include "xml/msxml/Msxml.h"

#include "xml/Canonical.h"
#include "xml/Support.h"

namespace vrn::xml {
namespace {

using com::Bstr;
using com::ComPtr;
using testing::loaded;

std::string namesBelow(IXMLDOMNode& parent) {
    ComPtr<IXMLDOMNode> child;
    EXPECT_TRUE(SUCCEEDED(parent.get_firstChild(&child)));
    std::string names;
    while (child != nullptr) {
        Bstr name;
        EXPECT_EQ(child->get_nodeName(name.put()), S_OK);
        names += name.utf8() + ";";
        ComPtr<IXMLDOMNode> next;
        child->get_nextSibling(&next);
        child = next;
    }
    return names;
}

std::string textOf(IXMLDOMDocument2& document) {
    Bstr text;
    EXPECT_EQ(document.get_text(text.put()), S_OK);
    return text.utf8();
}

TEST(HostDocument, HoldsTheSameContentAndSharesNothing) {
    const Document document =
        loaded("<?xml version='1.0' encoding='UTF-8'?><!--c--><a xmlns='u' b='1'>x<c/>&#32;<d>y</d></a><?p q?>");
    const ComPtr<IXMLDOMDocument2> made = hostDocument(document);
    document.documentElement().setText("changed");
    EXPECT_EQ(namesBelow(*made.Get()), "xml;#comment;a;p;");
    EXPECT_EQ(textOf(*made.Get()), "x y");
    ComPtr<IXMLDOMElement> root;
    ASSERT_EQ(made->get_documentElement(&root), S_OK);
    EXPECT_EQ(namesBelow(*root.Get()), "#text;c;#text;d;");
    VARIANT_BOOL async = VARIANT_TRUE;
    EXPECT_EQ(made->get_async(&async), S_OK);
    EXPECT_EQ(async, VARIANT_FALSE);
}

TEST(HostDocument, MayBeEmptyOrNameAnyEncoding) {
    EXPECT_EQ(namesBelow(*newMsxmlDocument().Get()), "");
    EXPECT_EQ(namesBelow(*hostDocument(Document()).Get()), "");
    for (const std::string encoding : {"UTF-16", "ISO-8859-1", "no-such-thing"}) {
        const Document document = loaded("<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><a/>");
        EXPECT_NE(namesBelow(*hostDocument(document).Get()).find("a;"), std::string::npos) << encoding;
    }
}

// Deeper than any text may be, so that the copy is made node by node.
TEST(DeepCopy, KeepsWhatNodesHold) {
    const Document document = loaded("<a xmlns='u' xmlns:p='v' p:b='1'>x<b>y</b>z<![CDATA[c]]><p:d/><e xmlns=''/></a>");
    const Node a = document.documentElement();
    a.removeChild(a.childNodes()[1]);
    Node node = a;
    for (int i = 0; i < 1500; ++i) {
        node = node.appendChild(document.createElement("deep"));
    }
    Document copy;
    EXPECT_TRUE(copy.load(document));
    EXPECT_EQ(exclusiveCanonicalForm(copy.node()), exclusiveCanonicalForm(document.node()));
    EXPECT_EQ(copy.documentElement().childNodes().size(), a.childNodes().size());
}

TEST(Declaration, IsAnInstructionThatNoTextCanWrite) {
    Document document;
    EXPECT_FALSE(document.loadXML("<a><?vrn-xml-declaration x?></a>"));
    EXPECT_NE(document.parseError().errorCode, 0);
    EXPECT_TRUE(document.loadXML("<a><!--<?vrn-xml-declaration x?>--></a>"));
    EXPECT_EQ(testing::errorOf([&] { (void)document.createProcessingInstruction("vrn-xml-declaration", ""); }), 5);
}

}  // namespace
}  // namespace vrn::xml
