#include "CorvaneCore/looks/RGBColor.hpp"

#include <gtest/gtest.h>

#include <string>

using namespace corvane;

TEST(RGBColor, SixDigitsInAnyCaseWithOrWithoutHashAndSpaces) {
    const RGBColor yellow{1.0, 223 / 255.0, 0.0};
    for (std::string text : {"#FFDF00", "ffdf00", " #ffdf00\n", "\t#FfDf00 "}) {
        auto parsed = RGBColor::parseHex(text);
        ASSERT_TRUE(parsed) << text;
        EXPECT_EQ(*parsed, yellow) << text;
        EXPECT_EQ(RGBColor::fromHex(text), yellow) << text;
    }
    EXPECT_EQ(RGBColor::fromHex("#0080FF"), (RGBColor{0, 128 / 255.0, 1}));
}

TEST(RGBColor, EveryOtherFormIsNeutralGray) {
    for (std::string text :
         {"#FFF", "#FFDF00CC", "yellow", "", "#", "##FFDF00", "#FFDF0G", "#FF DF00", "0xFFDF00", "+FFDF0"}) {
        EXPECT_FALSE(RGBColor::parseHex(text)) << text;
        EXPECT_EQ(RGBColor::fromHex(text), RGBColor::neutralGray()) << text;
    }
}
