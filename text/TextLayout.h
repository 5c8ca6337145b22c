// The eight layout values of the text: how a setter's input becomes the value
// kept in VCurveData, and how a kept value is shown in the numeric fields.
#pragma once

#include "curves/VCurveData.h"

#include <cstdint>

enum class TextLayoutValue : std::int32_t {
    kSlide,
    kRevolve,
    kRotate,
    kTilt,
    kWidth,
    kHeight,
    kSpacing,
    kDepth
};

inline constexpr std::int32_t kTextLayoutValueCount = 8;

class TextLayout {
  public:
    // The value to keep after a setter call. With absolute false, value is a
    // tool's pixel delta and its step is added to present; with absolute
    // true, value is what the numeric field shows. The result is clamped to
    // the value's limits, or wrapped into -180..180 for the three angles. A
    // value that is not a finite number leaves present as it is.
    static float Apply(TextLayoutValue which, float present, float value, bool absolute);
    // What the numeric field shows for a kept value: width and height times
    // 5, spacing times 50, the others as they are.
    static float Shown(TextLayoutValue which, float stored);
    // The shown value as the whole number that goes out with the message.
    static std::int32_t ShownWhole(TextLayoutValue which, float stored);
    // The message broadcast when the value changes ('nMvM' for slide...).
    static std::uint32_t Message(TextLayoutValue which);

    // The field of the record that holds the value.
    static float& Field(VCurveData& data, TextLayoutValue which);
    static float Get(const VCurveData& data, TextLayoutValue which);
    // Apply, store into the record, and answer the shown value.
    static float Set(VCurveData& data, TextLayoutValue which, float value, bool absolute);

    // Angles in degrees brought into -180..180 by whole turns.
    static float WrapDegrees(float degrees);
};
