#include "hosts/activex/form/GridGeometry.h"

#include "controls/Grid.h"

#include <gtest/gtest.h>

namespace vrn::activex {
namespace {

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
