// Copying batches and tracing through Embree.
#include "platform/finalrender/LWScene.h"

#include "platform/finalrender/LWLoops.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lwsl {
namespace {

bool finitePoint(const TQ3Point3D& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// The context of a shadow ray: the light that is left after the see-through
// surfaces met so far.
struct ShadowContext {
    RTCIntersectContext base; // first, so that Embree's pointer leads back here
    float* transmission;      // one a ray, by the ray's id
};

constexpr float kBlocked = 1.0f / 512.0f; // less light than this is no light

// Camera rays ignore the back faces of batches whose style removes them.
void removeBackFaces(const RTCFilterFunctionNArguments* args) {
    const auto* b = static_cast<const Batch*>(args->geometryUserPtr);
    for (unsigned i = 0; i < args->N; ++i) {
        if (args->valid[i] != -1) continue;
        const unsigned prim = RTCHitN_primID(args->hit, args->N, i);
        const TQ3Vector3D& n = b->faceNormals[prim];
        const float d = n.x * RTCRayN_dir_x(args->ray, args->N, i) +
                        n.y * RTCRayN_dir_y(args->ray, args->N, i) +
                        n.z * RTCRayN_dir_z(args->ray, args->N, i);
        if (d > 0) args->valid[i] = 0;
    }
}

// Shadow rays pass see-through surfaces and lose light at each.
void passSeeThrough(const RTCFilterFunctionNArguments* args) {
    const auto* b = static_cast<const Batch*>(args->geometryUserPtr);
    auto* ctx = reinterpret_cast<ShadowContext*>(args->context);
    for (unsigned i = 0; i < args->N; ++i) {
        if (args->valid[i] != -1) continue;
        const unsigned prim = RTCHitN_primID(args->hit, args->N, i);
        const float u = RTCHitN_u(args->hit, args->N, i), v = RTCHitN_v(args->hit, args->N, i);
        const std::uint32_t* t = &b->indices[3 * static_cast<std::size_t>(prim)];
        float a = (1 - u - v) * b->alpha[t[0]] + u * b->alpha[t[1]] + v * b->alpha[t[2]];
        float& left = ctx->transmission[RTCRayN_id(args->ray, args->N, i)];
        left *= 1 - std::clamp(a, 0.0f, 1.0f);
        if (left > kBlocked) args->valid[i] = 0;
    }
}

} // namespace

Scene::~Scene() {
    clear();
}

void Scene::releaseEmbree() {
    if (scene) rtcReleaseScene(scene);
    if (device) rtcReleaseDevice(device);
    scene = nullptr;
    device = nullptr;
}

void Scene::clear() {
    releaseEmbree();
    batches.clear();
    cornerList.clear();
    for (TQ3TextureObject t : textureRefs)
        Q3Object_Dispose(t);
    textureRefs.clear();
    triangles = 0;
}

void Scene::add(const TQ3XTriangleBatch& in) {
    if (!in.state || !in.vertices || !in.indices || in.numTriangles == 0 || in.numVertices == 0)
        return;
    Batch b;
    b.state = *in.state;
    b.vertices.assign(in.vertices, in.vertices + in.numVertices);
    b.alpha.resize(in.numVertices);
    for (TQ3Uns32 i = 0; i < in.numVertices; ++i) {
        const TQ3ColorRGB& t = in.vertices[i].transparency;
        float a = (t.r + t.g + t.b) / 3;
        b.alpha[i] = std::isfinite(a) ? std::clamp(a, 0.0f, 1.0f) : 1.0f;
        if (b.alpha[i] < 0.999f) b.seeThrough = true;
    }
    b.indices.reserve(3 * static_cast<std::size_t>(in.numTriangles));
    b.faceNormals.reserve(in.numTriangles);
    for (TQ3Uns32 t = 0; t < in.numTriangles; ++t) {
        const TQ3Uns32* i = in.indices + 3 * static_cast<std::size_t>(t);
        if (i[0] >= in.numVertices || i[1] >= in.numVertices || i[2] >= in.numVertices) continue;
        if (!finitePoint(in.vertices[i[0]].point) || !finitePoint(in.vertices[i[1]].point) ||
            !finitePoint(in.vertices[i[2]].point))
            continue;
        b.indices.insert(b.indices.end(), {i[0], i[1], i[2]});
        TQ3Vector3D n = in.faceNormals ? in.faceNormals[t] : TQ3Vector3D{0, 0, 1};
        if (!std::isfinite(n.x) || !std::isfinite(n.y) || !std::isfinite(n.z)) n = {0, 0, 1};
        b.faceNormals.push_back(n);
    }
    if (b.faceNormals.empty()) return;
    b.lo = b.hi = in.vertices[b.indices[0]].point;
    for (std::uint32_t i : b.indices) {
        const TQ3Point3D& q = in.vertices[i].point;
        b.lo = {std::min(b.lo.x, q.x), std::min(b.lo.y, q.y), std::min(b.lo.z, q.z)};
        b.hi = {std::max(b.hi.x, q.x), std::max(b.hi.y, q.y), std::max(b.hi.z, q.z)};
    }
    const TQ3XDrawState& st = b.state;
    b.look.flat = st.interpolation == kQ3InterpolationStyleNone;
    b.look.flip = st.backfacing == kQ3BackfacingStyleFlip;
    b.look.lit = st.illumination != kQ3IlluminationTypeNULL;
    b.look.phong = st.illumination == kQ3IlluminationTypePhong;
    b.look.receivesShadows = st.receiveShadows != kQ3False && b.look.lit;
    b.state.texture = nullptr;
    if (in.state->texture && (in.vertices[0].flags & kQ3XVertexHasUV) &&
        q3::textureView(in.state->texture, b.texture)) {
        b.texture.uBoundary = in.state->uBoundary;
        b.texture.vBoundary = in.state->vBoundary;
        // the pixels stay alive until the picture is done
        textureRefs.reserve(textureRefs.size() + 1);
        textureRefs.push_back(Q3Shared_GetReference(in.state->texture));
        b.textured = true;
    }
    b.firstCorner = static_cast<std::uint32_t>(cornerList.size());
    for (TQ3Uns32 i = 0; i < in.numVertices; ++i) {
        const TQ3XVertex& v = in.vertices[i];
        cornerList.push_back({v.normal.x,
                              v.normal.y,
                              v.normal.z,
                              v.diffuse.r,
                              v.diffuse.g,
                              v.diffuse.b,
                              v.specular.r,
                              v.specular.g,
                              v.specular.b,
                              v.specularControl,
                              v.ambientCoefficient,
                              b.alpha[i],
                              v.uv.u,
                              v.uv.v,
                              {0, 0}});
    }
    triangles += b.faceNormals.size();
    batches.push_back(std::move(b));
}

bool Scene::build(std::string& error) {
    releaseEmbree();
    // One build thread: Embree's own pool would outlive the call.
    device = rtcNewDevice("threads=1,set_affinity=0");
    if (!device) {
        error = "Embree could not start";
        return false;
    }
    scene = rtcNewScene(device);
    rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    rtcSetSceneBuildQuality(scene, RTC_BUILD_QUALITY_MEDIUM);
    float lo = std::numeric_limits<float>::max(), hi = -lo;
    for (Batch& b : batches) {
        RTCGeometry g = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        if (!g) break;
        auto* p = static_cast<float*>(rtcSetNewGeometryBuffer(
            g, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), b.vertices.size()));
        auto* t = static_cast<unsigned*>(
            rtcSetNewGeometryBuffer(g, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                    3 * sizeof(unsigned), b.faceNormals.size()));
        if (!p || !t) {
            rtcReleaseGeometry(g);
            break;
        }
        for (std::size_t i = 0; i < b.vertices.size(); ++i) {
            TQ3Point3D q = b.vertices[i].point;
            if (!finitePoint(q)) q = {0, 0, 0}; // used by no triangle
            p[3 * i] = q.x;
            p[3 * i + 1] = q.y;
            p[3 * i + 2] = q.z;
        }
        lo = std::min({lo, b.lo.x, b.lo.y, b.lo.z});
        hi = std::max({hi, b.hi.x, b.hi.y, b.hi.z});
        std::copy(b.indices.begin(), b.indices.end(), t);
        rtcSetGeometryUserData(g, &b);
        if (b.state.backfacing == kQ3BackfacingStyleRemove)
            rtcSetGeometryIntersectFilterFunction(g, removeBackFaces);
        if (b.seeThrough) rtcSetGeometryOccludedFilterFunction(g, passSeeThrough);
        rtcCommitGeometry(g);
        rtcAttachGeometry(scene, g);
        rtcReleaseGeometry(g);
    }
    rtcCommitScene(scene);
    const RTCError e = rtcGetDeviceError(device);
    if (e != RTC_ERROR_NONE) {
        error = e == RTC_ERROR_OUT_OF_MEMORY ? "out of memory" : "Embree failed";
        releaseEmbree();
        return false;
    }
    const float extent = hi > lo ? std::max(std::fabs(lo), std::fabs(hi)) : 1.0f;
    eps = std::max(extent, 1e-3f) * 2e-5f;
    return true;
}

