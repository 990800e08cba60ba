// What two documents differ in, reported by path.
#include "xml/ComparedTree.h"

#include <gmock/gmock.h>

namespace vrn::xml {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

ComparedTree tree(std::string_view text) {
    Document document;
    EXPECT_TRUE(document.loadXML(text)) << document.parseError().reason;
    return treeOf(document);
}

std::vector<std::string> differences(std::string_view before, std::string_view after) {
    std::vector<std::string> found;
    for (const auto& each : treeDifferences(tree(before), tree(after))) {
        found.push_back(each.path + ": " + each.before.value_or("none") + " | " + each.after.value_or("none"));
    }
    return found;
}

TEST(ComparedTree, WhatIsWrittenInAnotherWayIsNoDifference) {
    EXPECT_THAT(differences("<?xml version='1.0'?><a x='1' y='2'>t&lt;<![CDATA[u]]></a>",
                            "<a y=\"2\" x=\"1\" >t<![CDATA[<u]]></a>"),
                IsEmpty());
    EXPECT_THAT(differences("<a>\n <b/></a>", "<a><b></b></a>"), IsEmpty());
}

TEST(ComparedTree, EveryKindOfDifference) {
    EXPECT_THAT(differences("<a x='1'/>", "<a y='1'/>"), ElementsAre("@x: 1 | none", "@y: none | 1"));
    EXPECT_THAT(differences("<a><b>1</b></a>", "<a><b>2</b></a>"), ElementsAre("b: 1 | 2"));
    EXPECT_THAT(differences("<a><b>1</b></a>", "<a><b> 1</b></a>"), ElementsAre("b: 1 |  1"));
    EXPECT_THAT(differences("<a>t</a>", "<a>u</a>"), ElementsAre("text(): t | u"));
    EXPECT_THAT(differences("<a><b/></a>", "<a><b xmlns='urn:x'/></a>"),
                ElementsAre("b:  | none", "b: none | <b xmlns=\"urn:x\"/>"));
    EXPECT_THAT(differences("<a><b c='1'/></a>", "<a><b c='2'/><d><e>&amp;</e></d></a>"),
                ElementsAre("b/@c: 1 | 2", "d: none | <d><e>&amp;</e></d>"));
    EXPECT_THAT(differences("<a><?p 1?></a>", "<!--x--><a><?p 2?></a>"),
                ElementsAre("processing-instruction(p): 1 | 2", "comment(): none | x"));
}

TEST(ComparedTree, WhatIsPutInBetweenMovesNothingElse) {
    EXPECT_THAT(differences("<a><b>1</b><b>2</b><b>3</b></a>", "<a><b>1</b><b>x</b><b>2</b><b>4</b></a>"),
                ElementsAre("b[4]: 3 | 4", "b[2]: none | x"));
    EXPECT_THAT(differences("<a><b/><c/><d/></a>", "<a><c/><d/><b/></a>"), ElementsAre("b (place): child 1 | child 3"));
}

}  // namespace
}  // namespace vrn::xml
