// Inputs made to hurt: each must end in bounded time, without a crash and without a trace on stderr. The tests would hang
// or run out of stack otherwise.
#include <thread>

#include "support/Documents.h"
#include "xml/Canonical.h"
#include "xml/Support.h"

namespace vrn::xml {
namespace {

using test::repeated;

class Hostile : public ::testing::Test {
  protected:
    void SetUp() override { ::testing::internal::CaptureStderr(); }
    void TearDown() override { EXPECT_EQ(::testing::internal::GetCapturedStderr(), ""); }

    Document document_;
};

TEST_F(Hostile, EntitiesAreNeverDefined) {
    for (const std::string_view text :
         {"<!DOCTYPE a [<!ENTITY b 'bbbbbbbbbb'><!ENTITY c '&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;'>]><a>&d;&d;</a>",
          "<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><a>&x;</a>",
          "<!DOCTYPE a SYSTEM 'http://localhost/a.dtd'><a/>", "<!DOCTYPE a PUBLIC 'x' 'file:///dev/zero'><a/>",
          "<!--\n--> <?x?><!DOCTYPE a [<!ENTITY % p SYSTEM 'x'> %p;]><a/>", "<!DOCTYPE a>"}) {
        EXPECT_FALSE(document_.loadXML(text));
        EXPECT_EQ(document_.parseError().errorCode, ParseError::dtdProhibited) << text;
    }
    EXPECT_FALSE(document_.loadXML("<a>&x;</a>"));
    EXPECT_FALSE(document_.loadXML("<a b='&x;'/>"));
    EXPECT_FALSE(document_.loadXML("<a><!DOCTYPE a></a>"));
}

TEST_F(Hostile, DeepTextIsAParseError) {
    EXPECT_TRUE(document_.loadXML(repeated("<a>", 250) + repeated("</a>", 250)));
    EXPECT_FALSE(document_.loadXML(repeated("<a>", 1001) + repeated("</a>", 1001)));
    EXPECT_FALSE(document_.loadXML(repeated("<a>", 100000) + repeated("</a>", 100000)));
    EXPECT_FALSE(document_.loadXML(repeated("<a>", 3000000)));
}

// A tree built by calls has no such limit, so nothing that walks it may recurse.
TEST_F(Hostile, DeepTreesCostNoStack) {
    constexpr std::size_t depth = 100000;
    Node node = document_.node().appendChild(document_.createElement("a"));
    for (std::size_t i = 1; i < depth; ++i) {
        node = node.appendChild(document_.createElement("a"));
    }
    node.setText("x");
    EXPECT_EQ(document_.xml().size(), depth * 7 + 1);
    EXPECT_EQ(exclusiveCanonicalForm(document_.node()).size(), depth * 7 + 1);
    EXPECT_EQ(document_.node().text(), "x");
    Document copy;
    EXPECT_TRUE(copy.load(document_));
    EXPECT_EQ(copy.xml(), document_.xml());
    document_.node().removeChild(document_.documentElement());
}

TEST_F(Hostile, ManyOfAnythingTakesLinearTime) {
    std::string attributes = "<a";
    std::string namespaces = "<a";
    std::string names = "<a>";
    std::string ids = "<a>";
    for (int i = 0; i < 300000; ++i) {
        names += "<a" + std::to_string(i) + "/>";
        ids += "<b xml:id='a" + std::to_string(i) + "'/>";
        attributes += " a" + std::to_string(i) + "=''";
        namespaces += " xmlns:a" + std::to_string(i) + "='u'";
    }
    EXPECT_FALSE(document_.loadXML(attributes + "/>"));
    EXPECT_FALSE(document_.loadXML(namespaces + "/>"));
    EXPECT_FALSE(document_.loadXML(names + "</a>"));
    EXPECT_TRUE(document_.loadXML(ids + "</a>"));
    EXPECT_TRUE(document_.loadXML("<a>" + repeated("<![CDATA[x]]>", 500000) + "</a>"));
    EXPECT_EQ(document_.node().text().size(), 500000U);
    EXPECT_TRUE(document_.loadXML("<a>" + repeated("&#32;", 1000000) + "</a>"));
    EXPECT_TRUE(document_.loadXML("<a>" + repeated("<b/> ", 500000) + "</a>"));
    EXPECT_TRUE(document_.loadXML("<a>" + std::string(5000000, ' ') + "<!--" + std::string(5000000, ' ') + "--></a>"));
    EXPECT_FALSE(document_.loadXML("<a>" + repeated("<!--", 1000000)));
    EXPECT_FALSE(document_.loadXML(repeated("<!---->", 1000000)));
}

TEST_F(Hostile, LongTextsLoad) {
    const std::string text(9U << 20U, 'x');
    EXPECT_TRUE(document_.loadXML("<a b='" + text + "'>" + text + "<![CDATA[" + text + "]]></a>"));
    EXPECT_EQ(document_.documentElement().attribute("b"), text);
    EXPECT_EQ(document_.node().text().size(), 2 * text.size());
}

// Documents of different threads share nothing, whatever one was copied from.
TEST_F(Hostile, ThreadsDoNotMeet) {
    std::vector<std::thread> threads;
    std::vector<std::string> results(4);
    threads.reserve(results.size());
    for (std::string& result : results) {
        threads.emplace_back([&result] {
            for (int i = 0; i < 200; ++i) {
                Document document;
                (void)document.loadXML("<a><b>" + std::to_string(i) + "</a>");
                (void)document.loadXML("<a><b>" + std::to_string(i) + "</b></a>");
                Document copy;
                (void)copy.load(document);
                result += copy.selectSingleNode("a/b").text();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::string& result : results) {
        EXPECT_EQ(result.size(), 490U);
        EXPECT_EQ(result, results.front());
    }
}

}  // namespace
}  // namespace vrn::xml
