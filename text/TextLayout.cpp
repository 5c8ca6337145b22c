#include "text/TextLayout.h"

#include "foundation/Failures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kToolStep = 0.125f;

constexpr std::uint32_t Code(const char (&code)[5]) {
    return static_cast<std::uint32_t>(MakeFourCharCode(code));
}

struct Rule {
    float step;          // multiplies a tool's delta
    float absoluteScale; // multiplies a field's value
    float min;
    float max;
    bool wraps;
    float shownScale;
    std::uint32_t message;
};

const Rule& RuleOf(TextLayoutValue which) {
    static const Rule rules[kTextLayoutValueCount] = {
        {kToolStep, 1.0f, 0.0f, 100.0f, false, 1.0f, Code("nMvM")},
        {kToolStep * 0.5f, 1.0f, -180.0f, 180.0f, true, 1.0f, Code("nRvM")},
        {kToolStep * 0.5f, 1.0f, -180.0f, 180.0f, true, 1.0f, Code("nRtM")},
        {kToolStep * 0.5f, 1.0f, -180.0f, 180.0f, true, 1.0f, Code("nRlM")},
        {kToolStep, 1.0f / 5.0f, 0.01f, 20.0f, false, 5.0f, Code("nWtM")},
        {kToolStep, 1.0f / 5.0f, 0.01f, 20.0f, false, 5.0f, Code("nHtM")},
        {kToolStep / 20.0f, 1.0f / 50.0f, -2.0f, 2.0f, false, 50.0f, Code("nSpM")},
        {kToolStep, 1.0f, 0.0f, 100.0f, false, 1.0f, Code("nDpM")},
    };
    const auto index = static_cast<std::int32_t>(which);
    return rules[index >= 0 && index < kTextLayoutValueCount ? index : 0];
}

} // namespace

float TextLayout::WrapDegrees(float degrees) {
    if (!std::isfinite(degrees)) return 0.0f;
    // fmod keeps a huge angle from taking a turn at a time.
    float wrapped = std::fmod(degrees, 360.0f);
    if (wrapped > 180.0f) wrapped -= 360.0f;
    if (wrapped < -180.0f) wrapped += 360.0f;
    return wrapped;
}

float TextLayout::Apply(TextLayoutValue which, float present, float value, bool absolute) {
    const Rule& rule = RuleOf(which);
    if (!std::isfinite(value)) return present;
    // A present value from outside (a damaged record) is brought into range
    // as well, so that a step never starts from nonsense.
    const float base = std::isfinite(present) ? present : rule.min;
    const float next = absolute ? value * rule.absoluteScale : base + value * rule.step;
    if (!std::isfinite(next)) return present;
    if (rule.wraps) return WrapDegrees(next);
    return std::clamp(next, rule.min, rule.max);
}

float TextLayout::Shown(TextLayoutValue which, float stored) {
    return stored * RuleOf(which).shownScale;
}

std::int32_t TextLayout::ShownWhole(TextLayoutValue which, float stored) {
    const float shown = Shown(which, stored);
    if (!std::isfinite(shown)) return 0;
    // Every limit times its scale is far inside 32 bits.
    return static_cast<std::int32_t>(std::lround(std::clamp(shown, -1.0e6f, 1.0e6f)));
}

std::uint32_t TextLayout::Message(TextLayoutValue which) {
    return RuleOf(which).message;
}

namespace {

// The record's field for a value, for a const and a changeable record alike.
template <class Data> auto& FieldOf(Data& data, TextLayoutValue which) {
    switch (which) {
    case TextLayoutValue::kRevolve:
        return data.revolve;
    case TextLayoutValue::kRotate:
        return data.rotate;
    case TextLayoutValue::kTilt:
        return data.tilt;
    case TextLayoutValue::kWidth:
        return data.width;
    case TextLayoutValue::kHeight:
        return data.height;
    case TextLayoutValue::kSpacing:
        return data.spacing;
    case TextLayoutValue::kDepth:
        return data.depth;
    case TextLayoutValue::kSlide:
    default:
        return data.slide;
    }
}

} // namespace

float& TextLayout::Field(VCurveData& data, TextLayoutValue which) {
    return FieldOf(data, which);
}

float TextLayout::Get(const VCurveData& data, TextLayoutValue which) {
    return Shown(which, FieldOf(data, which));
}

float TextLayout::Set(VCurveData& data, TextLayoutValue which, float value, bool absolute) {
    float& field = Field(data, which);
    field = Apply(which, field, value, absolute);
    return Shown(which, field);
}
