// Light wrappers: ambient, directional, point and spot.
#pragma once

#include "d3d/DObject.h"

class DLightObject : public DShapeObject {
  public:
    ~DLightObject() override;
    TQ3Object GetObject() const override { return object; }
    // Where the light stands; only lights with a place act on it.
    virtual void SetLocation(const TQ3Point3D& point);
    // Where the light points; only lights with a direction act on it.
    virtual void SetDirection(const TQ3Vector3D& vector);

    void SetBrightness(float value);
    void SetColor(float red, float green, float blue);
    TQ3ColorRGB GetColor() const { return color; }

    TQ3Boolean isOn = kQ3True;
    float brightness = 1.0f;
    TQ3ColorRGB color{1.0f, 1.0f, 1.0f};
    TQ3LightObject object = nullptr;

  protected:
    DLightObject() = default;
    TQ3LightData LightData() const { return {isOn, brightness, color}; }
};

class DPointLight : public DLightObject {
  public:
    explicit DPointLight(const TQ3Point3D& location);
    void SetLocation(const TQ3Point3D& point) override;
};

class DDirectionalLight : public DLightObject {
  public:
    // With no direction the light points along (10, 0, 10).
    DDirectionalLight(const TQ3Vector3D* direction, float brightness);
    void SetDirection(const TQ3Vector3D& vector) override;
};

class DAmbientLight : public DLightObject {
  public:
    explicit DAmbientLight(float brightness);
};

class DSpotLight : public DLightObject {
  public:
    DSpotLight();
    void SetLocation(const TQ3Point3D& point) override;
    void SetDirection(const TQ3Vector3D& vector) override;
    // The library takes half angles: |a / 2|.
    void SetHotAngle(float angle);
    void SetOuterAngle(float angle);
    void SetFallOff(TQ3FallOffType fallOff);
};
