// The module's string table: alerts (16000-17999), labels, tips and titles
// (18000 and up), addressed by number.
#pragma once

#include <string>

namespace plumet {

enum StringId : int {
    kStrCantComplete = 16012,
    kStrHostTooOld = 16013,
    kStrNoDisplay = 16014,
    kStrLightLimit = 17001,
    kStrTextureLoadFailed = 17007, // followed by the file name and 17008
    kStrTextureLoadFailedEnd = 17008,
    kStrCustomViewRow = 18007,
    kStrAlertTitle = 18008,
    kStrCustomViewStem = 18052,
    kStrCustomPathStem = 18053,
};

// The text of string `id`, or an empty string for an unknown id.
std::string LoadString(int id);

} // namespace plumet
