#include "hosts/CommandLineOptions.h"

#include "hosts/ResultCodes.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <vector>

namespace plumet::hosts {

namespace {

bool ParseInt(const std::string& text, long long low, long long high, long long& value) {
    if (text.empty()) return false;
    errno = 0;
    char* end = nullptr;
    value = std::strtoll(text.c_str(), &end, 10);
    return errno == 0 && end && *end == '\0' && value >= low && value <= high;
}

bool ParseSelection(const std::string& text, VRect& rect) {
    std::vector<long long> parts;
    std::size_t start = 0;
    while (true) {
        const std::size_t comma = text.find(',', start);
        long long v = 0;
        if (!ParseInt(text.substr(start, comma - start), std::numeric_limits<int32_t>::min(),
                      std::numeric_limits<int32_t>::max(), v))
            return false;
        parts.push_back(v);
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    if (parts.size() != 4) return false;
    // A far edge beyond what 32 bits hold lies outside any image all the same.
    const auto edge = [](long long v) {
        return int32(std::clamp<long long>(v, std::numeric_limits<int32_t>::min(),
                                           std::numeric_limits<int32_t>::max()));
    };
    rect = VRect{int32(parts[1]), int32(parts[0]), edge(parts[1] + parts[3]),
                 edge(parts[0] + parts[2])};
    return true;
}

} // namespace

bool ParseCommandLine(int argc, const char* const* argv, CommandLineOptions& options,
                      std::string& error) {
    options = CommandLineOptions{};
    std::vector<std::string> files;
    bool optionsEnded = false;
    for (int i = 0; i < argc; ++i) {
        std::string arg = argv[i] ? argv[i] : "";
        if (optionsEnded || arg.size() < 2 || arg[0] != '-') {
            files.push_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
            continue;
        }
        std::string value;
        bool hasValue = false;
        if (const auto eq = arg.find('='); eq != std::string::npos) {
            value = arg.substr(eq + 1);
            arg = arg.substr(0, eq);
            hasValue = true;
        }
        const auto takeValue = [&]() {
            if (hasValue) return true;
            if (i + 1 >= argc || !argv[i + 1]) {
                error = arg + " needs a value";
                return false;
            }
            value = argv[++i];
            return true;
        };
        const auto flag = [&](bool& field) {
            if (hasValue) {
                error = arg + " takes no value";
                return false;
            }
            field = true;
            return true;
        };
        bool ok = true;
        if (arg == "--help" || arg == "-h")
            ok = flag(options.help);
        else if (arg == "--about")
            ok = flag(options.about);
        else if (arg == "--info")
            ok = flag(options.info);
        else if (arg == "--repeat")
            ok = flag(options.repeat);
        else if (arg == "--no-window")
            ok = flag(options.noWindow);
        else if (arg == "--protect-transparency")
            ok = flag(options.protectTransparency);
        else if (arg == "--no-filter-cases")
            ok = flag(options.noFilterCases);
        else if (arg == "--plugin") {
            ok = takeValue();
            if (ok && value.empty()) {
                error = "--plugin needs a path";
                ok = false;
            }
            options.plugin = value;
        } else if (arg == "--select") {
            ok = takeValue();
            VRect rect{};
            if (ok && !ParseSelection(value, rect)) {
                error = "--select wants X,Y,W,H (four whole numbers), not '" + value + "'";
                ok = false;
            }
            options.selection = rect;
        } else if (arg == "--max-space") {
            ok = takeValue();
            long long bytes = 0;
            if (ok && !ParseInt(value, 1, std::numeric_limits<int32_t>::max(), bytes)) {
                error = "--max-space wants a number of bytes from 1 to 2147483647";
                ok = false;
            }
            options.maxSpace = int32_t(bytes);
        } else {
            error = "unknown option " + arg;
            ok = false;
        }
        if (!ok) return false;
    }
    if (options.help) return true;
    if (options.about || options.info) {
        if (!files.empty()) {
            error = std::string(options.about ? "--about" : "--info") + " takes no file names";
            return false;
        }
        if (options.about && options.info) {
            error = "--about and --info cannot be combined";
            return false;
        }
        return true;
    }
    if (files.size() != 2) {
        error =
            files.size() < 2 ? "an INPUT and an OUTPUT image are needed" : "too many file names";
        return false;
    }
    options.input = files[0];
    options.output = files[1];
    return true;
}

std::string UsageText() {
    return "Usage: plumet [options] INPUT OUTPUT\n"
           "       plumet --about | --info [--plugin PATH]\n"
           "Runs the filter module over INPUT (PNG, JPEG or TIFF) and writes OUTPUT; the\n"
           "format follows OUTPUT's extension (.png, .jpg, .jpeg, .tif, .tiff). CMYK\n"
           "images are written as TIFF or JPEG only.\n"
           "\n"
           "Options:\n"
           "  --select X,Y,W,H        filter only this rectangle of the image\n"
           "  --repeat                repeat the last run with its kept settings, without\n"
           "                          asking the filter for new parameters\n"
           "  --no-window             tell the filter not to show its dialog\n"
           "  --protect-transparency  protect the transparency of an image that has one\n"
           "  --no-filter-cases       behave as a host that does not report filter cases\n"
           "  --plugin PATH           the filter module (default: plumet.8bf beside this\n"
           "                          program, or ../host/plumet.8bf in a build tree)\n"
           "  --max-space BYTES       memory offered to the filter (default: what is\n"
           "                          available)\n"
           "  --about                 show the filter's about box and its name\n"
           "  --info                  list the filter's name, category, version, modes and\n"
           "                          filter cases without running it\n"
           "  --help                  this text\n"
           "\n"
           "The filter's settings are kept between runs in\n"
           "$XDG_STATE_HOME/plumet/host-state (default ~/.local/state/plumet/host-state).\n"
           "\n" +
           ExitStatusTable();
}

} // namespace plumet::hosts
