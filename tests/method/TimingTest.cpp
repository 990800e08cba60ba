#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/ParameterIndexes.h"
#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;

TEST(ParameterIndexes, EntriesAreReadAsNumbers) {
    const method::ParamIndexes indexes({"x", " 2.0 ", "", "0.5"});
    EXPECT_TRUE(method::CanRemoveParamIndexFromMacroValues(2, indexes));
    EXPECT_FALSE(method::CanRemoveParamIndexFromMacroValues(0, indexes));
}

TEST(ParameterIndexes, RemoveExpectsAClosingSeparator) {
    const auto remove = method::RemoveParamIndexFromMacroValues;
    EXPECT_EQ(remove("X(1,2,3,)", {"1"}), "X(1,3)");
    EXPECT_EQ(remove("X(1,2,3,)", {}), "X(1,2,3)");
    EXPECT_EQ(remove("X(1,2,3,)", {"2"}), "X(1,2,)");
    EXPECT_EQ(remove("X(1,2,3,)", {"0", "1", "2"}), "X()");
    EXPECT_EQ(remove("X(1,2,3)", {"0"}), "X(23)");
    EXPECT_EQ(remove("X(1)", {"0"}), "X1");
    EXPECT_EQ(remove("X", {"0"}), "X");
    EXPECT_EQ(remove("X(1),2(,3,)", {"9"}), "X(12)");
}

TEST(ParameterIndexes, FindLooksThroughTheEmbeddedLines) {
    const auto find = [](const std::string& lines, const std::string& parameters, std::int16_t position) {
        std::vector<std::string> list{"kept"};
        method::FindIndexOfParamInMacroData("<M><Macros><MacroData>" + lines + "</MacroData></Macros></M>", parameters,
                                            position, list);
        return list;
    };
    const std::string lines =
        "<MacroLine>Hold;1</MacroLine><MacroName>Hold</MacroName><MacroLine>Time</MacroLine>"
        "<MacroLine>On Hold</MacroLine>";
    EXPECT_THAT(find(lines, "( Hold ,Time)", 1), ElementsAre("kept", "0", "2"));
    EXPECT_THAT(find(lines, "(Hold,Time)", 2), ElementsAre("kept", "1"));
    EXPECT_THAT(find(lines, "(Hold,Time)", 3), ElementsAre("kept"));
    EXPECT_THAT(find(lines, "(Hold)", 0), ElementsAre("kept"));
    EXPECT_THAT(find(lines, "()", 1), ElementsAre("kept"));
    // Pieces between "+" are searched one by one, but not those that hold a "-".
    EXPECT_THAT(find(lines + "<MacroLine>-5</MacroLine>", "(Time)", 1), ElementsAre("kept"));
    EXPECT_THAT(find(lines + "<MacroLine>+</MacroLine>", "(Time)", 1), ElementsAre("kept", "1", "1"));
    EXPECT_THAT(find(lines + "<MacroLine>+-</MacroLine>", "(Time)", 1), ElementsAre("kept", "1"));
    EXPECT_THAT(find("<", "(Time)", 1), ElementsAre("kept"));
    std::vector<std::string> list;
    EXPECT_THROW(method::FindIndexOfParamInMacroData("<M/>", "(Time)", 1, list), errors::Error);
}

TEST(ParameterIndexes, PositionsStandOnceHoweverManySearchesThereAre) {
    const auto positions = [](const std::string& line) {
        const method::MacroDataLines lines(
            parsed("<M><Macros><MacroData><MacroLine>a</MacroLine>" + line + "</MacroData></Macros></M>"));
        return method::PositionsInMacroData(lines, "(a,b)", 1);
    };
    EXPECT_THAT(positions("<MacroLine>" + std::string(100000, '+') + "a</MacroLine>"), ElementsAre("0", "1"));
    EXPECT_THAT(positions("<MacroLine>-a</MacroLine>"), ElementsAre());
}

class TimingTest : public SmallSetTest {
  protected:
    std::string identifier(const std::vector<std::string>& steps, const std::string& syringe = "10uL",
                           const std::string& description = "d") {
        load(smallSet(steps, syringe, {description}));
        return builtAttribute("TimingInformationID");
    }
};

TEST_F(TimingTest, ChangesWithEveryValueButTheOneWaitedFor) {
    const auto reference = identifier({"WASH(5,W1,7)", "COUNT(3)"});
    EXPECT_EQ(identifier({"WASH(5,W1,7)", "COUNT(3)"}), reference);
    EXPECT_EQ(identifier({"WASH(5,W1,600)", "COUNT(3)"}), reference);
    EXPECT_EQ(identifier({"WASH(5,W1,7)", "COUNT(3)"}, "10uL", "another"), reference);
    EXPECT_EQ(reference.size(), 44U);
    for (const auto& other : {identifier({"WASH(6,W1,7)", "COUNT(3)"}), identifier({"WASH(5,W2,7)", "COUNT(3)"}),
                              identifier({"WASH(5,W1,7)", "COUNT(4)"}), identifier({"WASH(5,W1,7)"}),
                              identifier({"WASH(5,W1,7)", "COUNT(3)"}, "5&lt;&amp;uL")}) {
        EXPECT_NE(other, reference);
    }
}

TEST_F(TimingTest, EveryPlaceOfTheWaitAndEveryValue) {
    for (int place = 0; place < 3; ++place) {
        for (const std::string atom : {"SET_BUSY", "x WAIT_OVL"}) {
            const std::string wait = atom + "(P" + std::to_string(place) + ",y)";
            const auto identifierOf = [&](std::vector<std::string> values) {
                load({catalogue(macro("M", {"P0", "P1", "P2"}, {wait, "GO(P0,P1)"})),
                      objectList(object("SYRINGE", "10uL")), methodText({"M(" + text::join(values, ",") + ")"}), ""});
                return builtAttribute("TimingInformationID");
            };
            const auto reference = identifierOf({"a", "b", "c"});
            for (int changed = 0; changed < 3; ++changed) {
                std::vector<std::string> values{"a", "b", "c"};
                values[static_cast<std::size_t>(changed)] = "z";
                EXPECT_EQ(identifierOf(values) == reference, changed == place) << wait << changed;
            }
        }
    }
}

}  // namespace
}  // namespace vrn::test
