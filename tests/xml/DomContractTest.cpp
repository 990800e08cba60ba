// The contract of documents and nodes, and what may be done with them.
#include <algorithm>

#include "xml/Support.h"

namespace vrn::xml {
namespace {

using testing::errorOf;
using testing::listed;
using testing::loaded;
using testing::reloaded;

TEST(DomLoad, DropsLayoutWhiteSpaceOnly) {
    EXPECT_EQ(reloaded("<a>\n  <b/>\t<b> x </b>\r\n</a>\n"), "<a><b/><b> x </b></a>");
    EXPECT_EQ(reloaded("<a> <!-- c --> <?p q?> <![CDATA[ ]]> </a>"), "<a><!-- c --><?p q?><![CDATA[ ]]></a>");
    EXPECT_EQ(reloaded("<a>x <b/> y</a>"), "<a>x <b/> y</a>");
    EXPECT_EQ(reloaded("<a>x<b/> <c/> \n</a>"), "<a>x<b/><c/></a>");
}

TEST(DomLoad, KeepsWhiteSpaceWrittenAsReferences) {
    EXPECT_EQ(loaded("<a>&#32;</a>").documentElement().stringValue(), " ");
    EXPECT_EQ(loaded("<a>  &#10;</a>").documentElement().stringValue(), "  \n");
    EXPECT_EQ(loaded("<a>&#x9; \n </a>").documentElement().stringValue(), "\t \n ");
    EXPECT_EQ(loaded("<a> \n&#65; </a>").documentElement().stringValue(), " \nA ");
    EXPECT_EQ(loaded("<a> &amp; </a>").documentElement().stringValue(), " & ");
    EXPECT_EQ(loaded("<a> <b/>&#32;<b/> </a>").xml(), "<a><b/>&#32;<b/></a>");
    EXPECT_EQ(loaded("<a>;  <b/>;<b/> </a>").xml(), "<a>;  <b/>;<b/></a>");
}

// Wherever the parser's buffers end, white space is judged by the whole run it stands in.
TEST(DomLoad, JudgesWhiteSpaceByTheWholeRun) {
    const std::vector<std::string> runs{" ",     "\xC3\xA9", ";", "x",    "\r\n",
                                        "&#32;", "&#13;",    "]", "&lt;", " \xF0\x9F\x98\x80"};
    for (std::size_t padding = 280; padding < 320; ++padding) {
        for (const std::string& run : runs) {
            const bool kept = run != " " && run != "\r\n";
            for (const std::size_t far : {padding, padding + 3700, padding + 7700}) {
                const std::string blanks(far, ' ');
                const Document before = loaded("<a>" + blanks + run + "</a>");
                const Document behind = loaded("<a>" + run + blanks + "</a>");
                ASSERT_EQ(before.hasChildNodes() && before.documentElement().hasChildNodes(), kept) << far << run;
                ASSERT_EQ(behind.documentElement().hasChildNodes(), kept) << far << run;
                ASSERT_EQ(!kept || before.documentElement().stringValue().size() > far, true) << far << run;
                ASSERT_EQ(before.documentElement().stringValue().size(), behind.documentElement().stringValue().size());
            }
        }
    }
}

TEST(DomLoad, KeepsLongTextsWhole) {
    std::string text;
    for (int i = 0; i < 5000; ++i) {
        text += "\xC3\xA4 " + std::to_string(i) + (i % 7 == 0 ? "\n" : ";");
    }
    EXPECT_EQ(loaded("<a>" + text + "</a>").documentElement().firstChild().text(), text);
    std::replace(text.begin(), text.end(), '\n', ' ');
    EXPECT_EQ(loaded("<a b='" + text + "'/>").documentElement().attribute("b"), text);
}

TEST(DomLoad, ReadsLineEndsAsLineFeeds) {
    EXPECT_EQ(loaded("<a>x\r\ny\rz&#13;</a>").documentElement().stringValue(), "x\ny\nz\r");
    EXPECT_EQ(loaded("<a><![CDATA[x\r\ny]]></a>").documentElement().text(), "x\ny");
    EXPECT_EQ(loaded("<a b='1\r\n2\t3&#10;4'/>").documentElement().attribute("b"), "1 2 3\n4");
}

TEST(DomLoad, ReadsReferencesWhereverTheyStand) {
    const std::string text =
        "<a xmlns=\"u?a&amp;b&lt;\" xmlns:p=\"&amp;amp;\" p:c=\"&amp;&lt;&gt;&quot;'\">&amp;&lt;</a>";
    EXPECT_EQ(reloaded(text), text);
    EXPECT_EQ(loaded("<a b='&amp;&#38;&#x26;&lt;&#60;&apos;&quot;'/>").documentElement().attribute("b"), "&&&<<'\"");
    EXPECT_EQ(loaded("<a b='&amp;lt;'>&amp;#38;&#38;lt;</a>").xml(), "<a b=\"&amp;lt;\">&amp;#38;&amp;lt;</a>");
}

TEST(DomLoad, TextIsUtf8WhateverItDeclares) {
    for (const char* const encoding : {"UTF-16", "ISO-8859-1", "no-such-thing", "UTF-8"}) {
        const std::string text = std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?><a>\xC3\xA9</a>";
        EXPECT_EQ(reloaded(text), text);
    }
    EXPECT_EQ(reloaded("\xEF\xBB\xBF<a/>"), "<a/>");
}

TEST(DomLoad, TheDeclarationIsTheFirstNode) {
    const Document document = loaded("<?xml  version='1.0'\tstandalone='yes' ?>\n<!--c--><a/>");
    EXPECT_EQ(document.node().firstChild().kind(), NodeKind::ProcessingInstruction);
    EXPECT_EQ(document.node().firstChild().name(), "xml");
    EXPECT_EQ(document.node().firstChild().text(), "version='1.0'\tstandalone='yes'");
    EXPECT_EQ(document.xml(), "<?xml version='1.0'\tstandalone='yes'?><!--c--><a/>");
}

TEST(DomLoad, RefusesWhatIsNotWellFormed) {
    for (const std::string_view text : {"",
                                        " \r\n\t",
                                        "text",
                                        "<a>",
                                        "<a></b>",
                                        "<a/><b/>",
                                        "<a/>x",
                                        "<a b='1' b='2'/>",
                                        "<a>&nbsp;</a>",
                                        "<p:a/>",
                                        "<a p:b='1'/>",
                                        "<a xmlns:p=''/>",
                                        "<a xmlns:xml='u'/>",
                                        "<a xmlns:xmlns='u'/>",
                                        "<xmlns:a/>",
                                        "<a:b:c xmlns:a='u'/>",
                                        "<?xml version='1.0' encoding='x y'?><a/>",
                                        "<a>]]></a>",
                                        " <?xml version='1.0'?><a/>",
                                        "<a>\xFF</a>",
                                        "<a>\xC0\xBC</a>",
                                        "<a>&#0;</a>",
                                        "<a>\xED\xA0\x80</a>",
                                        "<a>\x01</a>",
                                        "<a b='<'/>",
                                        "<a><!-- -- --></a>",
                                        "<a><?xml version='1.0'?></a>",
                                        "\xFF\xFE<\0a\0/\0>\0"}) {
        Document document = loaded("<old/>");
        EXPECT_FALSE(document.loadXML(text)) << text;
        EXPECT_NE(document.parseError().errorCode, 0) << text;
        EXPECT_FALSE(document.hasChildNodes()) << text;
    }
}

TEST(DomLoad, RefusesNulBytes) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {"<a/>\0"sv, "<a/>\0<b/>"sv, "<a>x\0y</a>"sv, "<a b='\0'/>"sv, "\0"sv}) {
        EXPECT_FALSE(Document().loadXML(text));
    }
}

