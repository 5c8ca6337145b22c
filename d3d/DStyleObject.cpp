#include "d3d/DStyleObject.h"

#include "d3d/DViewerObject.h"

DStyleObject::~DStyleObject() {
    if (object) Q3Object_Dispose(object);
}

void DStyleObject::Submit(const DViewerObject& viewer) const {
    SubmitTo(viewer.GetObject());
}

void DStyleObject::SubmitTo(TQ3ViewObject view) const {
    CheckStatus(Q3Style_Submit(object, view));
}

DHighlightStyle::DHighlightStyle(TQ3AttributeSet highlight) {
    object = Q3HighlightStyle_New(highlight);
    CheckObject(object);
}

void DHighlightStyle::Set(TQ3AttributeSet highlight) {
    CheckStatus(Q3HighlightStyle_Set(object, highlight));
}

TQ3AttributeSet DHighlightStyle::Get() const {
    TQ3AttributeSet set = nullptr;
    CheckStatus(Q3HighlightStyle_Get(object, &set));
    return set;
}

DSubdivisionStyle::DSubdivisionStyle() {
    TQ3SubdivisionStyleData data{kQ3SubdivisionMethodConstant, 20.0f, 20.0f};
    object = Q3SubdivisionStyle_New(&data);
    CheckObject(object);
}

void DSubdivisionStyle::SetData(const TQ3SubdivisionStyleData& data) {
    CheckStatus(Q3SubdivisionStyle_SetData(object, &data));
}

TQ3SubdivisionStyleData DSubdivisionStyle::GetData() const {
    TQ3SubdivisionStyleData data{};
    CheckStatus(Q3SubdivisionStyle_GetData(object, &data));
    return data;
}

DReceiveShadowsStyle::DReceiveShadowsStyle() {
    object = Q3ReceiveShadowsStyle_New(kQ3True);
    CheckObject(object);
}

void DReceiveShadowsStyle::Set(bool receives) {
    CheckStatus(Q3ReceiveShadowsStyle_Set(object, receives ? kQ3True : kQ3False));
}

bool DReceiveShadowsStyle::Get() const {
    TQ3Boolean value = kQ3False;
    CheckStatus(Q3ReceiveShadowsStyle_Get(object, &value));
    return value == kQ3True;
}

DInterpolationStyle::DInterpolationStyle() {
    object = Q3InterpolationStyle_New(kQ3InterpolationStyleVertex);
    CheckObject(object);
}

void DInterpolationStyle::Set(TQ3InterpolationStyle value) {
    CheckStatus(Q3InterpolationStyle_Set(object, value));
}

TQ3InterpolationStyle DInterpolationStyle::Get() const {
    TQ3InterpolationStyle value{};
    CheckStatus(Q3InterpolationStyle_Get(object, &value));
    return value;
}

DBackfacingStyle::DBackfacingStyle() {
    object = Q3BackfacingStyle_New(kQ3BackfacingStyleBoth);
    CheckObject(object);
}

void DBackfacingStyle::Set(TQ3BackfacingStyle value) {
    CheckStatus(Q3BackfacingStyle_Set(object, value));
}

TQ3BackfacingStyle DBackfacingStyle::Get() const {
    TQ3BackfacingStyle value{};
    CheckStatus(Q3BackfacingStyle_Get(object, &value));
    return value;
}

DFillStyle::DFillStyle() {
    object = Q3FillStyle_New(kQ3FillStyleFilled);
    CheckObject(object);
}

void DFillStyle::Set(TQ3FillStyle value) {
    CheckStatus(Q3FillStyle_Set(object, value));
}

TQ3FillStyle DFillStyle::Get() const {
    TQ3FillStyle value{};
    CheckStatus(Q3FillStyle_Get(object, &value));
    return value;
}

DOrientationStyle::DOrientationStyle() {
    object = Q3OrientationStyle_New(kQ3OrientationStyleCounterClockwise);
    CheckObject(object);
}

void DOrientationStyle::Set(TQ3OrientationStyle value) {
    CheckStatus(Q3OrientationStyle_Set(object, value));
}

TQ3OrientationStyle DOrientationStyle::Get() const {
    TQ3OrientationStyle value{};
    CheckStatus(Q3OrientationStyle_Get(object, &value));
    return value;
}

DPickIDStyle::DPickIDStyle(std::uint32_t id) {
    object = Q3PickIDStyle_New(id);
    CheckObject(object);
}
