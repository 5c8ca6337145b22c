// Runs gimp-console headless over a Script-Fu script, with the bridge and the
// filter modules installed in a GIMP folder of the test's own.
#ifndef PLUMET_TESTS_HOSTS_GIMP_GIMPBATCH_H
#define PLUMET_TESTS_HOSTS_GIMP_GIMPBATCH_H

#include "hosts/HostImage.h"

#include <string>
#include <vector>

namespace plumet::hosts::testing {

struct GimpBatch {
    std::string dir;       // the test's folder: GIMP's home, its log, the pictures
    std::string log;       // what GIMP and the plug-in printed
    bool finished = false; // GIMP ran the script and quit by itself
};

struct GimpOptions {
    std::vector<std::string> env; // "NAME=value" assignments
    // Empty: gimp-console, no display, no user interface. Otherwise GIMP with
    // its windows on a virtual X server of its own, and these shell commands
    // run beside it (xdotool and xprop at hand) while the script goes on.
    std::string driver;
    // Lines of GIMP's shortcut file (menurc), so that the driver can start a
    // procedure from the image window as a user does.
    std::string shortcuts;
};

// Makes a fresh folder for `name` with a GIMP home of its own (nothing is
// read from or written to the user's), links the bridge and the modules in
// `modules` into its plug-in folder, and runs `script` in GIMP. In the
// script and the driver, @OUT@ stands for the folder where pictures go.
GimpBatch RunGimpScript(const std::string& name, const std::vector<std::string>& modules,
                        const std::string& script, const GimpOptions& options = {});

// Reads a picture the script saved, failing the test if it cannot.
HostImage ReadPicture(const GimpBatch& batch, const std::string& file);

} // namespace plumet::hosts::testing

#endif
