#include "hosts/activex/form/Layout.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

#include "hosts/activex/form/Scale.h"

namespace vrn::activex {

// For gtest's messages.
void PrintTo(const Place& place, std::ostream* out) {
    *out << place.left << "," << place.top << " " << place.width() << "x" << place.height();
}

namespace {

std::vector<ControlId> allIds() {
    std::vector<ControlId> ids;
    for (std::size_t i = 0; i < controlCount; ++i) {
        ids.push_back(static_cast<ControlId>(static_cast<int>(ControlId::fraMethodEditor) + static_cast<int>(i)));
    }
    return ids;
}

constexpr std::array captioned{ControlId::fraMethodDescription,
                               ControlId::fraSyringe,
                               ControlId::fraMacroSequence,
                               ControlId::fraAvailableCycles,
                               ControlId::cmdInsert,
                               ControlId::cmdReplace,
                               ControlId::cmdDelete,
                               ControlId::cmdDefCycle};

struct Case {
    int width;
    int height;
    int dpi = 96;
    int fontPercent = 100;  ///< of the system font's usual size
    bool extras = false;    ///< the notice and the button beside the catalogue
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.width << "x" << c.height << " at " << c.dpi << " dpi, font " << c.fontPercent << "%"
         << (c.extras ? ", notice" : "");
}

/// Measures as they come out for the system's usual font, Tahoma or Segoe UI of nine points.
LayoutInput inputOf(const Case& c) {
    const auto font = [&c](int length) { return scaled(length, c.dpi) * c.fontPercent / 100; };
    LayoutInput input;
    input.width = c.width;
    input.height = c.height;
    input.dpi = c.dpi;
    input.textHeight = font(15);
    input.comboHeight = font(15) + scaled(8, c.dpi);
    input.listRowHeight = scaled(15, c.dpi);
    input.gridRowHeight = scaled(22, c.dpi);
    input.gridHeaderHeight = scaled(24, c.dpi);
    input.initialCycle = c.extras;
    if (c.extras) {
        const int lines = font(810) / std::max(noticeWidth(c.width, c.dpi), 1) + 1;
        input.noticeHeight = lines * font(15);
    }
    const auto caption = [&](ControlId id, int width) { input.captions[indexOf(id)] = font(width); };
    caption(ControlId::fraMethodDescription, 60);
    caption(ControlId::fraSyringe, 41);
    caption(ControlId::fraMacroSequence, 92);
    caption(ControlId::fraAvailableCycles, 85);
    caption(ControlId::cmdInsert, 32);
    caption(ControlId::cmdReplace, 45);
    caption(ControlId::cmdDelete, 38);
    caption(ControlId::cmdDefCycle, 62);
    return input;
}

int listRows(const Layout& layout, const LayoutInput& input) {
    const int border = 2 * scaled(2, input.dpi);
    return std::max(layout.of(ControlId::lstMethodMacroList).height() - border, 0) / input.listRowHeight;
}

int gridRows(const Layout& layout, const LayoutInput& input) {
    return std::max(layout.of(ControlId::grdMacro).height() - input.gridHeaderHeight, 0) / input.gridRowHeight;
}

int descriptionLines(const Layout& layout, const LayoutInput& input) {
    return (layout.of(ControlId::txtMethodDescription).height() - scaled(6, input.dpi)) / input.textHeight;
}

bool overlap(const Place& a, const Place& b) {
    return !a.empty() && !b.empty() && a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void expectInPlace(const Layout& layout, bool complete) {
    for (const auto id : allIds()) {
        const Place& place = layout.of(id);
        const Place& frame = layout.of(frameOf(id));
        const int number = static_cast<int>(id);
        EXPECT_TRUE(place.width() >= 0 && place.height() >= 0) << number;
        EXPECT_TRUE(place.empty() || (place.left >= 0 && place.top >= 0 && place.right <= frame.width() &&
                                      place.bottom <= frame.height()))
            << number << " " << ::testing::PrintToString(place) << " in " << ::testing::PrintToString(frame);
        const bool optional =
            id == ControlId::txtToolTip || id == ControlId::cmdDefCycle || id == ControlId::lblCycleDateChanged;
        EXPECT_TRUE(!complete || optional || !place.empty()) << number;
        for (const auto other : allIds()) {
            EXPECT_FALSE(id < other && id != ControlId::fraMethodEditor && frameOf(id) == frameOf(other) &&
                         overlap(place, layout.of(other)))
                << number << " " << static_cast<int>(other);
        }
    }
}

// The form's size in the lengths of the usual font at 96 dpi: what has room does not depend on the unit.
struct Room {
    int wide;
    int high;
};
Room roomOf(const Case& c) {
    return {c.width * 96 * 100 / c.dpi / c.fontPercent, c.height * 96 * 100 / c.dpi / c.fontPercent};
}

void expectServed(const Case& c) {
    SCOPED_TRACE(::testing::PrintToString(c));
    const auto input = inputOf(c);
    const auto layout = layOut(input);
    const auto [wide, high] = roomOf(c);
    const bool complete = wide >= 300 && high >= (c.extras ? 320 : 240);
    expectInPlace(layout, complete);
    for (const auto id : captioned) {
        const Place& place = layout.of(id);
        EXPECT_TRUE(wide < 300 || place.empty() || input.captions[indexOf(id)] <= captionRoom(id, place, c.dpi))
            << static_cast<int>(id) << " " << ::testing::PrintToString(place);
    }
    const int rows = std::min(listRows(layout, input), gridRows(layout, input));
    EXPECT_GE(rows, !complete ? 0 : high >= 400 ? 7 : high >= 300 ? 5 : 4);
    // Air and lines are for forms in which list and grid have what they need.
    const bool spends =
        layout.of(ControlId::fraMacroSequence).left > scaled(4, c.dpi) || descriptionLines(layout, input) > 1;
    EXPECT_TRUE(!spends || rows >= 8) << rows;
}

// Nothing overlaps and nothing lies outside. With a width of 300 in the usual font at 96 dpi all captions are whole; with a
// height of 240, or of 320 with a notice, all controls are there, and list and grid have several rows.
TEST(LayoutTest, EverySizeServesWhatMatters) {
    for (const auto& [width, height] : {std::pair(160, 120),
                                        {320, 240},
                                        {400, 300},
                                        {320, 900},
                                        {480, 640},
                                        {640, 480},
                                        {800, 600},
                                        {1024, 768},
                                        {1280, 960},
                                        {1920, 1080},
                                        {3840, 2160}}) {
        for (const int dpi : {96, 120, 144, 192}) {
            for (const int font : {100, 150}) {
                expectServed({width, height, dpi, font, false});
                expectServed({width, height, dpi, font, true});
            }
        }
    }
}

struct Table {
    Case form;
    int listRows;
    int gridRows;
    int descriptionLines;
    bool stacked = false;
};

// What a size gives, so that a change of it is a decision.
TEST(LayoutTest, RowsThatSizesGive) {
    for (const auto& [form, list, grid, lines, stacked] : {Table{{320, 240}, 10, 5, 1},
                                                           {{640, 480, 192}, 10, 5, 1},
                                                           {{640, 480, 144}, 13, 8, 1},
                                                           {{640, 480}, 18, 11, 5},
                                                           {{320, 900}, 13, 14, 10, true},
                                                           {{960, 720}, 31, 20, 8},
                                                           {{1920, 1080}, 53, 35, 10}}) {
        const auto input = inputOf(form);
        const auto layout = layOut(input);
        const bool above =
            layout.of(ControlId::fraMacroSequence).bottom <= layout.of(ControlId::fraAvailableCycles).top;
        EXPECT_EQ(std::tuple(listRows(layout, input), gridRows(layout, input), descriptionLines(layout, input), above),
                  std::tuple(list, grid, lines, stacked))
            << ::testing::PrintToString(form);
    }
}

TEST(LayoutTest, ButtonsGrowWithTheirCaptionsAndWrap) {
    const auto buttonsOf = [](const Case& c) {
        const auto input = inputOf(c);
        return layOut(input);
    };
    const auto roomy = buttonsOf({960, 720, 96, 100});
    const auto large = buttonsOf({960, 720, 96, 250});
    EXPECT_EQ(roomy.of(ControlId::cmdInsert).width(), roomy.of(ControlId::cmdReplace).width());
    EXPECT_GE(large.of(ControlId::cmdReplace).width(), 112);
    EXPECT_EQ(large.of(ControlId::cmdInsert).top, large.of(ControlId::cmdDelete).top);
    const auto two = buttonsOf({320, 480});
    EXPECT_EQ(two.of(ControlId::cmdInsert).top, two.of(ControlId::cmdReplace).top);
    EXPECT_GT(two.of(ControlId::cmdDelete).top, two.of(ControlId::cmdReplace).top);
    const auto three = buttonsOf({240, 480});
    EXPECT_GT(three.of(ControlId::cmdReplace).top, three.of(ControlId::cmdInsert).top);
}

TEST(LayoutTest, NothingIsTurnedInsideOut) {
    for (const auto& [width, height] : {std::pair(0, 0), {20, 400}, {400, 20}, {150, 150}, {1, 1}, {3000, 60}}) {
        const Case c{width, height, 96, 100, true};
        SCOPED_TRACE(::testing::PrintToString(c));
        expectInPlace(layOut(inputOf(c)), false);
        LayoutInput unmeasured;
        unmeasured.width = width;
        unmeasured.height = height;
        expectInPlace(layOut(unmeasured), false);
    }
}

}  // namespace
}  // namespace vrn::activex
