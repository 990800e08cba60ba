#include "text/Numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

#include "errors/Error.h"

namespace vrn::text {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Numbers, TextsThatAreNumbers) {
    const std::map<std::string_view, double> cases{{"5", 5},
                                                   {"  -5.25  ", -5.25},
                                                   {"+.5", 0.5},
                                                   {"5.", 5},
                                                   {"5.e2", 500},
                                                   {"1E+3", 1000},
                                                   {"25e-1", 2.5},
                                                   {"007", 7},
                                                   {"1e400", infinity},
                                                   {"-1e400", -infinity},
                                                   {"1.5e-400", 0},
                                                   {"0e999", 0},
                                                   {"0.0e99999999999999999999", 0},
                                                   {"1e99999999999999999999", infinity},
                                                   {"1e-99999999999999999999", 0}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(parseNumber(text, "."), value) << text;
    }
    EXPECT_EQ(parseNumber("1,5", ","), 1.5);
    EXPECT_EQ(parseNumber("1" + std::string(400, '0'), "."), infinity);
    EXPECT_EQ(parseNumber("0." + std::string(400, '0') + "1", "."), 0);
    EXPECT_EQ(parseNumber("1" + std::string(400, '0') + "e-400", "."), 1);
}

TEST(Numbers, TextsThatAreNone) {
    for (const std::string_view text : {"",      " ",    ".",   "+",   "-",   "e5",  "1e", "1e+", "1.2.3", "1,5",
                                        "1'000", "0x10", "inf", "nan", "5 5", "--5", "5-", "\t5", "1e5.0", "٣"}) {
        EXPECT_FALSE(parseNumber(text, ".").has_value()) << text;
    }
    EXPECT_FALSE(parseNumber("1.5", ",").has_value());
}

TEST(Numbers, HalvesGoToTheEvenNeighbour) {
    const std::map<double, std::int32_t> cases{{0.5, 0},
                                               {1.5, 2},
                                               {2.5, 2},
                                               {-0.5, 0},
                                               {-1.5, -2},
                                               {2.51, 3},
                                               {10.5, 10},
                                               {2147483646.5, 2147483646},
                                               {-2147483648.5, std::numeric_limits<std::int32_t>::min()}};
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(roundToInt32(value), rounded) << value;
    }
    for (const double value :
         {2147483647.5, -2147483649.0, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
        try {
            static_cast<void>(roundToInt32(value));
            ADD_FAILURE() << value;
        } catch (const errors::Error& error) {
            EXPECT_EQ(error.number(), errors::number::overflow);
            EXPECT_EQ(error.description(), "Overflow");
        }
    }
}

TEST(Numbers, ShortestTexts) {
    const std::map<float, std::string_view> cases{{0, "0"},     {0.1F, "0.1"},          {2.5F, "2.5"},
                                                  {-3, "-3"},   {1e10F, "10000000000"}, {1.0F / 3, "0.33333334"},
                                                  {100, "100"}, {0.00001F, "0.00001"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(shortestText(value), text);
    }
    // The longest there are fit as well.
    EXPECT_EQ(shortestText(-std::numeric_limits<float>::max()).size(), 40U);
    constexpr float smallest = std::numeric_limits<float>::denorm_min();
    EXPECT_EQ(static_cast<float>(*parseNumber(shortestText(smallest), ".")), smallest);
}

TEST(Numbers, RowNumbersHaveTwoDigitsAtLeast) { EXPECT_EQ(twoDigits(9) + twoDigits(99) + twoDigits(100), "0999100"); }

}  // namespace
}  // namespace vrn::text
