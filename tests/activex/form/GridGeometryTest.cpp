#include "hosts/activex/form/GridGeometry.h"

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
    // The value column begins at the same place in the grid's units however it is drawn.
    EXPECT_EQ(geometry.position(399), 149);
    EXPECT_EQ(geometry.position(400), 150);
    EXPECT_EQ(geometry.position(600), 250);
    EXPECT_EQ(geometry.partAt(790, true), GridPart::Arrow);
    EXPECT_EQ(geometry.partAt(790, false), GridPart::Value);
    EXPECT_EQ(geometry.partAt(10, true), GridPart::Name);
    EXPECT_EQ(geometry.lastTop(), 6);
    EXPECT_EQ(geometry.topToShow(10), 6);
    geometry.top = 6;
    EXPECT_EQ(geometry.topToShow(2), 2);
    EXPECT_EQ(geometry.topToShow(7), 6);
}

}  // namespace
}  // namespace vrn::activex
