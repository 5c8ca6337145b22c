#include "hosts/FilterModule.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <sys/stat.h>

namespace plumet::hosts {

namespace {

std::string LastDlError() {
    const char* text = dlerror();
    return text ? text : "unknown error";
}

} // namespace

std::unique_ptr<FilterModule> FilterModule::Load(const std::string& path, std::string& error) {
    struct stat st {};
    if (stat(path.c_str(), &st) != 0) {
        error = path + ": cannot open the filter module: " + std::strerror(errno);
        return nullptr;
    }
    if (!S_ISREG(st.st_mode)) {
        error = path + ": not a filter module (not a regular file)";
        return nullptr;
    }
    {
        std::ifstream in(path, std::ios::binary);
        char magic[4] = {};
        if (!in.read(magic, 4) || std::memcmp(magic,
                                              "\x7f"
                                              "ELF",
                                              4) != 0) {
            error = path + ": not a filter module (not a shared object)";
            return nullptr;
        }
    }

    std::unique_ptr<FilterModule> module(new FilterModule());
    module->path_ = path;
    dlerror();
    // dlopen looks names without a slash up in the library path: keep the
    // path as given but make it explicit.
    const std::string openPath = path.find('/') == std::string::npos ? "./" + path : path;
    module->handle_ = dlopen(openPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module->handle_) {
        const std::string why = LastDlError();
        if (why.find("undefined symbol") != std::string::npos)
            error = path + ": the filter module needs a missing symbol: " +
                    why.substr(why.find("undefined symbol") + 17);
        else
            error = path + ": cannot load the filter module: " + why;
        return nullptr;
    }

    const auto* pipl = static_cast<const uint8_t*>(dlsym(module->handle_, PIPL_RESOURCE_SYMBOL));
    if (!pipl) {
        error = path + ": not a filter module (it has no property list " PIPL_RESOURCE_SYMBOL ")";
        return nullptr;
    }
    const auto* size =
        static_cast<const uint32*>(dlsym(module->handle_, PIPL_RESOURCE_SIZE_SYMBOL));
    if (!size) {
        error = path + ": the filter module lacks the symbol " PIPL_RESOURCE_SIZE_SYMBOL;
        return nullptr;
    }
    std::string why;
    if (!ReadPiPL(pipl, *size, module->info_, why)) {
        error = path + ": damaged property list: " + why;
        return nullptr;
    }
    if (!module->info_.hasKind || module->info_.kind != PIFilterKind) {
        // Built by appending: a quote put in front of a temporary string
        // trips GCC 12's overlap check in an optimised build.
        std::string kind = "missing";
        if (module->info_.hasKind) {
            kind.assign(1, '\'');
            kind.append(FourCCText(module->info_.kind)).push_back('\'');
        }
        error = path + ": not a filter module (its kind is " + kind + ", not '8BFM')";
        return nullptr;
    }

    const std::string entryName =
        module->info_.entryName.empty() ? PI_ENTRYPOINT_SYMBOL : module->info_.entryName;
    module->entry_ = reinterpret_cast<PluginEntryProc>(dlsym(module->handle_, entryName.c_str()));
    if (!module->entry_) {
        error = entryName == PI_ENTRYPOINT_SYMBOL
                    ? path + ": not a filter module (it has no " PI_ENTRYPOINT_SYMBOL ")"
                    : path + ": the filter module lacks its entry symbol " + entryName;
        return nullptr;
    }
    return module;
}

FilterModule::~FilterModule() {
    if (handle_) dlclose(handle_);
}

int16 FilterModule::Call(int16 selector, void* block) {
    int16 result = 0;
    entry_(selector, block, &pluginData_, &result);
    return result;
}

} // namespace plumet::hosts
