// The values that Numeric Controls applies through the window: the eight
// of the text and the camera's place, angle, roll and orbit.
#include "ui/window/VZarbesoWindow.h"

#include "d3d/DTransformObject.h"

namespace {
using TL = TextLayoutValue;

// The Numeric Controls field of each text value.
constexpr std::pair<int, TL> kLayoutFields[] = {
    {1109, TL::kSlide}, {1110, TL::kSpacing}, {1111, TL::kRotate}, {1112, TL::kRevolve},
    {1113, TL::kTilt},  {1114, TL::kWidth},   {1115, TL::kHeight}, {1116, TL::kDepth},
};
} // namespace

int VZarbesoWindow_Win::FieldOfMessage(std::int32_t message) {
    for (auto [id, which] : kLayoutFields)
        if (message == static_cast<std::int32_t>(TextLayout::Message(which))) return id;
    return 0;
}

TextLayoutValue VZarbesoWindow_Win::LayoutOfField(int id) {
    for (auto [field, which] : kLayoutFields)
        if (field == id || field + 8 == id) return which;
    return TL::kSlide;
}

void VZarbesoWindow_Win::ApplyNumericValue(int id, float value, bool redraw) {
    if (id >= 1109 && id <= 1124)
        GetView()->SetLayout(LayoutOfField(id), value, true, true);
    else if (id >= 1147 && id <= 1153)
        ApplyCameraField(id, value);
    if (redraw) {
        ClearRender(false);
        Redraw();
    }
}

void VZarbesoWindow_Win::UpdateCameraAngles() {
    constexpr double kDegrees = 57.29577951308232;
    TQ3Matrix4x4 orbit;
    GetView()->GetAll(nullptr, &orbit, nullptr);
    const KVector3D a = RotationFromMatrix(orbit, true);
    orbitX = static_cast<float>(a.x * kDegrees);
    if (orbitX < -0.5f) orbitX += 360.0f;
    orbitY = static_cast<float>(a.y * kDegrees + 90.0);
    roll = static_cast<float>(a.z * kDegrees);
    if (roll < -0.5f) roll += 360.0f;
}

void VZarbesoWindow_Win::ApplyCameraField(int id, float value) {
    constexpr double kRadians = 0.017453292519943295;
    VZarbesoView& view = *GetView();
    updatingFromScene = true;
    TQ3Matrix4x4 scale, orbit, pan;
    view.GetAll(&scale, &orbit, &pan);
    auto turn = [&view](float x, float y, float z) {
        const TQ3Matrix4x4 m = MatrixFromRotation(x, y, z);
        view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &m, false);
    };
    switch (id) {
    case 1147:
    case 1148:
    case 1149:
        pan.value[3][id - 1147] = static_cast<float>(value / 5.0);
        view.SetAll(&scale, &orbit, &pan);
        break;
    case 1150:
        view.SetFieldOfView(value, true, true);
        break;
    case 1151:
        turn(0, 0, static_cast<float>((value - roll) * kRadians));
        roll = value;
        break;
    case 1152:
        turn(static_cast<float>((value - orbitX) * kRadians), 0, 0);
        orbitX = value;
        break;
    case 1153:
        turn(0, static_cast<float>((value - orbitY) * kRadians), 0);
        orbitY = value;
        break;
    default:
        break;
    }
    updatingFromScene = false;
}
