#include "resources/Strings.h"

#include <map>

namespace plumet {

namespace {
const std::map<int, const char*>& Table() {
    static const std::map<int, const char*> table = {
        {kStrSidesAtLeast3, "You must specify a value of at least 3."},
        {kStrSidesAtMost20, "You can't specify a value larger than 20."},
        {kStrCantComplete, "Lumerra 3D FlyWORD Plumet can't complete your request.  Try "
                           "relaunching your application."},
        {kStrHostTooOld, "FlyWORD Plumet needs a host that offers advanceState, as the filter "
                         "interface 3.0 and later do.  Please use a newer version of your "
                         "application."},
        {kStrNoDisplay, "FlyWORD Plumet can't open its window: no display is available.  "
                        "Repeat the filter without a window instead."},
        {kStrQuitQuestion, "Are you sure you want to quit Lumerra 3D FlyWORD Plumet?"},
        {kStrLightLimit, "You can add up to 5 lights to your scene.\nDelete one of your existing\n"
                         "lights if you want to add a new one.."},
        {kStrCustomViewLimit, "Warning\nYou can set a maximum of 4 custom views.\nSetting a  new "
                              "view will delete your earliest view."},
        {kStrNothingToRender, "Warning!\nNothing to render!"},
        {kStrReplaceView, "Do you want to replace the existing camera view: "},
        {kStrReplacePath, "Do you want to replace the existing path: "},
        {kStrTextureLoadFailed, "Lumerra 3D FlyWORD  Plumet cannot load texture file: \n"},
        {kStrTextureLoadFailedEnd, "\nTry choosing another file."},
        {kStrNeedPath, "You must create a new path before you can perform this task."},
        {kStrNumericControlsTitle, "Numeric Controls"},
        {kStrDeletePathTitle, "Delete Custom Path"},
        {kStrHelpTitle, "Lumerra 3D FlyWORD Plumet Help"},
        {kStrWindowTitle, "Lumerra 3D FlyWORD Plumet"},
        {kStrOptionsTitle, "Options"},
        {kStrCustomPathTitle, "Custom Path"},
        {kStrCustomViewRow, "Custom View"},
        {kStrAlertTitle, "FlyWORD Alert"},
        {kStrRenderingLabel, "Rendering...  Press Esc to stop."},
        {kStrStopButton, "Stop"},
        {kStrViewName, "3D view"},
        {kStrFinalRendererName, "LightWorks SuperLite for FlyWORD"},
        {kStrDefaultText, "Lumerra 3D"},
        {kStrCustomViewStem, "Custom View "},
        {kStrCustomPathStem, "Custom Path "},
        {kStrControlsButton, "Controls..."},
        {kStrOptionsButton, "Options..."},
        {kStrHelpButton, "Help..."},
        {kStrPreviewButton, "Preview"},
        {kStrCancelButton, "Cancel"},
        {kStrOkButton, "OK"},
        {kStrTipOrbit, "Orbit camera around scene (O)"},
        {kStrTipMoveCamera, "Move camera parallel to screen (M)"},
        {kStrTipRoll, "Roll camera (C)"},
        {kStrTipTruck, "Move camera perpendicular to screen (T)"},
        {kStrTipDragPoint, "Select and drag a control point"},
        {kStrTipDragHandle, "Select and drag a curve handle"},
        {kStrTipAddPoint, "Add a control point"},
        {kStrTipDeletePoint, "Delete a control point"},
        {kStrTipDrawPath, "Draw a new path"},
        {kStrTipEllipse, "Create an elliptical path"},
        {kStrTipPolygon, "Create a polygonal path"},
        {kStrNameStar, "Create a star-shaped path"},
        {kStrTipDepth, "Change 3D text depth (D)"},
        {kStrTipRotate, "Rotate 3D text around path (R)"},
        {kStrTipScale, "Change 3D text width and height (S)"},
        {kStrTipMoveText, "Move 3D text along path  (W)"},
        {kStrTipAddLight, "Create a point light (L)"},
        {kStrTipSelectLight, "Select and move a point light (V)"},
        {kStrPolygonOptionsTitle, "Polygon Options"},
    };
    return table;
}
} // namespace

std::string LoadString(int id) {
    auto it = Table().find(id);
    return it == Table().end() ? std::string() : std::string(it->second);
}

} // namespace plumet
