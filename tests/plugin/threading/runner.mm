#include "plugin/threading/runner.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

template <typename Function>
Function* exported(const char* file, const char* symbol) {
    // For every library loaded behind it to see, as a system's own library is.
    void* const library = dlopen(file, RTLD_NOW | RTLD_GLOBAL);
    if (!library) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::abort();
    }
    return reinterpret_cast<Function*>(dlsym(library, symbol));
}

} // namespace

Runner::Runner(Road road) {
    current_ = this;
    if (road == Road::queue)
        queue_ = exported<decltype(queue_calls)>(QUEUE_STAND_IN, "queue_calls")();
    probe_ = exported<decltype(runner_probe)>(RUNNER_PART, "runner_probe")();
    probe_->useHost(resolve);
}

void* Runner::resolve(const char* name) {
    if (std::strcmp(name, "REALYieldToRB") != 0) return nullptr;
    ++current_->lookups;
    return current_->canYield ? reinterpret_cast<void*>(yield) : nullptr;
}

void Runner::yield() {
    ++current_->yields;
    if (current_->onYield) current_->onYield();
}
