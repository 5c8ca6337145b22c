#include "foundation/Failures.h"

#include <gtest/gtest.h>

TEST(Failures, FourCharCodesPutTheFirstCharacterHighest) {
    EXPECT_EQ(MakeFourCharCode("rstV"), 0x72737456);
    EXPECT_EQ(MakeFourCharCode("CFov"), 0x43466F76);
    // Characters above 0x7F do not spill their sign into the other bytes.
    EXPECT_EQ(MakeFourCharCode("\xFF\x01\x80\x02"), std::int32_t(0xFF018002u));
}
