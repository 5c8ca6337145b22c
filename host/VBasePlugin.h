// The plug-in class tree: VBasePlugin is the abstract root, CFilterPlugin
// dispatches the filter selectors, CZarbesoPlugin is this filter.
#pragma once

#include "sdk/PIFilter.h"

class VBasePlugin {
  public:
    virtual ~VBasePlugin() = default;
    virtual void Dispatch(int16 selector, void* pluginParamBlock, int32* pluginData,
                          int16* result) = 0;
};
