// Picking through the loop: a body under a widget handle wins over the
// handle, a handle alone is taken, and the hooks are called as the hits ask.
#include "d3d/DGeometryObject.h"
#include "d3d/DPickingLoop.h"
#include "d3d/DPolygon.h"
#include "d3d/DStyleObject.h"
#include "tests/d3d/D3DTestSupport.h"
#include "tests/d3d/TestViewer.h"

#include <cmath>

namespace {

constexpr std::uint32_t kBodyId = 5;
constexpr std::uint32_t kHandleId = 0x81000005u; // part 0x81 of object 5

class CountingPicker : public DPickingLoop {
  public:
    void HandleHit(DHitData& first) override {
        ++handled;
        handledId = first.pickId;
    }
    bool WantsHit(DHitData& hit) override {
        ++asked;
        if (hit.pickId == refuse) return false;
        acceptedId = hit.pickId;
        return true;
    }
    void BeginHits() override { ++begun; }
    void EndHits() override { ++ended; }

    int handled = 0, asked = 0, begun = 0, ended = 0;
    std::uint32_t handledId = 0, acceptedId = 0, refuse = 0xFFFFFFFFu;
};

class Picking : public D3DTest {
  protected:
    void SetUp() override {
        D3DTest::SetUp();
        view = std::make_unique<TestViewer>(64, 64);
        // The body: a square of half size 1 at z = 0. The handle: a smaller
        // square nearer the camera, partly in front of the body.
        AddPiece(kBodyId, 0.0f, 1.0f, 0.0f);
        AddPiece(kHandleId, 0.8f, 0.5f, 1.0f);
        picker.SetExtViewer(view.get());
    }
    void TearDown() override {
        view.reset();
        D3DTest::TearDown();
    }
    void AddPiece(std::uint32_t id, float cx, float half, float z) {
        DDisplayGroup piece;
        DPickIDStyle style(id);
        piece.AddObject(style);
        TQ3Point3D points[4] = {{cx - half, -half, z},
                                {cx + half, -half, z},
                                {cx + half, half, z},
                                {cx - half, half, z}};
        DGenPolygon square(4, points, nullptr);
        piece.AddObject(square);
        view->scene.AddObject(piece);
    }

    std::unique_ptr<TestViewer> view;
    CountingPicker picker;
};

} // namespace

TEST_F(Picking, BodyUnderAHandleWinsOverTheHandle) {
    picker.PickAt(MouseEvent{42, 32});
    ASSERT_TRUE(picker.hit);
    EXPECT_EQ(picker.acceptedId, kBodyId);
    // The body lies at z = 0, five units from the eye, behind the handle.
    EXPECT_NEAR(picker.distance, 5.0f, 0.05f);
    EXPECT_NEAR(picker.hitPoint.z, 0.0f, 1e-3f);
    // The nearest hit of all, the handle, is told to HandleHit.
    EXPECT_EQ(picker.handled, 1);
    EXPECT_EQ(picker.handledId, kHandleId);
    EXPECT_EQ(picker.begun, 1);
    EXPECT_EQ(picker.ended, 1);
    EXPECT_EQ(picker.pick, nullptr);
}

TEST_F(Picking, AHandleAloneIsTakenByTheSecondLook) {
    picker.PickAt(MouseEvent{54, 32});
    ASSERT_TRUE(picker.hit);
    EXPECT_EQ(picker.acceptedId, kHandleId);
    // The handle lies at z = 1; the distance is measured from the eye.
    EXPECT_NEAR(picker.hitPoint.z, 1.0f, 1e-3f);
    const float x = picker.hitPoint.x, y = picker.hitPoint.y;
    EXPECT_NEAR(picker.distance, std::sqrt(16 + x * x + y * y), 1e-3f);
    EXPECT_EQ(picker.handled, 0);
}

TEST_F(Picking, ARefusedBodyLeavesTheHandle) {
    picker.refuse = kBodyId;
    picker.PickAt(MouseEvent{42, 32});
    ASSERT_TRUE(picker.hit);
    EXPECT_EQ(picker.acceptedId, kHandleId);
    EXPECT_EQ(picker.handled, 0);
}

TEST_F(Picking, SingleHitAndNoHit) {
    picker.PickAt(MouseEvent{24, 32});
    ASSERT_TRUE(picker.hit);
    EXPECT_EQ(picker.acceptedId, kBodyId);
    EXPECT_EQ(picker.handled, 0);
    EXPECT_EQ(picker.asked, 1);

    // Nothing under the point: no hooks, and the last hit point stays.
    const KVector3D before = picker.hitPoint;
    picker.PickAt(MouseEvent{3, 3});
    EXPECT_FALSE(picker.hit);
    EXPECT_EQ(picker.begun, 1);
    EXPECT_EQ(picker.ended, 1);
    EXPECT_EQ(picker.hitPoint.x, before.x);
    // The pick pass submits the geometry only, never the styles.
    EXPECT_EQ(view->styleSubmits, 0);
    EXPECT_EQ(view->geometrySubmits, 2);
}

TEST_F(Picking, HitDetailsOwnTheirReferences) {
    DPickObject* kept = nullptr;
    struct Reader : CountingPicker {
        DPickObject** out;
        std::uint32_t hits = 0;
        void EndHits() override {
            hits = GetHitCount();
            DHitData a, b;
            GetHit(0, a);
            GetHit(1, b);
            EXPECT_NE(a.object, nullptr);
            EXPECT_GT(a.path.depth, 0u);
            EXPECT_LT(a.distance, b.distance);
            *out = pick;
        }
    } reader;
    reader.out = &kept;
    reader.SetExtViewer(view.get());
    reader.PickAt(MouseEvent{42, 32});
    EXPECT_EQ(reader.hits, 2u);
    EXPECT_NE(kept, nullptr);
    // Asking for a hit that is not there raises lF3q.
    struct Beyond : CountingPicker {
        void EndHits() override {
            DHitData none;
            GetHit(7, none);
        }
    } beyond;
    beyond.SetExtViewer(view.get());
    EXPECT_EQ(ThrownCode([&] { beyond.PickAt(MouseEvent{42, 32}); }), kFailLF3q);
    // The pick object stayed for the destructor; the fixture counts it.
}
