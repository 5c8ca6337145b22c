// The path abstraction: for an arc length s measured from the start of the
// path, a position and an orthonormal frame (tangent, normal, binormal).
// Text layout asks only GetLength, IsClosed and GetFrame.
#pragma once

#include "curves/KVector3D.h"

#include <cstdint>
#include <memory>

class VCurveFrameTable;

// Frame modes: frames computed on the spot, or read from the frame table.
enum : std::int32_t { kFrameModeDirect = 1, kFrameModeTable = 2 };

class VCurve {
  public:
    VCurve();
    virtual ~VCurve();

    VCurve(const VCurve&) = delete;
    VCurve& operator=(const VCurve&) = delete;

    // Position at arc length s; an s off the path leaves point unwritten.
    virtual bool GetPointAt(float s, KVector3D& point) = 0;
    // The drawable form of the path is made by the 3D object layer from
    // what the concrete classes expose (see VCurveAnalytical::GetGridPoints);
    // this library has no display group to put it into.
    virtual float GetLength() const = 0;
    virtual bool IsClosed() const = 0;
    // Recomputes length after a change of shape.
    virtual void Recalculate() = 0;
    // Frame computed at s without the frame table.
    virtual bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                            KVector3D& binormal) = 0;
    virtual bool GetTangentAt(float s, KVector3D& tangent) = 0;

    // Mode 2 builds a new table seeded from the direct frame at s = 0.
    void SetFrameMode(std::int32_t mode);
    // Mode 2 with a table seeded from the given start frame.
    void SetStartFrame(const KVector3D& tangent, const KVector3D& normal);
    // Recalculate, and in mode 2 renew the table keeping the start twist.
    void Rebuild();
    // The frame text layout reads for each letter. False for a path shorter
    // than 0.00001 and for an s off an open path; a closed path wraps.
    bool GetFrame(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                  KVector3D& binormal);
    // Frame at s = 0: direct in mode 1, from the table in mode 2.
    bool GetStartFrame(KVector3D& tangent, KVector3D& normal);

    float length = 0.0f;
    std::int32_t frameMode = kFrameModeDirect;
    std::unique_ptr<VCurveFrameTable> frameTable;

  private:
    void MakeTable(const KVector3D& tangent, const KVector3D& normal);
};
