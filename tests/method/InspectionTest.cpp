// Methods held against their document set, and steps brought to the catalogue's form of their cycles.
#include "method/Inspection.h"

#include <gmock/gmock.h>

#include "method/CycleUpdate.h"
#include "method/DocumentSet.h"
#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using method::Inspection;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A method with embedded cycles, of a version that is not verified.
std::string embedded(const std::vector<std::string>& steps, const std::string& cycles,
                     const std::string& attributes = "") {
    return methodOf({.steps = steps, .cycles = cycles, .attributes = attributes});
}

class InspectionTest : public SmallSetTest {
  protected:
    InspectionTest() { loadNothing(); }
    Inspection inspect(const std::string& method) { return inspector.inspect(parsed(method)); }

    method::Inspector inspector{state()};
};

TEST_F(InspectionTest, StepsWithWhatIsTooMuchAndTooLittle) {
    const auto inspection = inspect(methodText({"WASH(5,W1)", "COUNT(99,x,y)", "GONE(1)", "no step"}));
    const auto& steps = inspection.steps;
    ASSERT_EQ(steps.size(), 4U);
    EXPECT_THAT(steps[0].values, testing::SizeIs(2));
    ASSERT_THAT(steps[0].missing, testing::SizeIs(1));
    EXPECT_EQ(steps[0].missing[0]->row.name, "Hold Time");
    EXPECT_EQ(steps[1].values[0].status, catalogue::ValueStatus::OutOfRange);
    EXPECT_THAT(steps[1].surplus, ElementsAre("x", "y"));
    EXPECT_TRUE(steps[2].readable);
    EXPECT_FALSE(steps[2].known);
    EXPECT_FALSE(steps[3].readable);
    EXPECT_THAT(boxTexts(), IsEmpty()) << "inspecting asks nobody";
}

TEST_F(InspectionTest, HeadOfTheMethod) {
    auto inspection = inspect(methodText({"IDLE()"}, "7uL", {"One", "Two"}));
    EXPECT_EQ(inspection.verification.version, method::MethodVersion::Unsupported);
    EXPECT_EQ(inspection.content.description, "One\r\nTwo\r\n");
    EXPECT_EQ(inspection.content.syringe, "7uL");
    EXPECT_FALSE(inspection.syringeKnown);
    inspection = inspect("<Method><VERSION>04</VERSION></Method>");
    EXPECT_NE(inspection.verification.code, 0);
    EXPECT_FALSE(inspection.content.isSigned);
    EXPECT_EQ(inspection.content.syringe, std::nullopt);
    loadSteps({"IDLE()"});
    inspection = inspect(built());
    EXPECT_EQ(inspection.verification.code, 0);
    EXPECT_TRUE(inspection.content.isSigned);
}

TEST_F(InspectionTest, CyclesBesideTheCatalogues) {
    const auto cycles = inspect(embedded({},
                                         "<MacroName>[MACRO COUNT]</MacroName><MacroLine>Number;3;1;20</MacroLine>"
                                         "<MacroName>[MACRO WASH]</MacroName><MacroLine>Volume(UL);5;1;9</MacroLine>"
                                         "<MacroName>[MACRO GONE]</MacroName>",
                                         " LastModifiedTimestamp='1999'"))
                            .cycles;
    ASSERT_EQ(cycles.size(), 3U);
    EXPECT_TRUE(cycles[0].dateDiffers);
    EXPECT_FALSE(cycles[0].definitionsDiffer);
    EXPECT_FALSE(cycles[1].dateDiffers) << "only the first cycle's date is recorded";
    EXPECT_TRUE(cycles[1].definitionsDiffer);
    EXPECT_FALSE(cycles[2].inCatalogue);
    EXPECT_FALSE(cycles[2].isOutdated());
}

TEST_F(InspectionTest, EveryMethodHearsOfACatalogueAtFault) {
    auto texts = smallSet({});
    texts.macros = catalogue(macro("FAR", {"Text", "Number;99999999999"}));
    texts.method.clear();
    load(texts);
    method::Inspector other(state());
    for (int i = 0; i < 2; ++i) {
        const auto inspection =
            other.inspect(parsed(embedded({"FAR(1,2)"}, "<MacroName>FAR</MacroName>", " LastModifiedTimestamp='1'")));
        EXPECT_TRUE(inspection.steps.at(0).known);
        EXPECT_THAT(inspection.steps.at(0).surplus, IsEmpty()) << "nobody knows";
        EXPECT_THAT(inspection.steps.at(0).unchecked, ElementsAre("1", "2"));
        ASSERT_THAT(inspection.catalogueFaults, testing::SizeIs(1));
        EXPECT_EQ(inspection.catalogueFaults[0].definition, 1U);
        EXPECT_EQ(inspection.catalogueFaults[0].reason, "Overflow");
        EXPECT_FALSE(inspection.cycles.at(0).isNamed);
        EXPECT_THAT(errorTexts(), IsEmpty());
    }
}

