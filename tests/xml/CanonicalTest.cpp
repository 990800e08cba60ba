// The expected texts of whole documents are what `xmllint --exc-c14n` prints for them.
#include "xml/Canonical.h"

#include "xml/Support.h"

namespace vrn::xml {
namespace {

using testing::loaded;

std::string canonical(std::string_view text) { return exclusiveCanonicalForm(loaded(text).node()); }

TEST(Canonical, SortsAttributesByNamespaceThenName) {
    EXPECT_EQ(canonical("<e b:attr='sorted' a:attr='out' attr2='all' attr=\"I'm\" xmlns:b='http://a.example' "
                        "xmlns:a='http://b.example' xmlns='http://d.example'/>"),
              "<e xmlns=\"http://d.example\" xmlns:a=\"http://b.example\" xmlns:b=\"http://a.example\" attr=\"I'm\" "
              "attr2=\"all\" b:attr=\"sorted\" a:attr=\"out\"></e>");
    EXPECT_EQ(canonical("<a \xC3\xA4='1' z='2' Z='3' _='4' \xE6\xBC\xA2='5' xmlns:\xC3\xA4='urn:1' xmlns:z='urn:2' "
                        "\xC3\xA4:x='6' z:x='7'/>"),
              "<a xmlns:z=\"urn:2\" xmlns:\xC3\xA4=\"urn:1\" Z=\"3\" _=\"4\" z=\"2\" \xC3\xA4=\"1\" \xE6\xBC\xA2=\"5\" "
              "\xC3\xA4:x=\"6\" z:x=\"7\"></a>");
}

TEST(Canonical, DeclaresWhatIsUsedWhereItIsUsed) {
    EXPECT_EQ(canonical("<a xmlns:n='urn:n' xmlns:unused='urn:x'><n:b n:c='1'><n:d/></n:b><e n:f='2'/><g/></a>"),
              "<a><n:b xmlns:n=\"urn:n\" n:c=\"1\"><n:d></n:d></n:b><e xmlns:n=\"urn:n\" n:f=\"2\"></e><g></g></a>");
    EXPECT_EQ(canonical("<p:a xmlns:p='urn:1'><p:b xmlns:p='urn:2'><p:c xmlns:p='urn:1'/><p:d xmlns:p='urn:2'/></p:b>"
                        "<p:e/></p:a>"),
              "<p:a xmlns:p=\"urn:1\"><p:b xmlns:p=\"urn:2\"><p:c xmlns:p=\"urn:1\"></p:c><p:d></p:d></p:b>"
              "<p:e></p:e></p:a>");
    EXPECT_EQ(canonical("<z:a xmlns:z='urn:z' xmlns:b='urn:z2' xmlns:c='urn:c' c:k='1' b:k='2' k='3' z:k='4'>"
                        "<a xmlns='urn:z' z:k='5'/></z:a>"),
              "<z:a xmlns:b=\"urn:z2\" xmlns:c=\"urn:c\" xmlns:z=\"urn:z\" k=\"3\" c:k=\"1\" z:k=\"4\" b:k=\"2\">"
              "<a xmlns=\"urn:z\" z:k=\"5\"></a></z:a>");
}

TEST(Canonical, UndeclaresTheDefaultNamespace) {
    EXPECT_EQ(canonical("<a xmlns='urn:u'><b xmlns=''><c xmlns=''/><d xmlns='urn:u'/></b>"
                        "<p:e xmlns:p='urn:p' xmlns=''><f/></p:e></a>"),
              "<a xmlns=\"urn:u\"><b xmlns=\"\"><c></c><d xmlns=\"urn:u\"></d></b>"
              "<p:e xmlns:p=\"urn:p\"><f xmlns=\"\"></f></p:e></a>");
    EXPECT_EQ(canonical("<a xml:lang='en' xmlns:xml='http://www.w3.org/XML/1998/namespace' a='1'>"
                        "<b xml:space='preserve' xml:lang=''/></a>"),
              "<a a=\"1\" xml:lang=\"en\"><b xml:lang=\"\" xml:space=\"preserve\"></b></a>");
}

TEST(Canonical, EscapesTextAndAttributes) {
    EXPECT_EQ(canonical("<a b=\"&quot;&apos;&#9;&#10;&#13;&lt;&gt;&amp;&#xE9;\" c='\"'>"
                        "&quot;'&#9;&#13;&lt;>&amp;<![CDATA[<x>&\"]]>]]&gt;&#x1F600;</a>"),
              "<a b=\"&quot;'&#x9;&#xA;&#xD;&lt;>&amp;\xC3\xA9\" c=\"&quot;\">"
              "\"'\t&#xD;&lt;&gt;&amp;&lt;x&gt;&amp;\"]]&gt;\xF0\x9F\x98\x80</a>");
}

TEST(Canonical, PutsInstructionsBesideTheRootOnLines) {
    EXPECT_EQ(canonical("<?xml version='1.0' encoding='UTF-8'?> <?first   d ?>\n\n<?second?><a><?in  x?><?bare?></a> "
                        "<?third?>\n<?fourth t?>\n"),
              "<?first d ?>\n<?second?>\n<a><?in x?><?bare?></a>\n<?third?>\n<?fourth t?>");
}

TEST(Canonical, LeavesCommentsOut) {
    EXPECT_EQ(canonical("<!-- 1 --><a>x<!-- 2 -->y</a><!-- 3 --><?p?>"), "<a>xy</a>\n<?p?>");
}

TEST(Canonical, OfAnElementDeclaresWhatItsAncestorsDid) {
    const Document document = loaded(
        "<n0:local xmlns:n0='foo:bar' xmlns:n3='ftp://example.org' xml:lang='en' "
        "xmlns='urn:d'><n1:elem2 xmlns:n1='http://example.net'><n3:stuff n0:x='y'/>"
        "<plain/></n1:elem2></n0:local>");
    EXPECT_EQ(exclusiveCanonicalForm(document.documentElement().firstChild()),
              "<n1:elem2 xmlns:n1=\"http://example.net\"><n3:stuff xmlns:n0=\"foo:bar\" xmlns:n3=\"ftp://example.org\" "
              "n0:x=\"y\"></n3:stuff><plain xmlns=\"urn:d\"></plain></n1:elem2>");
}

TEST(Canonical, LeavesOutWhatIsAskedFor) {
    const auto omit = [](const ElementView& element, int depth) { return depth == 2 && element.localName == "s"; };
    const Document document = loaded("<?p?><a><s><b/></s>x<b><s/></b><p:s xmlns:p='u'><!--c--></p:s></a><?q?>");
    EXPECT_EQ(exclusiveCanonicalForm(document.node(), omit), "<?p?>\n<a>x<b><s></s></b></a>\n<?q?>");
    EXPECT_EQ(exclusiveCanonicalForm(document.documentElement(), omit), "<a>x<b><s></s></b></a>");
}

// A tree made by calls has the canonical form that a reader of its text computes.
TEST(Canonical, IsThatOfTheWrittenText) {
    const Document document = loaded("<a xmlns='urn:u' xmlns:p='urn:p'><p:b p:c=''/></a>");
    const Node a = document.documentElement();
    (void)a.appendChild(document.createElement("plain"));
    (void)a.appendChild(document.createElement("Signature", "urn:s"))
        .appendChild(document.createElement("Value", "urn:s"));
    (void)a.lastChild().appendChild(a.firstChild());
    (void)a.appendChild(document.createTextNode(" \r\n"));
    EXPECT_EQ(canonical(document.xml()), exclusiveCanonicalForm(document.node()));
}

}  // namespace
}  // namespace vrn::xml
