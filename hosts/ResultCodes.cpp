#include "hosts/ResultCodes.h"

#include "sdk/PIFilter.h"

namespace plumet::hosts {

ResultReport ReportForResult(int result, const std::string& filterMessage) {
    switch (result) {
    case noErr:
        return {kExitSuccess, "done"};
    case memFullErr:
        return {kExitOutOfMemory, "out of memory (result -108)"};
    case userCanceledErr:
        return {kExit3DUnavailable, "the filter's 3D system is unavailable (result -128)"};
    case filterBadParameters:
        return {kExitBadParameters, "the filter was given bad parameters (result -30100)"};
    case filterBadMode:
        return {kExitBadMode,
                "the filter does not work on this image mode or filter case (result -30101)"};
    case errReportString:
        return {kExitFilterMessage, filterMessage.empty()
                                        ? "the filter failed without saying why (result -30904)"
                                        : filterMessage};
    case -1:
        return {kExitInternal, "internal failure in the filter (result -1)"};
    default:
        if (result > 0) return {kExitCancelled, "cancelled; the image is unchanged"};
        return {kExitOtherResult, "the filter failed with result " + std::to_string(result)};
    }
}

std::string ExitStatusTable() {
    return "Exit status:\n"
           "   0  success, the output was written\n"
           "   1  cancelled: the filter stopped without a message (a positive result)\n"
           "   2  bad command line\n"
           "   3  the input cannot be read, the selection is not inside it, or the output\n"
           "      cannot be written\n"
           "   4  the module cannot be loaded, is not a filter, or lacks a symbol\n"
           "   5  --repeat without kept filter settings\n"
           "  10  result -108: out of memory\n"
           "  11  result -128: the filter's 3D system is unavailable\n"
           "  12  result -30100: bad parameters\n"
           "  13  result -30101: wrong image mode or filter case\n"
           "  14  result -30904: the filter's own message is printed\n"
           "  15  result -1: internal failure in the filter\n"
           "  16  any other result\n"
           "The output file is written only on success.\n";
}

} // namespace plumet::hosts
