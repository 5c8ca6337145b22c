// The passes: a renderer's second traversal, throws in the middle of a
// pass, bounds, the view matrices against the library's own projection,
// and a small scene drawn into a pixmap.
#include "d3d/DGeometryObject.h"
#include "d3d/DGetViewMatrixLoop.h"
#include "d3d/DPolygon.h"
#include "d3d/DSubmitLoop.h"
#include "d3d/DTransformObject.h"
#include "platform/qd3d/QD3DRendererExtension.h"
#include "tests/d3d/D3DTestSupport.h"
#include "tests/d3d/TestViewer.h"

#include <cmath>

namespace {

// A renderer that draws nothing and asks for a second traversal of every
// frame.
struct TwicePass {
    int traversals = 0;
};
TQ3ViewStatus TwiceEnd(void* instance, TQ3ViewObject) {
    auto* self = static_cast<TwicePass*>(instance);
    return ++self->traversals % 2 == 1 ? kQ3ViewStatusRetraverse : kQ3ViewStatusDone;
}

TQ3ObjectType TwiceRenderer() {
    // The class goes with each end of the library, so it is looked up anew.
    TQ3ObjectType type = 0;
    if (Q3ObjectHierarchy_GetTypeFromString("TwicePassRenderer", &type) != kQ3Success) {
        Q3Error_Get(nullptr);
        TQ3XRendererMethods methods{};
        methods.newInstance = [] { return static_cast<void*>(new TwicePass); };
        methods.deleteInstance = [](void* p) { delete static_cast<TwicePass*>(p); };
        methods.endPass = &TwiceEnd;
        Q3XRendererClass_Register(0, "TwicePassRenderer", "Twice", &methods, &type);
    }
    return type;
}

class Passes : public D3DTest {};

TQ3Point3D Corner(float x, float y, float z) {
    return {x, y, z};
}

void AddSquare(DGroupObject& group, float half, float z, float r, float g, float b) {
    TQ3Point3D points[4] = {Corner(-half, -half, z), Corner(half, -half, z), Corner(half, half, z),
                            Corner(-half, half, z)};
    DGenPolygon square(4, points, nullptr);
    DReference colour = MakeColorSet(r, g, b);
    Q3Geometry_SetAttributeSet(square.object, colour.get());
    group.AddObject(square);
}

} // namespace

TEST_F(Passes, SecondTraversalSubmitsAgainButFramesOnce) {
    TestViewer view(16, 16);
    view.viewer.SetRendererByType(TwiceRenderer());
    DSubmitDraw draw;
    draw.Run(&view);
    EXPECT_EQ(view.beginFrames, 1);
    EXPECT_EQ(view.endFrames, 1);
    EXPECT_EQ(view.adornerSubmits, 2);
    EXPECT_EQ(view.styleSubmits, 2);
    EXPECT_EQ(view.geometrySubmits, 2);

    // The interactive renderer takes one traversal.
    view.viewer.SetRendererByType(kQ3RendererTypeInteractive);
    draw.Run(&view);
    EXPECT_EQ(view.beginFrames, 2);
    EXPECT_EQ(view.geometrySubmits, 3);
}

TEST_F(Passes, AThrowClosesPassAndFrameAndTravelsOn) {
    TestViewer view(16, 16);
    view.viewer.SetRendererByType(TwiceRenderer());
    view.onGeometry = [] { throw kFailPlin; };
    DSubmitDraw draw;
    EXPECT_EQ(ThrownCode([&] { draw.Run(&view); }), kFailPlin);
    EXPECT_EQ(view.beginFrames, 1);
    EXPECT_EQ(view.endFrames, 1);
    // The view is free again: the next pass runs.
    view.onGeometry = nullptr;
    EXPECT_EQ(ThrownCode([&] { draw.Run(&view); }), 0);
    EXPECT_EQ(view.endFrames, 2);

    // A pass that cannot start (no camera) raises lF3q and still ends the
    // frame.
    DViewerObject bare;
    struct Bare : DExtViewer {
        DViewerObject* v;
        int frames = 0;
        DViewerObject& GetViewer() override { return *v; }
        void EndFrame() override { ++frames; }
    } noCamera;
    noCamera.v = &bare;
    EXPECT_EQ(ThrownCode([&] { draw.Run(&noCamera); }), kFailLF3q);
    EXPECT_EQ(noCamera.frames, 1);
    DSubmitDraw unset;
    EXPECT_EQ(ThrownCode([&] { unset.Run(nullptr); }), kFailPlin);
}

TEST_F(Passes, BoundsOfGroupAndGeometry) {
    TestViewer view(16, 16);
    DDisplayGroup group;
    DTranslateTransform move(1, 0, 0);
    group.AddObject(move);
    DLineObject line({-1, -2, -3}, {1, 2, 3}, -1, 0, 0);
    group.AddObject(line);

    TQ3BoundingBox box{};
    DBoundingBoxCalc boxCalc(&box, kQ3ComputeBoundsExact);
    boxCalc.Run(group, &view);
    EXPECT_FALSE(box.isEmpty);
    EXPECT_FLOAT_EQ(box.min.x, 0);
    EXPECT_FLOAT_EQ(box.max.x, 2);
    EXPECT_FLOAT_EQ(box.max.z, 3);
    EXPECT_EQ(view.beginFrames, 1);
    EXPECT_EQ(view.adornerSubmits, 0);

    boxCalc.Run(line, &view);
    EXPECT_FLOAT_EQ(box.min.x, -1);

    TQ3BoundingSphere sphere{};
    DBoundingSphereCalc sphereCalc(&sphere, kQ3ComputeBoundsExact);
    sphereCalc.Run(group, &view);
    EXPECT_FALSE(sphere.isEmpty);
    EXPECT_NEAR(sphere.origin.x, 1, 1e-4f);
    EXPECT_NEAR(sphere.radius, std::sqrt(14.0f), 1e-3f);
    EXPECT_EQ(view.beginFrames, 3);

    DBoundingBoxCalc noResult(nullptr, kQ3ComputeBoundsExact);
    EXPECT_EQ(ThrownCode([&] { noResult.Run(group, &view); }), kFailPlin);

    // A group that submits more than its members is measured by its own submit.
    struct Raised : DDisplayGroup {
        void Submit(const DViewerObject& viewer) const override {
            const TQ3Vector3D up{0, 10, 0};
            Q3TranslateTransform_Submit(&up, viewer.GetObject());
            DDisplayGroup::Submit(viewer);
        }
    } raised;
    raised.AddObject(line);
    boxCalc.Run(raised, &view);
    EXPECT_FLOAT_EQ(box.min.y, 8);
}

