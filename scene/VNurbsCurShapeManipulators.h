// The shape tools: a rectangle dragged in the view becomes an ellipse, a
// polygon or a star in the plane that faces the camera. While the mouse is
// down the shape shows as one NURBS curve; at the release it becomes a
// closed Bezier path, and the window goes on to the drag tool.
#pragma once

#include "curves/VCNurbsCurve.h"
#include "scene/K3DManipulator.h"
#include "scene/VNurbsCurveManipulator.h"

#include <memory>

class KTool;
class VCNURBSCurveModel;

// The number of sides of the polygon tool and of points of the star tool,
// kept for the process: 4 and 5 at the start, always within 3 to 20.
inline constexpr std::int32_t kMinShapeCount = 3;
inline constexpr std::int32_t kMaxShapeCount = 20;
std::int32_t GetPolygonSides();
void SetPolygonSides(std::int32_t sides);
std::int32_t GetStarPoints();
void SetStarPoints(std::int32_t points);
// The count Polygon Options shows for a tool: the sides of the polygon
// tool, the points of the star tool, 0 for any other.
std::int32_t GetShapeCount(const KTool* tool);

// The mouse logic of the three shapes: the dragged rectangle in the scene.
class k3dNurbsCurPrimManipulator : public K3DManipulator {
  public:
    void Press(const MouseEvent& event) override;
    // Both sides of the rectangle must be above 3 pixels; Shift makes it a
    // square of the shorter side.
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    // The shape's curve in the rectangle (center, uAxis, vAxis, width,
    // height); null when it cannot be made.
    virtual std::unique_ptr<VCNurbsCurve> BuildShape(const Point& /*start*/,
                                                     const Point& /*current*/) {
        return nullptr;
    }
    // The curve of each drag step, and the end of the gesture.
    virtual void ShowPreview(std::unique_ptr<VCNurbsCurve> /*curve*/) {}
    virtual void FinishShape() {}

    Point startPixel{0, 0};
    Point currentPixel{0, 0};
    bool constrain = false;
    double width = 0.0;
    double height = 0.0;
    KVector3D uAxis{1, 0, 0, 0};
    KVector3D vAxis{0, 1, 0, 0};
    KVector3D center{0, 0, 0, 1};
    bool pressed = false;
};

// An ellipse in the rectangle.
class k3DNurbsCurOvalManipulator : public k3dNurbsCurPrimManipulator {
  public:
    std::unique_ptr<VCNurbsCurve> BuildShape(const Point& start, const Point& current) override;
};

// A regular polygon of GetPolygonSides() sides in the rectangle; four sides
// fill it.
class k3DNurbsCurNGonManipulator : public k3dNurbsCurPrimManipulator {
  public:
    std::unique_ptr<VCNurbsCurve> BuildShape(const Point& start, const Point& current) override;
};

// A star of GetStarPoints() points; its inner points lie at 0.32 of the
// outer size.
class k3DNurbsCurStarManipulator : public k3dNurbsCurPrimManipulator {
  public:
    std::unique_ptr<VCNurbsCurve> BuildShape(const Point& start, const Point& current) override;
};

// The shape tool on the view: the preview model, the finished path, and the
// message that the shape is done.
template <class Shape> class VNurbsCurShapeTool : public Shape, public VNurbsCurveManipulator {
  public:
    explicit VNurbsCurShapeTool(int cursorId) : cursor(cursorId) {}
    bool Activate(WView* view) override;
    bool Deactivate(WView* view) override;
    // Only a gesture that began with a press of this tool is followed.
    bool WantsDrag() override { return this->pressed; }
    // The end of the gesture, then the message rstA from the view, whether
    // a shape came out or not.
    bool Release(const MouseEvent& event) override;
    void ShowPreview(std::unique_ptr<VCNurbsCurve> curve) override;
    void FinishShape() override;

    KCursor cursor;
    VZarbesoView* zview = nullptr;
    VCNURBSCurveModel* preview = nullptr;

  private:
    void DropPreview();
};

class VNurbsCurOvalManipulator : public VNurbsCurShapeTool<k3DNurbsCurOvalManipulator> {
  public:
    explicit VNurbsCurOvalManipulator(int cursorId = 10010) : VNurbsCurShapeTool(cursorId) {}
};

class VNurbsCurNGonManipulator : public VNurbsCurShapeTool<k3DNurbsCurNGonManipulator> {
  public:
    explicit VNurbsCurNGonManipulator(int cursorId = 10008) : VNurbsCurShapeTool(cursorId) {}
};

class VNurbsCurStarManipulator : public VNurbsCurShapeTool<k3DNurbsCurStarManipulator> {
  public:
    explicit VNurbsCurStarManipulator(int cursorId = 10009) : VNurbsCurShapeTool(cursorId) {}
};
