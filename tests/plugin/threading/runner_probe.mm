#include "plugin/threading/runner_probe.h"

#include "sdk/host_service.h"

#include <Carbon/Carbon.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

namespace {

SystemCalls calls;

} // namespace

// The linker sends the runner's calls of these functions here.
extern "C" {

void* __real_calloc(std::size_t count, std::size_t size);
int __real_pthread_attr_init(pthread_attr_t* attributes);
int __real_pthread_attr_destroy(pthread_attr_t* attributes);
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                          void* (*start)(void*), void* argument);
int __real_pthread_join(pthread_t thread, void** result);
OSStatus __real_MPDelayUntil(AbsoluteTime* expirationTime);

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return calls.noMutexMemory ? nullptr : __real_calloc(count, size);
}

int __wrap_pthread_attr_init(pthread_attr_t* attributes) {
    if (calls.noThreadAttributes) return ENOMEM;
    ++calls.attributes;
    return __real_pthread_attr_init(attributes);
}

int __wrap_pthread_attr_destroy(pthread_attr_t* attributes) {
    --calls.attributes;
    return __real_pthread_attr_destroy(attributes);
}

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                          void* (*start)(void*), void* argument) {
    calls.threadCalls.push_back("create");
    pthread_attr_getstacksize(attributes, &calls.stackSize);
    return calls.noThreads ? EAGAIN : __real_pthread_create(thread, attributes, start, argument);
}

int __wrap_pthread_join(pthread_t thread, void** result) {
    calls.threadCalls.push_back("join");
    return __real_pthread_join(thread, result);
}

/// Answers what the system answers about a thread that was joined.
int __wrap_pthread_detach(pthread_t thread) {
    calls.threadCalls.push_back("detach");
    return ESRCH;
}

OSStatus __wrap_MPDelayUntil(AbsoluteTime* expirationTime) {
    ++calls.sleeps;
    return __real_MPDelayUntil(expirationTime);
}

void* __wrap_dlopen(const char* file, int mode) {
    calls.lookups.push_back(file);
    return calls.threadLibrary;
}

void* __wrap_dlsym(void* library, const char* symbol) {
    calls.lookups.push_back(symbol);
    return library == calls.threadLibrary ? reinterpret_cast<void*>(calls.nameThread) : nullptr;
}

__attribute__((visibility("default"))) const RunnerProbe* runner_probe() {
    static const RunnerProbe probe = {
        .useHost = [](REALresolver resolver) { gResolver = resolver; },
        .run = RunThreaded,
        .runOnQueue = RunThreadedBlocks,
        .threadFunction = threadfunction,
        .load = DoWork,
        .encode = DoImageWork,
        .system = &calls,
    };
    return &probe;
}

} // extern "C"