bool Scene::nearest(const float org[3], const float dir[3], float tnear, float tfar,
                    Hit& hit) const {
    RTCRayHit rh;
    rh.ray.org_x = org[0];
    rh.ray.org_y = org[1];
    rh.ray.org_z = org[2];
    rh.ray.dir_x = dir[0];
    rh.ray.dir_y = dir[1];
    rh.ray.dir_z = dir[2];
    rh.ray.tnear = tnear;
    rh.ray.tfar = tfar;
    rh.ray.time = 0;
    rh.ray.mask = 0xFFFFFFFFu;
    rh.ray.id = 0;
    rh.ray.flags = 0;
    rh.hit.geomID = rh.hit.primID = rh.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    if (scene) {
        RTCIntersectContext ctx;
        rtcInitIntersectContext(&ctx);
        rtcIntersect1(scene, &ctx, &rh);
    }
    const Batch* found = batchHit(rh.hit.geomID, rh.hit.primID);
    if (!found) return false;
    hit.batch = rh.hit.geomID;
    hit.triangle = rh.hit.primID;
    hit.u = rh.hit.u;
    hit.v = rh.hit.v;
    hit.t = rh.ray.tfar;
    const TQ3Vector3D& n = found->faceNormals[rh.hit.primID];
    hit.ng[0] = n.x;
    hit.ng[1] = n.y;
    hit.ng[2] = n.z;
    return true;
}

