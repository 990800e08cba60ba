#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string warning =
    "The cycle on disk is different to the cycle embedded in this method, saving the method will automatically update "
    "the embedded cycle with the newer cycle.";

class TimestampTest : public SmallSetTest {
  protected:
    /// A method with one WASH step that recorded this time and embedded a cycle under this text.
    void loadRecorded(const std::string& time, const std::string& embedded = "[MACRO WASH]") {
        auto texts = smallSet({});
        texts.method = methodOf({.steps = {"WASH(5,W1,7)"},
                                 .cycles = element("MacroName", embedded),
                                 .attributes = time == "none" ? "" : " LastModifiedTimestamp='" + time + "'"});
        load(texts);
    }
    void expectWarning(bool shown) {
        EXPECT_EQ(state().booCycleDateChanged, shown);
        EXPECT_EQ(state().lblCycleDateChanged.visible(), shown);
        EXPECT_EQ(state().lblCycleDateChanged.caption(), shown ? warning : "");
    }
};

TEST_F(TimestampTest, WarnsOfAnyDifference) {
    for (const std::string time : {"2019-01-01T00:00:00", "2021-01-01T00:00:00", "2020-01-01T00:00:0", ""}) {
        loadRecorded(time);
        expectWarning(true);
        loadRecorded(std::string(catalogueTime));
        expectWarning(false);
    }
    loadRecorded("none");
    expectWarning(false);
}

TEST_F(TimestampTest, CycleThatIsNotInTheCatalogue) {
    for (const std::string embedded :
         {"[MACRO GONE]", "[MACRO ]", "[MACRO W\"A]", "[macro WASH]", "[MACRO [MACRO WASH]"}) {
        loadRecorded("2019", embedded);
        expectWarning(false);
    }
    for (const std::string embedded : {"WASH]", "[MACRO WASH]x", "WA[MACRO SH]"}) {
        loadRecorded("2019", embedded);
        expectWarning(true);
    }
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(TimestampTest, NameWithoutClosingBracketFailsTheCallersOperation) {
    loadRecorded("2019", "[MACRO WASH");
    EXPECT_THAT(errorTexts(), ElementsAre("5 SetXmlDocuments |Invalid procedure call or argument"));
    EXPECT_THAT(rows(), ElementsAre("01 WASH"));
    errors.clear();
    EXPECT_THROW(editor().DisableDescription(false), errors::Error);
    EXPECT_THAT(errors, IsEmpty());
    // A build embeds the cycle anew, so that its own name is checked.
    EXPECT_NE(built(), "none");
    expectWarning(false);
}

TEST_F(TimestampTest, BuildingTakesTheWarningAway) {
    loadRecorded("2019");
    EXPECT_EQ(builtAttribute("LastModifiedTimestamp"), catalogueTime);
    expectWarning(false);
    // The method as loaded still is the old one.
    editor().DisableDescription(true);
    expectWarning(false);
    editor().DisableDescription(false);
    expectWarning(true);
    choose("COUNT");
    expectWarning(true);
}

}  // namespace
}  // namespace vrn::test
