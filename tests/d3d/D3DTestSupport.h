// A fixture that starts the 3D library with this system's elements and
// checks at the end that every library object made in a test was given back.
#pragma once

#include "d3d/DCustomElements.h"
#include "platform/qd3d/QD3D.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

class D3DTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Q3Initialize();
        RegisterCustomElements();
        before = Q3Memory_CountObjects();
    }
    void TearDown() override {
        EXPECT_EQ(Q3Memory_CountObjects(), before) << "library objects leaked";
        UnregisterCustomElements();
        Q3Exit();
    }
    std::uint32_t before = 0;
};

// The code an action threw, or 0 if it threw nothing.
inline std::int32_t ThrownCode(const std::function<void()>& action) {
    try {
        action();
    } catch (std::int32_t code) {
        return code;
    }
    return 0;
}

// The members of a group, in order, as new references the caller disposes of.
inline std::vector<TQ3Object> Members(TQ3GroupObject group) {
    std::vector<TQ3Object> out;
    TQ3GroupPosition p = nullptr;
    Q3Group_GetFirstPosition(group, &p);
    while (p) {
        TQ3Object o = nullptr;
        Q3Group_GetPositionObject(group, p, &o);
        out.push_back(o);
        Q3Group_GetNextPosition(group, &p);
    }
    return out;
}

inline void DisposeAll(std::vector<TQ3Object>& objects) {
    for (TQ3Object o : objects)
        if (o) Q3Object_Dispose(o);
    objects.clear();
}
