// The command-line host's side of a long filter run: the filter's progress
// as a bar on stderr when stderr is a terminal, and Ctrl+C as the host's
// abort, so that the filter stops and nothing is written.
#ifndef PLUMET_HOSTS_TERMINALPROGRESS_H
#define PLUMET_HOSTS_TERMINALPROGRESS_H

#include "sdk/PIFilter.h"

namespace plumet::hosts {

class TerminalProgress {
  public:
    // Gives the record our progressProc and abortProc and takes Ctrl+C for
    // as long as the object lives. A second Ctrl+C ends the program as usual.
    explicit TerminalProgress(FilterRecord& record);
    // Clears the bar and gives Ctrl+C back.
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    // Whether Ctrl+C was pressed.
    static bool Interrupted();

    // The bar for done of total, as drawn: "[#####     ]  50%", width
    // characters between the brackets.
    static void Bar(int32 done, int32 total, int width, char* out, int size);
};

} // namespace plumet::hosts

#endif
