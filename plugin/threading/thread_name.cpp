#include "plugin/threading/thread_name.h"

#include <atomic>
#include <dlfcn.h>
#include <pthread.h>

#if defined(__linux__)
#include <cstring>
#endif

namespace {

using NameThread = int (*)(const char* name);

#if defined(__linux__)
/// Linux has no room for more than 15 characters.
int name_linux_thread(const char* name) {
    char shortened[16] = {};
    std::strncpy(shortened, name, sizeof shortened - 1);
    return pthread_setname_np(pthread_self(), shortened);
}
#endif

/// A Mac has the function from 10.6 on; the library stays open.
NameThread look_up() {
    if (void* const library = dlopen("/usr/lib/libpthread.dylib", RTLD_NOW))
        return reinterpret_cast<NameThread>(dlsym(library, "pthread_setname_np"));
#if defined(__linux__)
    return name_linux_thread;
#else
    return nullptr;
#endif
}

// Shared by all workers without a lock: at worst two of them look the function up.
std::atomic<NameThread> nameThread = nullptr;
std::atomic<bool> wasLookedUp = false;

} // namespace

void name_current_thread(const char* name) {
    if (!nameThread && !wasLookedUp) {
        wasLookedUp = true;
        nameThread = look_up();
    }
    if (NameThread const function = nameThread) function(name);
}
