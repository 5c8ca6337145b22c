#include "scene/SceneAlerts.h"

#include "resources/Strings.h"

#include <cstdio>

namespace {
SceneAlertFunction gSceneAlert = nullptr;
}

void SetSceneAlert(SceneAlertFunction function) {
    gSceneAlert = function;
}

void SceneAlert(int stringId) {
    if (gSceneAlert) return gSceneAlert(stringId);
    std::fprintf(stderr, "%s: %s\n", plumet::LoadString(plumet::kStrAlertTitle).c_str(),
                 plumet::LoadString(stringId).c_str());
}
