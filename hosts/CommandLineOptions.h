// The command line of the host `plumet`.
#ifndef PLUMET_HOSTS_COMMANDLINEOPTIONS_H
#define PLUMET_HOSTS_COMMANDLINEOPTIONS_H

#include "sdk/PIFilter.h"

#include <cstdint>
#include <optional>
#include <string>

namespace plumet::hosts {

struct CommandLineOptions {
    bool help = false;
    bool about = false;
    bool info = false;
    bool repeat = false;
    bool noWindow = false;
    bool protectTransparency = false;
    bool noFilterCases = false;
    std::optional<VRect> selection; // from X,Y,W,H
    std::string plugin;
    int32_t maxSpace = 0;
    std::string input;
    std::string output;
};

// Parses the arguments after the program name. Options may come in any order
// before, between or after the two file names, as "--name value" or
// "--name=value"; "--" ends the options.
bool ParseCommandLine(int argc, const char* const* argv, CommandLineOptions& options,
                      std::string& error);

// The text of --help.
std::string UsageText();

} // namespace plumet::hosts

#endif