TEST(DomLoad, CopiesWithoutSharing) {
    const std::string text =
        "<?xml version=\"1.0\"?><!--c--><a xmlns=\"u\" xmlns:p=\"v\" x=\"&#10;\" p:y=\"2\" xml:lang=\"en\">t<p:b>&#32;</p:b>"
        "<![CDATA[<&]]><c xmlns=\"\"/><?i d?></a><?z?>";
    Document original = loaded(text);
    Document copy;
    EXPECT_TRUE(copy.load(original));
    original.documentElement().setText("changed");
    original = Document();
    EXPECT_EQ(copy.xml(), text);
    EXPECT_EQ(testing::eventsOf(copy.node()), testing::eventsOf(loaded(text).node()));

    Document failed;
    EXPECT_FALSE(failed.loadXML("<a>"));
    EXPECT_FALSE(copy.load(failed));
    EXPECT_EQ(copy.parseError().reason, failed.parseError().reason);
    EXPECT_FALSE(copy.hasChildNodes());
}

TEST(DomDocument, IsAHandle) {
    Document document = loaded("<a/>");
    const Document same = document;
    EXPECT_TRUE(same.sameAs(document));
    document.documentElement().setAttribute("x", "1");
    EXPECT_EQ(same.xml(), "<a x=\"1\"/>");

    const Node old = document.documentElement();
    EXPECT_TRUE(document.loadXML("<b/>"));
    EXPECT_FALSE(same.sameAs(document));
    EXPECT_EQ(same.xml(), "<a x=\"1\"/>");
    EXPECT_EQ(old.name(), "a");
}

