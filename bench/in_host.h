#pragma once

/// Benchmarks of what happens in a running host, for which the benchmark's program is the plug-in.

#include "host/objects/runtime.h"
#include "host/services/services.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/references.h"
#include "sdk/registration.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <span>
#include <string>

/// A host with the base part loaded.
inline host::Runtime& runningHost() {
    static host::Runtime runtime({.version = 2013.9});
    static const bool isBooted = [] {
        const auto error = runtime.loadPlugin(BASE_PART);
        if (error) std::abort();
        REALregistration::take_up_host(host::Services::resolve);
        return true;
    }();
    static_cast<void>(isBooted);
    return runtime;
}

using Work = void (*)(benchmark::State&);

/// As a host runs the members of its plug-ins.
inline void runAsMember(benchmark::State& state, Work work) {
    const host::Method member{
        .signature = host::Signature::parse("Convert()").value(),
        .body = [&](REALobjectStruct*, std::span<host::Value>) -> host::Value {
            work(state);
            return {};
        },
        .isShared = true};
    runningHost().call(member, nullptr);
}

/// Of this thread's processor time.
inline double secondsNow() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

template <typename Step>
double secondsOf(Step work) {
    const double start = secondsNow();
    work();
    return secondsNow() - start;
}

/// The best of five copies into fresh memory.
inline double secondsOfCopy(const std::string& bytes) {
    double best = 1e9;
    for (int round = 0; round < 5; ++round)
        best = std::min(best, secondsOf([&] {
                            void* const copy = std::malloc(bytes.size());
                            std::memcpy(copy, bytes.data(), bytes.size());
                            benchmark::DoNotOptimize(copy);
                            benchmark::ClobberMemory();
                            std::free(copy);
                        }));
    return best;
}
