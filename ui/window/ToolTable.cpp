#include "ui/window/ToolTable.h"

#include "resources/Strings.h"

#include <iterator>

namespace {
using namespace plumet;
constexpr ToolEntry kTools[] = {
    {12, 1001, 2000, kStrTipSelectLight, kStrTipSelectLight},
    {7, 1002, 2001, kStrTipAddLight, kStrTipAddLight},
    {8, 1003, 2002, kStrTipMoveText, kStrTipMoveText},
    {11, 1004, 2003, kStrTipRotate, kStrTipRotate},
    {9, 1005, 2004, kStrTipScale, kStrTipScale},
    {10, 1006, 2005, kStrTipDepth, kStrTipDepth},
    {1, 1007, 2006, kStrTipMoveCamera, kStrTipMoveCamera},
    {3, 1008, 2007, kStrTipTruck, kStrTipTruck},
    {2, 1009, 2008, kStrTipRoll, kStrTipRoll},
    {0, 1010, 2009, kStrTipOrbit, kStrTipOrbit},
    {13, 1063, 0, kStrTipDragPoint, kStrTipDragPoint},
    {14, 1064, 0, kStrTipDragHandle, kStrTipDragHandle},
    {19, 1065, 0, kStrTipAddPoint, kStrTipAddPoint},
    {20, 1066, 0, kStrTipDeletePoint, kStrTipDeletePoint},
    {15, 1067, 0, kStrTipDrawPath, kStrTipDrawPath},
    {16, 1068, 0, kStrTipEllipse, kStrTipEllipse},
    {17, 1069, 0, kStrTipPolygon, kStrTipPolygon},
    {18, 1070, 0, 0, kStrNameStar},
};

template <class Test> const ToolEntry* FindTool(Test test) {
    for (const ToolEntry& t : kTools)
        if (test(t)) return &t;
    return nullptr;
}
} // namespace

const ToolEntry* ToolTable(std::size_t* count) {
    *count = std::size(kTools);
    return kTools;
}

const ToolEntry* ToolOfButton(int buttonId) {
    return FindTool([=](const ToolEntry& t) { return t.buttonId == buttonId; });
}

const ToolEntry* ToolOfNumber(int tool) {
    return FindTool([=](const ToolEntry& t) { return t.tool == tool; });
}

const ToolEntry* ToolOfCommand(int commandId) {
    return FindTool([=](const ToolEntry& t) { return commandId && t.commandId == commandId; });
}
