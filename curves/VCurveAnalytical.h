// Paths given by a formula in one parameter t (degrees), sampled on a fixed
// grid of t. The chord polygon of the grid is the path: its length and the
// arc-length search both walk the same grid.
#pragma once

#include "curves/VCurve.h"

#include <cstdint>

class VCurveAnalytical : public VCurve {
  public:
    // The grid never has more samples than this, whatever the range and step.
    static constexpr std::int32_t kMaxSamples = 1 << 20;
    // Samples handed to the conversion into a custom path.
    static constexpr std::int32_t kConversionSamples = 20;

    VCurveAnalytical(float paramMin, float paramMax, float paramStep);

    bool GetPointAt(float s, KVector3D& point) override;
    float GetLength() const override { return length; }
    bool IsClosed() const override { return closed != 0; }
    void Recalculate() override;
    bool GetTangentAt(float s, KVector3D& tangent) override;

    // Position at parameter t (w = 1).
    virtual void Evaluate(float t, KVector3D& point) const = 0;

    // Point and parameter at arc length s; false, with nothing written,
    // unless 0 <= s < length.
    bool FindParameterAt(float s, KVector3D& point, float& t) const;
    // 20 points over the parameter range and the end frames, for conversion
    // into a custom path. count receives 20.
    void SampleForConversion(std::int32_t& count, KVector3D* points, KVector3D& startTangent,
                             KVector3D& endTangent, KVector3D& startNormal);
    // The grid samples in order, for the drawn polyline of the path. Writes
    // at most capacity points and returns the number of grid samples.
    std::int32_t GetGridPoints(KVector3D* out, std::int32_t capacity) const;

    float paramMin;
    float paramMax;
    float paramStep;
    std::uint8_t closed = 0;
    std::int32_t sampleCount = 0;

  protected:
    // FindParameterAt, with s at or past the end of an open path taken as
    // the last grid sample and a negative s as the first.
    bool Locate(float s, KVector3D& point, float& t) const;

  private:
    // Calls visit(t, point) for each grid sample; visit returns false to stop.
    template <class Visit> void WalkGrid(Visit visit) const;
};

// How the path is drawn: the grid polygon (GetGridPoints) without
// illumination in this light green (red, green, blue).
inline constexpr float kPathColour[3] = {12000.0f / 65535.0f, 1.0f, 12000.0f / 65535.0f};

// Degrees to radians with pi as a 32-bit float.
inline float DegreesToRadians(float t) {
    return t * 3.1415927f / 180.0f;
}

class VCurveAnalytic2D : public VCurveAnalytical {
  public:
    using VCurveAnalytical::VCurveAnalytical;
    // Tangent from a half-step chord in the plane; normal its left
    // perpendicular; binormal +Z.
    bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                    KVector3D& binormal) override;
};

class VCurveAnalytic3D : public VCurveAnalytical {
  public:
    using VCurveAnalytical::VCurveAnalytical;
    // Curvature frame from three nearby points, with a reference axis on
    // straight stretches.
    bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                    KVector3D& binormal) override;
};
