#include "hosts/CommandLineHost.h"

#include "hosts/CommandLineOptions.h"
#include "hosts/FilterHost.h"
#include "hosts/FilterModule.h"
#include "hosts/FilterRun.h"
#include "hosts/HostState.h"
#include "hosts/ImageFiles.h"
#include "hosts/ResultCodes.h"
#include "hosts/TerminalProgress.h"
#include "sdk/PIGlobal.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace plumet::hosts {

namespace {

void Say(const std::string& message) {
    std::cerr << "plumet: " << message << std::endl;
}

// Frees the kept record however the run ends.
struct KeptRecord {
    Handle block = nullptr;
    ~KeptRecord() { PIGlobalFree(block); }
};

std::string ExecutableDirectory() {
    char path[4096];
    const ssize_t n = readlink("/proc/self/exe", path, sizeof path - 1);
    if (n <= 0) return ".";
    path[n] = '\0';
    std::string exe(path);
    const auto slash = exe.find_last_of('/');
    return slash == std::string::npos ? "." : exe.substr(0, slash);
}

void PrintInfo(const FilterModule& module, bool full) {
    const PiPLInfo& info = module.Info();
    std::cout << "Name: " << info.name << "\n"
              << "Category: " << info.category << "\n"
              << "Version: " << (info.hasVersion ? VersionText(info.version) : "none") << "\n";
    if (!full) return;
    std::cout << "Entry: " << (info.entryName.empty() ? PI_ENTRYPOINT_SYMBOL : info.entryName)
              << "\n"
              << "Image modes: " << (info.hasModes ? DescribeModes(info.modeFlags) : "not stated")
              << "\n";
    if (info.filterCases.empty()) {
        std::cout << "Filter cases: not stated\n";
        return;
    }
    std::cout << "Filter cases (input, output, flags 1, flags 2):\n";
    for (int i = 0; i < 7; ++i) {
        const FilterCaseInfo& c = info.filterCases[std::size_t(i)];
        std::cout << "  " << (i + 1) << " " << FilterCaseName(i + 1) << ": " << int(c.inputHandling)
                  << ", " << int(c.outputHandling) << ", " << int(c.flags1) << ", " << int(c.flags2)
                  << "\n";
    }
}

// A filter stops without a word when the selection, reduced for its window,
// has this many pixels or fewer in a direction.
constexpr int kSmallestPreview = 5;

// Why a filter cancelled, where the host can tell: its last request was a
// view of the selection too small to show.
std::string CancelReason(const FilterRecord& record) {
    const Rect& in = record.inRect;
    const int width = in.right - in.left, height = in.bottom - in.top;
    if (width <= 0 || height <= 0 || (width > kSmallestPreview && height > kSmallestPreview))
        return "";
    std::string reason = "the filter stopped at a view of the selection of " +
                         std::to_string(width) + " by " + std::to_string(height) + " pixels";
    const int scale = record.inputRate >> 16;
    if (scale > 1)
        reason += " (reduced " + std::to_string(scale) +
                  " times to fit a screen; --no-window works at full size)";
    return reason + ", too small to work on";
}

// Whether a window could be shown here at all.
bool DisplayInEnvironment() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(name);
        if (value && *value) return true;
    }
    return false;
}

// The command line again, with --no-window added.
std::string WithoutWindow(int argc, const char* const* argv) {
    std::string line = "plumet --no-window";
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i] ? argv[i] : "";
        const bool plain = !arg.empty() &&
                           arg.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVW"
                                                 "XYZ0123456789-_=+,./:@%") == std::string::npos;
        line += plain ? " " + arg : " '" + arg + "'";
    }
    return line;
}

} // namespace

std::string DefaultPluginPath() {
    const std::string dir = ExecutableDirectory();
    const std::string beside = dir + "/plumet.8bf";
    if (access(beside.c_str(), F_OK) == 0) return beside;
    return dir + "/../host/plumet.8bf";
}