TEST(DomDocument, EqualsWhatHoldsTheSameNodes) {
    const std::string_view text = "<?xml version='1.0'?><a x='1' y='2'><b>t</b><!--c--><b xmlns='n'/></a>";
    Document document;
    document.loadXML(text);
    Document same;
    same.load(document);
    EXPECT_TRUE(document.equals(same));
    EXPECT_TRUE(Document().equals(Document()));
    for (const auto* const other :
         {"<?xml version='1.0'?><a x='1' y='2'><b>t</b><!--c--></a>",
          "<?xml version='1.0'?><a x='1' y='2'><b>t</b><!--c--><b xmlns='n'/><b/></a>",
          "<?xml version='1.0'?><a x='1' y='2'><b>t<d/></b><!--c--><b xmlns='n'/></a>",
          "<?xml version='1.0'?><a x='1' y='2'><b><![CDATA[t]]></b><!--c--><b xmlns='n'/></a>",
          "<?xml version='1.0'?><a y='2' x='1'><b>t</b><!--c--><b xmlns='n'/></a>",
          "<?xml version='1.0'?><a x='1'><b>t</b><!--c--><b xmlns='n'/></a>",
          "<?xml version='1.0'?><a x='1' y='2'><b>t</b><!--c--><b/></a>",
          "<a x='1' y='2'><b>t</b><!--c--><b xmlns='n'/></a>"}) {
        Document different;
        ASSERT_TRUE(different.loadXML(other)) << other;
        EXPECT_FALSE(document.equals(different)) << other;
        EXPECT_FALSE(different.equals(document)) << other;
    }
}

TEST(DomDocument, StartsEmpty) {
    const Document document;
    EXPECT_FALSE(document.hasChildNodes());
    EXPECT_FALSE(document.documentElement());
    EXPECT_EQ(document.xml(), "");
    EXPECT_EQ(document.parseError().errorCode, 0);
    EXPECT_EQ(document.node().kind(), NodeKind::Document);
    EXPECT_EQ(document.node().text(), "");
}

TEST(DomNode, ShowsItsSurroundings) {
    const Document document = loaded("<a>x<b/><!--y--><![CDATA[z]]><?p q?></a>");
    const Node a = document.documentElement();
    EXPECT_EQ(listed(a.childNodes()), "x b y z p");
    EXPECT_EQ(a.firstChild().name(), "#text");
    EXPECT_EQ(a.lastChild().kind(), NodeKind::ProcessingInstruction);
    EXPECT_EQ(a.firstChild().nextSibling().parentNode(), a);
    EXPECT_EQ(a.parentNode(), document.node());
    EXPECT_FALSE(a.nextSibling());
    EXPECT_FALSE(document.node().parentNode());
    EXPECT_EQ(a.childNodes()[2].name(), "#comment");
    EXPECT_EQ(a.childNodes()[3].name(), "#cdata-section");
}

