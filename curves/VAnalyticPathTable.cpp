#include "curves/VAnalyticPathTable.h"

#include "curves/VCurveAnalyticPaths.h"

#include <new>

namespace {
const VAnalyticPathEntry kEntries[kAnalyticPathCount] = {
    {1, "Line", 0, {{nullptr, true, 0, 0}, {nullptr, false, 0, 0}}, {0, 0}},
    {2, "Ellipse", 2, {{"Height:", false, 0, 10}, {"Width:", true, 0, 10}}, {40, 60}},
    {3, "Wave", 2, {{"Wavelength:", true, 0, 10}, {"Amplitude:", false, 0, 10}}, {30, 80}},
    {4, "Decaying Wave", 2, {{"Wavelength:", true, 0, 4}, {"Amplitude:", false, 1, 10}}, {45, 66}},
    {5, "Bump", 2, {{"Height:", true, 0, 10}, {"Width:", false, 0.2f, 0.01f}}, {40, 73}},
    {6, "Helix", 2, {{"Pitch:", true, 0, 5}, {"Radius:", false, 0, 10}}, {40, 40}},
    {7, "Spherical Helix", 2, {{"Pitch:", true, 1, 10}, {"Radius:", false, 1, 10}}, {11, 33}},
    {8, "Vortex", 2, {{"Pitch:", true, 0.1f, 0.5f}, {"Radius:", false, 0.02f, 0.2f}}, {12, 27}},
};

template <class T> bool TrySet(VCurveAnalytical& curve, bool first, float value) {
    T* c = dynamic_cast<T*>(&curve);
    if (!c) return false;
    if (first)
        c->SetFirst(value);
    else
        c->SetSecond(value);
    return true;
}
} // namespace

const VAnalyticPathEntry* GetAnalyticPathEntry(std::int32_t index) {
    if (index < 1 || index > kAnalyticPathCount) return nullptr;
    return &kEntries[index - 1];
}

float SliderToParameter(const VPathSliderRow& row, std::int32_t value) {
    if (value < 0) value = 0;
    if (value > 100) value = 100;
    return row.min + float(value) / 100.0f * (row.max - row.min);
}

std::unique_ptr<VCurveAnalytical> MakeAnalyticPath(std::int32_t index) {
    VCurveAnalytical* c = nullptr;
    switch (index) {
    case 1:
        c = new (std::nothrow) VCurveAxis();
        break;
    case 2:
        c = new (std::nothrow) VCurveEllipse();
        break;
    case 3:
        c = new (std::nothrow) VCurveSinCurve();
        break;
    case 4:
        c = new (std::nothrow) VCurveDecayingSin();
        break;
    case 5:
        c = new (std::nothrow) VCurveNormal();
        break;
    case 6:
        c = new (std::nothrow) VCurveHelix();
        break;
    case 7:
        c = new (std::nothrow) VCurveSphericalHelix();
        break;
    case 8:
        c = new (std::nothrow) VCurveVortex();
        break;
    default:
        break;
    }
    return std::unique_ptr<VCurveAnalytical>(c);
}

bool SetPathParameter(VCurveAnalytical& curve, bool first, float value) {
    return TrySet<VCurveEllipse>(curve, first, value) ||
           TrySet<VCurveSinCurve>(curve, first, value) ||
           TrySet<VCurveDecayingSin>(curve, first, value) ||
           TrySet<VCurveNormal>(curve, first, value) || TrySet<VCurveHelix>(curve, first, value) ||
           TrySet<VCurveSphericalHelix>(curve, first, value) ||
           TrySet<VCurveVortex>(curve, first, value);
}

bool ApplyPathSlider(VCurveAnalytical& curve, std::int32_t index, std::int32_t row,
                     std::int32_t value) {
    const VAnalyticPathEntry* e = GetAnalyticPathEntry(index);
    if (!e || row < 0 || row >= e->rowCount) return false;
    const VPathSliderRow& r = e->rows[row];
    return SetPathParameter(curve, r.feedsFirst, SliderToParameter(r, value));
}

std::unique_ptr<VCurveAnalytical>
MakeAnalyticPathWithSliders(std::int32_t index, std::int32_t slider1, std::int32_t slider2) {
    auto c = MakeAnalyticPath(index);
    if (!c) return c;
    ApplyPathSlider(*c, index, 0, slider1);
    ApplyPathSlider(*c, index, 1, slider2);
    return c;
}
