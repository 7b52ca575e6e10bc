#pragma once

/// A test's own copy of the runner, with a host that counts its yields.

#include "plugin/threading/queue_stand_in.h"
#include "plugin/threading/runner_probe.h"

#include <gtest/gtest.h>

#include <functional>

#include <dlfcn.h>

/// How the runner gets its work off the thread.
enum class Road { threads, queue };

class Runner {
public:
    explicit Runner(Road road = Road::threads);

    const RunnerProbe& operator*() const { return *probe_; }
    const RunnerProbe* operator->() const { return probe_; }
    SystemCalls& system() { return *probe_->system; }
    /// Null when there are no queues.
    QueueCalls* queue() { return queue_; }

    /// Runs on every yield.
    std::function<void()> onYield;
    std::atomic<int> yields = 0;
    std::atomic<int> lookups = 0; ///< of the yield service
    bool canYield = true;

private:
    static void* resolve(const char* name);
    static void yield();
    static inline Runner* current_ = nullptr;

    QueueCalls* queue_ = nullptr;
    const RunnerProbe* probe_ = nullptr;
};

/// Work for the runner: a function of a test.
struct Job {
    std::function<void()> work;
    static void run(const void* job) { static_cast<const Job*>(job)->work(); }
};
