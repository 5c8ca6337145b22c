#include "ui/NoWindowRun.h"

#include "host/ModuleState.h"
#include "ui/VZarbesoDocument.h"

bool RunWithoutWindow() {
    VZarbesoDocument document;
    document.ApplyDefaults();
    document.BindImage(false);
    const bool rendered = document.RenderFinal();
    if (gPluginParameters) gPluginParameters->invocation = 0;
    return rendered;
}
