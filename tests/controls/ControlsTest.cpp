#include <gtest/gtest.h>

#include "controls/Control.h"
#include "controls/ItemList.h"
#include "controls/Menu.h"
#include "errors/Error.h"

namespace vrn::controls {
namespace {

template <typename Act>
int errorOf(Act&& act) {
    try {
        act();
        return 0;
    } catch (const errors::Error& error) {
        return error.number();
    }
}

TEST(Controls, OnlyWhatIsEnabledAndVisibleCanBeUsed) {
    int clicks = 0;
    Button button("button", nullptr, nullptr, "&Go");
    button.onClick = [&] { ++clicks; };
    EXPECT_EQ(button.userClick(), UserRequest::Done);
    button.setEnabled(false);
    EXPECT_EQ(button.userClick(), UserRequest::NotUsable);
    button.press();  // a program may press it all the same
    button.setEnabled(true);
    button.setVisible(false);
    EXPECT_EQ(button.userClick(), UserRequest::NotUsable);
    EXPECT_EQ(clicks, 2);
}

TEST(Controls, ControlsMayChangeWhileAnotherIsLeft) {
    Focus focus;
    Button button("button", nullptr, &focus, "&Go");
    int clicks = 0;
    button.onClick = [&] { ++clicks; };
    focus.hold([&] { button.setEnabled(false); });
    EXPECT_EQ(button.userClick(), UserRequest::NotUsable);
    EXPECT_EQ(clicks, 0);
    ListBox list("list", nullptr, &focus);
    list.addItem("a");
    focus.hold([&] { list.clear(); });
    EXPECT_EQ(list.userSelect(0), UserRequest::NoSuchEntry);
}

TEST(TextBox, OnlyTypingADifferentTextCounts) {
    int changes = 0;
    TextBox box("box", nullptr, nullptr);
    box.onChange = [&] { ++changes; };
    box.setText("by code");
    EXPECT_EQ(changes, 0);
    box.userType("a\nb\r\nc\x01\xFF");
    EXPECT_EQ(box.text(), "a\r\nb\r\nc");
    EXPECT_EQ(changes, 1);
    box.userType("a\r\x02\nb\nc");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(box.userType(""), UserRequest::Done);
    EXPECT_EQ(changes, 2);
}

TEST(ItemList, TheSelectionHandlerRunsWheneverTheIndexIsSet) {
    std::vector<std::string> seen;
    ComboBox combo("combo", nullptr, nullptr);
    combo.onClick = [&] { seen.push_back("click " + combo.text()); };
    combo.onUserChange = [&] { seen.push_back("change " + combo.text()); };
    combo.addItem("a");
    combo.addItem("b");
    combo.setListIndex(1);
    EXPECT_EQ(combo.userSelect(1), UserRequest::Done);
    EXPECT_EQ(combo.userSelect(0), UserRequest::Done);
    EXPECT_EQ(combo.userSelect(2), UserRequest::NoSuchEntry);
    EXPECT_EQ(combo.userSelect(noSelection), UserRequest::NoSuchEntry);
    combo.setListIndex(noSelection);
    combo.clear();
    EXPECT_EQ(seen, (std::vector<std::string>{"click b", "click b", "click a", "change a", "click "}));
}

TEST(ItemList, RowsThatAreNotThereFail) {
    ListBox list("list", nullptr, nullptr);
    list.addItem("a");
    EXPECT_EQ(errorOf([&] { list.setListIndex(1); }), 5);
    EXPECT_EQ(errorOf([&] { list.setListIndex(-2); }), 5);
    EXPECT_EQ(errorOf([&] { list.removeItem(-1); }), 5);
    EXPECT_EQ(errorOf([&] { list.setItem(1, ""); }), 5);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list.item(1)); }), 9);
}

TEST(ListBox, OnePressIsOneSelection) {
    std::vector<std::string> seen;
    ListBox list("list", nullptr, nullptr);
    list.onClick = [&] { seen.push_back(list.text()); };
    for (const auto* text : {"a", "b"}) {
        list.addItem(text);
    }
    list.userMouseDown(0, ListBox::leftButton, 0, 0, 0);
    EXPECT_EQ(seen, std::vector<std::string>{"a"});
    list.onMouseDown = [&](int button, int /*shift*/, float /*x*/, float /*y*/) {
        if (button == ListBox::leftButton) {
            list.setListIndex(list.listIndex());
        }
    };
    list.userMouseDown(1, ListBox::leftButton, 0, 0, 0);
    list.userMouseDown(0, ListBox::rightButton, 0, 0, 0);
    list.userMouseDown(1, ListBox::leftButton, 0, 0, 0);
    list.userMouseDown(2, ListBox::leftButton, 0, 0, 0);
    EXPECT_EQ(seen, (std::vector<std::string>{"a", "b", "b", "b"}));
}

TEST(ItemList, SelectionAndToolTipsMoveWithTheRows) {
    ListBox list("list", nullptr, nullptr);
    for (const auto* text : {"a", "b", "b"}) {
        list.addItem(text);
    }
    list.setToolTip(1, "tip");
    EXPECT_EQ(list.indexOf("b"), 1);
    EXPECT_EQ(list.indexOf("B"), noSelection);
    list.setListIndex(1);
    list.removeItem(0);
    EXPECT_EQ(list.listIndex(), 0);
    EXPECT_EQ(list.toolTip(0), "tip");
    EXPECT_EQ(list.indexOf("b"), 0);
    list.setItem(0, "c");
    EXPECT_EQ(list.indexOf("b"), 1);
    list.removeItem(0);
    EXPECT_EQ(list.listIndex(), noSelection);
    EXPECT_EQ(list.toolTip(0), "");
    list.clear();
    EXPECT_EQ(list.indexOf("b"), noSelection);
}

TEST(Menu, AnAnswerClosesIt) {
    std::vector<int> chosen;
    Menu menu("menu");
    menu.onChoose = [&](int index) { chosen.push_back(index); };
    EXPECT_EQ(menu.userChoose(0), UserRequest::NotUsable);
    menu.popUp({});
    EXPECT_FALSE(menu.shown());
    menu.popUp({"a", "b"});
    EXPECT_EQ(menu.userChoose(1), UserRequest::Done);
    EXPECT_EQ(menu.userChoose(1), UserRequest::NotUsable);
    menu.popUp({"a"});
    EXPECT_EQ(menu.userChoose(1), UserRequest::NoSuchEntry);
    EXPECT_FALSE(menu.shown());
    menu.popUp({"a"});
    menu.close();
    EXPECT_EQ(menu.userChoose(0), UserRequest::NotUsable);
    EXPECT_EQ(chosen, std::vector<int>{1});
}

}  // namespace
}  // namespace vrn::controls
