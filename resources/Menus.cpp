#include "resources/Menus.h"

namespace plumet {

const char* const kSeparatorRow = "------------------------------";

namespace {
std::vector<std::string> Numbers(int from, int to, int step) {
    std::vector<std::string> rows;
    for (int v = from; v <= to; v += step)
        rows.push_back(std::to_string(v));
    return rows;
}
} // namespace

std::vector<std::string> MenuRows(int id) {
    switch (id) {
    case kMenuTabs:
        return {"Text", "Path", "Surface", "Scene"};
    case kMenuViews:
        return {"Home",      "Front",      "Top",         "Bottom",
                "Left Side", "Right Side", kSeparatorRow, "Set View..."};
    case kMenuPaths:
        return {"Line",          "Ellipse",         "Wave",   "Decaying Wave", "Bump",
                "Helix",         "Spherical Helix", "Vortex", kSeparatorRow,   "New Path...",
                "Delete Path..."};
    case kMenuSurfaces:
        return {"Color", kSeparatorRow, "Clouds",      "Leopard Skin",
                "Neon",  "Sunflower",   kSeparatorRow, "New Texture..."};
    case kMenuNumericTabs:
        return {"Text", "Camera"};
    case kMenuPercent:
        return Numbers(0, 100, 10);
    case kMenuDegrees:
        return Numbers(0, 330, 30);
    case kMenuHalfTurn:
        return Numbers(0, 180, 30);
    case kMenuSigned:
        return Numbers(-100, 100, 20);
    case kMenuAngles:
        return Numbers(-180, 180, 30);
    case kMenuFieldOfView:
        return Numbers(40, 120, 20);
    default:
        return {};
    }
}

} // namespace plumet
