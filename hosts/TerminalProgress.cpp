#include "hosts/TerminalProgress.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace plumet::hosts {

namespace {

volatile std::sig_atomic_t gInterrupted = 0;
struct sigaction gPrevious {};
bool gTerminal = false;
bool gDrawn = false;
int gLastPercent = -1;

void OnInterrupt(int) {
    if (gInterrupted) {
        // asked twice: end as Ctrl+C always does
        sigaction(SIGINT, &gPrevious, nullptr);
        std::raise(SIGINT);
        return;
    }
    gInterrupted = 1;
}

Boolean Abort() {
    return gInterrupted ? 1 : 0;
}

void Progress(int32 done, int32 total) {
    if (!gTerminal || total <= 0) return;
    const int percent = int(std::clamp<int64_t>(int64_t(done) * 100 / total, 0, 100));
    if (percent == gLastPercent) return;
    gLastPercent = percent;
    char bar[64];
    TerminalProgress::Bar(done, total, 40, bar, sizeof bar);
    std::fprintf(stderr, "\rplumet: rendering %s", bar);
    std::fflush(stderr);
    gDrawn = true;
}

} // namespace

void TerminalProgress::Bar(int32 done, int32 total, int width, char* out, int size) {
    const double part = total > 0 ? std::clamp(double(done) / total, 0.0, 1.0) : 0.0;
    const int filled = int(part * width);
    int n = 0;
    auto put = [&](char c) {
        if (n < size - 1) out[n++] = c;
    };
    put('[');
    for (int i = 0; i < width; ++i)
        put(i < filled ? '#' : ' ');
    put(']');
    char percent[8];
    std::snprintf(percent, sizeof percent, " %3d%%", int(part * 100));
    for (const char* p = percent; *p; ++p)
        put(*p);
    if (size > 0) out[n] = '\0';
}

TerminalProgress::TerminalProgress(FilterRecord& record) {
    gInterrupted = 0;
    gTerminal = isatty(STDERR_FILENO) != 0;
    gDrawn = false;
    gLastPercent = -1;
    record.progressProc = &Progress;
    record.abortProc = &Abort;
    struct sigaction on {};
    on.sa_handler = &OnInterrupt;
    sigemptyset(&on.sa_mask);
    sigaction(SIGINT, &on, &gPrevious);
}

TerminalProgress::~TerminalProgress() {
    sigaction(SIGINT, &gPrevious, nullptr);
    if (gDrawn) {
        std::fprintf(stderr, "\r\033[K");
        std::fflush(stderr);
    }
}

bool TerminalProgress::Interrupted() {
    return gInterrupted != 0;
}

} // namespace plumet::hosts
