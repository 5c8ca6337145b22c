// How the GIMP bridge names the filters it finds: procedure names, menu
// entries and where the filter modules lie.
#ifndef PLUMET_HOSTS_GIMP_BRIDGENAMES_H
#define PLUMET_HOSTS_GIMP_BRIDGENAMES_H

#include <string>
#include <vector>

namespace plumet::hosts::gimp {

// "plug-in-flyword-plumet" for "FlyWORD Plumet": lower case, every run of
// other characters than letters and digits one dash. Empty for a name
// without letters or digits.
std::string ProcedureNameFor(const std::string& filterName);

// "<Image>/Filters/Lumerra 3D" for the category "Lumerra 3D"; a slash in the
// category would open a submenu and becomes a dash. No category: "Misc".
std::string MenuPathFor(const std::string& category);

// "FlyWORD Plumet..." (the filter opens a window); underscores are doubled
// so that none is taken for a mnemonic.
std::string MenuLabelFor(const std::string& filterName);

// The folder of the plug-in's executable as GIMP started it (argv[0],
// symbolic links not resolved, so that the modules beside a link are found);
// "." when argv[0] has no folder.
std::string PluginFolder(const char* argv0);

// The filter modules (*.8bf, regular files or links to them) in a folder,
// sorted by name.
std::vector<std::string> FilterModulesIn(const std::string& folder);

} // namespace plumet::hosts::gimp

#endif
