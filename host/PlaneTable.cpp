#include "host/PlaneTable.h"

PlaneChoice ChoosePlanes(int16 filterCase, int16 planes, int16 imageMode, int16 layerPlanes,
                         int16 transparencyMask) {
    PlaneChoice c{};
    // A layer must have its three colour planes (four in CMYK) and one
    // transparency plane behind them; anything else would have the composite
    // read planes the host never delivered.
    const bool layerFits = layerPlanes >= 3 && layerPlanes <= 4 && transparencyMask == 1;
    const auto layerHi = static_cast<int16>(layerPlanes + transparencyMask - 1);
    if ((filterCase == filterCaseEditableTransparencyNoSelection ||
         filterCase == filterCaseEditableTransparencyWithSelection) &&
        layerFits) {
        c = {true, layerHi, layerHi, static_cast<int16>(layerHi + 1), layerPlanes, 0};
    } else if ((filterCase == filterCaseProtectedTransparencyNoSelection ||
                filterCase == filterCaseProtectedTransparencyWithSelection) &&
               planes > 2 && layerFits) {
        c = {true, layerHi, 2, static_cast<int16>(layerHi + 1), layerPlanes, 1};
    } else if ((filterCase == filterCaseFlatImageNoSelection ||
                filterCase == filterCaseFlatImageWithSelection ||
                filterCase == filterCaseFloatingSelection) &&
               planes > 2 && imageMode == plugInModeRGBColor) {
        c = {true, 2, 2, 3, -1, 0};
    } else if ((filterCase == filterCaseFlatImageNoSelection ||
                filterCase == filterCaseFlatImageWithSelection ||
                filterCase == filterCaseFloatingSelection) &&
               planes > 2 && imageMode == plugInModeCMYKColor) {
        c = {true, 3, 3, 4, -1, 0};
    } else if (filterCase == filterCaseNotReported) {
        c = {true, 2, 2, 3, -1, 0};
    }
    return c;
}
