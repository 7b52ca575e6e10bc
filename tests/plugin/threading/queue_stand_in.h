#pragma once

/// A library with what the runner asks of a system that has queues: each block runs on a thread of
/// its own.

#include <atomic>

struct QueueCalls {
    std::atomic<int> blocks = 0;   ///< handed over
    std::atomic<int> finished = 0; ///< run, and given back
    long priority = -1;            ///< of the last queue asked for
    unsigned long flags = 99;
};

/// Exported by the library, to be looked up by name.
extern "C" QueueCalls* queue_calls();
