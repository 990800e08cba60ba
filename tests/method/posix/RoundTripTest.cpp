// A method stays whole and unchanged when it passes through another XML library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <memory>

#include "method/SmallSet.h"
#include "support/OddDocuments.h"
#include "text/Unicode.h"

namespace vrn::test {
namespace {

using ::testing::IsEmpty;

/// The document as libxml2 writes it after it has read it.
std::string throughLibxml2(const std::string& text, int parserOptions, int indented) {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", parserOptions), xmlFreeDoc);
    if (!document) {
        return "libxml2 cannot read it";
    }
    xmlChar* written = nullptr;
    int size = 0;
    xmlDocDumpFormatMemoryEnc(document.get(), &written, &size, "UTF-8", indented);
    std::string out(reinterpret_cast<const char*>(written), static_cast<std::size_t>(size));
    xmlFree(written);
    // The declaration names the encoding of a file; that of the method is part of its text.
    return out.replace(out.find("UTF-8"), 5, "UTF-16");
}

class RoundTripTest : public SmallSetTest {
  protected:
    /// What the editor shows of a method.
    struct Shown {
        std::string description;
        int syringe;
        std::vector<std::string> rows;
        std::vector<std::string> steps;
        bool operator==(const Shown&) const = default;
    };
    Shown shown() { return {state().txtMethodDescription.text(), state().cboSyringe.listIndex(), rows(), steps()}; }

    /// The set's method with a valid signature, and loaded as such.
    std::string savedAndLoaded(const DocumentTexts& set) {
        load(set);
        auto saved = built();
        loadQuietly(set, saved);
        return saved;
    }
    void loadQuietly(DocumentTexts set, const std::string& method) {
        set.method = method;
        errors.clear();
        box->shown.clear();
        load(set);
        EXPECT_THAT(errorTexts(), IsEmpty());
        EXPECT_THAT(boxTexts(), IsEmpty());
        EXPECT_FALSE(editor().MethodIsChanged());
    }

    /// Saves, passes the method on in every way, and expects to find it as it was.
    void expectSurvives(const DocumentTexts& set) {
        const auto saved = savedAndLoaded(set);
        const auto before = shown();
        EXPECT_EQ(built(), saved);
        for (const int options : {0, static_cast<int>(XML_PARSE_NOBLANKS)}) {
            for (const int indented : {0, 1}) {
                SCOPED_TRACE("options " + std::to_string(options) + " indented " + std::to_string(indented));
                loadQuietly(set, throughLibxml2(saved, options, indented));
                EXPECT_EQ(shown(), before);
            }
        }
    }
};

TEST_F(RoundTripTest, OddTextsOfEveryPart) {
    expectSurvives(oddSet());
    EXPECT_EQ(state().cboSyringe.text(), " 10uL ");
    EXPECT_EQ(rows().at(0), "01  ODD ");
    for (const auto& node : nodesBelow(editor().GetMethodXml()->node())) {
        EXPECT_TRUE(node.kind() != xml::NodeKind::Text || !text::trimXmlSpace(node.text()).empty())
            << "a text of white space alone in " << node.parentNode().xml();
    }
}

TEST_F(RoundTripTest, DescriptionsAsTheyAreTyped) {
    const auto set = smallSet({"COUNT(4)"});
    for (const std::string typed :
         {" ", "\t", "  \r\n\t\r\n", "a\r\n \r\nb ", " a", "\ra", "a\r", "\r", "a \r\n", "\r\n \r\n"}) {
        SCOPED_TRACE(typed);
        load(set);
        state().txtMethodDescription.userType(typed);
        auto typedSet = set;
        typedSet.method = built();
        box->shown.clear();
        expectSurvives(typedSet);
    }
}

}  // namespace
}  // namespace vrn::test
