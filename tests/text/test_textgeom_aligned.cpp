// Text along a path: each letter at the arc length of its middle, the pen
// rules of open and closed paths, the turns about the letter's middle, and
// what a rebuild leaves in the group.

#include "curves/VAnalyticPathTable.h"
#include "curves/VCurveAnalyticPaths.h"
#include "tests/text/TextGeomFixture.h"
#include "text/VAlignedText.h"

#include <cmath>
#include <limits>
#include <memory>
#include <string>

using namespace textgeom;

namespace {

// The letter groups of a text model: what follows its attribute set and its
// back-face style.
std::vector<TQ3Matrix4x4> LetterMatrices(const VAlignedText& text) {
    std::vector<TQ3Matrix4x4> out;
    std::vector<TQ3Object> members = Members(text.object);
    for (size_t i = 0; i < members.size(); ++i) {
        if (i >= 2) out.push_back(HeadMatrix(members[i]));
        Q3Object_Dispose(members[i]);
    }
    return out;
}

std::vector<TQ3GroupObject> LetterGroups(const VAlignedText& text) {
    std::vector<TQ3GroupObject> out;
    std::vector<TQ3Object> members = Members(text.object);
    for (size_t i = 0; i < members.size(); ++i)
        if (i >= 2)
            out.push_back(members[i]);
        else
            Q3Object_Dispose(members[i]);
    return out;
}

void Release(const std::vector<TQ3GroupObject>& groups) {
    for (TQ3GroupObject g : groups)
        Q3Object_Dispose(g);
}

float Distance(const TQ3Point3D& a, const KVector3D& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

float Distance(const TQ3Vector3D& a, const KVector3D& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

// The ink's length along the path, from the letters' own measures.
float InkLength(const TextCharacter* chain, float width, float spacing) {
    std::vector<const TextCharacter*> chars = Characters(chain);
    if (chars.empty()) return 0;
    float length = width * (chars.back()->xMax - chars.front()->xMin);
    for (size_t i = 0; i + 1 < chars.size(); ++i)
        length += width * chars[i]->advance + spacing;
    return length;
}

int ContourCount(const TextCharacter* c) {
    int n = 0;
    for (const OuterContour* o = c->contours; o; o = o->next)
        ++n;
    return n;
}

// Checks every letter group against the frame at the arc length of its
// letter's middle, with the layout of data; answers the groups checked.
size_t CheckPlacement(const VAlignedText& text, const TextCharacter* chain, VCurveData& data) {
    VCurve& path = *data.curve;
    const float w = data.width, h = data.height;
    const float length = path.GetLength();
    const float ink = InkLength(chain, w, data.spacing);
    // Where the left edge of the ink goes; the pen sits xMin to the left of
    // it, and each letter's middle lies middle * w to the right of its pen.
    const float start = path.IsClosed() ? data.slide / 100 * length - ink / 2
                                        : std::fmax(0.0f, data.slide / 100 * (length - ink));
    std::vector<TQ3Matrix4x4> letters = LetterMatrices(text);
    size_t at = 0;
    float pen = start - (chain ? chain->xMin * w : 0);
    for (const TextCharacter* c = chain; c; c = c->next) {
        const float middle = (c->xMin + c->xMax) / 2;
        const float s = pen + middle * w;
        KVector3D point, tangent, normal, binormal;
        if (ContourCount(c) > 0 && path.GetFrame(s, point, tangent, normal, binormal)) {
            for (int k = 0; k < ContourCount(c); ++k) {
                EXPECT_LT(at, letters.size());
                if (at >= letters.size()) return at;
                const TQ3Matrix4x4& m = letters[at++];
                const float tolerance = 1e-3f * (1 + std::fabs(s));
                EXPECT_LT(Distance(Apply(m, {middle, 0, 0}), point), tolerance) << "at s " << s;
                EXPECT_LT(Distance(ApplyVector(m, {1, 0, 0}), tangent * w), 1e-4f);
                EXPECT_LT(Distance(ApplyVector(m, {0, 1, 0}), normal * h), 1e-4f);
                EXPECT_LT(Distance(ApplyVector(m, {0, 0, 1}), binormal), 1e-4f);
            }
        }
        pen += w * c->advance + data.spacing;
    }
    EXPECT_EQ(at, letters.size()) << "no letter groups beyond those expected";
    return at;
}

struct Model {
    std::unique_ptr<VCurve> path;
    VCurveData data{nullptr};
    VAlignedText text;

    explicit Model(std::unique_ptr<VCurve> p) : path(std::move(p)) { data.curve = path.get(); }
    void Rebuild(const TextCharacter* chain, bool outline = false, float opacity = 1.0f,
                 const std::uint16_t* side = nullptr) {
        text.Rebuild(chain, data, outline, opacity, side);
    }
};

std::unique_ptr<VCurve> Path(int index) {
    return MakeAnalyticPath(index);
}

} // namespace

TEST_F(TextGeomTest, LettersSitAtTheirMiddlesOnEveryPath) {
    Chain chain = Read("Lumerra 3D");
    ASSERT_TRUE(chain);
    for (int index = 1; index <= kAnalyticPathCount; ++index) {
        SCOPED_TRACE(GetAnalyticPathEntry(index)->name);
        Model model(Path(index));
        ASSERT_TRUE(model.path);
        model.data.spacing = 0.2f;
        model.data.width = 1.5f;
        model.data.height = 2.5f;
        model.data.slide = 40;
        model.Rebuild(chain.get());
        // L, u, m, e, r, r, a, 3 and D, and nothing for the space.
        EXPECT_EQ(CheckPlacement(model.text, chain.get(), model.data), 9u);
    }
}

TEST_F(TextGeomTest, OpenPathsRunFromStartToEnd) {
    Chain chain = Read("Lumerra");
    ASSERT_TRUE(chain);
    const TextCharacter* first = chain.get();
    const TextCharacter* last = Characters(chain.get()).back();
    Model line(Path(1)); // from -24 to 24 along x
    line.data.width = 3;
    line.data.spacing = 0.5f;
    line.data.slide = 0;
    line.Rebuild(chain.get());
    std::vector<TQ3Matrix4x4> letters = LetterMatrices(line.text);
    ASSERT_EQ(letters.size(), 7u);
    // The ink, not the pen, starts at the start of the path.
    EXPECT_NEAR(Apply(letters.front(), {first->xMin, 0, 0}).x, -24, 1e-3);
    line.data.slide = 100;
    line.Rebuild(chain.get());
    letters = LetterMatrices(line.text);
    ASSERT_EQ(letters.size(), 7u);
    // The last letter's advance does not count: its ink ends at the end.
    EXPECT_NEAR(Apply(letters.back(), {last->xMax, 0, 0}).x, 24, 1e-3);
    EXPECT_NEAR(VAlignedText::TextLength(chain.get(), 3, 0.5f), InkLength(chain.get(), 3, 0.5f),
                1e-4);
}

TEST_F(TextGeomTest, ClosedPathsWrapAndOpenOnesDropWhatRunsOff) {
    std::string longText;
    for (int i = 0; i < 6; ++i)
        longText += "Lumerra 3D ";
    Chain chain = Read(longText.c_str());
    ASSERT_TRUE(chain);
    const size_t all = Outers(chain.get()).size();

    Model ellipse(Path(2));
    ASSERT_TRUE(ellipse.path->IsClosed());
    ASSERT_GT(VAlignedText::TextLength(chain.get(), 2, 0), ellipse.path->GetLength());
    ellipse.Rebuild(chain.get());
    EXPECT_EQ(CheckPlacement(ellipse.text, chain.get(), ellipse.data), all)
        << "round the start and over itself";

    Model line(Path(1));
    ASSERT_GT(VAlignedText::TextLength(chain.get(), 2, 0), line.path->GetLength());
    line.Rebuild(chain.get());
    const size_t placed = CheckPlacement(line.text, chain.get(), line.data);
    EXPECT_GT(placed, 0u);
    EXPECT_LT(placed, all);
    // A text longer than the path starts at its start, whatever the slide.
    std::vector<TQ3Matrix4x4> letters = LetterMatrices(line.text);
    EXPECT_NEAR(Apply(letters.front(), {chain->xMin, 0, 0}).x, -24, 1e-3);
}

TEST_F(TextGeomTest, EmptyTextLeavesTheStyleAlone) {
    Model model(Path(1));
    model.text.SetDiffuseColor(0.2f, 0.4f, 0.6f);
    Chain chain = Read("ab");
    model.Rebuild(chain.get());
    EXPECT_EQ(model.text.CountObjects(), 2u + 2u);
    for (const TextCharacter* empty : {static_cast<const TextCharacter*>(nullptr)}) {
        model.Rebuild(empty);
        ASSERT_EQ(model.text.CountObjects(), 2u);
        std::vector<TQ3Object> members = Members(model.text.object);
        EXPECT_EQ(members[0], model.text.attributes.object) << "the face colour stays first";
        ASSERT_EQ(Q3Object_IsType(members[1], kQ3StyleTypeBackfacing), kQ3True);
        TQ3BackfacingStyle style{};
        Q3BackfacingStyle_Get(members[1], &style);
        EXPECT_EQ(style, kQ3BackfacingStyleRemove);
        for (TQ3Object m : members)
            Q3Object_Dispose(m);
    }
    TQ3ColorRGB colour{};
    EXPECT_TRUE(model.text.attributes.Get(kQ3AttributeTypeDiffuseColor, &colour));
    EXPECT_FLOAT_EQ(colour.g, 0.4f);
    // No path, or one too short for frames: no letters either.
    model.data.curve = nullptr;
    model.Rebuild(chain.get());
    EXPECT_EQ(model.text.CountObjects(), 2u);
    Model speck(std::make_unique<VCurveAxis>(0.0f, 0.000001f, 0.000001f));
    speck.Rebuild(chain.get());
    EXPECT_EQ(speck.text.CountObjects(), 2u);
}

TEST_F(TextGeomTest, ASpaceMovesThePenByItsAdvanceAndTheSpacing) {
    Chain joined = Read("AB");
    Chain spaced = Read("A B");
    ASSERT_TRUE(joined && spaced);
    const float spaceAdvance = spaced->next->advance;
    ASSERT_GT(spaceAdvance, 0);
    ASSERT_EQ(spaced->next->contours, nullptr);
    auto bMiddle = [](const TextCharacter* chain, float spacing) {
        Model line(Path(1));
        line.data.slide = 0;
        line.data.spacing = spacing;
        line.Rebuild(chain);
        std::vector<TQ3Matrix4x4> letters = LetterMatrices(line.text);
        const TextCharacter* b = Characters(chain).back();
        return Apply(letters.back(), {(b->xMin + b->xMax) / 2, 0, 0}).x;
    };
    const float w = 2;
    // The spacing is in path units, not scaled by the width.
    for (float spacing : {0.0f, 0.7f, -0.3f})
        EXPECT_NEAR(bMiddle(spaced.get(), spacing) - bMiddle(joined.get(), spacing),
                    w * spaceAdvance + spacing, 1e-4)
            << "spacing " << spacing;
}

TEST_F(TextGeomTest, TurnsActAboutTheLettersMiddle) {
    Chain chain = Read("H");
    ASSERT_TRUE(chain);
    const float middle = (chain->xMin + chain->xMax) / 2;
    Model wave(Path(3));
    wave.Rebuild(chain.get());
    const TQ3Matrix4x4 plain = LetterMatrices(wave.text).at(0);
    const TQ3Point3D centre = Apply(plain, {middle, 0, 0});
    const TQ3Vector3D tangent = ApplyVector(plain, {1, 0, 0});
    const TQ3Vector3D binormal = ApplyVector(plain, {0, 0, 1});

    // Revolve turns about the tangent: the letter's up goes to the binormal.
    wave.data.revolve = 90;
    wave.Rebuild(chain.get());
    TQ3Matrix4x4 m = LetterMatrices(wave.text).at(0);
    TQ3Point3D p = Apply(m, {middle, 0, 0});
    EXPECT_NEAR(p.x, centre.x, 1e-4);
    EXPECT_NEAR(p.y, centre.y, 1e-4);
    TQ3Vector3D up = ApplyVector(m, {0, 1, 0});
    EXPECT_NEAR(std::fabs(Q3Vector3D_Dot(&up, &binormal)), wave.data.height, 1e-4);
    TQ3Vector3D along = ApplyVector(m, {1, 0, 0});
    EXPECT_NEAR(Q3Vector3D_Dot(&along, &tangent), wave.data.width * wave.data.width, 1e-4);

    // All three turns at once still leave the middle on the curve and keep
    // the letter's measures.
    wave.data.revolve = 30;
    wave.data.rotate = -70;
    wave.data.tilt = 125;
    wave.Rebuild(chain.get());
    m = LetterMatrices(wave.text).at(0);
    p = Apply(m, {middle, 0, 0});
    EXPECT_NEAR(p.x, centre.x, 1e-4);
    EXPECT_NEAR(p.y, centre.y, 1e-4);
    EXPECT_NEAR(p.z, centre.z, 1e-4);
    up = ApplyVector(m, {0, 1, 0});
    EXPECT_NEAR(Q3Vector3D_Length(&up), wave.data.height, 1e-4);
    TQ3Vector3D depth = ApplyVector(m, {0, 0, 1});
    EXPECT_NEAR(Q3Vector3D_Length(&depth), 1, 1e-5);
    EXPECT_GT(std::fabs(depth.x - binormal.x) + std::fabs(depth.y - binormal.y) +
                  std::fabs(depth.z - binormal.z),
              0.1f);
}

TEST_F(TextGeomTest, WidthAndHeightLeaveTheDepthAlone) {
    Chain chain = Read("o");
    ASSERT_TRUE(chain);
    Model helix(Path(6));
    helix.data.width = 0.01f;
    helix.data.height = 20;
    helix.data.depth = 10;
    helix.Rebuild(chain.get());
    std::vector<TQ3GroupObject> groups = LetterGroups(helix.text);
    ASSERT_EQ(groups.size(), 1u);
    const TQ3Matrix4x4 m = HeadMatrix(groups[0]);
    TQ3Vector3D binormal = ApplyVector(m, {0, 0, 1});
    const Walked w = Walk(groups[0]);
    Release(groups);
    ASSERT_EQ(w.polygons.size(), 2u);
    // The body runs 1 either side of the letter's plane along the binormal.
    TQ3Point3D origin = Apply(m, {0, 0, 0});
    float low = 1e30f, high = -1e30f;
    for (const WalkedPolygon& poly : w.polygons)
        for (const auto& contour : poly.contours)
            for (const WalkedVertex& v : contour) {
                TQ3Vector3D d{v.point.x - origin.x, v.point.y - origin.y, v.point.z - origin.z};
                const float along = Q3Vector3D_Dot(&d, &binormal);
                low = std::fmin(low, along);
                high = std::fmax(high, along);
            }
    EXPECT_NEAR(low, -1, 1e-4);
    EXPECT_NEAR(high, 1, 1e-4);
}

TEST_F(TextGeomTest, OutlineOpacityAndSideColourReachTheLetters) {
    Chain chain = Read("e i");
    ASSERT_TRUE(chain);
    Model model(Path(2));
    model.Rebuild(chain.get(), true);
    Walked w = Walk(model.text.object);
    EXPECT_TRUE(w.polygons.empty());
    EXPECT_EQ(w.grids.size(), 4u) << "e with its hole, and the two parts of the i";
    EXPECT_EQ(w.fills.size(), 3u);

    const std::uint16_t side[3] = {0, 65535, 0};
    model.Rebuild(chain.get(), false, 0.5f, side);
    w = Walk(model.text.object);
    EXPECT_EQ(w.polygons.size(), 6u);
    for (const WalkedPolygon& p : w.polygons)
        EXPECT_TRUE(p.transparent);
    for (const WalkedGrid& g : w.grids) {
        EXPECT_TRUE(g.coloured);
        EXPECT_FLOAT_EQ(g.colour.g, 1.0f);
    }
    // The i's two contours stand on the same transforms.
    std::vector<TQ3Matrix4x4> letters = LetterMatrices(model.text);
    ASSERT_EQ(letters.size(), 3u);
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            EXPECT_EQ(letters[1].value[r][c], letters[2].value[r][c]);
}

TEST_F(TextGeomTest, AFailureOfTheLibraryLeavesTheGroupEmpty) {
    Chain chain = Read("abc");
    ASSERT_TRUE(chain);
    Model model(Path(1));
    model.Rebuild(chain.get());
    ASSERT_EQ(model.text.CountObjects(), 2u + 3u);
    // The library refuses a scale that is not finite; the letters before it
    // are taken out again and the failure goes on to the caller.
    model.data.height = std::numeric_limits<float>::infinity();
    bool thrown = false;
    try {
        model.Rebuild(chain.get());
    } catch (std::int32_t) {
        thrown = true;
    }
    EXPECT_TRUE(thrown);
    ASSERT_EQ(model.text.CountObjects(), 1u);
    std::vector<TQ3Object> members = Members(model.text.object);
    EXPECT_EQ(members[0], model.text.attributes.object);
    for (TQ3Object m : members)
        Q3Object_Dispose(m);
    // A width that is no number places no letter rather than one at NaN.
    model.data.height = 2;
    model.data.width = std::numeric_limits<float>::quiet_NaN();
    model.Rebuild(chain.get());
    EXPECT_EQ(model.text.CountObjects(), 2u);
}
