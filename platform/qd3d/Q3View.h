// The view: its camera, lights, draw context and renderer, the state of a
// pass (transforms, styles, inherited attributes, the path of groups) and
// the hand-over of finished primitives to the renderer, the pick or the
// bounds.
#pragma once

#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3Mesh.h"

namespace q3 {

class SetObject;
class PickObject;
class RendererObject;

// What the groups have set for the attributes of what follows.
struct AttributeState {
    TQ3ColorRGB diffuse{kQ3DefaultDiffuseColor, kQ3DefaultDiffuseColor, kQ3DefaultDiffuseColor};
    TQ3ColorRGB transparency{1, 1, 1};
    TQ3ColorRGB specular{kQ3DefaultSpecularColor, kQ3DefaultSpecularColor, kQ3DefaultSpecularColor};
    float specularControl = kQ3DefaultSpecularControl;
    float ambient = kQ3DefaultAmbientCoefficient;
    TQ3Switch highlight = kQ3Off;
    TQ3Object surfaceShader = nullptr; // not held: lives while its set lives
};

struct ViewState {
    TQ3Matrix4x4 localToWorld;
    AttributeState attributes;
    TQ3XDrawState draw;
    const SetObject* highlightSet = nullptr;
};

enum class Mode { None, Rendering, Picking, BoundingBox, BoundingSphere };

class View : public OpaqueTQ3Object {
  public:
    View();
    ~View() override;

    TQ3Object camera = nullptr;
    TQ3Object lightGroup = nullptr;
    TQ3Object drawContext = nullptr;
    TQ3Object renderer = nullptr;
    TQ3ViewIdleProgressMethod idleMethod = nullptr;
    const void* idleData = nullptr;

    // ---- passes
    TQ3Status start(Mode mode);
    // Ends one traversal; answers the status of the pass.
    TQ3ViewStatus endTraversal(Mode mode);
    void abandon();
    void detachPick();
    Mode mode = Mode::None;
    bool inPass() const { return mode != Mode::None; }
    bool checkInPass(); // posts an error outside a pass

    // ---- state
    ViewState& state() { return stack.back(); }
    void pushState();
    void popState();
    void applyMatrix(const TQ3Matrix4x4& m); // localToWorld := m * localToWorld
    void submitAttributeSet(const SetObject* set);

    // ---- groups: the path of positions for hits
    void enterGroup(TQ3Object group, TQ3GroupPosition position);
    void setPathPosition(TQ3GroupPosition position);
    void leaveGroup();
    bool pickingSkips(TQ3Uns32 groupState) const;

    // ---- primitives. geometryAttributes may be null.
    TQ3Status drawMesh(TQ3Object geometry, const Mesh& mesh, const SetObject* geometryAttributes);
    TQ3Status drawMarker(TQ3Object geometry, const TQ3Point3D& location, TQ3Int32 xOffset,
                         TQ3Int32 yOffset, const TQ3Bitmap& bitmap,
                         const SetObject* geometryAttributes);

    // Pass matrices (valid in a pass).
    TQ3Matrix4x4 worldToView, viewToFrustum, frustumToWindow, worldToWindow;
    TQ3Area window{};
    TQ3ObjectType cameraType = 0;
    // Window size in pixels, for screen-space subdivision.
    float windowScale() const;
    // The largest scale of local-to-world, and pixels per unit at a local point.
    float worldScale();
    float pixelsPerUnitAt(const TQ3Point3D& local);

    // ---- results of bounds passes
    TQ3BoundingBox box{};
    TQ3BoundingSphere sphere{};
    TQ3Uns32 traversal = 0;

    PickObject* pick = nullptr;

  private:
    bool computeMatrices();
    TQ3Status startRendererPass();
    void resolveBase(const SetObject* geometryAttributes, LocalVertex& base,
                     TQ3Object& texture) const;
    void toWorld(const LocalVertex& in, const LocalVertex& base, const TQ3Matrix4x4& normalMatrix,
                 TQ3XVertex& out) const;
    void addBoundsPoint(const TQ3Point3D& worldPoint);

    std::vector<ViewState> stack;
    struct PathEntry {
        TQ3Object group;
        TQ3GroupPosition position;
    };
    std::vector<PathEntry> path;
    std::vector<TQ3XLight> lights;
    std::vector<TQ3XVertex> scratch;
    std::vector<TQ3Vector3D> scratchNormals;
    TQ3Point3D sphereCentre{};
    float sphereRadius2 = 0;
    bool failed = false;

    friend class PickObject;
};

View* viewInPass(TQ3ViewObject view);

} // namespace q3