TEST(DomNode, TextIsTrimmedButCDataIsNot) {
    EXPECT_EQ(loaded("<a>\n x <b> y </b>\t</a>").documentElement().text(), "x  y");
    EXPECT_EQ(loaded("<a> x <![CDATA[ y ]]> </a>").documentElement().text(), "x  y ");
    EXPECT_EQ(loaded("<a><![CDATA[ ]]>x </a>").documentElement().text(), " x");
    EXPECT_EQ(loaded("<a>&#32;<b><![CDATA[]]></b>&#32;</a>").documentElement().text(), "");
    EXPECT_EQ(loaded("<a> x<!--no--><?no no?>y </a>").documentElement().stringValue(), " xy ");
    EXPECT_EQ(loaded("<a>&#160;x&#160;</a>").documentElement().text(), "\xC2\xA0x\xC2\xA0");
    EXPECT_EQ(loaded("<?x y?><a> x </a><!--z-->").node().text(), "x");
    EXPECT_EQ(loaded("<a> x </a>").documentElement().firstChild().text(), " x ");
}

TEST(DomNode, SetTextReplacesTheContent) {
    const Document document = loaded("<a>x<b>y</b></a>");
    const Node a = document.documentElement();
    const Node x = a.firstChild();
    a.setText(" <&>]]> ");
    EXPECT_EQ(document.xml(), "<a> &lt;&amp;&gt;]]&gt; </a>");
    a.setText("");
    EXPECT_FALSE(a.hasChildNodes());
    a.setText("  ");
    EXPECT_EQ(document.xml(), "<a>&#32; </a>");
    EXPECT_EQ(x.text(), "x");
    a.setText("");
    a.setText("b\rc\r\nd");
    (void)a.insertBefore(document.createTextNode("\r"), a.firstChild());
    EXPECT_EQ(document.xml(), "<a>&#13;b&#13;c&#13;\nd</a>");

    const Document other = loaded("<a b='1'><![CDATA[c]]><!--d--><?e f?></a>");
    for (const Node& child : other.documentElement().childNodes()) {
        child.setText("new\r\ntext, longer than anything that is kept in place");
    }
    other.documentElement().setAttribute("b", "\"");
    EXPECT_EQ(other.xml(),
              "<a b=\"&quot;\"><![CDATA[new\ntext, longer than anything that is kept in place]]>"
              "<!--new\ntext, longer than anything that is kept in place-->"
              "<?e new\ntext, longer than anything that is kept in place?></a>");
}

TEST(DomNode, NamedChildrenAreFoundWithoutXPath) {
    const Document document = loaded("<a><b>1</b>x<c/><b xmlns='u'>2</b><b>3</b></a>");
    const Node b = document.documentElement().child("b");
    EXPECT_EQ(b.text(), "1");
    EXPECT_EQ(b.nextOfSameName().text(), "3");
    EXPECT_FALSE(b.nextOfSameName().nextOfSameName());
    EXPECT_FALSE(document.documentElement().child("B"));
    EXPECT_FALSE(document.documentElement().child(std::string_view("b\0x", 3)));
    EXPECT_EQ(document.node().child("a"), document.documentElement());
}

TEST(DomNode, KeepsAttributesInOrder) {
    const Document document = loaded("<a z='1' p:z='2' xmlns:p='u'/>");
    const Node a = document.documentElement();
    a.setAttribute("b", "\t\n\r<>&\"'");
    a.setAttribute("z", "3");
    EXPECT_EQ(document.xml(), "<a xmlns:p=\"u\" z=\"3\" p:z=\"2\" b=\"&#9;&#10;&#13;&lt;&gt;&amp;&quot;'\"/>");
    EXPECT_EQ(a.attribute("p:z"), "2");
    EXPECT_EQ(a.attribute("c"), std::nullopt);
    a.removeAttribute("z");
    a.removeAttribute("no");
    EXPECT_EQ(document.xml(), "<a xmlns:p=\"u\" p:z=\"2\" b=\"&#9;&#10;&#13;&lt;&gt;&amp;&quot;'\"/>");
    a.removeAttribute("p:z");
    EXPECT_EQ(a.attribute("p:z"), std::nullopt);
    EXPECT_EQ(a.attribute("xmlns:p"), std::nullopt);
}

