#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "method/MethodText.h"
#include "method/SmallSet.h"
#include "services/EmbeddedSignatures.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string noSyringe = "Unable to retreive syrsize from method";

std::string reportFor(std::string_view heading, const std::string& text) {
    return method::parseErrorReport(heading, parsed(text).parseError());
}

// A method that begins with this XML.
std::string withVersion(const std::string& version) {
    return methodOf({.steps = {"COUNT(3)"}, .descriptionLines = {"kept"}, .head = version});
}

class LoadTest : public SmallSetTest {
  protected:
    void loadMethod(const std::string& method) {
        auto texts = smallSet({});
        texts.method = method;
        load(texts);
    }
    void expectEmptyMethodShown() {
        EXPECT_THAT(rows(), IsEmpty());
        EXPECT_EQ(state().txtMethodDescription.text(), "\r\n");
        EXPECT_EQ(state().cboSyringe.listIndex(), controls::noSelection);
        EXPECT_THAT(boxTexts(), ElementsAre(noSyringe));
        EXPECT_FALSE(state().booDisable);
    }
};

TEST(ParseErrorReport, SevenLinesWithPaddedLabels) {
    EXPECT_EQ(method::parseErrorReport("Heading", {-7, "No reason", 12, 3, 4, "<a", "http://x"}),
              "Heading\r\nError:   -7\r\nReason:  No reason\r\nFilePos: 12\r\nLine:    3\r\nLinePos: 4\r\n"
              "SrcText: <a\r\nURL:     http://x");
}

TEST_F(LoadTest, EveryMalformedDocumentIsReportedInTheOrderOfLoading) {
    std::size_t boxesBeforeEvent = 0;
    std::vector<std::string> events;
    editor().onMethodEditorError([&](const errors::MethodEditorErrorArguments& error) {
        boxesBeforeEvent = box->shown.size();
        events.push_back(error.strError);
    });
    load({"<m", "<k", "<e\n<", " \n"});
    EXPECT_THAT(
        boxTexts(),
        ElementsAre(reportFor("Error parsing Latest_KEX.xml", "<k"), reportFor("Error parsing Macro xml", "<m"),
                    reportFor("Error parsing config xml", " \n"), reportFor("Error parsing method xml", "<e\n<")));
    EXPECT_THAT(events, ElementsAre("Macros xml and/or Object List xml is empty"));
    EXPECT_EQ(boxesBeforeEvent, 2U);
    for (const auto& shown : box->shown) {
        EXPECT_EQ(shown.caption, "Method Editor Component - Method Editor Control");
        EXPECT_EQ(shown.style, 16);
    }
    EXPECT_TRUE(state().booDisable);
    EXPECT_FALSE(state().cmdInsert.enabled());
}

TEST_F(LoadTest, EmptyCatalogueDisablesAndGoesOn) {
    for (auto member : {&DocumentTexts::macros, &DocumentTexts::objectList}) {
        errors.clear();
        auto texts = smallSet({"COUNT(3)"});
        texts.*member = "";
        load(texts);
        ASSERT_EQ(errors.size() >= 1, true);
        EXPECT_EQ(errorTexts()[0], "-2146621504 SetXmlDocuments |Macros xml and/or Object List xml is empty");
        EXPECT_EQ(errors[0].strModule, "vrnMthd");
        EXPECT_TRUE(state().booDisable);
        EXPECT_TRUE(state().domConfig.hasChildNodes());
        EXPECT_EQ(state().txtMethodDescription.text(), "First\r\nSecond\r\n");
    }
}

TEST_F(LoadTest, FailedLoadStaysDisabledUntilTheNextOne) {
    auto texts = smallSet({"COUNT(3)"});
    texts.configuration = "<Config>";
    load(texts);
    EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
    EXPECT_THAT(boxTexts(),
                ElementsAre(reportFor("Error parsing config xml", "<Config>"), "Unsupported document version :1"));
    for (const controls::Control* control : std::initializer_list<const controls::Control*>{
             &state().cmdInsert, &state().cmdReplace, &state().cmdDelete, &state().cmdDefCycle, &state().cboSyringe}) {
        EXPECT_FALSE(control->enabled()) << control->name();
    }
    // The grid alone follows its rows. An edit in it is refused without a word.
    EXPECT_TRUE(state().grdMacro.enabled());
    box->shown.clear();
    enter(1, "4");
    EXPECT_THAT(gridValues(), ElementsAre("3"));
    EXPECT_THAT(box->shown, IsEmpty());

    loadSteps({"COUNT(4)"});
    EXPECT_TRUE(state().cmdDefCycle.enabled());
    EXPECT_TRUE(state().cmdDelete.enabled());
    EXPECT_TRUE(state().grdMacro.enabled());
}

