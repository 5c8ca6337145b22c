#include "resources/DialogTemplates.h"

#include "resources/Menus.h"
#include "resources/Strings.h"
#include "resources/ToolBitmaps.h"

#include <iterator>

namespace plumet {

namespace {
using K = ControlKind;
constexpr int P0 = 0, P1 = 1, P2 = 2, P3 = 3;

// The main window. Controls are listed in the order the keyboard visits
// them: the pages first, then the tools, the view row and the buttons.
constexpr ControlTemplate kMain[] = {
    {1020, K::Picture, 3, 3, 40, 39, nullptr, kEveryPage, 130},
    {1000, K::TabControl, 48, 3, 348, 39, nullptr},
    // Page 0, Text.
    {1040, K::Label, 54, 23, 22, 13, "Text:", P0, 0, 1041},
    {1041, K::Edit, 76, 23, 172, 13, nullptr, P0},
    {1042, K::Label, 256, 23, 20, 13, "Font:", P0, 0, 1043},
    {1043, K::DropList, 276, 23, 114, 13, nullptr, P0},
    // Page 1, Path.
    {1050, K::Label, 54, 23, 20, 13, "Path:", P1, 0, 1051},
    {1051, K::DropList, 74, 23, 82, 13, nullptr, P1},
    {1052, K::Label, 160, 23, 44, 13, "Height:", P1, 0, 1056},
    {1053, K::Label, 160, 23, 44, 13, "Pitch:", P1, 0, 1056},
    {1054, K::Label, 160, 23, 44, 13, "Wavelength:", P1, 0, 1056},
    {1056, K::NumberCombo, 204, 23, 32, 13, nullptr, P1},
    {1055, K::Spin, 236, 23, 9, 13, nullptr, P1},
    {1057, K::Label, 250, 23, 40, 13, "Width:", P1, 0, 1061},
    {1058, K::Label, 250, 23, 40, 13, "Radius:", P1, 0, 1061},
    {1059, K::Label, 250, 23, 40, 13, "Amplitude:", P1, 0, 1061},
    {1061, K::NumberCombo, 290, 23, 32, 13, nullptr, P1},
    {1060, K::Spin, 322, 23, 9, 13, nullptr, P1},
    {1062, K::Button, 340, 22, 50, 15, "Convert...", P1},
    {1063, K::ToolButton, 164, 21, 18, 16, nullptr, P1, kBitmapDragPoint},
    {1064, K::ToolButton, 184, 21, 18, 16, nullptr, P1, kBitmapDragHandle},
    {1065, K::ToolButton, 204, 21, 18, 16, nullptr, P1, kBitmapAddPoint},
    {1066, K::ToolButton, 224, 21, 18, 16, nullptr, P1, kBitmapDeletePoint},
    {1067, K::ToolButton, 252, 21, 18, 16, nullptr, P1, kBitmapDrawPath},
    {1068, K::ToolButton, 272, 21, 18, 16, nullptr, P1, kBitmapEllipsePath},
    {1069, K::ToolButton, 292, 21, 18, 16, nullptr, P1, kBitmapPolygonPath},
    {1070, K::ToolButton, 292, 21, 18, 16, nullptr, P1, kBitmapStarPath},
    // Page 2, Surface.
    {1081, K::Label, 54, 23, 30, 13, "Surface:", P2, 0, 1082},
    {1082, K::DropList, 84, 23, 74, 13, nullptr, P2},
    {1083, K::Label, 164, 23, 22, 13, "Faces:", P2, 0, 1084},
    {1084, K::ColorButton, 186, 23, 20, 13, nullptr, P2},
    {1085, K::Label, 212, 23, 22, 13, "Sides:", P2, 0, 1086},
    {1086, K::ColorButton, 234, 23, 20, 13, nullptr, P2},
    {1087, K::CheckBox, 260, 23, 28, 13, "Link", P2},
    {1088, K::Label, 290, 23, 48, 13, "Transparency:", P2, 0, 1089},
    {1089, K::NumberCombo, 338, 23, 34, 13, nullptr, P2},
    {1090, K::Spin, 372, 23, 9, 13, nullptr, P2},
    // Page 3, Scene.
    {1091, K::Label, 54, 23, 38, 13, "Ambience:", P3, 0, 1092},
    {1092, K::ColorButton, 92, 23, 20, 13, nullptr, P3},
    {1093, K::Label, 118, 23, 34, 13, "Intensity:", P3, 0, 1095},
    {1095, K::NumberCombo, 152, 23, 32, 13, nullptr, P3},
    {1094, K::Spin, 184, 23, 9, 13, nullptr, P3},
    {1096, K::Label, 198, 23, 46, 13, "Final Render:", P3, 0, 1097},
    {1097, K::DropList, 244, 23, 94, 13, nullptr, P3},
    {1098, K::Button, 342, 22, 48, 15, "Options...", P3},
    // Tools, in two columns.
    {1001, K::ToolButton, 4, 48, 18, 16, nullptr, kEveryPage, kBitmapSelectLight},
    {1002, K::ToolButton, 25, 48, 18, 16, nullptr, kEveryPage, kBitmapAddLight},
    {1003, K::ToolButton, 4, 66, 18, 16, nullptr, kEveryPage, kBitmapMoveText},
    {1004, K::ToolButton, 25, 66, 18, 16, nullptr, kEveryPage, kBitmapRotateText},
    {1005, K::ToolButton, 4, 84, 18, 16, nullptr, kEveryPage, kBitmapScaleText},
    {1006, K::ToolButton, 25, 84, 18, 16, nullptr, kEveryPage, kBitmapDepth},
    {1007, K::ToolButton, 4, 102, 18, 16, nullptr, kEveryPage, kBitmapMoveCamera},
    {1008, K::ToolButton, 25, 102, 18, 16, nullptr, kEveryPage, kBitmapTruckCamera},
    {1009, K::ToolButton, 4, 120, 18, 16, nullptr, kEveryPage, kBitmapRollCamera},
    {1010, K::ToolButton, 25, 120, 18, 16, nullptr, kEveryPage, kBitmapOrbitCamera},
    {1023, K::Button, 3, 167, 40, 14, nullptr},
    {1022, K::Button, 3, 183, 40, 14, nullptr},
    {1024, K::Button, 3, 199, 40, 14, nullptr},
    // The view and the row under it.
    {1012, K::Frame, 47, 44, 350, 206, nullptr},
    {1011, K::Placeholder, 49, 46, 346, 202, nullptr},
    {1025, K::Label, 54, 256, 22, 13, "View:", kEveryPage, 0, 1026},
    {1026, K::DropList, 76, 256, 84, 13, nullptr},
    {1028, K::CheckBox, 172, 257, 38, 11, "Image"},
    {1030, K::CheckBox, 212, 257, 32, 11, "Text"},
    {1027, K::CheckBox, 246, 257, 32, 11, "Path"},
    {1029, K::CheckBox, 280, 257, 36, 11, "Lights"},
    {1031, K::CheckBox, 318, 257, 32, 11, "Grid"},
    {1021, K::Button, 3, 221, 40, 14, nullptr},
    {1018, K::Button, 3, 237, 40, 14, nullptr},
    {1017, K::DefaultButton, 3, 253, 40, 14, nullptr},
};

constexpr ControlTemplate kCustomView[] = {
    {0, K::Label, 7, 7, 181, 10, "Name Custom View:", kEveryPage, 0, 1200},
    {1200, K::Edit, 7, 19, 181, 13, nullptr},
    {1, K::DefaultButton, 84, 40, 50, 14, "OK"},
    {2, K::Button, 138, 40, 50, 14, "Cancel"},
};

constexpr ControlTemplate kCustomPath[] = {
    {0, K::Label, 7, 7, 182, 10, "Name Custom Path:", kEveryPage, 0, 1201},
    {1201, K::Edit, 7, 19, 182, 13, nullptr},
    {1, K::DefaultButton, 85, 42, 50, 14, "OK"},
    {2, K::Button, 139, 42, 50, 14, "Cancel"},
};

constexpr ControlTemplate kPolygonOptions[] = {
    {0, K::GroupBox, 7, 4, 105, 40, "Shape:"},
    {1210, K::Radio, 16, 15, 60, 11, "Polygon"},
    {1211, K::Radio, 16, 28, 60, 11, "Star"},
    {0, K::Label, 7, 52, 60, 13, "Number of sides:", kEveryPage, 0, 1212},
    {1212, K::Edit, 70, 52, 42, 13, nullptr},
    {1, K::DefaultButton, 7, 77, 50, 14, "OK"},
    {2, K::Button, 62, 77, 50, 14, "Cancel"},
};

constexpr ControlTemplate kDeletePaths[] = {
    {1302, K::ListBox, 7, 7, 110, 80, nullptr},
    {1301, K::Button, 123, 7, 50, 14, "Delete"},
    {1, K::DefaultButton, 123, 55, 50, 14, "OK"},
    {2, K::Button, 123, 73, 50, 14, "Cancel"},
};

constexpr ControlTemplate kOptions[] = {
    {0, K::GroupBox, 7, 4, 80, 55, "Light Icon"},
    {1310, K::Radio, 16, 16, 60, 11, "Small"},
    {1311, K::Radio, 16, 29, 60, 11, "Medium"},
    {1312, K::Radio, 16, 42, 60, 11, "Large"},
    {0, K::GroupBox, 93, 4, 109, 55, "Defaults"},
    {0, K::Label, 100, 15, 96, 18, "Reset Lumerra 3D FlyWORD to the default settings:", kEveryPage,
     0, 1314},
    {1314, K::Button, 124, 38, 50, 14, "Reset"},
    {1313, K::CheckBox, 9, 66, 80, 11, "Show Tooltips"},
    {1, K::DefaultButton, 98, 74, 50, 14, "OK"},
    {2, K::Button, 152, 74, 50, 14, "Cancel"},
};

// Numeric Controls: one tab control with a Text and a Camera page.
constexpr int kRow = 14;
constexpr ControlTemplate kNumeric[] = {
    {1100, K::TabControl, 3, 3, 102, 215, nullptr},
    // Text page.
    {1125, K::GroupBox, 6, 17, 96, 36, nullptr, P0},
    {1126, K::Picture, 10, 25, 15, 12, nullptr, P0, kBitmapMoveText},
    {1101, K::Label, 28, 24, 30, 12, "Slide:", P0, 0, 1109},
    {1109, K::NumberCombo, 58, 24, 32, 12, nullptr, P0},
    {1117, K::Spin, 90, 24, 9, 12, nullptr, P0},
    {1102, K::Label, 28, 24 + kRow, 30, 12, "Spacing:", P0, 0, 1110},
    {1110, K::NumberCombo, 58, 24 + kRow, 32, 12, nullptr, P0},
    {1118, K::Spin, 90, 24 + kRow, 9, 12, nullptr, P0},
    {1127, K::GroupBox, 6, 55, 96, 50, nullptr, P0},
    {1128, K::Picture, 10, 63, 15, 12, nullptr, P0, kBitmapRotateText},
    {1103, K::Label, 28, 62, 30, 12, "Rotate:", P0, 0, 1111},
    {1111, K::NumberCombo, 58, 62, 32, 12, nullptr, P0},
    {1119, K::Spin, 90, 62, 9, 12, nullptr, P0},
    {1104, K::Label, 28, 62 + kRow, 30, 12, "Revolve:", P0, 0, 1112},
    {1112, K::NumberCombo, 58, 62 + kRow, 32, 12, nullptr, P0},
    {1120, K::Spin, 90, 62 + kRow, 9, 12, nullptr, P0},
    {1105, K::Label, 28, 62 + 2 * kRow, 30, 12, "Tilt:", P0, 0, 1113},
    {1113, K::NumberCombo, 58, 62 + 2 * kRow, 32, 12, nullptr, P0},
    {1121, K::Spin, 90, 62 + 2 * kRow, 9, 12, nullptr, P0},
    {1129, K::GroupBox, 6, 107, 96, 36, nullptr, P0},
    {1130, K::Picture, 10, 115, 15, 12, nullptr, P0, kBitmapScaleText},
    {1106, K::Label, 28, 114, 30, 12, "Width:", P0, 0, 1114},
    {1114, K::NumberCombo, 58, 114, 32, 12, nullptr, P0},
    {1122, K::Spin, 90, 114, 9, 12, nullptr, P0},
    {1107, K::Label, 28, 114 + kRow, 30, 12, "Height:", P0, 0, 1115},
    {1115, K::NumberCombo, 58, 114 + kRow, 32, 12, nullptr, P0},
    {1123, K::Spin, 90, 114 + kRow, 9, 12, nullptr, P0},
    {1131, K::GroupBox, 6, 145, 96, 22, nullptr, P0},
    {1132, K::Picture, 10, 150, 15, 12, nullptr, P0, kBitmapDepth},
    {1108, K::Label, 28, 151, 30, 12, "Depth:", P0, 0, 1116},
    {1116, K::NumberCombo, 58, 151, 32, 12, nullptr, P0},
    {1124, K::Spin, 90, 151, 9, 12, nullptr, P0},
    {1133, K::DefaultButton, 29, 196, 50, 14, "Reset All", P0},
    // Camera page.
    {1161, K::GroupBox, 6, 17, 96, 36, nullptr, P1},
    {1162, K::Picture, 10, 25, 15, 12, nullptr, P1, kBitmapMoveCamera},
    {1140, K::Label, 28, 24, 30, 12, "Move X:", P1, 0, 1147},
    {1147, K::NumberCombo, 58, 24, 32, 12, nullptr, P1},
    {1160, K::Spin, 90, 24, 9, 12, nullptr, P1},
    {1141, K::Label, 28, 24 + kRow, 30, 12, "Move Y:", P1, 0, 1148},
    {1148, K::NumberCombo, 58, 24 + kRow, 32, 12, nullptr, P1},
    {1159, K::Spin, 90, 24 + kRow, 9, 12, nullptr, P1},
    {1163, K::GroupBox, 6, 55, 96, 36, nullptr, P1},
    {1164, K::Picture, 10, 63, 15, 12, nullptr, P1, kBitmapTruckCamera},
    {1142, K::Label, 28, 62, 30, 12, "Truck:", P1, 0, 1149},
    {1149, K::NumberCombo, 58, 62, 32, 12, nullptr, P1},
    {1158, K::Spin, 90, 62, 9, 12, nullptr, P1},
    {1143, K::Label, 28, 62 + kRow, 30, 12, "Angle:", P1, 0, 1150},
    {1150, K::NumberCombo, 58, 62 + kRow, 32, 12, nullptr, P1},
    {1157, K::Spin, 90, 62 + kRow, 9, 12, nullptr, P1},
    {1165, K::GroupBox, 6, 93, 96, 22, nullptr, P1},
    {1166, K::Picture, 10, 98, 15, 12, nullptr, P1, kBitmapRollCamera},
    {1144, K::Label, 28, 99, 30, 12, "Roll:", P1, 0, 1151},
    {1151, K::NumberCombo, 58, 99, 32, 12, nullptr, P1},
    {1156, K::Spin, 90, 99, 9, 12, nullptr, P1},
    {1167, K::GroupBox, 6, 117, 96, 36, nullptr, P1},
    {1168, K::Picture, 10, 125, 15, 12, nullptr, P1, kBitmapOrbitCamera},
    {1145, K::Label, 28, 124, 30, 12, "Orbit X:", P1, 0, 1152},
    {1152, K::NumberCombo, 58, 124, 32, 12, nullptr, P1},
    {1155, K::Spin, 90, 124, 9, 12, nullptr, P1},
    {1146, K::Label, 28, 124 + kRow, 30, 12, "Orbit Y:", P1, 0, 1153},
    {1153, K::NumberCombo, 58, 124 + kRow, 32, 12, nullptr, P1},
    {1154, K::Spin, 90, 124 + kRow, 9, 12, nullptr, P1},
    {1169, K::DefaultButton, 29, 196, 50, 14, "Reset All", P1},
};

constexpr ControlTemplate kHelp[] = {
    {1315, K::Picture, 0, 0, 332, 1154, nullptr, kEveryPage, 157},
};

constexpr ControlTemplate kAbout[] = {
    {1316, K::Picture, 0, 0, 283, 178, nullptr, kEveryPage, 158},
};

#define PLUMET_CONTROLS(table) table, std::size(table)
constexpr DialogTemplate kTemplates[] = {
    {kDialogMain, "ZARBESO", 402, 270, kStrWindowTitle, PLUMET_CONTROLS(kMain)},
    {kDialogCustomView, "144", 195, 61, kStrCustomViewRow, PLUMET_CONTROLS(kCustomView)},
    {kDialogNumericControls, "146", 108, 223, kStrNumericControlsTitle, PLUMET_CONTROLS(kNumeric)},
    {kDialogCustomPath, "147", 196, 63, kStrCustomPathTitle, PLUMET_CONTROLS(kCustomPath)},
    {kDialogPolygonOptions, "148", 119, 98, kStrPolygonOptionsTitle,
     PLUMET_CONTROLS(kPolygonOptions)},
    {kDialogDeletePaths, "149", 180, 94, kStrDeletePathTitle, PLUMET_CONTROLS(kDeletePaths)},
    {kDialogOptions, "154", 209, 94, kStrOptionsTitle, PLUMET_CONTROLS(kOptions)},
    {kDialogHelp, "155", 341, 297, kStrHelpTitle, PLUMET_CONTROLS(kHelp)},
    {kDialogAbout, "156", 283, 179, 0, PLUMET_CONTROLS(kAbout)},
};
#undef PLUMET_CONTROLS

constexpr NumericFieldSpec kNumericFields[] = {
    // The main window.
    {1056, 1055, kMenuPercent, 0, 0, 100, false},
    {1061, 1060, kMenuPercent, 0, 0, 100, false},
    {1089, 1090, kMenuPercent, 0, 0, 100, false},
    {1095, 1094, kMenuPercent, 8, 0, 100, false},
    // Numeric Controls, Text page.
    {1109, 1117, kMenuPercent, 0, 0, 100, false},
    {1110, 1118, kMenuSigned, 0, -100, 100, false},
    {1111, 1119, kMenuAngles, 0, -180, 180, true},
    {1112, 1120, kMenuAngles, 0, -180, 180, true},
    {1113, 1121, kMenuAngles, 0, -180, 180, true},
    {1114, 1122, kMenuPercent, 0, 0, 100, false},
    {1115, 1123, kMenuPercent, 0, 0, 100, false},
    {1116, 1124, kMenuPercent, 0, 0, 100, false},
    // Numeric Controls, Camera page.
    {1147, 1160, kMenuSigned, 5, -100, 100, false},
    {1148, 1159, kMenuSigned, 5, -100, 100, false},
    {1149, 1158, kMenuSigned, 5, -100, 100, false},
    {1150, 1157, kMenuFieldOfView, 0, 25, 175, false},
    {1151, 1156, kMenuDegrees, 0, 0, 359, true},
    {1152, 1155, kMenuDegrees, 0, 0, 359, true},
    {1153, 1154, kMenuHalfTurn, 0, 0, 359, true},
};
} // namespace

const ControlTemplate* DialogTemplate::Find(int controlId) const {
    for (std::size_t i = 0; i < count; ++i)
        if (controls[i].id == controlId) return &controls[i];
    return nullptr;
}

const DialogTemplate* FindDialogTemplate(int id) {
    for (const DialogTemplate& t : kTemplates)
        if (t.id == id) return &t;
    return nullptr;
}

const NumericFieldSpec* FindNumericField(int id) {
    for (const NumericFieldSpec& f : kNumericFields)
        if (f.comboId == id || f.spinId == id) return &f;
    return nullptr;
}

} // namespace plumet
