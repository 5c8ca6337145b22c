#include "hosts/CommandLineHost.h"

#include "hosts/CommandLineOptions.h"
#include "hosts/FilterHost.h"
#include "hosts/FilterModule.h"
#include "hosts/FilterRun.h"
#include "hosts/HostState.h"
#include "hosts/ImageFiles.h"
#include "hosts/ResultCodes.h"
#include "sdk/PIGlobal.h"

#include <cstdio>
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
    if (!ReadImageFile(options.input, image, error)) {
        Say(error);
        return kExitImage;
    }
    if (!CanWriteImageFile(options.output, image, error)) {
        Say(error);
        return kExitImage;
    }
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
    if (!statePath.empty()) {
        std::string warning;
        if (LoadKeptRecord(statePath, owner, kept.block, warning) == StateLoad::Damaged)
            Say(warning);
    }
    if (options.repeat && !kept.block) {
        Say("nothing to repeat: no settings of " + info.name +
            " are kept (run once without --repeat)");
        return kExitNothingToRepeat;
    }

    const RunOutcome outcome = RunFilter(*module, *host, kept.block, options.repeat);

    if (kept.block) {
        if (statePath.empty())
            Say("the filter's settings are not kept: neither XDG_STATE_HOME nor HOME is set");
        else if (!SaveKeptRecord(statePath, owner, kept.block, error))
            Say("the filter's settings are not kept: " + error);
    }

    if (outcome.result != 0) {
        const ResultReport report = ReportForResult(outcome.result, host->ErrorStringText());
        Say(outcome.hostMessage.empty() ? report.message
                                        : outcome.hostMessage + ": " + report.message);
        return report.exitStatus;
    }
    if (!WriteImageFile(options.output, host->Destination(), error)) {
        Say(error);
        return kExitImage;
    }
    return kExitSuccess;
}

} // namespace plumet::hosts
