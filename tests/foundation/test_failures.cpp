#include "foundation/Failures.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(Failures, FourCharCodesPutTheFirstCharacterHighest) {
    EXPECT_EQ(MakeFourCharCode("rstV"), 0x72737456);
    EXPECT_EQ(MakeFourCharCode("CFov"), 0x43466F76);
    // Characters above 0x7F do not spill their sign into the other bytes.
    EXPECT_EQ(MakeFourCharCode("\xFF\x01\x80\x02"), std::int32_t(0xFF018002u));
}

TEST(Failures, CodesAreNamedByTheirBytesInMemory) {
    const std::int32_t codes[] = {kFailPlin, kFailLF3q, kFailTrsa};
    const char* names[] = {"Plin", "lF3q", "trsa"};
    for (int i = 0; i < 3; ++i) {
        char bytes[5] = {};
        std::memcpy(bytes, &codes[i], 4);
        EXPECT_STREQ(bytes, names[i]);
    }
}
