// A point or direction in the scene: four 32-bit floats x, y, z, w.
// As a direction w is 0 or ignored; as a point w is 1; in curve control
// points the four floats are homogeneous (w x, w y, w z, w).
#pragma once

#include <cmath>

struct tuple_3d {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 0.0f;
};

struct vector_3d : tuple_3d {
    constexpr vector_3d() = default;
    constexpr vector_3d(float ax, float ay, float az, float aw = 0.0f) {
        x = ax;
        y = ay;
        z = az;
        w = aw;
    }

    // Arithmetic acts on x, y and z; w is carried from the left operand.
    vector_3d operator+(const vector_3d& o) const { return {x + o.x, y + o.y, z + o.z, w}; }
    vector_3d operator-(const vector_3d& o) const { return {x - o.x, y - o.y, z - o.z, w}; }
    vector_3d operator*(float f) const { return {x * f, y * f, z * f, w}; }
    vector_3d operator-() const { return {-x, -y, -z, w}; }

    float Dot(const vector_3d& o) const { return x * o.x + y * o.y + z * o.z; }
    vector_3d Cross(const vector_3d& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x, 0.0f};
    }
    float Length() const { return std::sqrt(x * x + y * y + z * z); }

    // Unit vector in the same direction; a zero vector stays zero so that
    // no NaN can come out of a degenerate direction.
    vector_3d Unit() const {
        float len = Length();
        if (!(len > 0.0f) || !std::isfinite(len)) return {0.0f, 0.0f, 0.0f, 0.0f};
        return {x / len, y / len, z / len, 0.0f};
    }
};

using KVector3D = vector_3d;
