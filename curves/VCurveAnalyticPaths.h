// The eight analytic paths of the Path combo box.
#pragma once

#include "curves/VCurveAnalytical.h"

// "Line": (t, 0, 0).
class VCurveAxis : public VCurveAnalytic2D {
  public:
    VCurveAxis(float paramMin = -24.0f, float paramMax = 24.0f, float paramStep = 24.0f);
    void Evaluate(float t, KVector3D& point) const override;
};

// "Ellipse": (a cos t, b sin t, 0); the one closed path.
class VCurveEllipse : public VCurveAnalytic2D {
  public:
    VCurveEllipse(float first = 6.0f, float second = 4.0f, float paramMin = 90.0f,
                  float paramMax = 450.0f, float paramStep = 2.0f);
    void Evaluate(float t, KVector3D& point) const override;
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;
};

// "Wave": (b t / 360, a cos t, 0), a crest at t = 0.
class VCurveSinCurve : public VCurveAnalytic2D {
  public:
    VCurveSinCurve(float first = 3.0f, float second = 8.0f, float paramMin = -540.0f,
                   float paramMax = 540.0f, float paramStep = 10.0f);
    void Evaluate(float t, KVector3D& point) const override;
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;
};

// "Decaying Wave": (b t / 360, a sin t exp(-decay t), 0), t in degrees in
// the exponent as well.
class VCurveDecayingSin : public VCurveAnalytic2D {
  public:
    VCurveDecayingSin(float first = 1.8f, float second = 7.0f, float decay = 0.003f,
                      float paramMin = -540.0f, float paramMax = 900.0f, float paramStep = 10.0f);
    void Evaluate(float t, KVector3D& point) const override;
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;
    float decay;
};

// "Bump": (t, a exp(-b t t), 0).
class VCurveNormal : public VCurveAnalytic2D {
  public:
    VCurveNormal(float first = 4.0f, float second = 0.06f, float paramMin = -20.0f,
                 float paramMax = 20.0f, float paramStep = 0.2f);
    void Evaluate(float t, KVector3D& point) const override;
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;
};

// "Helix": (b cos t, a t / 360, -b sin t); letters stand up along the axis.
class VCurveHelix : public VCurveAnalytic3D {
  public:
    VCurveHelix(float first = 2.0f, float second = 4.0f, float paramMin = -720.0f,
                float paramMax = 720.0f, float paramStep = 10.0f);
    void Evaluate(float t, KVector3D& point) const override;
    bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                    KVector3D& binormal) override;
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;
};

// "Spherical Helix": a helix wound on a sphere of radius b, rising a per turn.
class VCurveSphericalHelix : public VCurveAnalytic3D {
  public:
    VCurveSphericalHelix(float first = 2.0f, float second = 4.0f, float paramMin = -718.0f,
                         float paramMax = 718.0f, float paramStep = 8.0f);
    void Evaluate(float t, KVector3D& point) const override;
    bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                    KVector3D& binormal) override;
    // Both setters first recompute the range to stop 2 degrees short of the poles.
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;

  private:
    void ComputeRange();
};

// "Vortex": a rising logarithmic spiral, r = exp(theta b), y = a theta.
class VCurveVortex : public VCurveAnalytic3D {
  public:
    VCurveVortex(float first = 0.15f, float second = 0.07f, float paramMin = -360.0f,
                 float paramMax = 1440.0f, float paramStep = 10.0f);
    void Evaluate(float t, KVector3D& point) const override;
    bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                    KVector3D& binormal) override;
    void SetFirst(float value);
    void SetSecond(float value);
    float first;
    float second;
};
