// A custom path as it is kept between uses: the curve's homogeneous control
// points and knots, whether it is closed, its name, the start frame of its
// frame table, and which kind of curve model reopens it. The degree is not
// kept: it is knotCount - pointCount - 1.
#pragma once

#include "curves/KVector3D.h"
#include "foundation/KListEntry.h"

#include <cstdint>
#include <memory>

class VCustomPathData : public KListEntry {
  public:
    static constexpr std::size_t kNameSize = 256;

    VCustomPathData() = default;
    VCustomPathData(const VCustomPathData&) = delete;
    VCustomPathData& operator=(const VCustomPathData&) = delete;

    // Deep copy of the curve. False, with the record unchanged, unless
    // pointCount > 1, or when memory runs out. A knotCount below 1 leaves
    // knots null.
    bool SetCurve(std::int32_t pointCount, const KVector3D* points, std::int32_t knotCount,
                  const double* knots, std::uint8_t closed, const KVector3D& startTangent,
                  const KVector3D& startNormal);
    // The same seven values, not copied.
    void GetCurve(std::int32_t& pointCount, const KVector3D*& points, std::int32_t& knotCount,
                  const double*& knots, std::uint8_t& closed, KVector3D& startTangent,
                  KVector3D& startNormal) const;
    // Keeps at most kNameSize - 1 bytes.
    void SetName(const char* text);
    // A copy with its own arrays; null when memory runs out.
    std::unique_ptr<VCustomPathData> Clone() const;

    std::int32_t pointCount = 0;
    std::unique_ptr<KVector3D[]> points;
    std::int32_t knotCount = 0;
    std::unique_ptr<double[]> knots;
    std::uint8_t closed = 0;
    char name[kNameSize] = {};
    KVector3D startTangent;
    KVector3D startNormal;
    std::uint8_t isBezier = 0; // 1: reopens as Bezier pieces, 0: as one NURBS curve
};
