// Fuzz target: any bytes as the preferences file. The workspace reads them
// (pages, chains, entries, records, custom textures); then the store writes
// into what it found and must read its own entries back.
#include "tests/fuzz/FuzzCheck.h"
#include "ui/persistence/VPreferences.h"
#include "ui/persistence/VZarbesoWorkspace.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

namespace {
char gFolder[64];

// The files live in a folder of the run's own, removed at its end.
void RemoveFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(gFolder, ignored);
}

const std::string& PreferencesPath() {
    static const std::string path = [] {
        // In memory where the system offers it: the files are written and
        // synced many times a second.
        std::snprintf(gFolder, sizeof gFolder, "/dev/shm/plumet-fuzz-XXXXXX");
        if (!mkdtemp(gFolder)) {
            std::snprintf(gFolder, sizeof gFolder, "/tmp/plumet-fuzz-XXXXXX");
            if (!mkdtemp(gFolder)) std::abort();
        }
        setenv("XDG_CONFIG_HOME", gFolder, 1);
        std::atexit(&RemoveFolder);
        return std::string(gFolder) + "/Lumerra 3D FlyWORD Plumet Preferences";
    }();
    return path;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string& path = PreferencesPath();
    if (FILE* f = std::fopen(path.c_str(), "wb")) {
        if (size) std::fwrite(data, 1, size, f);
        std::fclose(f);
    }
    {
        VZarbesoWorkspace workspace(true);
        Check(workspace.GetLightCount() <= 5);
        Check(std::memchr(workspace.text.text, 0, sizeof workspace.text.text) != nullptr);
    }
    // Writing into whatever the file held: each key reads back as written.
    const char* keys[] = {"App", "Camera", "k"};
    std::uint8_t value[300];
    for (std::size_t i = 0; i < sizeof value; ++i)
        value[i] = std::uint8_t(i * 31 + size);
    bool saved = true;
    {
        VPreferences store("FlyWORD Plumet", "Lumerra 3D", "Settings");
        for (int i = 0; i < 3; ++i) {
            // A section whose 256 pages are all taken refuses a new entry.
            if (!store.Write(keys[i], value, 100 * (i + 1) - 4)) return 0;
        }
        for (int i = 0; i < 3; ++i) {
            std::uint8_t back[300];
            std::int32_t length = 0;
            Check(store.Read(keys[i], back, sizeof back, length));
            Check(length == 100 * (i + 1) - 4 && !std::memcmp(back, value, std::size_t(length)));
        }
        saved = store.Save();
    }
    VPreferences again("FlyWORD Plumet", "Lumerra 3D", "Settings");
    std::int32_t length = 0;
    std::uint8_t back[300];
    Check(!saved || (again.Read("k", back, sizeof back, length) && length == 296));
    return 0;
}
