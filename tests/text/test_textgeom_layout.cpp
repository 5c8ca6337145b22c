// The eight layout values: tool steps, field values, limits, wrapping of the
// angles and what the fields show.

#include "text/TextLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

using V = TextLayoutValue;

TEST(TextLayout, AnglesWrapIntoHalfTurnsEitherWay) {
    for (V angle : {V::kRevolve, V::kRotate, V::kTilt}) {
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, 190, true), -170);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, -190, true), 170);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, 725, true), 5);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, 180, true), 180);
        // 200 pixels at a sixteenth of a degree each pass the half turn.
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 170, 200, false), -177.5f);
        const float far = TextLayout::Apply(angle, 0, 3.6e9f + 90, true);
        EXPECT_TRUE(far >= -180 && far <= 180);
    }
    VCurveData data(nullptr);
    EXPECT_FLOAT_EQ(TextLayout::Set(data, V::kRevolve, 190, true), -170);
    EXPECT_FLOAT_EQ(data.revolve, -170);
    EXPECT_EQ(TextLayout::ShownWhole(V::kRevolve, data.revolve), -170);
}

TEST(TextLayout, ScalesSpacingSlideAndDepthAreHeldToTheirLimits) {
    struct Case {
        V value;
        float absolute, stored, toolDelta, afterTool, low, high;
    };
    // Width and height show five times the scale, spacing fifty times;
    // spacing steps a twentieth as fast as the others.
    const Case cases[] = {{V::kWidth, 50, 10, -8, 9, 0.01f, 20},
                          {V::kHeight, 50, 10, 8, 11, 0.01f, 20},
                          {V::kSpacing, 25, 0.5f, 160, 1.5f, -2, 2},
                          {V::kSlide, 30, 30, 4, 30.5f, 0, 100},
                          {V::kDepth, 30, 30, -4, 29.5f, 0, 100}};
    for (const Case& c : cases) {
        VCurveData data(nullptr);
        float& field = TextLayout::Field(data, c.value);
        EXPECT_FLOAT_EQ(TextLayout::Set(data, c.value, c.absolute, true), c.absolute);
        EXPECT_FLOAT_EQ(field, c.stored);
        TextLayout::Set(data, c.value, c.toolDelta, false);
        EXPECT_FLOAT_EQ(field, c.afterTool);
        TextLayout::Set(data, c.value, -1e6f, false);
        EXPECT_FLOAT_EQ(field, c.low);
        TextLayout::Set(data, c.value, 1e6f, true);
        EXPECT_FLOAT_EQ(field, c.high);
        EXPECT_FLOAT_EQ(TextLayout::Get(data, c.value), TextLayout::Shown(c.value, c.high));
    }
    EXPECT_EQ(TextLayout::ShownWhole(V::kWidth, 0.01f), 0);
    EXPECT_EQ(TextLayout::ShownWhole(V::kSpacing, -2), -100);
}

TEST(TextLayout, NonFiniteInputChangesNothingAndEachValueHasItsOwnMessage) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    std::set<std::uint32_t> messages;
    for (int i = 0; i < kTextLayoutValueCount; ++i) {
        const V value = static_cast<V>(i);
        messages.insert(TextLayout::Message(value));
        VCurveData data(nullptr);
        const float before = TextLayout::Field(data, value);
        TextLayout::Set(data, value, nan, true);
        TextLayout::Set(data, value, inf, false);
        EXPECT_EQ(TextLayout::Field(data, value), before);
        // A damaged present value is replaced rather than carried on.
        TextLayout::Field(data, value) = nan;
        TextLayout::Set(data, value, 1, false);
        EXPECT_TRUE(std::isfinite(TextLayout::Field(data, value)));
    }
    EXPECT_EQ(messages.size(), 8u);
    EXPECT_EQ(TextLayout::Message(V::kRevolve), 0x6E52764Du); // "nRvM"
}
