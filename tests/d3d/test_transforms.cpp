// Transforms: the rotation matrix from angles, the angles back from a
// matrix (also at the poles), and the transforms' setters.
#include "d3d/DTransformObject.h"
#include "tests/d3d/D3DTestSupport.h"

#include <cmath>
#include <random>
#include <utility>

using Transforms = D3DTest;

namespace {

void ExpectMatrixNear(const TQ3Matrix4x4& a, const TQ3Matrix4x4& b, float tolerance) {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            EXPECT_NEAR(a.value[r][c], b.value[r][c], tolerance) << "at " << r << "," << c;
}

constexpr float kPi = 3.14159265f;

} // namespace

TEST_F(Transforms, RotationMatrixAgreesWithTheLibrary) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> angle(-kPi, kPi);
    for (int i = 0; i < 50; ++i) {
        const float x = angle(random), y = angle(random), z = angle(random);
        TQ3Matrix4x4 library;
        Q3Matrix4x4_SetRotate_XYZ(&library, x, y, z);
        ExpectMatrixNear(MatrixFromRotation(x, y, z), library, 1e-5f);
    }
    // A point on x turned a quarter about z lands on y (row vectors).
    TQ3Matrix4x4 m = MatrixFromRotation(0, 0, kPi / 2);
    TQ3Point3D p{1, 0, 0}, q;
    Q3Point3D_Transform(&p, &m, &q);
    EXPECT_NEAR(q.y, 1.0f, 1e-6f);
}

TEST_F(Transforms, AnglesRoundTripThroughTheMatrix) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> full(-kPi * 0.99f, kPi * 0.99f);
    std::uniform_real_distribution<float> half(-kPi / 2 * 0.98f, kPi / 2 * 0.98f);
    DMatrixTransform transform;
    for (int i = 0; i < 200; ++i) {
        const float x = full(random), y = half(random), z = full(random);
        transform.SetMatrix(MatrixFromRotation(x, y, z));
        float ax, ay, az;
        transform.GetRotation(ax, ay, az);
        EXPECT_NEAR(ax, x, 2e-3f);
        EXPECT_NEAR(ay, y, 2e-3f);
        EXPECT_NEAR(az, z, 2e-3f);
        TQ3Matrix4x4 held;
        transform.GetMatrix(held);
        ExpectMatrixNear(held, MatrixFromRotation(x, y, z), 1e-6f);
    }
}

TEST_F(Transforms, AnglesAtAndNearThePolesGiveTheSameRotation) {
    // With y at +-90 degrees only x - z (or x + z) is fixed: z becomes 0 and
    // x carries the whole turn, so the matrix must come back unchanged.
    DMatrixTransform transform;
    float ax, ay, az;
    for (float y : {kPi / 2, -kPi / 2, kPi / 2 - 1e-6f})
        for (float x : {0.3f, -1.2f, 2.5f})
            for (float z : {0.0f, 0.4f, -0.9f}) {
                const TQ3Matrix4x4 m = MatrixFromRotation(x, y, z);
                transform.SetMatrix(m);
                transform.GetRotation(ax, ay, az);
                EXPECT_EQ(az, 0.0f);
                EXPECT_FALSE(std::isnan(ax));
                ExpectMatrixNear(MatrixFromRotation(ax, ay, az), m, 2e-3f);
            }
    // 89.9 degrees: the general formula still runs, dividing by a small
    // cosine; the angles must stay numbers and rebuild the matrix.
    const float y = 89.9f * kPi / 180;
    const TQ3Matrix4x4 m = MatrixFromRotation(0.5f, y, -0.25f);
    transform.SetMatrix(m);
    transform.GetRotation(ax, ay, az);
    EXPECT_NEAR(ay, y, 1e-3f);
    ExpectMatrixNear(MatrixFromRotation(ax, ay, az), m, 5e-3f);
}

TEST_F(Transforms, AnglesOfGarbageAreZeroNotNaN) {
    TQ3Matrix4x4 m{};
    for (auto& row : m.value)
        for (float& v : row)
            v = std::nanf("");
    const KVector3D a = RotationFromMatrix(m, true);
    EXPECT_EQ(a.x, 0.0f);
    EXPECT_EQ(a.y, 0.0f);
    EXPECT_EQ(a.z, 0.0f);
    Q3Matrix4x4_SetIdentity(&m);
    m.value[0][0] = 3.0f; // a scale, not a rotation
    const KVector3D b = RotationFromMatrix(m, false);
    EXPECT_FALSE(std::isnan(b.x) || std::isnan(b.y) || std::isnan(b.z));
}

TEST_F(Transforms, QuaternionRotateAboutFollowsWhatIsStored) {
    DQuaternionTransform q(0, kPi / 2); // a quarter about x
    q.RotateAbout({0, 0, 1}, kPi / 2);  // then a quarter about z
    TQ3Matrix4x4 m;
    q.GetMatrix(m);
    // y -> z under x, and z stays under z.
    TQ3Point3D p{0, 1, 0}, r;
    Q3Point3D_Transform(&p, &m, &r);
    EXPECT_NEAR(r.z, 1.0f, 1e-5f);
    // x -> x under x, then -> y under z.
    p = {1, 0, 0};
    Q3Point3D_Transform(&p, &m, &r);
    EXPECT_NEAR(r.y, 1.0f, 1e-5f);

    q.SetRotation(0.2f, -0.4f, 0.6f);
    KVector3D angles;
    q.GetRotation(angles);
    EXPECT_NEAR(angles.x, 0.2f, 1e-4f);
    EXPECT_NEAR(angles.y, -0.4f, 1e-4f);
    EXPECT_NEAR(angles.z, 0.6f, 1e-4f);
}

TEST_F(Transforms, AxisLettersAndNumbers) {
    // "w" and 3 stand for z; x and y in either case.
    for (auto [letter, axis] :
         {std::pair{'W', kQ3AxisZ}, {'w', kQ3AxisZ}, {'Y', kQ3AxisY}, {'x', kQ3AxisX}}) {
        DRotateTransform byLetter(letter, 0.5f);
        TQ3RotateTransformData data{};
        Q3RotateTransform_GetData(byLetter.object, &data);
        EXPECT_EQ(data.axis, axis) << letter;
    }
    DRotateTransform byNumber(3, 0.5f);
    TQ3RotateTransformData data{};
    Q3RotateTransform_GetData(byNumber.object, &data);
    EXPECT_EQ(data.axis, kQ3AxisZ);
}
