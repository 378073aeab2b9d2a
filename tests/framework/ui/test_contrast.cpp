// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "framework/ui/drawing/Contrast.h"

namespace framework::internal {
namespace {

TEST(Contrast, IsAsDefinedByWcag) {
    EXPECT_NEAR(ContrastRatio(RGB(0, 0, 0), RGB(255, 255, 255)), 21.0, 0.001);
    EXPECT_NEAR(ContrastRatio(RGB(255, 255, 255), RGB(0, 0, 0)), 21.0, 0.001);
    // #767676 is the well known lightest grey that passes 4.5 on white.
    EXPECT_NEAR(ContrastRatio(RGB(0x76, 0x76, 0x76), RGB(255, 255, 255)), 4.54, 0.01);
    EXPECT_NEAR(ContrastRatio(RGB(255, 0, 0), RGB(255, 0, 0)), 1.0, 0.001);
}

TEST(Contrast, EveryTextCanBeReadOnItsPlateOrWithoutOne) {
    for (int red = 0; red <= 255; red += 51) {
        for (int green = 0; green <= 255; green += 51) {
            for (int blue = 0; blue <= 255; blue += 51) {
                const Color text = RGB(red, green, blue);
                for (const Color background : {RGB(0x23, 0x27, 0x2e), RGB(239, 239, 239), text}) {
                    const auto plate = PlateBehind(text, background);
                    EXPECT_GE(ContrastRatio(text, plate.value_or(background)), kReadableContrast);
                }
            }
        }
    }
}

TEST(Contrast, PlatesStandOnlyWhereTheyAreNeeded) {
    const Color metal = RGB(0x23, 0x27, 0x2e);
    for (const Color readable : {RGB(255, 255, 255), RGB(153, 153, 153), RGB(255, 0, 0)}) {
        EXPECT_FALSE(PlateBehind(readable, metal));
    }
    for (const Color dark : {RGB(200, 0, 0), RGB(0, 0, 0)}) EXPECT_TRUE(PlateBehind(dark, metal));
    EXPECT_FALSE(PlateBehind(RGB(0, 0, 0), RGB(239, 239, 239)));
}

}  // namespace
}  // namespace framework::internal
