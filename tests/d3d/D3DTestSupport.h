// A fixture that starts the 3D library with this system's elements and
// checks at the end that every library object made in a test was given back.
#pragma once

#include "d3d/DCustomElements.h"
#include "tests/qd3d/Q3LibraryTest.h"

#include <cstdint>
#include <functional>

// The library's starts nest: the outer one holds the elements, the inner one
// counts the test's objects.
class D3DTest : public q3test::LibraryTest {
  protected:
    void SetUp() override {
        ASSERT_EQ(Q3Initialize(), kQ3Success);
        RegisterCustomElements();
        LibraryTest::SetUp();
    }
    void TearDown() override {
        LibraryTest::TearDown();
        UnregisterCustomElements();
        Q3Exit();
    }
};

using q3test::DisposeAll;
using q3test::Members;

// The code an action threw, or 0 if it threw nothing.
inline std::int32_t ThrownCode(const std::function<void()>& action) {
    try {
        action();
    } catch (std::int32_t code) {
        return code;
    }
    return 0;
}
