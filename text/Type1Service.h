#pragma once

#include "platform/type1/ATMLib.h"

#include <string>

// Chooses where the Type 1 module is looked for. Null (the default) looks
// beside the binary that holds this code, beside the executable, and then by
// the plain file name through the loader's search path; a path looks there
// only; an empty text looks nowhere, as if the module were not installed.
// Takes effect at the next load.
void SetType1ModulePath(const char* path);

// The Type 1 module, loaded at run time, and the functions it offers. A
// function the module lacks answers ATM_NOTSTARTED (or 0 for the two that
// answer a truth value), as does every call when no module was found.
class Type1Service {
  public:
    Type1Service() = default;
    ~Type1Service() { Unload(); }
    Type1Service(const Type1Service&) = delete;
    Type1Service& operator=(const Type1Service&) = delete;

    // Loads the module; false when none was found.
    bool Load();
    void Unload();
    bool Loaded() const { return fHandle != nullptr; }
    const std::string& LoadedFrom() const { return fPath; }

    int ProperlyLoaded() const;
    std::int32_t EnumFonts(ATMFontEnumProc callback, void* data) const;
    std::int32_t GetOutlineA(HDC context, int character, const ATMFixedMatrix* matrix,
                             ATMMoveToProc moveTo, ATMLineToProc lineTo, ATMCurveToProc curveTo,
                             ATMClosePathProc closePath, void* data) const;
    std::int32_t GetOutlineW(HDC context, std::uint16_t character, const ATMFixedMatrix* matrix,
                             ATMMoveToProc moveTo, ATMLineToProc lineTo, ATMCurveToProc curveTo,
                             ATMClosePathProc closePath, void* data) const;
    int Finish() const;

  private:
    void* fHandle = nullptr;
    std::string fPath;
    ATMProperlyLoadedProc fProperlyLoaded = nullptr;
    ATMEnumFontsAProc fEnumFonts = nullptr;
    ATMGetOutlineAProc fGetOutlineA = nullptr;
    ATMGetOutlineWProc fGetOutlineW = nullptr;
    ATMFinishProc fFinish = nullptr;
};
