#include "text/VAlignedText.h"

#include "d3d/DStyleObject.h"
#include "d3d/DTransformObject.h"
#include "text/GroupMember.h"
#include "text/VHollowChar.h"
#include "text/VSolidChar.h"

#include <cmath>

namespace {

constexpr float kDegreesToRadians = 3.1415927f / 180.0f;

float Radians(float degrees) {
    return std::isfinite(degrees) ? degrees * kDegreesToRadians : 0.0f;
}

float FiniteOr(float value, float fallback) {
    return std::isfinite(value) ? value : fallback;
}

} // namespace

float VAlignedText::TextLength(const TextCharacter* chars, float width, float spacing) {
    if (!chars) return 0.0f;
    float length = -chars->xMin * width;
    for (const TextCharacter* c = chars; c; c = c->next)
        length += c->next ? width * c->advance + spacing : width * c->xMax;
    return length;
}

float VAlignedText::StartPen(const TextCharacter* chars, const VCurveData& curveData,
                             float pathLength, bool closed) {
    const float width = FiniteOr(curveData.width, 1.0f);
    const float textLength = TextLength(chars, width, FiniteOr(curveData.spacing, 0.0f));
    const float along = FiniteOr(curveData.slide, 0.0f) / 100.0f;
    float pen;
    if (closed) {
        pen = along * pathLength - textLength / 2.0f;
    } else {
        pen = along * (pathLength - textLength);
        if (!(pen >= 0.0f)) pen = 0.0f;
    }
    // The ink, not the pen origin, starts at the place found.
    if (chars) pen -= chars->xMin * width;
    return pen;
}

void VAlignedText::PlaceCharacter(DGroupObject& group, const KVector3D& point,
                                  const KVector3D& tangent, const KVector3D& normal,
                                  const KVector3D& binormal, float half, const VCurveData& data) {
    DTranslateTransform toPoint(point.x, point.y, point.z);
    AddMember(group, toPoint);
    DRotateAboutTransform revolve(tangent, Radians(data.revolve));
    AddMember(group, revolve);
    DRotateAboutTransform rotate(normal, Radians(data.rotate));
    AddMember(group, rotate);
    DRotateAboutTransform tilt(binormal, Radians(data.tilt));
    AddMember(group, tilt);
    // Back along the tangent by half the letter, so that the turns above act
    // about the letter's middle on the curve.
    DTranslateTransform back(-half * tangent.x, -half * tangent.y, -half * tangent.z);
    AddMember(group, back);

    // The letter's x runs along the path, its y along the normal and its
    // depth along the binormal.
    TQ3Matrix4x4 frame;
    Q3Matrix4x4_SetIdentity(&frame);
    const KVector3D* rows[3] = {&tangent, &normal, &binormal};
    for (int r = 0; r < 3; ++r) {
        frame.value[r][0] = rows[r]->x;
        frame.value[r][1] = rows[r]->y;
        frame.value[r][2] = rows[r]->z;
    }
    DMatrixTransform axes;
    axes.SetMatrix(frame);
    AddMember(group, axes);

    DTranslateTransform offset(FiniteOr(data.offsetX, 0.0f), FiniteOr(data.offsetY, 0.0f), 0.0f);
    AddMember(group, offset);
    TQ3Matrix4x4 spinMatrix;
    Q3Matrix4x4_SetIdentity(&spinMatrix);
    spinMatrix.value[1][0] = FiniteOr(data.spin, 0.0f);
    DMatrixTransform spin;
    spin.SetMatrix(spinMatrix);
    AddMember(group, spin);
    // Depth is not scaled: only the letter's own x and y.
    DScaleTransform scale(data.width, data.height, 1.0f);
    AddMember(group, scale);
}

void VAlignedText::Rebuild(const TextCharacter* chars, const VCurveData& curveData, bool outline,
                           float opacity, const std::uint16_t* sideColor) {
    Empty();
    try {
        Layout(chars, curveData, outline, opacity, sideColor);
    } catch (...) {
        // Half a text is worse than none: leave the group empty, keeping its
        // attribute set, and let the caller hear of the failure.
        try {
            Empty();
        } catch (...) {
        }
        throw;
    }
}

void VAlignedText::Layout(const TextCharacter* chars, const VCurveData& curveData, bool outline,
                          float opacity, const std::uint16_t* sideColor) {
    DBackfacingStyle cull;
    cull.Set(kQ3BackfacingStyleRemove);
    AddMember(*this, cull);

    VCurve* path = curveData.curve;
    if (!chars || !path) return;
    const float pathLength = path->GetLength();
    if (!std::isfinite(pathLength)) return;
    float pen = StartPen(chars, curveData, pathLength, path->IsClosed());

    float yMin = 1e30f, yMax = -1e30f;
    for (const TextCharacter* c = chars; c; c = c->next) {
        yMin = std::fmin(yMin, c->yMin);
        yMax = std::fmax(yMax, c->yMax);
    }

    const float width = curveData.width, spacing = curveData.spacing;
    for (const TextCharacter* c = chars; c; c = c->next) {
        const float half = (c->xMin + c->xMax) / 2.0f * width;
        KVector3D point, tangent, normal, binormal;
        // Beyond the end of an open path a letter gets no geometry.
        const float at = pen + half;
        if (c->contours && std::isfinite(at) &&
            path->GetFrame(at, point, tangent, normal, binormal)) {
            // Each contour (the two of an i) gets the same transforms.
            for (const OuterContour* contour = c->contours; contour; contour = contour->next) {
                DDisplayGroup letter;
                PlaceCharacter(letter, point, tangent, normal, binormal, half, curveData);
                if (outline) {
                    VHollowChar hollow(*contour, curveData.depth);
                    AddMember(letter, hollow);
                } else {
                    VSolidChar solid(*contour, curveData.depth, yMin, yMax, opacity, sideColor);
                    AddMember(letter, solid);
                }
                AddMember(*this, letter);
            }
        }
        pen += width * c->advance;
        pen += spacing;
    }
}
