#include "plugin/threading/queue_stand_in.h"

#include <dispatch/dispatch.h>

#include <mutex>
#include <thread>
#include <vector>

// The blocks' runtime is GNUstep Base's.
extern "C" void* _Block_copy(const void* block);
extern "C" void _Block_release(const void* block);

namespace {

QueueCalls calls;

// Waited for at the end of the process, so that nothing of them is left.
std::mutex threadsMutex;
std::vector<std::jthread> threads;

} // namespace

extern "C" __attribute__((visibility("default"))) QueueCalls* queue_calls() { return &calls; }

dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags) {
    calls.priority = priority;
    calls.flags = flags;
    return reinterpret_cast<dispatch_queue_t>(&calls);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    if (queue != reinterpret_cast<dispatch_queue_t>(&calls)) return;
    ++calls.blocks;
    const auto copy = (dispatch_block_t)_Block_copy((const void*)block);
    const std::lock_guard lock(threadsMutex);
    threads.emplace_back([copy] {
        copy();
        _Block_release((const void*)copy);
        ++calls.finished;
    });
}