namespace {

class MatrixLoop : public DGetViewMatrixLoop {
  public:
    void MatricesReady() override { ++ready; }
    int ready = 0;
};

// The library's own projection of a world point into the window, and the
// point's depth in view space.
TQ3Point3D Project(const DGetViewMatrixLoop& loop, const TQ3Point3D& world, float& viewZ) {
    TQ3Matrix4x4 a, b;
    Q3Matrix4x4_Multiply(&loop.worldToView, &loop.viewToFrustum, &a);
    Q3Matrix4x4_Multiply(&a, &loop.frustumToWindow, &b);
    TQ3Point3D window, view;
    Q3Point3D_Transform(&world, &b, &window);
    Q3Point3D_Transform(&world, &loop.worldToView, &view);
    viewZ = view.z;
    return window;
}

void ExpectRoundTrip(bool ortho) {
    TestViewer view(80, 60, ortho);
    view.camera->SetPlacement({3, 2, 6}, {0.5f, 0, 0}, {0, 1, 0});
    MatrixLoop loop;
    loop.Compute(&view);
    EXPECT_EQ(loop.ready, 1);
    for (TQ3Point3D world : {TQ3Point3D{0, 0, 0}, {1, -0.5f, 0.25f}, {-0.7f, 0.9f, -1}}) {
        float depth;
        TQ3Point3D window = Project(loop, world, depth);
        KVector3D viewPoint, back;
        loop.ScreenToView(TQ3Point2D{window.x, window.y}, viewPoint, depth);
        loop.ViewToWorld(viewPoint, back);
        EXPECT_NEAR(back.x, world.x, 1e-3f);
        EXPECT_NEAR(back.y, world.y, 1e-3f);
        EXPECT_NEAR(back.z, world.z, 1e-3f);
        // Through the packed integer point only the rounding to a pixel is
        // lost: well under a pixel's width at that depth.
        const std::int32_t packed = MakeScreenPoint(std::int16_t(std::lround(window.x)),
                                                    std::int16_t(std::lround(window.y)));
        loop.ScreenToWorld(packed, back, depth);
        EXPECT_NEAR(back.x, world.x, 0.1f);
        EXPECT_NEAR(back.y, world.y, 0.1f);
        KVector3D again;
        loop.WorldToView(back, again);
        EXPECT_NEAR(again.z, depth, 1e-3f);
    }
}

} // namespace

TEST_F(Passes, ScreenToViewMeetsTheLibraryProjectionPerspective) {
    ExpectRoundTrip(false);
}

TEST_F(Passes, ScreenToViewMeetsTheLibraryProjectionOrthographic) {
    ExpectRoundTrip(true);
}

TEST_F(Passes, LengthToViewAndNegativeScreenPoints) {
    TestViewer view(40, 40);
    view.camera->SetPlacement({0, 0, 5}, {0, 0, 0}, {0, 1, 0});
    MatrixLoop loop;
    loop.Compute(&view);
    EXPECT_NEAR(loop.LengthToView(2.0f), 2.0f, 1e-5f);
    // A point left of and above the window splits into negative halves.
    KVector3D a, b;
    loop.ScreenToView(MakeScreenPoint(-10, -20), a, -5);
    loop.ScreenToView(TQ3Point2D{-10, -20}, b, -5);
    EXPECT_FLOAT_EQ(a.x, b.x);
    EXPECT_FLOAT_EQ(a.y, b.y);
    EXPECT_LT(a.x, 0.0f);
    EXPECT_GT(a.y, 0.0f);
}

TEST_F(Passes, DrawsASmallSceneIntoThePixmap) {
    TestViewer view(96, 64);
    view.context.SetClearColor(1, 0.1f, 0.1f, 0.2f);
    AddSquare(view.scene, 1.0f, 0, 0.9f, 0.2f, 0.1f);
    AddSquare(view.scene, 0.4f, 0.5f, 0.1f, 0.8f, 0.2f);
    DLineObject line({-1.8f, -1.2f, 0}, {1.8f, 1.2f, 0}, 1, 1, 0);
    view.scene.AddObject(line);
    DSubmitDraw draw;
    draw.Run(&view);
    view.Save("d3d_submit_scene.png");

    auto channel = [](std::uint32_t p, int shift) { return int(p >> shift & 0xFF); };
    // The middle is the near green square; a point on the red square beside
    // it is red; a corner is the clear colour.
    const std::uint32_t middle = view.At(48, 32), red = view.At(48 - 12, 32),
                        corner = view.At(1, 1);
    EXPECT_GT(channel(middle, 8), channel(middle, 16));
    EXPECT_GT(channel(red, 16), channel(red, 8));
    EXPECT_EQ(channel(corner, 24), 255);
    EXPECT_LT(channel(corner, 16), 40);
    EXPECT_GT(channel(corner, 0), channel(corner, 16));
}
