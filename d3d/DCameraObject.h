// Camera wrappers: the view plane, orthographic and view-angle cameras.
#pragma once

#include "d3d/DObject.h"

class DCameraObject : public DShapeObject {
  public:
    ~DCameraObject() override;
    TQ3Object GetObject() const override { return object; }
    // The vertical angle in degrees.
    virtual float GetFieldOfView() const { return 45.0f; }
    virtual float GetAspect() const { return 1.0f; }
    virtual void SetFieldOfView(float /*degrees*/) {}
    // The window area the camera fills.
    virtual void SetPane(const TQ3Area& /*pane*/) {}
    // Brings the camera `scale` times closer to its point of interest.
    virtual void Zoom(float scale);
    // Moves location, point of interest and up vector through `m`.
    virtual void Rotate(const TQ3Matrix4x4& m);
    // Moves location and point of interest through `m`.
    virtual void Translate(const TQ3Matrix4x4& m);
    // Goes back to what Save kept.
    virtual void Restore();
    // Keeps the library's present camera data.
    virtual void Save();
    virtual void ScaleBy(float /*x*/, float /*y*/) {}
    virtual void SetScale(float /*x*/, float /*y*/) {}
    virtual void FitToPane(float /*width*/, float /*height*/) {}
    virtual void SetAspect(float /*aspect*/) {}

    // Places the camera.
    void SetPlacement(const TQ3Point3D& location, const TQ3Point3D& pointOfInterest,
                      const TQ3Vector3D& up);
    void SetRange(float hither, float yon);
    // The part of the camera's view that fills the pane, in frustum
    // coordinates: all of it is origin (-1, 1), width and height 2.
    void SetViewPort(const TQ3CameraViewPort& viewPort);
    const TQ3CameraData& GetData() const { return data; }

    std::int32_t kind = 0;
    TQ3CameraObject object = nullptr;
    TQ3CameraData data{{{0, 0, 30}, {0, 0, 0}, {0, 1, 0}}, {0.001f, 1000.0f}, {{-1, 1}, 2, 2}};
    TQ3CameraData saved = data;
    TQ3Matrix4x4 matrix{};

  protected:
    DCameraObject();
    void WritePlacement();
};

class DViewPlaneCamera : public DCameraObject {
  public:
    DViewPlaneCamera();
    TQ3ViewPlaneCameraData plane{};
};

class DOrthographicCamera : public DCameraObject {
  public:
    DOrthographicCamera();
    void SetPane(const TQ3Area& pane) override;
    void Zoom(float scale) override;
    void ScaleBy(float x, float y) override;
    void SetScale(float x, float y) override;
    void FitToPane(float width, float height) override;

    float left = -1, top = 1, right = 1, bottom = -1;
    float scaleX = 1, scaleY = 1;

  private:
    void WriteFrame();
};

class DAngleAspectCamera : public DCameraObject {
  public:
    DAngleAspectCamera();
    float GetFieldOfView() const override;
    float GetAspect() const override { return aspect; }
    // Stores the angle so that it spans the longer side of the pane.
    void SetFieldOfView(float degrees) override;
    void SetPane(const TQ3Area& pane) override;
    void SetAspect(float aspect) override;

    float fieldOfView = 0.7853982f; // radians
    float aspect = 1.0f;
};
