// A configuration folder of a test's own: XDG_CONFIG_HOME points at a fresh
// temporary folder for the test's lifetime, so that no test reads or writes
// the user's files, and tests running at once do not share one.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

class TempConfigFolder {
  public:
    TempConfigFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "plumet-config-XXXXXX");
        if (mkdtemp(pattern.data())) path_ = pattern;
        setenv("XDG_CONFIG_HOME", path_.c_str(), 1);
    }
    ~TempConfigFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempConfigFolder(const TempConfigFolder&) = delete;
    TempConfigFolder& operator=(const TempConfigFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

    std::vector<unsigned char> Read(const std::string& name) const {
        std::ifstream in(File(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    void Write(const std::string& name, const std::vector<unsigned char>& bytes) const {
        std::ofstream out(File(name), std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    }
    // Names of what the folder holds.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        return names;
    }

  private:
    std::string path_;
};

inline constexpr const char* kPreferencesFileName = "Lumerra 3D FlyWORD Plumet Preferences";
