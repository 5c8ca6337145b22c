// The GIMP plug-in "plumet-gimp": offers every filter module (*.8bf) that
// lies beside it as a procedure of GIMP, in the menu Filters > its category,
// and runs it over the active drawable.
#include "hosts/FilterModule.h"
#include "hosts/gimp/BridgeNames.h"
#include "hosts/gimp/BridgeRun.h"

#include <libgimp/gimp.h>
#include <libgimp/gimpui.h>

#include <memory>
#include <set>
#include <string>

namespace {

using namespace plumet::hosts;
using namespace plumet::hosts::gimp;

std::string gFolder;

// The RGB flag of a filter's image modes, or true when it states none.
bool TakesRGB(const PiPLInfo& info) {
    return !info.hasModes || info.modeFlags.empty() || (info.modeFlags[0] & PIModeRGBFlag);
}

void Query() {
    static const GimpParamDef params[] = {
        {GIMP_PDB_INT32, const_cast<gchar*>("run-mode"),
         const_cast<gchar*>("The run mode { RUN-INTERACTIVE (0), RUN-NONINTERACTIVE (1), "
                            "RUN-WITH-LAST-VALS (2) }")},
        {GIMP_PDB_IMAGE, const_cast<gchar*>("image"), const_cast<gchar*>("Input image")},
        {GIMP_PDB_DRAWABLE, const_cast<gchar*>("drawable"), const_cast<gchar*>("Input drawable")},
    };
    std::set<std::string> installed;
    for (const std::string& path : FilterModulesIn(gFolder)) {
        std::string error;
        std::unique_ptr<FilterModule> module = FilterModule::Load(path, error);
        if (!module) {
            g_printerr("plumet-gimp: %s\n", error.c_str());
            continue;
        }
        const PiPLInfo& info = module->Info();
        const std::string procedure = ProcedureNameFor(info.name);
        if (procedure.empty() || !TakesRGB(info) || !installed.insert(procedure).second) continue;
        const std::string blurb = "The filter module " + info.name + " (" + path + ")";
        const std::string help = "Runs the filter " + info.name +
                                 " over the selected part of an RGB layer. Without a window "
                                 "(non-interactive, or with the last values) it repeats the "
                                 "settings of its last run.";
        const std::string label = MenuLabelFor(info.name);
        gimp_install_procedure(procedure.c_str(), blurb.c_str(), help.c_str(), "FlyWORD Plumet",
                               "FlyWORD Plumet", "2026", label.c_str(), "RGB*", GIMP_PLUGIN,
                               G_N_ELEMENTS(params), 0, params, nullptr);
        gimp_plugin_menu_register(procedure.c_str(), MenuPathFor(info.category).c_str());
    }
}

void Run(const gchar* name, gint nParams, const GimpParam* param, gint* nReturn,
         GimpParam** returnValues) {
    static GimpParam values[2];
    static std::string message;
    *nReturn = 1;
    *returnValues = values;
    values[0].type = GIMP_PDB_STATUS;
    const auto finish = [&](const BridgeOutcome& outcome) {
        values[0].data.d_status = outcome.status;
        if (!outcome.message.empty() && outcome.status != GIMP_PDB_SUCCESS) {
            message = outcome.message;
            *nReturn = 2;
            values[1].type = GIMP_PDB_STRING;
            values[1].data.d_string = const_cast<gchar*>(message.c_str());
        }
    };
    if (nParams < 3) {
        finish({GIMP_PDB_CALLING_ERROR, "expected a run mode, an image and a drawable"});
        return;
    }
    const auto mode = GimpRunMode(param[0].data.d_int32);
    const gint32 image = param[1].data.d_image;
    const gint32 drawable = param[2].data.d_drawable;

    std::unique_ptr<FilterModule> module;
    std::string error;
    for (const std::string& path : FilterModulesIn(gFolder)) {
        module = FilterModule::Load(path, error);
        if (module && ProcedureNameFor(module->Info().name) == name) break;
        module.reset();
    }
    if (!module) {
        finish({GIMP_PDB_EXECUTION_ERROR,
                std::string(name) + ": its filter module is no longer in " + gFolder});
        return;
    }
    gegl_init(nullptr, nullptr);
    if (mode == GIMP_RUN_INTERACTIVE) gimp_ui_init("plumet-gimp", TRUE);
    finish(RunFilterOnDrawable(*module, name, mode, image, drawable));
}

const GimpPlugInInfo PLUG_IN_INFO = {nullptr, nullptr, Query, Run};

} // namespace

int main(int argc, char* argv[]) {
    gFolder = PluginFolder(argc > 0 ? argv[0] : nullptr);
    return gimp_main(&PLUG_IN_INFO, argc, argv);
}
