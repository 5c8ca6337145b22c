// Views: passes, the state that submitted objects change, and the hand-over
// of finished primitives.
#include "platform/qd3d/Q3View.h"

#include "platform/qd3d/Q3Camera.h"
#include "platform/qd3d/Q3DrawContext.h"
#include "platform/qd3d/Q3Pick.h"
#include "platform/qd3d/Q3Renderer.h"
#include "platform/qd3d/Q3Set.h"

#include <cmath>
#include <cstring>

namespace q3 {

void collectLights(TQ3Object lightGroup, std::vector<TQ3Object>& out); // Q3Group.cpp
bool lightRecord(TQ3Object light, TQ3XLight& out);                     // Q3Light.cpp

namespace {

ViewState defaultState() {
    ViewState s;
    Q3Matrix4x4_SetIdentity(&s.localToWorld);
    s.draw = {};
    s.draw.illumination = kQ3IlluminationTypeNULL;
    s.draw.interpolation = kQ3InterpolationStyleVertex;
    s.draw.backfacing = kQ3BackfacingStyleBoth;
    s.draw.fill = kQ3FillStyleFilled;
    s.draw.orientation = kQ3OrientationStyleCounterClockwise;
    s.draw.receiveShadows = kQ3True;
    s.draw.subdivision = {kQ3SubdivisionMethodConstant, 20, 20};
    s.draw.pickID = 0;
    s.draw.texture = nullptr;
    s.draw.uBoundary = s.draw.vBoundary = kQ3ShaderUVBoundaryWrap;
    Q3Matrix4x4_SetIdentity(&s.draw.localToWorld);
    return s;
}

TQ3Point3D transformPoint(const TQ3Point3D& p, const TQ3Matrix4x4& m) {
    const float(*a)[4] = m.value;
    return {p.x * a[0][0] + p.y * a[1][0] + p.z * a[2][0] + a[3][0],
            p.x * a[0][1] + p.y * a[1][1] + p.z * a[2][1] + a[3][1],
            p.x * a[0][2] + p.y * a[1][2] + p.z * a[2][2] + a[3][2]};
}

TQ3Vector3D transformNormal(const TQ3Vector3D& n, const TQ3Matrix4x4& m) {
    const float(*a)[4] = m.value;
    TQ3Vector3D r{n.x * a[0][0] + n.y * a[1][0] + n.z * a[2][0],
                  n.x * a[0][1] + n.y * a[1][1] + n.z * a[2][1],
                  n.x * a[0][2] + n.y * a[1][2] + n.z * a[2][2]};
    float len = std::sqrt(r.x * r.x + r.y * r.y + r.z * r.z);
    if (len > 0 && std::isfinite(len)) return {r.x / len, r.y / len, r.z / len};
    return {0, 0, 1};
}

template <class T> void readAttr(const SetObject* set, TQ3AttributeType type, T& out) {
    if (!set) return;
    if (const void* p = set->find(type)) std::memcpy(&out, p, sizeof(T));
}

} // namespace

View::View() : OpaqueTQ3Object(kQ3ObjectTypeView) {
    stack.push_back(defaultState());
    Q3Matrix4x4_SetIdentity(&worldToView);
    viewToFrustum = frustumToWindow = worldToWindow = worldToView;
}

View::~View() {
    if (inPass()) abandon();
    release(camera);
    release(lightGroup);
    release(drawContext);
    release(renderer);
}

bool View::checkInPass() {
    if (!inPass()) {
        postError(kQ3ErrorViewNotStarted);
        return false;
    }
    return true;
}

float View::windowScale() const {
    return std::fabs(frustumToWindow.value[0][0]);
}

bool View::computeMatrices() {
    TQ3CameraData data{};
    cameraType = 0;
    if (!camera) {
        Q3Matrix4x4_SetIdentity(&worldToView);
        viewToFrustum = worldToView;
    } else {
        if (!cameraMatrices(camera, worldToView, viewToFrustum, &data)) return false;
        cameraType = camera->type;
    }
    TQ3DrawContextData dc{};
    TQ3Pixmap pixmap{};
    float left = 0, top = 0, width = 1, height = 1;
    if (drawContext && drawContextTarget(drawContext, dc, pixmap)) {
        width = static_cast<float>(pixmap.width);
        height = static_cast<float>(pixmap.height);
        if (dc.paneState && dc.pane.max.x > dc.pane.min.x && dc.pane.max.y > dc.pane.min.y) {
            left = dc.pane.min.x;
            top = dc.pane.min.y;
            width = dc.pane.max.x - dc.pane.min.x;
            height = dc.pane.max.y - dc.pane.min.y;
        }
    }
    window = {{left, top}, {left + width, top + height}};
    const TQ3CameraViewPort vp = camera ? data.viewPort : TQ3CameraViewPort{{-1, 1}, 2, 2};
    TQ3Matrix4x4& m = frustumToWindow;
    Q3Matrix4x4_SetIdentity(&m);
    m.value[0][0] = width / vp.width;
    m.value[3][0] = left - vp.origin.x * width / vp.width;
    m.value[1][1] = -height / vp.height;
    m.value[3][1] = top + vp.origin.y * height / vp.height;
    TQ3Matrix4x4 t;
    Q3Matrix4x4_Multiply(&worldToView, &viewToFrustum, &t);
    Q3Matrix4x4_Multiply(&t, &frustumToWindow, &worldToWindow);
    return true;
}

TQ3Status View::start(Mode m) {
    if (inPass()) {
        postError(kQ3ErrorViewIsStarted);
        return kQ3Failure;
    }
    if (m == Mode::Rendering && !renderer) {
        postError(kQ3ErrorRendererNotSet);
        return kQ3Failure;
    }
    if ((m == Mode::Rendering || m == Mode::Picking) && !camera) {
        postError(kQ3ErrorCameraNotSet);
        return kQ3Failure;
    }
    if ((m == Mode::Rendering || m == Mode::Picking) && !drawContext) {
        postError(kQ3ErrorDrawContextNotSet);
        return kQ3Failure;
    }
    if ((camera || m != Mode::BoundingBox) && m != Mode::BoundingSphere && !computeMatrices())
        return kQ3Failure;
    if (m == Mode::BoundingSphere && camera) computeMatrices();
    stack.assign(1, defaultState());
    path.clear();
    traversal = 0;
    failed = false;
    box = {{0, 0, 0}, {0, 0, 0}, kQ3True};
    sphere = {{0, 0, 0}, 0, kQ3True};
    sphereRadius2 = 0;
    mode = m;
    if (m == Mode::Rendering && startRendererPass() != kQ3Success) {
        mode = Mode::None;
        return kQ3Failure;
    }
    return kQ3Success;
}

TQ3Status View::startRendererPass() {
    lights.clear();
    std::vector<TQ3Object> objects;
    collectLights(lightGroup, objects);
    for (TQ3Object o : objects) {
        TQ3XLight l;
        if (lightRecord(o, l)) lights.push_back(l);
    }
    auto* r = static_cast<RendererObject*>(renderer);
    if (!r->methods.startPass) return kQ3Success;
    TQ3XPassInfo info{};
    info.passIndex = traversal;
    info.cameraType = cameraType;
    if (camera) Q3Camera_GetData(camera, &info.camera);
    info.worldToView = worldToView;
    info.viewToFrustum = viewToFrustum;
    info.frustumToWindow = frustumToWindow;
    info.worldToWindow = worldToWindow;
    info.numLights = static_cast<TQ3Uns32>(lights.size());
    info.lights = lights.data();
    drawContextTarget(drawContext, info.drawContext, info.pixmap);
    info.window = window;
    return r->methods.startPass(r->instance, this, &info);
}

TQ3ViewStatus View::endTraversal(Mode m) {
    if (mode != m) {
        postError(mode == Mode::None ? kQ3ErrorViewNotStarted : kQ3ErrorAccessRestricted);
        return kQ3ViewStatusError;
    }
    TQ3ViewStatus status = kQ3ViewStatusDone;
    if (m == Mode::Rendering) {
        auto* r = static_cast<RendererObject*>(renderer);
        if (failed) {
            if (r->methods.cancelPass) r->methods.cancelPass(r->instance);
            status = kQ3ViewStatusError;
        } else {
            status = r->methods.endPass ? r->methods.endPass(r->instance, this) : kQ3ViewStatusDone;
        }
    } else if (m == Mode::BoundingSphere && traversal == 0 && !box.isEmpty) {
        sphereCentre = {(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2,
                        (box.min.z + box.max.z) / 2};
        status = kQ3ViewStatusRetraverse;
    } else if (m == Mode::BoundingSphere && !box.isEmpty) {
        sphere = {sphereCentre, std::sqrt(sphereRadius2), kQ3False};
    } else if (m == Mode::Picking && pick) {
        pick->finish();
    }
    if (status == kQ3ViewStatusRetraverse) {
        ++traversal;
        stack.assign(1, defaultState());
        path.clear();
        if (m == Mode::Rendering && startRendererPass() != kQ3Success) {
            mode = Mode::None;
            return kQ3ViewStatusError;
        }
        return status;
    }
    if (m == Mode::Picking) detachPick();
    mode = Mode::None;
    return status;
}

void View::abandon() {
    if (mode == Mode::Rendering) {
        auto* r = static_cast<RendererObject*>(renderer);
        if (r->methods.cancelPass) r->methods.cancelPass(r->instance);
    }
    detachPick();
    mode = Mode::None;
}

void View::detachPick() {
    if (pick) pick->activeView = nullptr;
    pick = nullptr;
}

void View::pushState() {
    ViewState copy = stack.back();
    stack.push_back(copy);
}

void View::popState() {
    if (stack.size() > 1) stack.pop_back();
}

void View::applyMatrix(const TQ3Matrix4x4& m) {
    TQ3Matrix4x4& l = state().localToWorld;
    Q3Matrix4x4_Multiply(&m, &l, &l);
}

void View::submitAttributeSet(const SetObject* set) {
    AttributeState& a = state().attributes;
    readAttr(set, kQ3AttributeTypeDiffuseColor, a.diffuse);
    readAttr(set, kQ3AttributeTypeTransparencyColor, a.transparency);
    readAttr(set, kQ3AttributeTypeSpecularColor, a.specular);
    readAttr(set, kQ3AttributeTypeSpecularControl, a.specularControl);
    readAttr(set, kQ3AttributeTypeAmbientCoefficient, a.ambient);
    readAttr(set, kQ3AttributeTypeHighlightState, a.highlight);
    TQ3Object shader = nullptr;
    readAttr(set, kQ3AttributeTypeSurfaceShader, shader);
    if (shader && isLive(shader)) {
        a.surfaceShader = shader;
        TQ3Object texture = nullptr;
        if (Q3TextureShader_GetTexture(shader, &texture) == kQ3Success) {
            state().draw.texture = texture;
            release(texture); // the shader keeps it alive
        }
    }
}

void View::enterGroup(TQ3Object group, TQ3GroupPosition position) {
    path.push_back({group, position});
}

void View::setPathPosition(TQ3GroupPosition position) {
    if (!path.empty()) path.back().position = position;
}

void View::leaveGroup() {
    if (!path.empty()) path.pop_back();
}

float View::worldScale() {
    const TQ3Matrix4x4& m = state().localToWorld;
    float best = 0;
    for (int i = 0; i < 3; ++i)
        best = std::fmax(best,
                         std::sqrt(m.value[i][0] * m.value[i][0] + m.value[i][1] * m.value[i][1] +
                                   m.value[i][2] * m.value[i][2]));
    return best > 0 && std::isfinite(best) ? best : 1;
}

float View::pixelsPerUnitAt(const TQ3Point3D& local) {
    if (!camera) return 1;
    TQ3Point3D world = transformPoint(local, state().localToWorld);
    TQ3Point3D view = transformPoint(world, worldToView);
    float f = std::fabs(viewToFrustum.value[1][1]) * std::fabs(frustumToWindow.value[1][1]);
    float scale = cameraType == kQ3CameraTypeOrthographic ? f : f / std::fmax(-view.z, 1e-3f);
    return std::isfinite(scale) && scale > 0 ? scale : 1;
}

void View::addBoundsPoint(const TQ3Point3D& p) {
    if (!finite(p)) return; // a point beyond float range says nothing of the bounds
    if (mode == Mode::BoundingSphere && traversal == 1) {
        float dx = p.x - sphereCentre.x, dy = p.y - sphereCentre.y, dz = p.z - sphereCentre.z;
        sphereRadius2 = std::fmax(sphereRadius2, dx * dx + dy * dy + dz * dz);
        return;
    }
    Q3BoundingBox_UnionPoint3D(&box, &p, &box);
}

void View::resolveBase(const SetObject* geometryAttributes, LocalVertex& base,
                       TQ3Object& texture) const {
    const ViewState& s = stack.back();
    const AttributeState& a = s.attributes;
    base = {};
    base.diffuse = a.diffuse;
    base.transparency = a.transparency;
    base.specular = a.specular;
    base.specularControl = a.specularControl;
    base.ambient = a.ambient;
    texture = s.draw.texture;
    TQ3Switch highlight = a.highlight;
    auto apply = [&](const SetObject* set) {
        if (!set) return;
        LocalVertex v = base;
        applyAttributes(set, v);
        base = v;
        base.has = 0;
        TQ3Object shader = nullptr;
        readAttr(set, kQ3AttributeTypeSurfaceShader, shader);
        if (shader && isLive(shader)) {
            TQ3Object t = nullptr;
            if (Q3TextureShader_GetTexture(shader, &t) == kQ3Success) {
                texture = t;
                release(t);
            }
        }
    };
    apply(geometryAttributes);
    readAttr(geometryAttributes, kQ3AttributeTypeHighlightState, highlight);
    if (highlight == kQ3On && s.highlightSet) apply(s.highlightSet);
}

void View::toWorld(const LocalVertex& in, const LocalVertex& base, const TQ3Matrix4x4& normalMatrix,
                   TQ3XVertex& out) const {
    const TQ3Matrix4x4& l = stack.back().localToWorld;
    out.point = transformPoint(in.point, l);
    out.normal =
        (in.has & kHasNormal) ? transformNormal(in.normal, normalMatrix) : TQ3Vector3D{0, 0, 1};
    out.uv = in.uv;
    out.diffuse = (in.has & kHasDiffuse) ? in.diffuse : base.diffuse;
    out.transparency = (in.has & kHasTransparency) ? in.transparency : base.transparency;
    out.specular = (in.has & kHasSpecular) ? in.specular : base.specular;
    out.specularControl =
        (in.has & kHasSpecularControl) ? in.specularControl : base.specularControl;
    out.ambientCoefficient = (in.has & kHasAmbient) ? in.ambient : base.ambient;
    out.flags = kQ3XVertexHasNormal | ((in.has & kHasUV) ? kQ3XVertexHasUV : 0);
}

TQ3Status View::drawMesh(TQ3Object geometry, const Mesh& mesh,
                         const SetObject* geometryAttributes) {
    if (!checkInPass()) return kQ3Failure;
    ViewState& s = state();
    const TQ3Matrix4x4& l = s.localToWorld;
    if (mode == Mode::BoundingBox || mode == Mode::BoundingSphere) {
        for (const LocalVertex& v : mesh.vertices)
            addBoundsPoint(transformPoint(v.point, l));
        return kQ3Success;
    }
    LocalVertex base;
    TQ3Object texture;
    resolveBase(geometryAttributes, base, texture);
    TQ3Matrix4x4 inverse, normalMatrix;
    if (Q3Matrix4x4_Invert(&l, &inverse))
        Q3Matrix4x4_Transpose(&inverse, &normalMatrix);
    else {
        Q3Error_Get(nullptr); // a flat transform is no error of the caller's
        normalMatrix = l;
    }
    const size_t n = mesh.vertices.size();
    scratch.resize(n);
    for (size_t i = 0; i < n; ++i)
        toWorld(mesh.vertices[i], base, normalMatrix, scratch[i]);
    // face normals from the world positions, by the orientation style
    const size_t tris = mesh.triangles.size() / 3;
    scratchNormals.resize(tris);
    const float sign = s.draw.orientation == kQ3OrientationStyleClockwise ? -1.f : 1.f;
    for (size_t t = 0; t < tris; ++t) {
        const TQ3Uns32* idx = &mesh.triangles[t * 3];
        const TQ3Point3D &a = scratch[idx[0]].point, &b = scratch[idx[1]].point,
                         &c = scratch[idx[2]].point;
        TQ3Vector3D u{b.x - a.x, b.y - a.y, b.z - a.z}, v{c.x - a.x, c.y - a.y, c.z - a.z};
        TQ3Vector3D fn{sign * (u.y * v.z - u.z * v.y), sign * (u.z * v.x - u.x * v.z),
                       sign * (u.x * v.y - u.y * v.x)};
        float len = std::sqrt(fn.x * fn.x + fn.y * fn.y + fn.z * fn.z);
        fn = len > 0 && std::isfinite(len) ? TQ3Vector3D{fn.x / len, fn.y / len, fn.z / len}
                                           : TQ3Vector3D{0, 0, 1};
        scratchNormals[t] = fn;
        for (int k = 0; k < 3; ++k)
            if (mesh.vertices[idx[k]].has & kFilledNormal) scratch[idx[k]].normal = fn;
    }
    TQ3XDrawState draw = s.draw;
    draw.texture = texture;
    draw.localToWorld = l;
    if (mode == Mode::Picking) {
        if (pick) pick->testMesh(*this, geometry, draw, mesh, scratch, scratchNormals, path);
        return kQ3Success;
    }
    auto* r = static_cast<RendererObject*>(renderer);
    TQ3Status result = kQ3Success;
    if (tris && r->methods.submitTriangles) {
        TQ3XTriangleBatch batch{geometry,
                                &draw,
                                static_cast<TQ3Uns32>(n),
                                scratch.data(),
                                static_cast<TQ3Uns32>(tris),
                                mesh.triangles.data(),
                                scratchNormals.data(),
                                mesh.edgeFlags.data()};
        if (r->methods.submitTriangles(r->instance, &batch) != kQ3Success) result = kQ3Failure;
    }
    if (!mesh.segments.empty() && r->methods.submitLines) {
        std::vector<TQ3XVertex> v;
        v.reserve(mesh.segments.size());
        for (TQ3Uns32 i : mesh.segments)
            v.push_back(scratch[i]);
        TQ3XLineBatch batch{geometry, &draw, static_cast<TQ3Uns32>(mesh.segments.size() / 2),
                            v.data()};
        if (r->methods.submitLines(r->instance, &batch) != kQ3Success) result = kQ3Failure;
    }
    if (!mesh.points.empty() && r->methods.submitPoints) {
        std::vector<TQ3XVertex> v;
        for (TQ3Uns32 i : mesh.points)
            v.push_back(scratch[i]);
        TQ3XPointBatch batch{geometry, &draw, static_cast<TQ3Uns32>(v.size()), v.data()};
        if (r->methods.submitPoints(r->instance, &batch) != kQ3Success) result = kQ3Failure;
    }
    if (result != kQ3Success) failed = true;
    return result;
}

TQ3Status View::drawMarker(TQ3Object geometry, const TQ3Point3D& location, TQ3Int32 xOffset,
                           TQ3Int32 yOffset, const TQ3Bitmap& bitmap,
                           const SetObject* geometryAttributes) {
    if (!checkInPass()) return kQ3Failure;
    ViewState& s = state();
    if (mode == Mode::BoundingBox || mode == Mode::BoundingSphere) {
        addBoundsPoint(transformPoint(location, s.localToWorld));
        return kQ3Success;
    }
    LocalVertex base, in;
    TQ3Object texture;
    resolveBase(geometryAttributes, base, texture);
    in.point = location;
    TQ3XMarker marker{geometry, &s.draw, {}, xOffset, yOffset, &bitmap};
    toWorld(in, base, s.localToWorld, marker.location);
    TQ3XDrawState draw = s.draw;
    draw.localToWorld = s.localToWorld;
    marker.state = &draw;
    if (mode == Mode::Picking) {
        if (pick) pick->testMarker(*this, geometry, draw, marker, path);
        return kQ3Success;
    }
    auto* r = static_cast<RendererObject*>(renderer);
    if (r->methods.submitMarker && r->methods.submitMarker(r->instance, &marker) != kQ3Success) {
        failed = true;
        return kQ3Failure;
    }
    return kQ3Success;
}

View* viewInPass(TQ3ViewObject view) {
    auto* v = check<View>(view, kQ3ObjectTypeView);
    if (!v || !v->checkInPass()) return nullptr;
    return v;
}

} // namespace q3

using namespace q3;

namespace {

View* view(TQ3ViewObject v) {
    return check<View>(v, kQ3ObjectTypeView);
}

template <class F> TQ3Status setHeld(TQ3ViewObject v, TQ3Object o, TQ3ObjectType type, F slot) {
    View* x = view(v);
    if (!x) return kQ3Failure;
    if (o && !checkObject(o, type)) return kQ3Failure;
    if (x->inPass()) {
        postError(kQ3ErrorViewIsStarted);
        return kQ3Failure;
    }
    replaceRef(slot(*x), o);
    return kQ3Success;
}

template <class F> TQ3Status getHeld(TQ3ViewObject v, TQ3Object* out, F slot) {
    View* x = view(v);
    if (!x || !out) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *out = retain(slot(*x));
    return kQ3Success;
}

} // namespace

extern "C" {

TQ3ViewObject Q3View_New(void) {
    return make<View>();
}

TQ3Status Q3Object_Submit(TQ3Object object, TQ3ViewObject v) {
    View* x = viewInPass(v);
    if (!x || !checkObject(object, 0)) return kQ3Failure;
    static thread_local int depth = 0;
    if (depth > 256) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    ++depth;
    TQ3Status s = object->submit(*x);
    --depth;
    return s;
}

TQ3Status Q3View_SetCamera(TQ3ViewObject v, TQ3CameraObject c) {
    return setHeld(v, c, kQ3ShapeTypeCamera, [](View& x) -> TQ3Object& { return x.camera; });
}
TQ3Status Q3View_GetCamera(TQ3ViewObject v, TQ3CameraObject* c) {
    return getHeld(v, c, [](View& x) { return x.camera; });
}
TQ3Status Q3View_SetLightGroup(TQ3ViewObject v, TQ3GroupObject g) {
    return setHeld(v, g, kQ3ShapeTypeGroup, [](View& x) -> TQ3Object& { return x.lightGroup; });
}
TQ3Status Q3View_GetLightGroup(TQ3ViewObject v, TQ3GroupObject* g) {
    return getHeld(v, g, [](View& x) { return x.lightGroup; });
}
TQ3Status Q3View_SetDrawContext(TQ3ViewObject v, TQ3DrawContextObject d) {
    return setHeld(v, d, kQ3SharedTypeDrawContext,
                   [](View& x) -> TQ3Object& { return x.drawContext; });
}
TQ3Status Q3View_GetDrawContext(TQ3ViewObject v, TQ3DrawContextObject* d) {
    return getHeld(v, d, [](View& x) { return x.drawContext; });
}
TQ3Status Q3View_SetRenderer(TQ3ViewObject v, TQ3RendererObject r) {
    return setHeld(v, r, kQ3SharedTypeRenderer, [](View& x) -> TQ3Object& { return x.renderer; });
}
TQ3Status Q3View_SetRendererByType(TQ3ViewObject v, TQ3ObjectType type) {
    if (!view(v)) return kQ3Failure;
    TQ3RendererObject r = Q3Renderer_NewFromType(type);
    if (!r) return kQ3Failure;
    TQ3Status s = Q3View_SetRenderer(v, r);
    release(r);
    return s;
}
TQ3Status Q3View_GetRenderer(TQ3ViewObject v, TQ3RendererObject* r) {
    return getHeld(v, r, [](View& x) { return x.renderer; });
}
TQ3Status Q3View_SetIdleProgressMethod(TQ3ViewObject v, TQ3ViewIdleProgressMethod method,
                                       const void* data) {
    View* x = view(v);
    if (!x) return kQ3Failure;
    x->idleMethod = method;
    x->idleData = data;
    return kQ3Success;
}

TQ3Status Q3XView_IdleProgress(TQ3ViewObject v, TQ3Uns32 current, TQ3Uns32 completed) {
    View* x = view(v);
    if (!x) return kQ3Failure;
    if (!x->idleMethod) return kQ3Success;
    return x->idleMethod(v, x->idleData, current, completed) == kQ3Success ? kQ3Success
                                                                           : kQ3Failure;
}

TQ3Status Q3View_StartRendering(TQ3ViewObject v) {
    View* x = view(v);
    return x ? x->start(Mode::Rendering) : kQ3Failure;
}
TQ3ViewStatus Q3View_EndRendering(TQ3ViewObject v) {
    View* x = view(v);
    return x ? x->endTraversal(Mode::Rendering) : kQ3ViewStatusError;
}
TQ3Status Q3View_Flush(TQ3ViewObject v) {
    return viewInPass(v) ? kQ3Success : kQ3Failure;
}
TQ3Status Q3View_Sync(TQ3ViewObject v) {
    return view(v) ? kQ3Success : kQ3Failure;
}
TQ3Status Q3View_Cancel(TQ3ViewObject v) {
    View* x = viewInPass(v);
    if (!x) return kQ3Failure;
    x->abandon();
    return kQ3Success;
}

TQ3Status Q3View_StartPicking(TQ3ViewObject v, TQ3PickObject p) {
    View* x = view(v);
    auto* pk = check<PickObject>(p, kQ3ObjectTypePick);
    if (!x || !pk) return kQ3Failure;
    if (x->start(Mode::Picking) != kQ3Success) return kQ3Failure;
    pk->begin(x);
    x->pick = pk;
    return kQ3Success;
}
TQ3ViewStatus Q3View_EndPicking(TQ3ViewObject v) {
    View* x = view(v);
    return x ? x->endTraversal(Mode::Picking) : kQ3ViewStatusError;
}

TQ3Status Q3View_StartBoundingBox(TQ3ViewObject v, TQ3ComputeBounds) {
    View* x = view(v);
    return x ? x->start(Mode::BoundingBox) : kQ3Failure;
}
TQ3ViewStatus Q3View_EndBoundingBox(TQ3ViewObject v, TQ3BoundingBox* result) {
    View* x = view(v);
    if (!x) return kQ3ViewStatusError;
    if (!result) {
        postError(kQ3ErrorNULLParameter);
        if (x->mode == Mode::BoundingBox) x->abandon();
        return kQ3ViewStatusError;
    }
    TQ3ViewStatus s = x->endTraversal(Mode::BoundingBox);
    if (s == kQ3ViewStatusDone) *result = x->box;
    return s;
}
TQ3Status Q3View_StartBoundingSphere(TQ3ViewObject v, TQ3ComputeBounds) {
    View* x = view(v);
    return x ? x->start(Mode::BoundingSphere) : kQ3Failure;
}
TQ3ViewStatus Q3View_EndBoundingSphere(TQ3ViewObject v, TQ3BoundingSphere* result) {
    View* x = view(v);
    if (!x) return kQ3ViewStatusError;
    if (!result) {
        postError(kQ3ErrorNULLParameter);
        if (x->mode == Mode::BoundingSphere) x->abandon();
        return kQ3ViewStatusError;
    }
    TQ3ViewStatus s = x->endTraversal(Mode::BoundingSphere);
    if (s == kQ3ViewStatusDone) *result = x->sphere;
    return s;
}

TQ3Status Q3View_GetLocalToWorldMatrixState(TQ3ViewObject v, TQ3Matrix4x4* m) {
    View* x = viewInPass(v);
    if (!x || !m) return kQ3Failure;
    *m = x->state().localToWorld;
    return kQ3Success;
}
TQ3Status Q3View_GetWorldToFrustumMatrixState(TQ3ViewObject v, TQ3Matrix4x4* m) {
    View* x = viewInPass(v);
    if (!x || !m) return kQ3Failure;
    Q3Matrix4x4_Multiply(&x->worldToView, &x->viewToFrustum, m);
    return kQ3Success;
}
TQ3Status Q3View_GetFrustumToWindowMatrixState(TQ3ViewObject v, TQ3Matrix4x4* m) {
    View* x = viewInPass(v);
    if (!x || !m) return kQ3Failure;
    *m = x->frustumToWindow;
    return kQ3Success;
}

TQ3Status Q3XView_SubmitWriteData(TQ3ViewObject v, TQ3Uns32, void* data,
                                  void (*deleteData)(void*)) {
    if (!view(v)) return kQ3Failure;
    if (deleteData && data) deleteData(data);
    return kQ3Success;
}

} // extern "C"
