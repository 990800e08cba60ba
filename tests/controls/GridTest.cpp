#include "controls/Grid.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vrn::controls {
namespace {

class GridTest : public ::testing::Test {
  protected:
    GridTest() {
        grid.setHeader("Parameter", "Value");
        grid.addRow({"Volume", "5", EditStyle::Text, nullptr});
        grid.addRow({"Tray", "Old", EditStyle::DropDownList,
                     std::make_shared<const Choices>(std::vector<std::string>{"Tray1", "Tray2"})});
        grid.onValidate = [this] {
            asked.push_back(grid.pendingEdit()->text);
            return accepts;
        };
    }

    Focus focus;
    Grid grid{"grid", nullptr, &focus};
    Button button{"button", nullptr, &focus, ""};
    std::vector<std::string> asked;
    bool accepts = true;
};

TEST_F(GridTest, AnEditIsTakenWhenItIsAccepted) {
    EXPECT_EQ(grid.userEdit(1, "7\x01", true), UserRequest::Done);
    EXPECT_EQ(grid.cellText(1, 1), "7");
    accepts = false;
    EXPECT_EQ(grid.userEdit(1, "8", true), UserRequest::Done);
    EXPECT_EQ(grid.cellText(1, 1), "7");
    EXPECT_FALSE(grid.pendingEdit().has_value());
    EXPECT_EQ(asked, (std::vector<std::string>{"7", "8"}));
}

TEST_F(GridTest, ThePendingEditIsLeftOnceByTheUsersNextStep) {
    grid.userEdit(1, "7", false);
    EXPECT_EQ(grid.cellText(1, 1), "5");
    EXPECT_TRUE(grid.pendingEdit().has_value());
    button.userClick();
    EXPECT_EQ(grid.cellText(1, 1), "7");
    button.userClick();
    EXPECT_EQ(asked.size(), 1U);

    accepts = false;
    grid.userEdit(1, "8", false);
    grid.userEdit(2, "Tray2", false);
    EXPECT_EQ(grid.cellText(1, 1), "7");
    EXPECT_EQ(grid.pendingEdit()->row, 2);
    grid.discardEdit();
    button.userClick();
    EXPECT_EQ(grid.cellText(2, 1), "Old");
}

TEST_F(GridTest, ADropDownListTakesItsItemsOnly) {
    EXPECT_EQ(grid.userEdit(2, "Old", true), UserRequest::NoSuchEntry);
    EXPECT_EQ(grid.userEdit(2, "Tray2", true), UserRequest::Done);
    EXPECT_EQ(grid.cellText(2, 1), "Tray2");
    EXPECT_TRUE(grid.enterText(2, "SL.Mine"));
    EXPECT_EQ(grid.cellText(2, 1), "SL.Mine");
}

TEST_F(GridTest, ARefusedRequestChangesNothing) {
    grid.userEdit(1, "7", false);
    EXPECT_EQ(grid.userEdit(3, "x", true), UserRequest::NoSuchEntry);
    EXPECT_EQ(grid.userEdit(0, "x", true), UserRequest::NoSuchEntry);
    EXPECT_EQ(grid.userEdit(2, "x", true), UserRequest::NoSuchEntry);
    EXPECT_EQ(grid.userMouseDown(3, 200), UserRequest::NoSuchEntry);
    grid.setEnabled(false);
    EXPECT_EQ(grid.userEdit(1, "x", true), UserRequest::NotUsable);
    EXPECT_EQ(grid.userMouseDown(1, 200), UserRequest::NotUsable);
    EXPECT_EQ(grid.pendingEdit()->text, "7");
    EXPECT_TRUE(asked.empty());
}

TEST_F(GridTest, TypingOnIsOneEdit) {
    grid.onSetEditText = [](int, std::string& text) { std::replace(text.begin(), text.end(), ',', '.'); };
    EXPECT_EQ(grid.userGoTo(1), UserRequest::Done);
    EXPECT_FALSE(grid.pendingEdit().has_value());
    EXPECT_EQ(grid.userTypeText(1, "7"), UserRequest::Done);
    EXPECT_EQ(grid.userTypeText(1, "7,5"), UserRequest::Done);
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(grid.pendingEdit()->text, "7.5");

    EXPECT_EQ(grid.userTypeText(2, "x"), UserRequest::NoSuchEntry);
    EXPECT_EQ(grid.userTypeText(2, "Tray1"), UserRequest::Done);
    EXPECT_EQ(asked, std::vector<std::string>{"7.5"});
    EXPECT_EQ(grid.cellText(1, 1), "7.5");
    EXPECT_EQ(grid.userGoTo(1), UserRequest::Done);
    EXPECT_EQ(grid.cellText(2, 1), "Tray1");
    EXPECT_EQ(grid.currentRow(), 1);
    EXPECT_EQ(grid.userGoTo(3), UserRequest::NoSuchEntry);
    grid.setEnabled(false);
    EXPECT_EQ(grid.userGoTo(2), UserRequest::NotUsable);
}

TEST_F(GridTest, TheEditMayGoWhileItIsValidated) {
    grid.onValidate = [this] {
        grid.clearRows();
        grid.addRow({"Other", "1", EditStyle::Text, {}});
        return true;
    };
    grid.userEdit(1, "7", false);
    EXPECT_FALSE(grid.commitEdit());
    EXPECT_EQ(grid.cellText(1, 1), "1");

    grid.onValidate = [this] {
        EXPECT_FALSE(grid.commitEdit());  // asked for again from within the message about it
        return true;
    };
    EXPECT_EQ(grid.userEdit(1, "7", true), UserRequest::Done);
    EXPECT_EQ(grid.cellText(1, 1), "7");
}

TEST_F(GridTest, RowsMayGoWhileTheLastEditIsLeft) {
    grid.onValidate = [this] {
        grid.clearRows();
        return false;
    };
    grid.userEdit(1, "7", false);
    EXPECT_EQ(grid.userEdit(2, "Tray1", true), UserRequest::NoSuchEntry);
    EXPECT_EQ(grid.rowCount(), 1);
}

}  // namespace
}  // namespace vrn::controls
