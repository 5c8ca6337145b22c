#include "hosts/gimp/BridgeNames.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>

namespace plumet::hosts::gimp {

std::string ProcedureNameFor(const std::string& filterName) {
    std::string slug;
    bool dash = false;
    for (const char c : filterName) {
        const unsigned char u = static_cast<unsigned char>(c);
        if ((u >= 'a' && u <= 'z') || (u >= '0' && u <= '9') || (u >= 'A' && u <= 'Z')) {
            if (dash && !slug.empty()) slug += '-';
            dash = false;
            slug += char(u >= 'A' && u <= 'Z' ? u - 'A' + 'a' : u);
        } else {
            dash = true;
        }
    }
    return slug.empty() ? "" : "plug-in-" + slug;
}

std::string MenuPathFor(const std::string& category) {
    std::string name = category.empty() ? "Misc" : category;
    std::replace(name.begin(), name.end(), '/', '-');
    return "<Image>/Filters/" + name;
}

std::string MenuLabelFor(const std::string& filterName) {
    std::string label;
    for (const char c : filterName)
        label += c == '_' ? std::string("__") : std::string(1, c);
    return label + "...";
}

std::string PluginFolder(const char* argv0) {
    const std::string path = argv0 ? argv0 : "";
    const auto slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::vector<std::string> FilterModulesIn(const std::string& folder) {
    std::vector<std::string> modules;
    DIR* dir = opendir(folder.c_str());
    if (!dir) return modules;
    while (const dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name.size() <= 4 || name.compare(name.size() - 4, 4, ".8bf") != 0) continue;
        const std::string path = folder + "/" + name;
        struct stat st {};
        if (stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode)) modules.push_back(path);
    }
    closedir(dir);
    std::sort(modules.begin(), modules.end());
    return modules;
}

} // namespace plumet::hosts::gimp
