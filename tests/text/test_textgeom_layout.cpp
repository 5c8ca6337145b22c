// The eight layout values: steps of the tools, values of the fields, limits,
// wrapping of the angles and what the fields show.

#include "text/TextLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

namespace {

using V = TextLayoutValue;

constexpr V kAll[] = {V::kSlide, V::kRevolve, V::kRotate,  V::kTilt,
                      V::kWidth, V::kHeight,  V::kSpacing, V::kDepth};

} // namespace

TEST(TextLayoutAngles, WrapIntoHalfTurnsEitherWay) {
    for (V angle : {V::kRevolve, V::kRotate, V::kTilt}) {
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, 190, true), -170);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, -190, true), 170);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, 725, true), 5);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, 180, true), 180);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 0, -180, true), -180);
        // A tool step is half of an eighth of a degree per pixel: 200
        // pixels from 170 pass the half turn.
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, 170, 200, false), -177.5f);
        EXPECT_FLOAT_EQ(TextLayout::Apply(angle, -170, -200, false), 177.5f);
        // Angles far out come back at once and in range.
        const float far = TextLayout::Apply(angle, 0, 3.6e9f + 90, true);
        EXPECT_GE(far, -180);
        EXPECT_LE(far, 180);
    }
    VCurveData data(nullptr);
    EXPECT_FLOAT_EQ(TextLayout::Set(data, V::kRevolve, 190, true), -170);
    EXPECT_FLOAT_EQ(data.revolve, -170);
    EXPECT_FLOAT_EQ(TextLayout::Get(data, V::kRevolve), -170);
    EXPECT_EQ(TextLayout::ShownWhole(V::kRevolve, data.revolve), -170);
}

TEST(TextLayoutScales, FieldsShowFiveTimesTheScaleAndClamp) {
    for (V scale : {V::kWidth, V::kHeight}) {
        VCurveData data(nullptr);
        float& field = TextLayout::Field(data, scale);
        EXPECT_FLOAT_EQ(TextLayout::Get(data, scale), 10) << "a scale of 2 shows as 10";
        EXPECT_FLOAT_EQ(TextLayout::Set(data, scale, 50, true), 50);
        EXPECT_FLOAT_EQ(field, 10);
        // An eighth per pixel from the tools.
        TextLayout::Set(data, scale, -8, false);
        EXPECT_FLOAT_EQ(field, 9);
        TextLayout::Set(data, scale, 0, true);
        EXPECT_FLOAT_EQ(field, 0.01f);
        EXPECT_EQ(TextLayout::ShownWhole(scale, field), 0);
        TextLayout::Set(data, scale, -1000, false);
        EXPECT_FLOAT_EQ(field, 0.01f);
        TextLayout::Set(data, scale, 1000, true);
        EXPECT_FLOAT_EQ(field, 20);
        EXPECT_EQ(TextLayout::ShownWhole(scale, field), 100);
    }
}

TEST(TextLayoutSpacing, FiftiethsInTheFieldsAndSlowSteps) {
    VCurveData data(nullptr);
    EXPECT_FLOAT_EQ(TextLayout::Set(data, V::kSpacing, 25, true), 25);
    EXPECT_FLOAT_EQ(data.spacing, 0.5f);
    // 160 pixels of a tool move the spacing by one unit.
    TextLayout::Set(data, V::kSpacing, 160, false);
    EXPECT_FLOAT_EQ(data.spacing, 1.5f);
    TextLayout::Set(data, V::kSpacing, 160, false);
    EXPECT_FLOAT_EQ(data.spacing, 2.0f);
    TextLayout::Set(data, V::kSpacing, -500, true);
    EXPECT_FLOAT_EQ(data.spacing, -2.0f);
    EXPECT_EQ(TextLayout::ShownWhole(V::kSpacing, data.spacing), -100);
}

TEST(TextLayoutSlideAndDepth, PercentagesHeldToTheirRange) {
    for (V value : {V::kSlide, V::kDepth}) {
        VCurveData data(nullptr);
        float& field = TextLayout::Field(data, value);
        TextLayout::Set(data, value, 30, true);
        EXPECT_FLOAT_EQ(field, 30);
        TextLayout::Set(data, value, 4, false);
        EXPECT_FLOAT_EQ(field, 30.5f);
        TextLayout::Set(data, value, 1000, false);
        EXPECT_FLOAT_EQ(field, 100);
        TextLayout::Set(data, value, -1, true);
        EXPECT_FLOAT_EQ(field, 0);
        EXPECT_EQ(TextLayout::ShownWhole(value, 30.5f), 31);
    }
}

TEST(TextLayoutInput, NumbersThatAreNotFiniteChangeNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    for (V value : kAll) {
        VCurveData data(nullptr);
        const float before = TextLayout::Field(data, value);
        TextLayout::Set(data, value, nan, true);
        TextLayout::Set(data, value, inf, false);
        TextLayout::Set(data, value, -inf, true);
        EXPECT_EQ(TextLayout::Field(data, value), before);
        // A damaged present value is replaced rather than carried on.
        TextLayout::Field(data, value) = nan;
        TextLayout::Set(data, value, 1, false);
        EXPECT_TRUE(std::isfinite(TextLayout::Field(data, value)));
    }
}

TEST(TextLayoutMessages, EachValueHasItsOwnMessageAndField) {
    std::set<std::uint32_t> messages;
    std::set<const float*> fields;
    VCurveData data(nullptr);
    for (V value : kAll) {
        messages.insert(TextLayout::Message(value));
        fields.insert(&TextLayout::Field(data, value));
    }
    EXPECT_EQ(messages.size(), 8u);
    EXPECT_EQ(fields.size(), 8u);
    EXPECT_EQ(TextLayout::Message(V::kRevolve), 0x6E52764Du); // "nRvM"
}
