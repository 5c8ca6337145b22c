// What the command-line host says and returns for each way a run can end.
#ifndef PLUMET_HOSTS_RESULTCODES_H
#define PLUMET_HOSTS_RESULTCODES_H

#include <string>

namespace plumet::hosts {

// Exit statuses of the command-line host.
enum ExitStatus {
    kExitSuccess = 0,
    kExitCancelled = 1,       // the filter stopped without a message (result > 0)
    kExitUsage = 2,           // bad command line
    kExitImage = 3,           // input unreadable, bad selection, output not writable
    kExitModule = 4,          // module missing, not a filter, missing symbol
    kExitNothingToRepeat = 5, // --repeat without kept settings
    kExitOutOfMemory = 10,    // -108
    kExit3DUnavailable = 11,  // -128
    kExitBadParameters = 12,  // -30100
    kExitBadMode = 13,        // -30101
    kExitFilterMessage = 14,  // -30904
    kExitInternal = 15,       // -1
    kExitOtherResult = 16     // any other result code
};

struct ResultReport {
    int exitStatus;
    std::string message; // one line, without the program name
};

// The exit status and message for a filter result. filterMessage is the
// filter's errorString, used for -30904.
ResultReport ReportForResult(int result, const std::string& filterMessage);

// The table above as text for --help.
std::string ExitStatusTable();

} // namespace plumet::hosts

#endif
