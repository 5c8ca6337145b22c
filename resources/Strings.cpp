#include "resources/Strings.h"

#include <map>

namespace plumet {

namespace {
const std::map<int, const char*>& Table() {
    static const std::map<int, const char*> table = {
        {kStrCantComplete, "Lumerra 3D FlyWORD Plumet can't complete your request.  Try "
                           "relaunching your application."},
        {kStrHostTooOld, "FlyWORD Plumet needs a host that offers advanceState, as the filter "
                         "interface 3.0 and later do.  Please use a newer version of your "
                         "application."},
        {kStrNoDisplay, "FlyWORD Plumet can't open its window: no display is available.  "
                        "Repeat the filter without a window instead."},
        {kStrLightLimit, "You can add up to 5 lights to your scene.\nDelete one of your existing\n"
                         "lights if you want to add a new one.."},
        {kStrTextureLoadFailed, "Lumerra 3D FlyWORD  Plumet cannot load texture file: \n"},
        {kStrTextureLoadFailedEnd, "\nTry choosing another file."},
        {kStrCustomViewRow, "Custom View"},
        {kStrAlertTitle, "FlyWORD Alert"},
        {kStrCustomViewStem, "Custom View "},
        {kStrCustomPathStem, "Custom Path "},
    };
    return table;
}
} // namespace

std::string LoadString(int id) {
    auto it = Table().find(id);
    return it == Table().end() ? std::string() : std::string(it->second);
}

} // namespace plumet
