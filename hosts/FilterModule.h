// A filter module loaded into the host: the shared object, its entry and its
// property list.
#ifndef PLUMET_HOSTS_FILTERMODULE_H
#define PLUMET_HOSTS_FILTERMODULE_H

#include "hosts/PiPLReader.h"
#include "sdk/PIFilter.h"

#include <memory>
#include <string>

namespace plumet::hosts {

class FilterModule {
  public:
    // Loads the module and reads its property list. Fails with a one-line
    // message for a missing file, a file that is not a shared object, a
    // module that is not a filter (no property list, a kind other than 8BFM,
    // no entry) or a symbol it needs that is missing.
    static std::unique_ptr<FilterModule> Load(const std::string& path, std::string& error);
    ~FilterModule();
    FilterModule(const FilterModule&) = delete;
    FilterModule& operator=(const FilterModule&) = delete;

    const PiPLInfo& Info() const { return info_; }
    const std::string& Path() const { return path_; }

    // Calls the entry with one selector and returns what it wrote to result.
    int16 Call(int16 selector, void* block);

  private:
    FilterModule() = default;

    std::string path_;
    void* handle_ = nullptr;
    PluginEntryProc entry_ = nullptr;
    int32 pluginData_ = 0;
    PiPLInfo info_;
};

} // namespace plumet::hosts

#endif
