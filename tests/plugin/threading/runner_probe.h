#pragma once

/// The runner and its work functions, built into a library of its own (Runner.so), in which the
/// system's functions can be told to fail and tell what they were asked for.

#include "plugin/threading/image_work.h"
#include "plugin/threading/run_threaded.h"
#include "sdk/services.h"

#include <atomic>
#include <string>
#include <vector>

struct SystemCalls {
    // What is to fail
    bool noMutexMemory = false;
    bool noThreadAttributes = false;
    bool noThreads = false;

    /// What stands in for the library that names threads on a Mac; by default there is none.
    void* threadLibrary = nullptr;
    int (*nameThread)(const char* name) = nullptr;

    // What was seen
    std::atomic<int> sleeps = 0;
    std::size_t stackSize = 0; ///< of the last thread, bytes
    int attributes = 0;        ///< made and not given back
    std::vector<std::string> threadCalls;
    std::vector<std::string> lookups; ///< library, or symbol
};

struct RunnerProbe {
    void (*useHost)(REALresolver resolver);
    decltype(&RunThreaded) run;
    decltype(&RunThreadedBlocks) runOnQueue;
    decltype(&threadfunction) threadFunction;
    decltype(&DoWork) load;
    decltype(&DoImageWork) encode;
    SystemCalls* system;
};

/// Exported by Runner.so.
extern "C" const RunnerProbe* runner_probe();