void StreamConstants::resize(std::size_t n) {
    const std::size_t had = id.size();
    if (had >= n) return;
    time.resize(n, 0.0f);
    mask.resize(n, 0xFFFFFFFFu);
    flags.resize(n, 0u);
    id.resize(n);
    for (std::size_t i = had; i < n; ++i)
        id[i] = static_cast<unsigned>(i);
}

void Scene::nearestStream(const RTCRayHitNp& rays, unsigned count) const {
    for (unsigned i = 0; i < count; ++i) {
        rays.hit.geomID[i] = RTC_INVALID_GEOMETRY_ID;
        rays.hit.primID[i] = RTC_INVALID_GEOMETRY_ID;
        rays.hit.instID[0][i] = RTC_INVALID_GEOMETRY_ID;
    }
    if (!scene || count == 0) return;
    RTCIntersectContext ctx;
    rtcInitIntersectContext(&ctx);
    ctx.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
    RTCRayHitNp r = rays;
    rtcIntersectNp(scene, &ctx, &r, count);
}

void Scene::transmissionStream(const RTCRayNp& rays, unsigned count, float* out) const {
    const float* tnear = rays.tnear;
    const float* tfar = rays.tfar;
    if (!scene || count == 0) return;
    ShadowContext ctx;
    rtcInitIntersectContext(&ctx.base);
    ctx.base.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
    ctx.transmission = out;
    RTCRayNp r = rays;
    rtcOccludedNp(scene, &ctx.base, &r, count);
    // Embree marks an occluded ray with tfar = -inf
    LWSL_INDEPENDENT
    for (unsigned i = 0; i < count; ++i) {
        const bool blocked = !(tfar[i] >= 0) | !(out[i] > kBlocked);
        out[i] = (tnear[i] != kLeftOut) & blocked ? 0.0f : out[i];
    }
}

} // namespace lwsl