int RunCommandLine(int argc, const char* const* argv) {
    CommandLineOptions options;
    std::string error;
    if (!ParseCommandLine(argc, argv, options, error)) {
        Say(error + " (plumet --help tells more)");
        return kExitUsage;
    }
    if (options.help) {
        std::cout << UsageText();
        return kExitSuccess;
    }

    const std::string pluginPath = options.plugin.empty() ? DefaultPluginPath() : options.plugin;
    std::unique_ptr<FilterModule> module = FilterModule::Load(pluginPath, error);
    if (!module) {
        Say(error);
        return kExitModule;
    }
    if (options.info) {
        PrintInfo(*module, true);
        return kExitSuccess;
    }
    if (options.about) {
        PrintInfo(*module, false);
        std::cout.flush();
        const int16 result = RunAbout(*module);
        const ResultReport report = ReportForResult(result, "");
        if (result != 0) Say(report.message);
        return report.exitStatus;
    }

    HostImage image;
    ImageExtras extras;
    if (!ReadImageFile(options.input, image, error, &extras)) {
        Say(error);
        return kExitImage;
    }
    if (!CanWriteImageFile(options.output, image, error)) {
        Say(error);
        return kExitImage;
    }
    for (const std::string& note : extras.notes)
        Say(options.input + ": " + note);
    FilterSetup setup;
    setup.selection = options.selection;
    setup.protectTransparency = options.protectTransparency;
    setup.reportFilterCases = !options.noFilterCases;
    setup.showDialog = !options.noWindow;
    setup.maxSpace = options.maxSpace;
    std::unique_ptr<FilterHost> host = FilterHost::Create(std::move(image), setup, error);
    if (!host) {
        Say(options.input + ": " + error);
        return kExitImage;
    }

    const std::string statePath = DefaultStatePath();
    const PiPLInfo& info = module->Info();
    const std::string owner = KeptRecordOwner(info);
    KeptRecord kept;
    bool keepable = !statePath.empty();
    if (keepable) {
        std::string warning;
        const StateLoad load = LoadKeptRecord(statePath, owner, kept.block, warning);
        if (load == StateLoad::Damaged || load == StateLoad::Unusable) Say(warning);
        keepable = load != StateLoad::Unusable;
    }
    if (options.repeat && !kept.block) {
        Say("nothing to repeat: no settings of " + info.name +
            " are kept (run once without --repeat)");
        return kExitNothingToRepeat;
    }

    // Ctrl+C stops the filter, and nothing is written or kept. Once the
    // output is being written the write goes on to its end, so that no half
    // file is left.
    TerminalProgress progress(host->Record());
    const RunOutcome outcome = RunFilter(*module, *host, kept.block, options.repeat);
    if (TerminalProgress::Interrupted()) {
        Say("interrupted by Ctrl+C; " + options.output + " was not written");
        return kExitCancelled;
    }

    if (outcome.result != 0) {
        // Nothing of a run that did not end with OK is kept.
        ResultReport report = ReportForResult(outcome.result, host->ErrorStringText());
        if (outcome.result > 0) {
            const std::string reason = CancelReason(host->Record());
            if (!reason.empty())
                report.message = "cancelled: " + reason + "; the image is unchanged";
        } else if (outcome.result == errReportString && setup.showDialog &&
                   !DisplayInEnvironment()) {
            // The filter could not open its window here.
            report.message += " (without a display: " + WithoutWindow(argc, argv) + ")";
        }
        Say(outcome.hostMessage.empty() ? report.message
                                        : outcome.hostMessage + ": " + report.message);
        return report.exitStatus;
    }

    if (kept.block) {
        if (statePath.empty())
            Say("the filter's settings are not kept: neither XDG_STATE_HOME nor HOME is set");
        else if (keepable && !SaveKeptRecord(statePath, owner, kept.block, error))
            Say("the filter's settings are not kept: " + error);
    }
    const HostImage& result = host->Destination();
    if (!WriteImageFile(options.output, result, error, &extras)) {
        Say(error);
        return kExitImage;
    }
    if (result.hasAlpha && FormatFromExtension(options.output) == ImageFormat::JPEG)
        Say(options.output + ": JPEG holds no transparency, so the layer was flattened over white");
    return kExitSuccess;
}

} // namespace plumet::hosts
