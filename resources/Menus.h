// The module's menu resources: the rows of the tab controls, of the View,
// Path and Surface combos, and the lists of the numeric fields.
#pragma once

#include <string>
#include <vector>

namespace plumet {

enum MenuId : int {
    kMenuTabs = 102,        // "Text", "Path", "Surface", "Scene"
    kMenuViews = 103,       // the View combo
    kMenuPaths = 104,       // the Path combo
    kMenuSurfaces = 105,    // the Surface combo
    kMenuNumericTabs = 106, // "Text", "Camera"
    kMenuPercent = 107,     // 0, 10 ... 100
    kMenuDegrees = 108,     // 0, 30 ... 330
    kMenuHalfTurn = 109,    // 0, 30 ... 180
    kMenuSigned = 110,      // -100, -80 ... 100
    kMenuAngles = 111,      // -180, -150 ... 180
    kMenuFieldOfView = 112, // 40, 60 ... 120
};

// A separator row of a combo: 30 hyphens.
extern const char* const kSeparatorRow;

// The rows of menu `id`, in order; empty for an unknown id.
std::vector<std::string> MenuRows(int id);

} // namespace plumet