TEST_F(LoadTest, WithoutMethodTheEmptyOneIsShown) {
    loadSteps({"COUNT(3)"});
    loadNothing();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_THAT(steps(), ElementsAre(""));
    EXPECT_EQ(state().txtMethodDescription.text(), "");
    EXPECT_EQ(state().cboSyringe.text(), "10uL");
    EXPECT_EQ(state().cboSelectedMacro.count(), 5);
    EXPECT_EQ(state().grdMacro.rowCount(), 1);
    EXPECT_FALSE(state().cmdDelete.enabled() || state().cmdReplace.enabled());
    EXPECT_TRUE(state().cmdInsert.enabled());
    EXPECT_THAT(box->shown, IsEmpty());
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(built(), "none");
}

TEST_F(LoadTest, LeavesTheFlagsAloneAndEndsAPendingEdit) {
    loadSteps({"COUNT(3)"});
    EXPECT_FALSE(state().IsChanged || state().booBaselineLoaded);
    editor().MethodIsChanged(true);
    state().grdMacro.userEdit(1, "4", false);
    loadSteps({"COUNT(3)"});
    EXPECT_TRUE(state().IsChanged && state().booBaselineLoaded);
    EXPECT_FALSE(state().grdMacro.pendingEdit());
    EXPECT_THAT(gridValues(), ElementsAre("3"));
}

TEST_F(LoadTest, UnsupportedVersionIsToldAndFilled) {
    const std::vector<std::pair<std::string, std::string>> versions{{"050", "50"}, {"0", "0"},     {"-02", "-2"},
                                                                    {"x", "x"},    {"4.0", "4.0"}, {"", ""}};
    for (const auto& [version, shown] : versions) {
        box->shown.clear();
        loadMethod(withVersion(element("VERSION", version)));
        EXPECT_THAT(boxTexts(), ElementsAre("Unsupported document version :" + shown));
        EXPECT_EQ(box->shown[0].style, 64);
        EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
        EXPECT_TRUE(state().cmdDefCycle.enabled());
    }
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(LoadTest, FailedVerificationShowsTheEmptyMethod) {
    const std::vector<std::pair<std::string, std::string>> versions{
        {"<VERSION>04</VERSION>", "Method failed verification."},
        {"<VERSION> +4 </VERSION>", "Method failed verification."},
        {"<VERSION>02</VERSION>", "Method has no signature."},
        {"<VERSION>3</VERSION>", "Method has no signature."},
        {"<Signature>YQ==</Signature>", "Method failed verification."},
        {"", "Method has no signature."}};
    for (const auto& [version, description] : versions) {
        SCOPED_TRACE(version);
        box->shown.clear();
        errors.clear();
        loadMethod(withVersion(version));
        EXPECT_THAT(errorTexts(), ElementsAre("-2147220991 SetXmlDocuments |" + description));
        expectEmptyMethodShown();
        EXPECT_TRUE(state().domMethodBaseline.hasChildNodes());
    }
}

TEST_F(LoadTest, IntactOldMethodsAreFilled) {
    for (const std::string version : {"<VERSION>02</VERSION>", "<VERSION>03</VERSION>", ""}) {
        const auto signature = services::EmbeddedSignatureV23().signatureFor(parsed(withVersion(version)));
        loadMethod(withVersion(version + element("Signature", signature)));
        EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
        // The check of versions 2 and 3 leaves its element behind in the method, not in the baseline.
        const auto last = state().domMethod.documentElement().lastChild();
        EXPECT_EQ(last.name() == "Guid", !version.empty());
        EXPECT_FALSE(state().domMethodBaseline.selectSingleNode("Method/Guid"));
        if (!version.empty()) {
            EXPECT_EQ(last.text(), "Mpuwd+08fCXmfUG7/e+WwIzijhGUQ/iQFoA8ZnHyFc4=");
        }
    }
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_THAT(box->shown, IsEmpty());
}

TEST_F(LoadTest, HostThatFailsOrCallsBackFromTheEvent) {
    int calls = 0;
    editor().onMethodEditorError([&](const auto&) {
        ++calls;
        throw std::runtime_error("the host's own trouble");
    });
    loadMethod(withVersion(""));
    EXPECT_EQ(calls, 1);
    expectEmptyMethodShown();
    editor().onMethodEditorError([&](const auto&) {
        editor().onMethodEditorError(nullptr);
        loadSteps({"COUNT(1)", "COUNT(2)"});
        EXPECT_TRUE(editor().MethodIsChanged());
    });
    // The load begun last counts.
    loadMethod(withVersion(""));
    EXPECT_EQ(state().lstMethodMacroList.count(), 2);
    EXPECT_EQ(state().arrMethodMacros.size(), 2U);
}

TEST_F(LoadTest, AnotherLoadWhileAMessageIsShown) {
    for (const std::string method : {"<Method>", ""}) {
        box->whileShown = [&] { loadSteps({"COUNT(1)", "COUNT(2)", "COUNT(3)"}); };
        loadMethod(method.empty() ? methodText({"COUNT(1)", "NONE(1)"}, "?") : method);
        EXPECT_EQ(rows().size(), steps().size());
        EXPECT_FALSE(state().grdMacro.pendingEdit());
    }
}

}  // namespace
}  // namespace vrn::test
