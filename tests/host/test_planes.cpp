// The planes chosen for each filter case, and the preview's reduction.
#include "host/PlaneTable.h"
#include "host/PreviewScale.h"

#include <gtest/gtest.h>

namespace {
void ExpectChoice(const PlaneChoice& c, int inHi, int outHi, int count, int alpha, int prot) {
    ASSERT_TRUE(c.supported);
    EXPECT_EQ(c.inHiPlane, inHi);
    EXPECT_EQ(c.outHiPlane, outHi);
    EXPECT_EQ(c.planeCount, count);
    EXPECT_EQ(c.alphaPlane, alpha);
    EXPECT_EQ(c.protectedTransparency, prot);
}
} // namespace

TEST(PlaneTable, EachRowOfTheTable) {
    for (int16 fc : {int16(4), int16(5)})
        ExpectChoice(ChoosePlanes(fc, 4, plugInModeRGBColor, 3, 1), 3, 3, 4, 3, 0);
    for (int16 fc : {int16(6), int16(7)})
        ExpectChoice(ChoosePlanes(fc, 4, plugInModeRGBColor, 3, 1), 3, 2, 4, 3, 1);
    for (int16 fc : {int16(1), int16(2), int16(3)}) {
        ExpectChoice(ChoosePlanes(fc, 3, plugInModeRGBColor, 0, 0), 2, 2, 3, -1, 0);
        ExpectChoice(ChoosePlanes(fc, 4, plugInModeCMYKColor, 0, 0), 3, 3, 4, -1, 0);
    }
    // A host that reports no filter case gets three planes, CMYK included.
    ExpectChoice(ChoosePlanes(0, 4, plugInModeCMYKColor, 0, 0), 2, 2, 3, -1, 0);
}

TEST(PlaneTable, CombinationsOutsideTheTableAreRefused) {
    EXPECT_FALSE(ChoosePlanes(4, 4, plugInModeRGBColor, 3, 0).supported); // no mask
    EXPECT_FALSE(ChoosePlanes(5, 4, plugInModeRGBColor, 0, 1).supported); // no layer planes
    EXPECT_FALSE(ChoosePlanes(6, 2, plugInModeRGBColor, 3, 1).supported); // too few planes
    EXPECT_FALSE(ChoosePlanes(1, 2, plugInModeRGBColor, 0, 0).supported);
    EXPECT_FALSE(ChoosePlanes(1, 3, plugInModeLabColor, 0, 0).supported);
    EXPECT_FALSE(ChoosePlanes(8, 3, plugInModeRGBColor, 0, 0).supported);
    EXPECT_FALSE(ChoosePlanes(-1, 3, plugInModeRGBColor, 0, 0).supported);
    // Layers that would make the composite read planes that are not there.
    EXPECT_FALSE(ChoosePlanes(4, 4, plugInModeRGBColor, 1, 1).supported);
    EXPECT_FALSE(ChoosePlanes(6, 4, plugInModeRGBColor, 3, 0).supported);
    EXPECT_FALSE(ChoosePlanes(4, 40, plugInModeRGBColor, 39, 1).supported);
}

TEST(PreviewScale, FitsTheDesktop) {
    EXPECT_EQ(ComputePreviewScale(500, 300, 1024, 768), 1);
    EXPECT_EQ(ComputePreviewScale(2000, 1000, 1024, 768), 3); // max(ceil(2000/784), ceil(1000/588))
    EXPECT_EQ(ComputePreviewScale(400, 300, 640, 480), 1);    // by the second test
    EXPECT_EQ(ComputePreviewScale(401, 300, 640, 480), 2);
    EXPECT_EQ(ComputePreviewScale(784, 588, 1024, 768), 1);
    EXPECT_EQ(ComputePreviewScale(785, 100, 1024, 768), 2);
    EXPECT_EQ(ComputePreviewScale(100, 1177, 1024, 768), 3);
    // A desktop smaller than the window's controls still gives a finite scale.
    EXPECT_EQ(ComputePreviewScale(300, 200, 200, 100), 300);
}
