// The 3D library started for one test, and the members of a group.
#pragma once

#include "platform/qd3d/QD3D.h"

#include <gtest/gtest.h>

#include <vector>

namespace q3test {

// Starts the library for a test and checks at the end that every object the
// test made was given back.
class LibraryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(Q3Initialize(), kQ3Success);
        before = Q3Memory_CountObjects();
        Q3Error_Get(nullptr);
    }
    void TearDown() override {
        EXPECT_EQ(Q3Memory_CountObjects(), before) << "library objects leaked";
        Q3Error_Get(nullptr);
        Q3Exit();
    }
    TQ3Uns32 before = 0;
};

// The members of a group, in order, each a new reference the caller disposes of.
inline std::vector<TQ3Object> Members(TQ3GroupObject group) {
    std::vector<TQ3Object> out;
    TQ3GroupPosition at = nullptr;
    Q3Group_GetFirstPosition(group, &at);
    while (at) {
        TQ3Object member = nullptr;
        Q3Group_GetPositionObject(group, at, &member);
        out.push_back(member);
        Q3Group_GetNextPosition(group, &at);
    }
    return out;
}

inline void DisposeAll(std::vector<TQ3Object>& objects) {
    for (TQ3Object o : objects)
        if (o) Q3Object_Dispose(o);
    objects.clear();
}

} // namespace q3test
