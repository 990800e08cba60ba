// The contract, continued: nodes made, moved, taken out and found.
#include "xml/Serialiser.h"
#include "xml/Support.h"

namespace vrn::xml {
namespace {

using testing::errorOf;
using testing::loaded;

TEST(DomEdit, BuildsADocument) {
    const Document document;
    const Node root = document.node().appendChild(document.createElement("Root"));
    (void)document.node().insertBefore(document.createProcessingInstruction("xml", "version=\"1.0\""), root);
    const Node b = root.appendChild(document.createElement("b"));
    (void)root.insertBefore(document.createTextNode("x"), b);
    (void)root.appendChild(document.createProcessingInstruction("p", "  q "));
    EXPECT_EQ(document.xml(), "<?xml version=\"1.0\"?><Root>x<b/><?p q ?></Root>");
    EXPECT_EQ(root.xml(), "<Root>x<b/><?p q ?></Root>");
}

TEST(DomEdit, MovesWhatStandsSomewhere) {
    const Document document = loaded("<a><b/><c/><d/></a>");
    const Node a = document.documentElement();
    EXPECT_EQ(a.appendChild(a.firstChild()).name(), "b");
    EXPECT_EQ(document.xml(), "<a><c/><d/><b/></a>");
    (void)a.insertBefore(a.lastChild(), a.firstChild());
    (void)a.insertBefore(a.firstChild(), a.firstChild());
    EXPECT_EQ(document.xml(), "<a><b/><c/><d/></a>");
    (void)a.firstChild().appendChild(a.lastChild());
    EXPECT_EQ(document.xml(), "<a><b><d/></b><c/></a>");
}

TEST(DomEdit, NeighbouringTextsStayUsable) {
    const Document document = loaded("<a>x<b/>y</a>");
    const Node a = document.documentElement();
    const Node y = a.lastChild();
    a.removeChild(a.child("b"));
    const Node z = a.appendChild(document.createTextNode("z"));
    EXPECT_EQ(document.xml(), "<a>xyz</a>");
    EXPECT_EQ(a.text(), "xyz");
    y.setText("Y");
    EXPECT_EQ(z.text().back(), 'z');
}

TEST(DomEdit, FragmentsGiveTheirChildren) {
    const Document document = loaded("<a><z/></a>");
    const Node fragment = document.createDocumentFragment();
    (void)fragment.appendChild(document.createElement("b"));
    (void)fragment.appendChild(document.createTextNode("x"));
    EXPECT_EQ(fragment.xml(), "<b/>x");
    (void)document.documentElement().insertBefore(fragment, document.documentElement().firstChild());
    EXPECT_EQ(document.xml(), "<a><b/>x<z/></a>");
    EXPECT_FALSE(fragment.hasChildNodes());
    (void)document.documentElement().appendChild(fragment);
    EXPECT_EQ(document.xml(), "<a><b/>x<z/></a>");
}

TEST(DomEdit, RefusesWrongPlaces) {
    const Document document = loaded("<?xml version=\"1.0\"?><a>t<b><c/></b></a>");
    const Node root = document.node();
    const Node a = document.documentElement();
    const Node b = a.child("b");
    const Node declaration = root.firstChild();
    const Node foreign = loaded("<f/>").documentElement();
    const Node fragment = document.createDocumentFragment();
    (void)fragment.appendChild(document.createElement("x"));
    EXPECT_EQ(errorOf([&] { (void)b.appendChild(a); }), 5);
    EXPECT_EQ(errorOf([&] { (void)b.appendChild(b); }), 5);
    EXPECT_EQ(errorOf([&] { (void)b.appendChild(root); }), 5);
    EXPECT_EQ(errorOf([&] { (void)b.appendChild(foreign); }), 5);
    EXPECT_EQ(errorOf([&] { (void)b.insertBefore(document.createElement("x"), a.firstChild()); }), 5);
    EXPECT_EQ(errorOf([&] { (void)a.firstChild().appendChild(document.createElement("x")); }), 5);
    EXPECT_EQ(errorOf([&] { (void)root.appendChild(document.createElement("x")); }), 5);
    EXPECT_EQ(errorOf([&] { (void)root.appendChild(document.createTextNode("x")); }), 5);
    EXPECT_EQ(errorOf([&] { (void)root.appendChild(fragment); }), 5);
    EXPECT_EQ(errorOf([&] { (void)fragment.firstChild().appendChild(fragment); }), 5);
    EXPECT_EQ(errorOf([&] { (void)root.insertBefore(document.createProcessingInstruction("p", ""), declaration); }), 5);
    EXPECT_EQ(errorOf([&] { (void)a.appendChild(document.createProcessingInstruction("xml", "")); }), 5);
    EXPECT_EQ(errorOf([&] { root.removeChild(b); }), 5);
    EXPECT_EQ(errorOf([&] { a.removeChild(fragment); }), 5);
    EXPECT_EQ(document.xml(), "<?xml version=\"1.0\"?><a>t<b><c/></b></a>");
}

TEST(DomEdit, RemovedNodesCanBeUsedAgain) {
    const Document document = loaded("<a><b x='1'><c/>t</b><d/></a>");
    const Node a = document.documentElement();
    const Node b = a.child("b");
    a.removeChild(b);
    EXPECT_EQ(document.xml(), "<a><d/></a>");
    EXPECT_FALSE(b.parentNode());
    EXPECT_FALSE(b.nextSibling());
    EXPECT_EQ(b.xml(), "<b x=\"1\"><c/>t</b>");
    b.child("c").setText("new");
    (void)a.appendChild(b);
    document.node().removeChild(a);
    EXPECT_FALSE(document.documentElement());
    (void)document.node().appendChild(a);
    EXPECT_EQ(document.xml(), "<a><d/><b x=\"1\"><c>new</c>t</b></a>");
}

TEST(DomEdit, HandlesOutliveTheirDocument) {
    Node inner;
    Node removed;
    {
        const Document document = loaded("<a><b y='2'>x</b><c/></a>");
        inner = document.selectSingleNode("a/b").firstChild();
        removed = document.documentElement().child("c");
        document.documentElement().removeChild(removed);
    }
    EXPECT_EQ(inner.text(), "x");
    EXPECT_EQ(inner.parentNode().parentNode().xml(), "<a><b y=\"2\">x</b></a>");
    EXPECT_EQ(removed.xml(), "<c/>");
}

// A written element is in the same namespaces wherever it came from.
TEST(DomEdit, WritesTheDeclarationsThatAMovedElementNeeds) {
    const Document document = loaded("<a xmlns:p='u'><b xmlns='d'><p:c p:x='1'/></b></a>");
    const Node a = document.documentElement();
    const Node b = a.firstChild();
    const Node c = b.firstChild();
    EXPECT_EQ(c.xml(), "<p:c xmlns:p=\"u\" p:x=\"1\"/>");
    (void)b.appendChild(document.createElement("plain"));
    EXPECT_EQ(document.xml(), "<a xmlns:p=\"u\"><b xmlns=\"d\"><p:c p:x=\"1\"/><plain xmlns=\"\"/></b></a>");
    EXPECT_EQ(loaded(document.xml()).xml(), document.xml());
    (void)document.node().removeChild(a);
    (void)document.node().appendChild(c);
    Document copy;
    EXPECT_TRUE(copy.load(document));
    EXPECT_EQ(copy.xml(), "<p:c xmlns:p=\"u\" p:x=\"1\"/>");
}

TEST(DomEdit, CreatedElementsDeclareTheirNamespace) {
    const Document document = loaded("<a/>");
    const Node signature = document.createElement("Signature", "urn:s");
    (void)signature.appendChild(document.createElement("Value", "urn:s"));
    (void)document.documentElement().appendChild(signature);
    EXPECT_EQ(document.xml(), "<a><Signature xmlns=\"urn:s\"><Value/></Signature></a>");
    EXPECT_EQ(signature.firstChild().xml(), "<Value xmlns=\"urn:s\"/>");
    EXPECT_EQ(errorOf([&] { (void)document.createElement("x", xmlnsNamespace); }), 5);
}

TEST(DomSelect, WalksChildPaths) {
    const Document document = loaded("<a><b/><b><c>1</c></b><x><c/></x><b><c>2</c><c>3</c></b></a>");
    EXPECT_EQ(document.selectSingleNode("a/b/c").text(), "1")
        << "the first that is there, not the first below the first b";
    EXPECT_EQ(document.documentElement().children("b").size(), 3U);
    EXPECT_EQ(document.selectSingleNode("a/x/c").parentNode().selectSingleNode("/a/b/c").text(), "1");
    EXPECT_FALSE(document.selectSingleNode("a/b/d"));
    EXPECT_FALSE(document.selectSingleNode("a/b/c/d"));
    EXPECT_FALSE(loaded("<a xmlns='u'/>").selectSingleNode("a"));
    EXPECT_EQ(loaded("<a xmlns='u'><b/></a>").selectSingleNode("/*/*").name(), "b");
    EXPECT_EQ(loaded("<p:a xmlns:p='u'/>").documentElement().namespaceUri(), "u");
}

TEST(DomSelect, FailsOnWhatIsNoChildPath) {
    const Document document = loaded("<a/>");
    for (const std::string_view path : {"", "/", "a[1]", "a//b", "//a", "1", "p:a", "a b", "/a/", "@a", "..", "a\"b"}) {
        EXPECT_EQ(errorOf([&] { (void)document.selectSingleNode(path); }), 5) << path;
    }
}

}  // namespace
}  // namespace vrn::xml
