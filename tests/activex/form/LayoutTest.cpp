#include "controls/Grid.h"
#include "hosts/activex/form/Layout.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "hosts/activex/form/GridGeometry.h"
#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {
namespace {

std::vector<ControlId> allIds() {
    std::vector<ControlId> ids;
    for (std::size_t i = 0; i < controlCount; ++i) {
        ids.push_back(static_cast<ControlId>(static_cast<int>(ControlId::fraMethodEditor) + static_cast<int>(i)));
    }
    return ids;
}

class LayoutTest : public ::testing::TestWithParam<std::tuple<SIZE, int, bool>> {
  protected:
    [[nodiscard]] Layout layout() const {
        const auto& [size, dpi, extras] = GetParam();
        LayoutInput input;
        input.client = size;
        input.dpi = dpi;
        input.textHeight = scaled(15, dpi);
        input.comboHeight = scaled(23, dpi);
        input.noticeHeight = extras ? scaled(30, dpi) : 0;
        input.initialCycle = extras;
        return layOut(input);
    }
};

TEST_P(LayoutTest, ControlsAreInsideTheirFramesAndApart) {
    const auto places = layout();
    const auto& [size, dpi, extras] = GetParam();
    for (const auto id : allIds()) {
        const RECT& place = places.of(id);
        const RECT frame{0, 0, widthOf(places.of(frameOf(id))), heightOf(places.of(frameOf(id)))};
        EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= frame.right && place.bottom <= frame.bottom)
            << static_cast<int>(id);
        const bool optional = id == ControlId::txtToolTip ||
                              (!extras && (id == ControlId::cmdDefCycle || id == ControlId::lblCycleDateChanged));
        EXPECT_TRUE(optional || (widthOf(place) > 0 && heightOf(place) > 0)) << static_cast<int>(id);
        for (const auto other : allIds()) {
            RECT common{};
            EXPECT_FALSE(id != other && id != ControlId::fraMethodEditor && other != ControlId::fraMethodEditor &&
                         frameOf(id) == frameOf(other) && IntersectRect(&common, &place, &places.of(other)))
                << static_cast<int>(id) << " " << static_cast<int>(other);
        }
    }
    // Buttons keep their captions, the grid has room for some rows.
    EXPECT_GE(widthOf(places.of(ControlId::cmdReplace)), scaled(56, dpi));
    EXPECT_GE(heightOf(places.of(ControlId::grdMacro)), 4 * scaled(20, dpi));
}

INSTANTIATE_TEST_SUITE_P(Sizes, LayoutTest,
                         ::testing::Combine(::testing::Values(SIZE{960, 720}, SIZE{1024, 768}, SIZE{1920, 1080}),
                                            ::testing::Values(96, 120, 144), ::testing::Bool()));
INSTANTIATE_TEST_SUITE_P(Smallest, LayoutTest,
                         ::testing::Combine(::testing::Values(SIZE{640, 480}), ::testing::Values(96),
                                            ::testing::Bool()));
INSTANTIATE_TEST_SUITE_P(Finest, LayoutTest,
                         ::testing::Combine(::testing::Values(SIZE{1280, 960}, SIZE{3840, 2160}),
                                            ::testing::Values(192), ::testing::Bool()));

TEST(LayoutLimitsTest, NothingIsTurnedInsideOut) {
    for (const SIZE size : {SIZE{0, 0}, SIZE{20, 400}, SIZE{400, 20}, SIZE{150, 150}}) {
        LayoutInput input;
        input.client = size;
        input.textHeight = 15;
        input.comboHeight = 23;
        const auto places = layOut(input);
        for (const auto id : allIds()) {
            EXPECT_GE(widthOf(places.of(id)), 0);
            EXPECT_GE(heightOf(places.of(id)), 0);
        }
    }
}

TEST(GridGeometryTest, PlacesAndRows) {
    GridGeometry geometry;
    geometry.dpi = 192;
    geometry.width = 800;
    geometry.height = 240;
    geometry.headerHeight = 40;
    geometry.rowHeight = 40;
    geometry.nameWidth = 400;
    geometry.rowCount = 11;
    EXPECT_EQ(geometry.rowAt(39), 0);
    EXPECT_EQ(geometry.rowAt(40), 1);
    EXPECT_EQ(geometry.rowAt(240), -1);
    EXPECT_EQ(geometry.partAt(790, true), GridPart::Menu);
    EXPECT_EQ(geometry.partAt(750, true), GridPart::Arrow);
    EXPECT_EQ(geometry.partAt(750, false), GridPart::Value);
    EXPECT_EQ(geometry.partAt(10, true), GridPart::Name);
    EXPECT_EQ(geometry.lastTop(), 6);
    EXPECT_EQ(geometry.topToShow(10), 6);
    geometry.top = 6;
    EXPECT_EQ(geometry.topToShow(2), 2);
    EXPECT_EQ(geometry.topToShow(7), 6);
}

TEST(GridGeometryTest, TheFieldOfTheMenuIsSmallHoweverWideTheFormIs) {
    GridGeometry geometry;
    geometry.height = 100;
    geometry.rowHeight = 20;
    geometry.rowCount = 3;
    for (const int dpi : {96, 120, 144, 192}) {
        for (const int width : {40, 120, 300, 4000}) {
            geometry.dpi = dpi;
            geometry.width = width;
            geometry.nameWidth = width / 2;
            const LONG left = geometry.menu(1).left;
            const LONG right = geometry.menu(1).right;
            EXPECT_LE(right - left, 20 * dpi / 96);
            EXPECT_GE(geometry.arrow(1).left - geometry.value(1).left, (width - width / 2) / 3);
            EXPECT_EQ(geometry.partAt(left, true), GridPart::Menu);
            EXPECT_EQ(geometry.partAt(left - 1, true), GridPart::Arrow);
            EXPECT_EQ(geometry.partAt(geometry.arrow(1).left - 1, true), GridPart::Value);
            for (int x = -3; x < width + 3; ++x) {
                const int position = geometry.position(x);
                EXPECT_EQ(position >= controls::Grid::menuFrom && position <= controls::Grid::menuTo,
                          x >= left && x < right)
                    << x << " of " << width << " at " << dpi;
            }
        }
    }
}

}  // namespace
}  // namespace vrn::activex
