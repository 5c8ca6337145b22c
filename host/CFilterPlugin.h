#pragma once

#include "host/VBasePlugin.h"

// Dispatches a filter selector to its operation and stores the operation's
// answer. Every operation answers 0 here; a filter overrides what it needs.
class CFilterPlugin : public VBasePlugin {
  public:
    void Dispatch(int16 selector, void* pluginParamBlock, int32* pluginData,
                  int16* result) override;
    virtual int16 DoAbout(AboutRecord*) { return 0; }
    virtual int16 DoParameters(FilterRecord*) { return 0; }
    virtual int16 DoPrepare(FilterRecord*) { return 0; }
    virtual int16 DoStart(FilterRecord*) { return 0; }
    virtual int16 DoContinue(FilterRecord*) { return 0; }
    virtual int16 DoFinish(FilterRecord*) { return 0; }
};
