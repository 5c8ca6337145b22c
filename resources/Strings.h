// The module's string table: alerts (16000-17999), labels, tips and titles
// (18000 and up), addressed by number.
#pragma once

#include <string>

namespace plumet {

enum StringId : int {
    // Alerts.
    kStrSidesAtLeast3 = 16007,
    kStrSidesAtMost20 = 16008,
    kStrCantComplete = 16012,
    kStrHostTooOld = 16013,
    kStrNoDisplay = 16014,
    kStrQuitQuestion = 17000,
    kStrLightLimit = 17001,
    kStrCustomViewLimit = 17002,
    kStrNothingToRender = 17003,
    kStrReplaceView = 17004,
    kStrReplacePath = 17005,
    kStrTextureLoadFailed = 17007,
    kStrTextureLoadFailedEnd = 17008,
    kStrNeedPath = 17009,
    // Titles.
    kStrNumericControlsTitle = 18000,
    kStrDeletePathTitle = 18001,
    kStrHelpTitle = 18002,
    kStrWindowTitle = 18003,
    kStrOptionsTitle = 18004,
    kStrCustomPathTitle = 18006,
    kStrCustomViewRow = 18007,
    kStrAlertTitle = 18008,
    // The progress of a render in the window.
    kStrRenderingLabel = 18010,
    kStrStopButton = 18011,
    // The name of the 3D view for assistive tools.
    kStrViewName = 18012,
    // Names and stems.
    kStrFinalRendererName = 18050,
    kStrDefaultText = 18051,
    kStrCustomViewStem = 18052,
    kStrCustomPathStem = 18053,
    // The six buttons of the main window.
    kStrControlsButton = 18100,
    kStrOptionsButton = 18101,
    kStrHelpButton = 18102,
    kStrPreviewButton = 18103,
    kStrCancelButton = 18104,
    kStrOkButton = 18105,
    // Tool tips.
    kStrTipOrbit = 18200,
    kStrTipMoveCamera = 18201,
    kStrTipRoll = 18202,
    kStrTipTruck = 18203,
    kStrTipDragPoint = 18400,
    kStrTipDragHandle = 18401,
    kStrTipAddPoint = 18402,
    kStrTipDeletePoint = 18403,
    kStrTipDrawPath = 18404,
    kStrTipEllipse = 18405,
    kStrTipPolygon = 18406,
    // The star tool's button shows no tip; this names it for assistive tools.
    kStrNameStar = 18407,
    kStrTipDepth = 18500,
    kStrTipRotate = 18501,
    kStrTipScale = 18502,
    kStrTipMoveText = 18503,
    kStrTipAddLight = 18600,
    kStrTipSelectLight = 18601,
    kStrPolygonOptionsTitle = 18602,
};

// The text of string `id`, or an empty string for an unknown id.
std::string LoadString(int id);

} // namespace plumet
