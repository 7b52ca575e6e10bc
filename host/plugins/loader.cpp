#include "host/objects/runtime.h"
#include "host/services/services.h"

#include <dlfcn.h>

namespace host {

std::optional<std::string> Runtime::loadPlugin(const std::string& path) {
    // Without a slash the system's library folders would be searched.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* const why = dlerror();
        return path + ": cannot be loaded: " + (why ? why : "unknown reason");
    }
    const auto entry = reinterpret_cast<REALpluginEntry>(dlsym(library, REALpluginEntryName));
    if (!entry) {
        dlclose(library);
        return path + ": is no plug-in: it has no " + REALpluginEntryName;
    }
    // The plug-in's Objective-C classes, once registered, cannot be taken out again, so the library
    // stays for good.
    plugins_.push_back(path);
    controlVersion = 0;
    entry(&Services::resolve);
    return std::nullopt;
}

} // namespace host
