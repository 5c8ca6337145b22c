#pragma once

#include "host/CFilterPlugin.h"

// This filter: answers the host's selectors and runs the window inside Start.
class CZarbesoPlugin : public CFilterPlugin {
  public:
    int16 DoAbout(AboutRecord* record) override;
    int16 DoParameters(FilterRecord* record) override;
    int16 DoPrepare(FilterRecord* record) override;
    int16 DoStart(FilterRecord* record) override;
    int16 DoContinue(FilterRecord* record) override;
    int16 DoFinish(FilterRecord* record) override;
};

// The interface version the 3D system must offer at least.
constexpr uint32_t kMinimumQD3DVersion = 0x10500;
