// The command-line host: loads the filter module and runs it over an image
// file. Uses Qt only for image files; it never starts a GUI application.
#ifndef PLUMET_HOSTS_COMMANDLINEHOST_H
#define PLUMET_HOSTS_COMMANDLINEHOST_H

#include <string>

namespace plumet::hosts {

// Runs the host with the arguments after the program name and returns the
// exit status of ResultCodes.h. Messages go to stderr, --info and --about
// text to stdout.
int RunCommandLine(int argc, const char* const* argv);

// The filter module used without --plugin: plumet.8bf beside the executable,
// else ../host/plumet.8bf from it (the place a build tree puts it).
std::string DefaultPluginPath();

} // namespace plumet::hosts

#endif
