#include "GimpBatch.h"

#include "TestSupport.h"
#include "hosts/ImageFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace plumet::hosts::testing {

namespace {

std::string Quote(const std::string& s) {
    std::string q = "'";
    for (const char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

} // namespace

GimpBatch RunGimpScript(const std::string& name, const std::vector<std::string>& modules,
                        const std::string& script, const GimpOptions& options) {
    namespace fs = std::filesystem;
    GimpBatch batch;
    batch.dir = ScratchDir("gimp_" + name);
    const std::string plugins = batch.dir + "/gimp/plug-ins/plumet-gimp";
    fs::create_directories(plugins);
    fs::create_directories(batch.dir + "/home");
    fs::create_directories(batch.dir + "/out");
    fs::create_symlink(PLUMET_GIMP_PLUGIN, plugins + "/plumet-gimp");
    for (const std::string& module : modules) {
        const fs::path path(module);
        fs::create_symlink(path, plugins + "/" + path.filename().string());
        const fs::path type1 = path.parent_path() / "plumet_type1.so";
        if (path.filename() == "plumet.8bf" && fs::exists(type1))
            fs::create_symlink(type1, plugins + "/plumet_type1.so");
    }
    const std::string out = batch.dir + "/out";
    const std::string scriptPath = batch.dir + "/script.scm";
    WriteBytes(scriptPath, ReplaceAll(script, "@OUT@", out) +
                               "\n(gimp-message \"script finished\")\n(gimp-quit 1)\n");
    const bool gui = !options.driver.empty();
    if (!options.shortcuts.empty()) WriteBytes(batch.dir + "/gimp/menurc", options.shortcuts);

    const std::string logPath = batch.dir + "/gimp.log";
    std::string line = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM -u GIMP2_DIRECTORY";
    for (const std::string& e :
         {"HOME=" + batch.dir + "/home", "GIMP2_DIRECTORY=" + batch.dir + "/gimp",
          "XDG_CONFIG_HOME=" + batch.dir + "/home/config",
          "XDG_CACHE_HOME=" + batch.dir + "/home/cache",
          "XDG_DATA_HOME=" + batch.dir + "/home/data",
          "XDG_STATE_HOME=" + batch.dir + "/home/state"})
        line += " " + Quote(e);
    // In a sanitizer build, leaks in the plug-in are told with whole stacks,
    // so that those of the system's libraries are matched by the suppressions.
    const char* asan = std::getenv("ASAN_OPTIONS");
    line +=
        " " + Quote(std::string("ASAN_OPTIONS=") + (asan ? asan : "") + ":fast_unwind_on_malloc=0");
    for (const std::string& e : options.env)
        line += " " + Quote(e);
    const std::string gimp =
        Quote(gui ? GIMP_GUI : GIMP_CONSOLE) + (gui ? " -s" : " -i") +
        " -d -f -n --console-messages --batch-interpreter=plug-in-script-fu-eval -b " +
        Quote("(load \"" + scriptPath + "\")");
    if (gui) {
        const std::string driverPath = batch.dir + "/driver.sh";
        WriteBytes(driverPath, ReplaceAll(options.driver, "@OUT@", out));
        // GIMP's exit status is the shell's; the driver's is kept in a file.
        line += " timeout 240 " + Quote(XVFB_RUN) + " -a -s '-screen 0 1280x1024x24' sh -c " +
                Quote(gimp + " & sh " + Quote(driverPath) + " >" + Quote(out + "/driver.log") +
                      " 2>&1; wait $!");
    } else {
        line += " " + gimp;
    }
    line += " >" + Quote(logPath) + " 2>&1 </dev/null";
    const int status = std::system(line.c_str());
    batch.log = ReadText(logPath);
    batch.finished = status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0 &&
                     batch.log.find("script finished") != std::string::npos;
    return batch;
}

HostImage ReadPicture(const GimpBatch& batch, const std::string& file) {
    HostImage image;
    std::string error;
    EXPECT_TRUE(ReadImageFile(batch.dir + "/out/" + file, image, error)) << error;
    return image;
}

} // namespace plumet::hosts::testing
