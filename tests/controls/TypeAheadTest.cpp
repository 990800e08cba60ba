#include "controls/TypeAhead.h"

#include <gtest/gtest.h>

#include "controls/ItemList.h"

namespace vrn::controls {
namespace {

using std::chrono::milliseconds;

// Someone who types into a list, and whose choice becomes the selection.
struct Typist {
    explicit Typist(std::vector<std::string> names, TypeAhead::Rows kind = TypeAhead::Rows::Plain)
        : rows(std::move(names)), keys(kind) {}
    std::vector<std::string> rows;
    TypeAhead keys;
    int selected = noSelection;
    milliseconds now{0};
    std::vector<std::string> chosen;

    std::string type(std::string_view letters, milliseconds between = milliseconds(100)) {
        for (const char letter : letters) {
            now += between;
            const int row = keys.type(std::string(1, letter), now, rows, selected);
            if (row != noSelection && row != selected) {
                selected = row;
                chosen.push_back(text());
            }
        }
        return text();
    }
    [[nodiscard]] std::string text() const {
        return selected == noSelection ? "" : rows[static_cast<std::size_t>(selected)];
    }
    void wait() { now += TypeAhead::pause + milliseconds(1); }
};

const std::vector<std::string> cycles{"CLEAN", "CHANGE TOOL", "COUNT", "EXTRACT LLE", "PREWASH", "WASH"};

TEST(TypeAhead, LettersTypedInARowAreTheBeginningOfAName) {
    Typist user(cycles);
    EXPECT_EQ(user.type("Change"), "CHANGE TOOL");
    EXPECT_EQ(user.chosen, (std::vector<std::string>{"CLEAN", "CHANGE TOOL"}));
    user.wait();
    EXPECT_EQ(user.type("extract l"), "EXTRACT LLE");
    // At the very end of the pause a letter still belongs to the text, after it it does not.
    user.wait();
    EXPECT_EQ(user.type("c"), "CLEAN");
    EXPECT_EQ(user.type("o", TypeAhead::pause), "COUNT");
    EXPECT_EQ(user.type("e", TypeAhead::pause + milliseconds(1)), "EXTRACT LLE");
}

TEST(TypeAhead, ThePartOfANameServesWhereNoneBeginsWithIt) {
    Typist user(cycles);
    EXPECT_EQ(user.type("was"), "WASH");
    user.wait();
    EXPECT_EQ(user.type("too"), "CHANGE TOOL");
    user.wait();
    EXPECT_EQ(user.type("zx"), "CHANGE TOOL");
    EXPECT_EQ(user.type("c"), "CHANGE TOOL") << "a letter too many does not begin the name anew";
    user.wait();
    EXPECT_EQ(user.type("ewa"), "PREWASH");
    // The search starts where the user was, not where the letters before have led.
    Typist other({"HOME", "LIQUID-INJ", "INCUBATE", "SPME-INJ"});
    other.selected = 0;
    EXPECT_EQ(other.type("inj"), "LIQUID-INJ");
}

TEST(TypeAhead, ASlipIsTakenBack) {
    Typist user(cycles);
    user.type("cj");
    user.keys.takeBack(user.now);
    EXPECT_EQ(user.type("ou"), "COUNT");
    for (int i = 0; i < 4; ++i) {
        user.keys.takeBack(user.now);
    }
    EXPECT_FALSE(user.keys.goesOn(user.now));
    EXPECT_EQ(user.type("w\xC3"), "WASH");
    user.keys.takeBack(user.now);
    EXPECT_EQ(user.type("a"), "WASH");
}

TEST(TypeAhead, WhatIsSelectedStaysWhileItFits) {
    Typist user(cycles);
    user.selected = 1;
    user.type("change tool");
    EXPECT_TRUE(user.chosen.empty());
    user.keys.forget();
    EXPECT_EQ(user.type("co"), "COUNT");
    EXPECT_EQ(user.chosen, std::vector<std::string>{"COUNT"});
}

TEST(TypeAhead, OneLetterAgainAndAgainGoesThroughTheRows) {
    Typist user(cycles);
    user.type("cccc");
    EXPECT_EQ(user.chosen, (std::vector<std::string>{"CLEAN", "CHANGE TOOL", "COUNT", "CLEAN"}));
    for (int i = 0; i < 2; ++i) {
        user.wait();
        user.type("c");
    }
    EXPECT_EQ(user.text(), "COUNT");
    // The user has gone elsewhere since: the letter is a first one again.
    user.wait();
    user.selected = 0;
    EXPECT_EQ(user.type("c"), "CLEAN");
    // A name that begins with the letter twice comes first.
    Typist other({"ALPHA", "AARDVARK", "ATOM"});
    EXPECT_EQ(other.type("aa"), "AARDVARK");
}

TEST(TypeAhead, StepsAreMeantByNumberOrByName) {
    Typist user({}, TypeAhead::Rows::Numbered);
    for (int i = 1; i <= 12; ++i) {
        user.rows.push_back((i < 10 ? "0" : "") + std::to_string(i) + (i % 2 == 0 ? " WASH" : " 2D COUNT"));
    }
    EXPECT_EQ(user.type("12"), "12 WASH");
    user.wait();
    EXPECT_EQ(user.type("7"), "07 2D COUNT");
    user.wait();
    EXPECT_EQ(user.type("06 w"), "06 WASH");
    user.wait();
    EXPECT_EQ(user.type("2d"), "07 2D COUNT");
    user.wait();
    EXPECT_EQ(user.type("wash"), "08 WASH");
    EXPECT_EQ(user.type("0"), "08 WASH");
}

TEST(TypeAhead, LettersBeyondAsciiAndEmptyListsDoNoHarm) {
    const std::vector<std::string> rows{"SP\xC3\x9CLEN", "\xC3\x96L"};
    TypeAhead keys;
    EXPECT_EQ(keys.type("\xC3\xB6", milliseconds(0), rows, noSelection), 1);
    EXPECT_EQ(keys.type("l", milliseconds(1), rows, 1), 1);
    keys.forget();
    EXPECT_FALSE(keys.goesOn(milliseconds(2)));
    EXPECT_EQ(keys.type("\xC3\xBC", milliseconds(2), rows, 1), 0);
    EXPECT_TRUE(keys.goesOn(milliseconds(3)));
    EXPECT_EQ(keys.type("x", milliseconds(4), {}, noSelection), noSelection);
}

}  // namespace
}  // namespace vrn::controls
