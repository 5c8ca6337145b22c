#include "scene/SceneAlerts.h"

#include "resources/Strings.h"

#include <cstdio>

namespace {
SceneAlertFunction gSceneAlert = nullptr;
ScenePickColorFunction gScenePickColor = nullptr;
} // namespace

void SetSceneAlert(SceneAlertFunction function) {
    gSceneAlert = function;
}

void SceneAlert(int stringId) {
    if (gSceneAlert) return gSceneAlert(stringId);
    std::fprintf(stderr, "%s: %s\n", plumet::LoadString(plumet::kStrAlertTitle).c_str(),
                 plumet::LoadString(stringId).c_str());
}

void SetScenePickColor(ScenePickColorFunction function) {
    gScenePickColor = function;
}

bool ScenePickColor(const char* prompt, std::uint16_t rgb[3]) {
    return gScenePickColor && gScenePickColor(prompt, rgb);
}
