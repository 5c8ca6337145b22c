#include "text/Type1Service.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <optional>
#include <vector>

namespace {

std::optional<std::string> gModulePath;

std::string DirectoryOf(const std::string& file) {
    const auto slash = file.rfind('/');
    return slash == std::string::npos ? std::string() : file.substr(0, slash + 1);
}

std::vector<std::string> Candidates() {
    if (gModulePath) {
        if (gModulePath->empty()) return {};
        return {*gModulePath};
    }
    std::vector<std::string> paths;
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&SetType1ModulePath), &info) && info.dli_fname) {
        const std::string directory = DirectoryOf(info.dli_fname);
        if (!directory.empty()) paths.push_back(directory + kType1ModuleName);
    }
    char executable[PATH_MAX + 1] = {};
    const ssize_t n = readlink("/proc/self/exe", executable, PATH_MAX);
    if (n > 0) {
        const std::string besideExecutable =
            DirectoryOf(std::string(executable, n)) + kType1ModuleName;
        if (paths.empty() || paths.front() != besideExecutable) paths.push_back(besideExecutable);
    }
    paths.push_back(kType1ModuleName);
    return paths;
}

template <typename F> F Find(void* handle, const char* name) {
    return reinterpret_cast<F>(dlsym(handle, name));
}

} // namespace

void SetType1ModulePath(const char* path) {
    if (path)
        gModulePath = std::string(path);
    else
        gModulePath.reset();
}

bool Type1Service::Load() {
    if (fHandle) return true;
    for (const std::string& path : Candidates()) {
        fHandle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!fHandle) continue;
        fPath = path;
        fProperlyLoaded = Find<ATMProperlyLoadedProc>(fHandle, "ATMProperlyLoaded");
        fEnumFonts = Find<ATMEnumFontsAProc>(fHandle, "ATMEnumFontsA");
        fGetOutlineA = Find<ATMGetOutlineAProc>(fHandle, "ATMGetOutlineA");
        fGetOutlineW = Find<ATMGetOutlineWProc>(fHandle, "ATMGetOutlineW");
        fFinish = Find<ATMFinishProc>(fHandle, "ATMFinish");
        return true;
    }
    return false;
}

void Type1Service::Unload() {
    if (fHandle) dlclose(fHandle);
    fHandle = nullptr;
    fPath.clear();
    fProperlyLoaded = nullptr;
    fEnumFonts = nullptr;
    fGetOutlineA = nullptr;
    fGetOutlineW = nullptr;
    fFinish = nullptr;
}

int Type1Service::ProperlyLoaded() const {
    return fProperlyLoaded ? fProperlyLoaded() : 0;
}

std::int32_t Type1Service::EnumFonts(ATMFontEnumProc callback, void* data) const {
    return fEnumFonts ? fEnumFonts(callback, data) : ATM_NOTSTARTED;
}

std::int32_t Type1Service::GetOutlineA(HDC context, int character, const ATMFixedMatrix* matrix,
                                       ATMMoveToProc moveTo, ATMLineToProc lineTo,
                                       ATMCurveToProc curveTo, ATMClosePathProc closePath,
                                       void* data) const {
    if (!fGetOutlineA) return ATM_NOTSTARTED;
    return fGetOutlineA(context, character, matrix, moveTo, lineTo, curveTo, closePath, data);
}

std::int32_t Type1Service::GetOutlineW(HDC context, std::uint16_t character,
                                       const ATMFixedMatrix* matrix, ATMMoveToProc moveTo,
                                       ATMLineToProc lineTo, ATMCurveToProc curveTo,
                                       ATMClosePathProc closePath, void* data) const {
    if (!fGetOutlineW) return ATM_NOTSTARTED;
    return fGetOutlineW(context, character, matrix, moveTo, lineTo, curveTo, closePath, data);
}

int Type1Service::Finish() const {
    return fFinish ? fFinish() : 0;
}
