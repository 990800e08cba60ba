#include "hosts/sample/ChangeList.h"

#include <gmock/gmock.h>

namespace vrn::sample {

void PrintTo(const ChangeRow& row, std::ostream* out) { *out << row.what << " | " << row.before << " | " << row.now; }

namespace {

using ::testing::ElementsAre;

// Without embedded cycles: values have no names.
std::string methodWith(const std::string& syringe, const std::string& description,
                       const std::vector<std::string>& steps) {
    std::string text = "<Method><VERSION>04</VERSION><Description><DescriptionLine>" + description +
                       "</DescriptionLine></Description><Syringe><SyringeSize>" + syringe +
                       "</SyringeSize></Syringe><Macros><MacroVariable>";
    for (const auto& step : steps) {
        text += "<MacroValues>" + step + "</MacroValues>";
    }
    return text + "</MacroVariable></Macros></Method>";
}

TEST(ChangeListTest, EveryDifferenceHasARow) {
    const auto before = methodWith("10uL", "First", {"A(1,2)", "B(3)", "C(4)", "D(5)"});
    EXPECT_TRUE(changesBetween(before, before).empty());
    const auto after = methodWith("5uL", "Second", {"A(1,7)", "C(4)", "E(6)", "B(3)"});
    EXPECT_THAT(changesBetween(before, after),
                ElementsAre(ChangeRow{"Syringe", "10uL", "5uL"}, ChangeRow{"Description", "First", "Second"},
                            ChangeRow{"Changed A", "step 1", "step 1"}, ChangeRow{"    value 2", "2", "7"},
                            ChangeRow{"Deleted D", "step 4", ""}, ChangeRow{"    value 1", "5", ""},
                            ChangeRow{"Inserted E", "", "step 3"}, ChangeRow{"    value 1", "", "6"},
                            ChangeRow{"Moved B", "step 2", "step 4"}));
}

TEST(ChangeListTest, WhatHasNoNameHasARowToo) {
    const auto before = methodWith("10uL", "First", {"A(1,2)"});
    auto after = before;
    after.replace(after.find("<Method>"), 8, "<Method TimingInformationID=\"x\" by=\"me\">");
    EXPECT_THAT(changesBetween(before, after), ElementsAre(ChangeRow{"@by", "", "me"}));
}

TEST(ChangeListTest, ANewMethodIsComparedWithNothing) {
    EXPECT_THAT(changesBetween("", methodWith("5uL", "", {"A()"})),
                ElementsAre(ChangeRow{"Version", "", "04"}, ChangeRow{"Syringe", "", "5uL"},
                            ChangeRow{"Inserted A", "", "step 1"}));
}

}  // namespace
}  // namespace vrn::sample
