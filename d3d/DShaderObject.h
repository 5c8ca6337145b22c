// Illumination shader wrappers.
#pragma once

#include "d3d/DObject.h"

class DViewerObject;

class DShaderObject : public DShapeObject {
  public:
    ~DShaderObject() override;
    TQ3Object GetObject() const override { return object; }
    void Submit(const DViewerObject& viewer) const;
    void SubmitTo(TQ3ViewObject view) const;

    TQ3ShaderObject object = nullptr;

  protected:
    DShaderObject() = default;
};

class DLambertIllumination : public DShaderObject {
  public:
    DLambertIllumination();
};

class DNullIllumination : public DShaderObject {
  public:
    DNullIllumination();
};

class DPhongIllumination : public DShaderObject {
  public:
    DPhongIllumination();
};
