// The exported entry of the filter module.
#include "host/CZarbesoPlugin.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "ui/NoWindowRun.h"
#include "ui/window/WindowInstall.h"

#include <dlfcn.h>

namespace {
// Remembers which loaded object this module is, for everything it loads
// from beside itself.
__attribute__((constructor)) void AttachModule() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&AttachModule), &info)) gModuleInstance = info.dli_fbase;
    SetNoWindowRunner(&RunWithoutWindow);
    InstallFilterWindow();
}
} // namespace

extern "C" __attribute__((visibility("default"))) void
ENTRYPOINT(int16 selector, void* pluginParamBlock, int32* pluginData, int16* result) {
    if (!result) return;
    // Every failure stops here: nothing may escape into the host's process.
    try {
        if (!pluginParamBlock) {
            *result = filterBadParameters;
            return;
        }
        CZarbesoPlugin plugin;
        plugin.Dispatch(selector, pluginParamBlock, pluginData, result);
    } catch (...) {
        *result = -1;
    }
}
