#include "plugin/threading/run_threaded.h"

#include "plugin/entry/host_services.h"

#include <Carbon/Carbon.h>
#include <dispatch/dispatch.h>

#include <cstdlib>

namespace {

constexpr std::size_t workerStackSize = 2097152;

/// Null when there is no memory; the flag is then used without it.
pthread_mutex_t* new_mutex() {
    auto* const mutex = static_cast<pthread_mutex_t*>(std::calloc(1, sizeof(pthread_mutex_t)));
    if (mutex) pthread_mutex_init(mutex, nullptr);
    return mutex;
}

void destroy_mutex(RunThreadedState& state) {
    if (state.mutex) pthread_mutex_destroy(state.mutex);
    std::free(state.mutex);
    state.mutex = nullptr;
}

bool is_done(RunThreadedState& state) {
    if (state.mutex) pthread_mutex_lock(state.mutex);
    const bool done = state.done;
    if (state.mutex) pthread_mutex_unlock(state.mutex);
    return done;
}

void work_and_tell(RunThreadedState& state) {
    if (state.work) state.work(state.data);
    if (state.mutex) pthread_mutex_lock(state.mutex);
    state.done = true;
    if (state.mutex) pthread_mutex_unlock(state.mutex);
}

void sleep_one_millisecond() {
    AbsoluteTime end = AddDurationToAbsolute(durationMillisecond, UpTime());
    MPDelayUntil(&end);
}

/// Work that is done by the first look costs no sleep.
void wait_until_done(RunThreadedState& state) {
    REALYieldToRB();
    while (!is_done(state)) {
        REALYieldToRB();
        sleep_one_millisecond();
        if (state.idle) state.idle(state.data);
    }
    REALYieldToRB();
    if (state.idle) state.idle(state.data);
    destroy_mutex(state);
}

bool start_worker(RunThreadedState& state) {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    pthread_attr_setstacksize(&attributes, workerStackSize);
    const int error = pthread_create(&state.thread, &attributes, threadfunction, &state);
    pthread_attr_destroy(&attributes);
    return error == 0;
}

} // namespace

void* threadfunction(void* state) {
    work_and_tell(*static_cast<RunThreadedState*>(state));
    return nullptr;
}

void RunThreadedBlocks(const void* data, ThreadedFunction work, ThreadedFunction idle) {
    __block RunThreadedState state = {};
    state.mutex = new_mutex();
    state.data = data;
    state.work = work;
    state.idle = idle;
    state.running = true;
    state.onQueue = true;
    dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
        work_and_tell(state);
    });
    wait_until_done(state);
}

void RunThreaded(const void* data, ThreadedFunction work, ThreadedFunction idle) {
    if (dispatch_async) return RunThreadedBlocks(data, work, idle);

    RunThreadedState state = {};
    state.mutex = new_mutex();
    state.data = data;
    state.work = work;
    state.idle = idle;
    if (!start_worker(state)) return destroy_mutex(state);
    state.running = true;
    wait_until_done(state);
    pthread_join(state.thread, nullptr);
#if !__has_feature(thread_sanitizer)
    // The thread is gone: this answers an error, of no use. The sanitizer would end the process.
    pthread_detach(state.thread);
#endif
    state.thread = {};
    state.running = false;
}