TEST_F(InspectionTest, WhatTheEditorWouldRecordBesideTheSteps) {
    loadSteps({"WASH(SL.Vol,W1,0)", "COUNT(3)", "WASH(SL.Vol,W2,0)"});
    const auto written = built();
    const auto inspection = inspect(written);
    EXPECT_FALSE(inspection.isOutdated());
    // The user looked at another step when it was saved.
    state().lstMethodMacroList.userSelect(1);
    EXPECT_FALSE(inspect(built()).atomsDiffer);
    choose("NOTE");
    EXPECT_TRUE(inspect(built()).atomsDiffer) << "no step has this cycle";
    EXPECT_TRUE(inspect(text::replacedAll(written, "<UDON>SL.Vol", "<UDON>SL.Any")).configurationDiffers);
    EXPECT_TRUE(inspect(text::replacedAll(written, "<UDON>SL.Vol", "<UDON>SL.Any")).argumentsDiffer);
    EXPECT_FALSE(inspect(text::replacedAll(written, "COUNT(3)", "no step")).isOutdated()) << "nobody knows";
}

TEST_F(InspectionTest, ValuesMoveWithTheNamesOfTheirParameters) {
    const auto older =
        "<MacroName><![CDATA[[MACRO WASH]]]></MacroName><MacroLine>Hold Time;0;0;60</MacroLine>"
        "<MacroLine>Speed;1;0;9</MacroLine><MacroLine>Volume(ML);1;0;1</MacroLine>"
        "<MacroName>[MACRO COUNT]</MacroName><MacroLine>Number;1;1;5</MacroLine>";
    method::SetMethod(state(), embedded({"WASH(7,3,4)", "COUNT(2)", "NOTE(a,b)"}, older));
    std::vector<std::string> changes;
    for (const auto& change : method::adoptCatalogueCycles(state())) {
        changes.push_back(std::to_string(static_cast<int>(change.kind)) + std::to_string(change.step) + change.macro +
                          " " + change.parameter + "=" + change.value);
    }
    EXPECT_THAT(changes, ElementsAre("20WASH Volume=4", "00WASH Station=W1", "10WASH Speed=3"));
    EXPECT_THAT(steps(), ElementsAre("WASH(4,W1,7)", "COUNT(2)", "NOTE(a,b)"));
    EXPECT_THAT(gridValues(), ElementsAre("4", "W1", "7")) << "the row that is shown is shown anew";
}

TEST_F(InspectionTest, AnotherMethodWithTheSameSetIsALoadLikeAnyOther) {
    const std::vector<std::string> methods{methodText({"COUNT(3)", "GONE()"}), "<M", "", methodText({"IDLE()"}, "7uL")};
    const auto expectSameAsWholeLoad = [&](DocumentTexts texts) {
        texts.method.clear();
        load(texts);
        for (const auto& method : methods) {
            texts.method = method;
            box->shown.clear();
            errors.clear();
            load(texts);
            const auto boxes = boxTexts();
            const auto events = errorTexts();
            const auto list = rows();
            const auto syringe = state().cboSyringe.listIndex();
            const bool disabled = state().booDisable;
            box->shown.clear();
            errors.clear();
            method::SetMethod(state(), method);
            EXPECT_EQ(boxTexts(), boxes) << method;
            EXPECT_EQ(errorTexts(), events) << method;
            EXPECT_EQ(rows(), list) << method;
            EXPECT_EQ(state().cboSyringe.listIndex(), syringe) << method;
            EXPECT_EQ(state().booDisable, disabled) << method;
        }
    };
    expectSameAsWholeLoad(smallSet({}));
    auto broken = smallSet({});
    broken.macros = "<Macros";
    expectSameAsWholeLoad(broken);
}

}  // namespace
}  // namespace vrn::test