TEST(DomNode, KnowsWhereItBegins) {
    const Document document =
        loaded("<?xml version='1.0'?>\r\n<a b='\xF0\x9F\x98\x80'>\r\n  x<c/>\xC3\xA4 <![CDATA[y]]>\r<!--z--></a>");
    const auto place = [](const Node& node) {
        const Position position = node.position();
        return std::to_string(position.line) + ":" + std::to_string(position.column);
    };
    const Node a = document.documentElement();
    EXPECT_EQ(place(document.node().firstChild()), "1:1");
    EXPECT_EQ(place(a), "2:1");
    EXPECT_EQ(place(a.childNodes()[0]), "2:11") << "with the white space that it begins with";
    EXPECT_EQ(place(a.child("c")), "3:4");
    EXPECT_EQ(place(a.childNodes()[3]), "3:10");
    EXPECT_EQ(place(a.lastChild()), "4:1");
    EXPECT_EQ(place(a.firstChild()), "2:11") << "asked for in any order";
    Document copy;
    EXPECT_TRUE(copy.load(document));
    EXPECT_EQ(place(copy.documentElement().child("c")), "3:4");
    EXPECT_EQ(place(document.createElement("d")), "0:0");
}

TEST(DomErrors, NoneIsObjectNotSet) {
    const Node none;
    const Node root = loaded("<a/>").documentElement();
    EXPECT_EQ(errorOf([&] { (void)none.text(); }), 91);
    EXPECT_EQ(errorOf([&] { none.setText(""); }), 91);
    EXPECT_EQ(errorOf([&] { (void)none.xml(); }), 91);
    EXPECT_EQ(errorOf([&] { (void)none.child("a"); }), 91);
    EXPECT_EQ(errorOf([&] { (void)none.selectSingleNode("a"); }), 91);
    EXPECT_EQ(errorOf([&] { (void)none.appendChild(root); }), 91);
    EXPECT_EQ(errorOf([&] { (void)root.appendChild(none); }), 91);
    EXPECT_EQ(errorOf([&] { root.removeChild(none); }), 91);
    EXPECT_EQ(errorOf([&] { none.setAttribute("a", ""); }), 91);
    EXPECT_EQ(none, Node());
}

TEST(DomErrors, WhatXmlCannotHoldIsRefused) {
    const Document document = loaded("<a><!--c--></a>");
    const Node a = document.documentElement();
    for (const std::string_view name : {"", "1", "a b", "a:b", "-a", "a<", "\xFF", "a\xC2\xA0"}) {
        EXPECT_EQ(errorOf([&] { (void)document.createElement(name); }), 5) << name;
        EXPECT_EQ(errorOf([&] { a.setAttribute(name, "x"); }), 5) << name;
        EXPECT_EQ(errorOf([&] { (void)document.createProcessingInstruction(name, ""); }), 5) << name;
    }
    using namespace std::string_view_literals;
    for (const std::string_view text : {"\x01"sv, "\xFF"sv, "\xED\xA0\x80"sv, "\xEF\xBF\xBF"sv, "x\0y"sv}) {
        EXPECT_EQ(errorOf([&] { (void)document.createTextNode(text); }), 5);
        EXPECT_EQ(errorOf([&] { a.setText(text); }), 5);
        EXPECT_EQ(errorOf([&] { a.setAttribute("x", text); }), 5);
    }
    EXPECT_EQ(errorOf([&] { a.setAttribute("xmlns", "u"); }), 5);
    EXPECT_EQ(errorOf([&] { (void)document.createProcessingInstruction("a", "?>"); }), 5);
    EXPECT_EQ(errorOf([&] { (void)document.createProcessingInstruction("XML", ""); }), 5);
    EXPECT_EQ(errorOf([&] { a.firstChild().setText("--"); }), 5);
    EXPECT_EQ(errorOf([&] { document.node().setText("x"); }), 5);
    EXPECT_EQ(errorOf([&] { (void)document.node().attribute("x"); }), 5);
    EXPECT_EQ(errorOf([&] { a.firstChild().setAttribute("x", "y"); }), 5);
    EXPECT_EQ(document.xml(), "<a><!--c--></a>");
    EXPECT_EQ(document.createElement("\xC3\x9C-1.\xC2\xB7").name(), "\xC3\x9C-1.\xC2\xB7");
}

}  // namespace
}  // namespace vrn::xml
