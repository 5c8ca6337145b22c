#include "host/CFilterPlugin.h"

void CFilterPlugin::Dispatch(int16 selector, void* block, int32* /*pluginData*/, int16* result) {
    auto* record = static_cast<FilterRecord*>(block);
    int16 answer;
    switch (selector) {
    case filterSelectorAbout:
        answer = DoAbout(static_cast<AboutRecord*>(block));
        break;
    case filterSelectorParameters:
        answer = DoParameters(record);
        break;
    case filterSelectorPrepare:
        answer = DoPrepare(record);
        break;
    case filterSelectorStart:
        answer = DoStart(record);
        break;
    case filterSelectorContinue:
        answer = DoContinue(record);
        break;
    case filterSelectorFinish:
        answer = DoFinish(record);
        break;
    default:
        answer = filterBadParameters;
        break;
    }
    *result = answer;
}
