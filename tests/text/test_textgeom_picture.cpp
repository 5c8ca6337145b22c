// "Lumerra 3D" along three paths, drawn by the interactive renderer into a
// pixmap and saved as pictures: blue faces, red sides, hollow outlines.

#include "curves/VAnalyticPathTable.h"
#include "d3d/DTransformObject.h"
#include "tests/qd3d/Q3TestSupport.h"
#include "tests/text/TextGeomFixture.h"
#include "text/VAlignedText.h"

#include <string>

namespace {

struct Counts {
    int drawn = 0; // pixels the text covers
    int faces = 0; // blue ones
    int sides = 0; // red ones
};

Counts Render(int pathIndex, bool outline, const char* name, float turnY, float turnX,
              float distance) {
    Chain chain = Read("Lumerra 3D");
    EXPECT_TRUE(chain);
    std::unique_ptr<VCurve> path = MakeAnalyticPath(pathIndex);
    VCurveData data(path.get());
    data.depth = 6;
    VAlignedText text;
    text.SetDiffuseColor(0.25f, 0.45f, 1.0f);
    const std::uint16_t red[3] = {65535, 0, 0};
    text.Rebuild(chain.get(), data, outline, 1.0f, red);

    q3test::TestView view(640, 360, distance);
    view.addLight(q3test::ambient(0.35f));
    view.addLight(q3test::directional(-0.4f, -0.5f, -1.0f, 0.8f));
    view.addLight(q3test::directional(0.8f, 0.0f, -0.3f, 0.5f));
    DRotateTransform aroundY('y', turnY), aroundX('x', turnX);
    view.render([&](TQ3ViewObject v) {
        aroundX.SubmitTo(v);
        aroundY.SubmitTo(v);
        text.SubmitTo(v);
    });
    view.save(name);

    Counts counts;
    for (int y = 0; y < view.height; ++y)
        for (int x = 0; x < view.width; ++x) {
            const q3test::Pixel p = view.at(x, y);
            if (p.a == 0) continue;
            ++counts.drawn;
            if (p.b > 40 && p.b > p.r + 20) ++counts.faces;
            if (p.r > 40 && p.r > p.g + 30 && p.r > p.b + 30) ++counts.sides;
        }
    return counts;
}

} // namespace

TEST_F(TextGeomTest, PicturesAlongALineAnEllipseAndAHelix) {
    struct Shot {
        int path;
        const char* name;
        float turnY, turnX, distance;
    };
    for (const Shot& shot :
         {Shot{1, "textgeom_line", 0.5f, 0.3f, 7}, Shot{2, "textgeom_ellipse", 0.0f, 0.5f, 7},
          Shot{6, "textgeom_helix", -1.2f, 0.2f, 8}}) {
        SCOPED_TRACE(shot.name);
        const Counts c = Render(shot.path, false, shot.name, shot.turnY, shot.turnX, shot.distance);
        EXPECT_GT(c.drawn, 640 * 360 / 40);
        EXPECT_GT(c.faces, c.drawn / 5);
        // Sides that faced inward would be culled where they face the camera.
        EXPECT_GT(c.sides, c.drawn / 20);
    }
    // Hollow letters are wires in the face colour; no side is filled.
    const Counts c = Render(3, true, "textgeom_wave_hollow", 0.4f, 0.3f, 8);
    EXPECT_GT(c.drawn, 500);
    EXPECT_EQ(c.sides, 0);
    EXPECT_LT(c.drawn, 640 * 360 / 4);
}
