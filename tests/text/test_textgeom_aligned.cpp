// Text along a path: each letter at the arc length of its middle, the pen
// rules of open and closed paths, turns about the letter's middle, and what
// a rebuild leaves in the group.

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

// The matrices of the letter groups: what follows the text's attribute set
// and back-face style.
std::vector<TQ3Matrix4x4> LetterMatrices(const VAlignedText& text) {
    std::vector<TQ3Matrix4x4> out;
    std::vector<TQ3Object> members = Members(text.object);
    for (size_t i = 0; i < members.size(); ++i) {
        if (i >= 2) out.push_back(HeadMatrix(members[i]));
        Q3Object_Dispose(members[i]);
    }
    return out;
}

float Gap(const TQ3Point3D& a, const KVector3D& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

float Gap(const TQ3Vector3D& a, const KVector3D& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

// The ink's length along the path, from the letters' own measures.
float InkLength(const TextCharacter* chain, float width, float spacing) {
    std::vector<const TextCharacter*> chars = Characters(chain);
    float length = width * (chars.back()->xMax - chars.front()->xMin);
    for (size_t i = 0; i + 1 < chars.size(); ++i)
        length += width * chars[i]->advance + spacing;
    return length;
}

struct Model {
    std::unique_ptr<VCurve> path;
    VCurveData data{nullptr};
    VAlignedText text;

    explicit Model(std::unique_ptr<VCurve> p) : path(std::move(p)) { data.curve = path.get(); }
    explicit Model(int index) : Model(std::unique_ptr<VCurve>(MakeAnalyticPath(index))) {}
    void Rebuild(const TextCharacter* chain) { text.Rebuild(chain, data, false, 1.0f, nullptr); }
};

// Checks every letter group against the frame at the arc length of its
// letter's middle; answers the number of groups.
size_t CheckPlacement(Model& model, const TextCharacter* chain) {
    VCurve& path = *model.path;
    const VCurveData& data = model.data;
    const float w = data.width, length = path.GetLength();
    const float ink = InkLength(chain, w, data.spacing);
    // The left edge of the ink goes here; the pen sits xMin before it.
    const float start = path.IsClosed() ? data.slide / 100 * length - ink / 2
                                        : std::fmax(0.0f, data.slide / 100 * (length - ink));
    float pen = start - chain->xMin * w;
    std::vector<TQ3Matrix4x4> letters = LetterMatrices(model.text);
    size_t at = 0;
    for (const TextCharacter* c = chain; c; pen += w * c->advance + data.spacing, c = c->next) {
        const float middle = (c->xMin + c->xMax) / 2, s = pen + middle * w;
        KVector3D point, tangent, normal, binormal;
        if (!path.GetFrame(s, point, tangent, normal, binormal)) continue;
        for (const OuterContour* o = c->contours; o; o = o->next) {
            if (at >= letters.size()) {
                ADD_FAILURE() << "too few letter groups";
                return at;
            }
            const TQ3Matrix4x4& m = letters[at++];
            EXPECT_LT(Gap(Apply(m, {middle, 0, 0}), point), 1e-3f * (1 + std::fabs(s)));
            EXPECT_LT(Gap(ApplyVector(m, {1, 0, 0}), tangent * w), 1e-4f);
            EXPECT_LT(Gap(ApplyVector(m, {0, 1, 0}), normal * data.height), 1e-4f);
            EXPECT_LT(Gap(ApplyVector(m, {0, 0, 1}), binormal), 1e-4f);
        }
    }
    EXPECT_EQ(at, letters.size()) << "no letter groups beyond those expected";
    return at;
}

} // namespace

TEST_F(TextGeomTest, LettersSitAtTheirMiddlesOnEveryPath) {
    Chain chain = Read("Lumerra 3D");
    ASSERT_TRUE(chain);
    for (int index = 1; index <= kAnalyticPathCount; ++index) {
        SCOPED_TRACE(GetAnalyticPathEntry(index)->name);
        Model model(index);
        model.data.spacing = 0.2f;
        model.data.width = 1.5f;
        model.data.height = 2.5f;
        model.data.slide = 40;
        model.Rebuild(chain.get());
        // L, u, m, e, r, r, a, 3 and D; nothing for the space.
        EXPECT_EQ(CheckPlacement(model, chain.get()), 9u);
    }
}

TEST_F(TextGeomTest, OpenPathsRunFromStartToEndAndDropWhatRunsOff) {
    Chain chain = Read("Lumerra");
    ASSERT_TRUE(chain);
    Model line(1); // from -24 to 24 along x
    line.data.width = 3;
    line.data.spacing = 0.5f;
    line.data.slide = 0;
    line.Rebuild(chain.get());
    // The ink, not the pen, starts at the start of the path...
    EXPECT_NEAR(Apply(LetterMatrices(line.text).at(0), {chain->xMin, 0, 0}).x, -24, 1e-3);
    // ...and the last letter's advance does not count: its ink ends at the
    // end.
    line.data.slide = 100;
    line.Rebuild(chain.get());
    const TextCharacter* last = Characters(chain.get()).back();
    EXPECT_NEAR(Apply(LetterMatrices(line.text).at(6), {last->xMax, 0, 0}).x, 24, 1e-3);

    std::string text;
    for (int i = 0; i < 6; ++i)
        text += "Lumerra 3D ";
    Chain longChain = Read(text.c_str());
    ASSERT_TRUE(longChain);
    const size_t all = Outers(longChain.get()).size();
    ASSERT_GT(VAlignedText::TextLength(longChain.get(), 2, 0), 48);
    // On the open line the text starts at 0 whatever the slide, and what
    // runs off the end is left out.
    Model open(1);
    open.Rebuild(longChain.get());
    const size_t placed = CheckPlacement(open, longChain.get());
    EXPECT_GT(placed, all / 3);
    EXPECT_LT(placed, all);
    EXPECT_NEAR(Apply(LetterMatrices(open.text).at(0), {longChain->xMin, 0, 0}).x, -24, 1e-3);
    // On the closed ellipse it runs on round the start and over itself.
    Model ellipse(2);
    ASSERT_TRUE(ellipse.path->IsClosed());
    ellipse.Rebuild(longChain.get());
    EXPECT_EQ(CheckPlacement(ellipse, longChain.get()), all);
}

TEST_F(TextGeomTest, EmptyTextNoPathAndFailuresLeaveTheStyleAlone) {
    Chain chain = Read("ab");
    ASSERT_TRUE(chain);
    Model model(1);
    model.text.SetDiffuseColor(0.2f, 0.4f, 0.6f);
    model.Rebuild(chain.get());
    EXPECT_EQ(model.text.CountObjects(), 4u);
    model.Rebuild(nullptr);
    ASSERT_EQ(model.text.CountObjects(), 2u);
    std::vector<TQ3Object> members = Members(model.text.object);
    EXPECT_EQ(members[0], model.text.attributes.object) << "the face colour stays first";
    TQ3BackfacingStyle style{};
    EXPECT_EQ(Q3BackfacingStyle_Get(members[1], &style), kQ3Success);
    EXPECT_EQ(style, kQ3BackfacingStyleRemove);
    for (TQ3Object m : members)
        Q3Object_Dispose(m);
    // No path, or one too short for frames: no letters either.
    model.data.curve = nullptr;
    model.Rebuild(chain.get());
    EXPECT_EQ(model.text.CountObjects(), 2u);
    Model speck(std::make_unique<VCurveAxis>(0.0f, 0.000001f, 0.000001f));
    speck.Rebuild(chain.get());
    EXPECT_EQ(speck.text.CountObjects(), 2u);
    // The library refuses a scale that is not finite: the letters made
    // before are taken out again and the failure goes on to the caller.
    model.data.curve = model.path.get();
    model.data.height = std::numeric_limits<float>::infinity();
    EXPECT_THROW(model.Rebuild(chain.get()), std::int32_t);
    EXPECT_EQ(model.text.CountObjects(), 1u);
    // A width that is no number places no letter rather than one at NaN.
    model.data.height = 2;
    model.data.width = std::numeric_limits<float>::quiet_NaN();
    model.Rebuild(chain.get());
    EXPECT_EQ(model.text.CountObjects(), 2u);
    TQ3ColorRGB colour{};
    EXPECT_TRUE(model.text.attributes.Get(kQ3AttributeTypeDiffuseColor, &colour));
    EXPECT_FLOAT_EQ(colour.g, 0.4f);
}

TEST_F(TextGeomTest, ASpaceMovesThePenByItsAdvanceAndTheSpacing) {
    Chain joined = Read("AB"), spaced = Read("A B");
    ASSERT_TRUE(joined && spaced);
    ASSERT_EQ(spaced->next->contours, nullptr);
    auto bMiddle = [](const TextCharacter* chain, float spacing) {
        Model line(1);
        line.data.slide = 0;
        line.data.spacing = spacing;
        line.Rebuild(chain);
        const TextCharacter* b = Characters(chain).back();
        return Apply(LetterMatrices(line.text).back(), {(b->xMin + b->xMax) / 2, 0, 0}).x;
    };
    // The spacing is in path units, not scaled by the width of 2.
    for (float spacing : {0.0f, 0.7f, -0.3f})
        EXPECT_NEAR(bMiddle(spaced.get(), spacing) - bMiddle(joined.get(), spacing),
                    2 * spaced->next->advance + spacing, 1e-4);
}

TEST_F(TextGeomTest, TurnsActAboutTheMiddleAndDepthIsNotScaled) {
    Chain chain = Read("H");
    ASSERT_TRUE(chain);
    const float middle = (chain->xMin + chain->xMax) / 2;
    Model wave(3);
    wave.Rebuild(chain.get());
    const TQ3Matrix4x4 plain = LetterMatrices(wave.text).at(0);
    const TQ3Point3D centre = Apply(plain, {middle, 0, 0});
    const TQ3Vector3D binormal = ApplyVector(plain, {0, 0, 1});
    // Revolve turns about the tangent: the letter's up goes to the binormal.
    wave.data.revolve = 90;
    wave.Rebuild(chain.get());
    TQ3Matrix4x4 m = LetterMatrices(wave.text).at(0);
    TQ3Vector3D up = ApplyVector(m, {0, 1, 0});
    EXPECT_NEAR(std::fabs(Q3Vector3D_Dot(&up, &binormal)), wave.data.height, 1e-4);
    // All three turns leave the middle on the curve and the measures alone.
    wave.data.rotate = -70;
    wave.data.tilt = 125;
    wave.Rebuild(chain.get());
    m = LetterMatrices(wave.text).at(0);
    const TQ3Point3D p = Apply(m, {middle, 0, 0});
    EXPECT_LT(std::hypot(p.x - centre.x, p.y - centre.y, p.z - centre.z), 1e-4);
    up = ApplyVector(m, {0, 1, 0});
    EXPECT_NEAR(Q3Vector3D_Length(&up), wave.data.height, 1e-4);

    // A letter of width 0.01 and height 20 is still 2 deep at depth 10.
    Model helix(6);
    helix.data.width = 0.01f;
    helix.data.height = 20;
    helix.data.depth = 10;
    helix.Rebuild(chain.get());
    std::vector<TQ3Object> members = Members(helix.text.object);
    ASSERT_EQ(members.size(), 3u);
    const TQ3Matrix4x4 letter = HeadMatrix(members[2]);
    const Walked w = Walk(members[2]);
    for (TQ3Object o : members)
        Q3Object_Dispose(o);
    const TQ3Vector3D depthAxis = ApplyVector(letter, {0, 0, 1});
    const TQ3Point3D origin = Apply(letter, {0, 0, 0});
    float low = 1e30f, high = -1e30f;
    for (const WalkedPolygon& poly : w.polygons)
        for (const WalkedVertex& v : poly.contours[0]) {
            TQ3Vector3D d{v.point.x - origin.x, v.point.y - origin.y, v.point.z - origin.z};
            low = std::fmin(low, Q3Vector3D_Dot(&d, &depthAxis));
            high = std::fmax(high, Q3Vector3D_Dot(&d, &depthAxis));
        }
    EXPECT_NEAR(low, -1, 1e-4);
    EXPECT_NEAR(high, 1, 1e-4);
}
