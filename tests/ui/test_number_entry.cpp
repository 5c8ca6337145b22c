// What a typed or spun number does to a numeric field.
#include "ui/controls/NumberEntry.h"

#include <gtest/gtest.h>

TEST(NumberEntry, TypedTextIsAppliedTrimmedClearedOrRepaired) {
    EXPECT_EQ(CheckNumberEntry("42", 0, 100, true).action, EntryAction::Apply);
    EXPECT_EQ(CheckNumberEntry("42", 0, 100, true).value, 42);
    EXPECT_EQ(CheckNumberEntry("150", 0, 100, true).action, EntryAction::Repair);
    EXPECT_EQ(CheckNumberEntry("", 0, 100, true).action, EntryAction::Clear);
    EXPECT_EQ(CheckNumberEntry("x1", 0, 100, true).action, EntryAction::Clear);
    const EntryResult trailing = CheckNumberEntry("12a", 0, 100, true);
    EXPECT_EQ(trailing.action, EntryAction::Trim);
    EXPECT_EQ(trailing.value, 12);
    // Blanks count as the lower bound when it is above 0, else as 0.
    EXPECT_EQ(CheckNumberEntry("  ", 25, 175, true).value, 25);
    EXPECT_EQ(CheckNumberEntry("  ", -100, 100, false).value, 0);
    // A lone minus sign is 0, and stands while typing.
    EXPECT_EQ(CheckNumberEntry("-", -180, 180, true).action, EntryAction::Apply);
    EXPECT_EQ(CheckNumberEntry("-", -180, 180, true).value, 0);
    EXPECT_FALSE(NeedsRewrite("-", 0));
    EXPECT_TRUE(NeedsRewrite("007", 7));
    // The start of a number that will be in range stands while typing only.
    EXPECT_EQ(CheckNumberEntry("4", 25, 175, true).action, EntryAction::Stand);
    EXPECT_EQ(CheckNumberEntry("4", 25, 175, false).action, EntryAction::Repair);
    EXPECT_EQ(CheckNumberEntry("99999999999", 0, 100, true).action, EntryAction::Repair);
}

TEST(NumberEntry, SpinsWrapOrStopAtTheEnds) {
    EXPECT_EQ(SpinStep(180, 1, -180, 180, true), -180);
    EXPECT_EQ(SpinStep(-180, -1, -180, 180, true), 180);
    EXPECT_EQ(SpinStep(100, 1, 0, 100, false), 100);
    EXPECT_EQ(SpinStep(0, -1, 0, 100, false), 0);
    EXPECT_EQ(SpinStep(359, 1, 0, 359, true), 0);
}
