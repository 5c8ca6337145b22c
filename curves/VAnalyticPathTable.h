// The Path combo box's analytic entries: their defaults, the two slider rows
// of the path page and how a slider value becomes a shape parameter.
#pragma once

#include "curves/VCurveAnalytical.h"

#include <cstdint>
#include <memory>

inline constexpr std::int32_t kAnalyticPathCount = 8;

struct VPathSliderRow {
    const char* label;
    bool feedsFirst; // true: the path's first parameter, false: its second
    float min;       // parameter at slider 0
    float max;       // parameter at slider 100 (may be below min)
};

struct VAnalyticPathEntry {
    std::int32_t index; // combo position plus one
    const char* name;
    std::int32_t rowCount;
    VPathSliderRow rows[2];
    std::int32_t startSliders[2];
};

// The entry for index 1 to 8, or null.
const VAnalyticPathEntry* GetAnalyticPathEntry(std::int32_t index);

// min + value / 100 * (max - min), with value held to 0..100.
float SliderToParameter(const VPathSliderRow& row, std::int32_t value);

// A new path with the defaults of its entry; null for an unknown index or
// when memory runs out.
std::unique_ptr<VCurveAnalytical> MakeAnalyticPath(std::int32_t index);

// Stores one shape parameter (first or second) through the path's setter.
// False when the path has no such parameter.
bool SetPathParameter(VCurveAnalytical& curve, bool first, float value);

// Pushes a slider value of row 0 or 1 into the path made for index.
bool ApplyPathSlider(VCurveAnalytical& curve, std::int32_t index, std::int32_t row,
                     std::int32_t value);

// Selecting a path: the defaults, then both slider values, so the sliders win.
std::unique_ptr<VCurveAnalytical>
MakeAnalyticPathWithSliders(std::int32_t index, std::int32_t slider1, std::int32_t slider2);
