#pragma once

/// Work on another thread while the host goes on. The caller waits until the work is done, but it
/// waits by yielding to the host, so that the host's other threads and its windows stay alive.

#include <cstddef>
#include <pthread.h>

using ThreadedFunction = void (*)(const void* data);

/// What the waiting host thread and the worker share. It lives in the waiting call.
struct RunThreadedState {
    pthread_t thread;       ///< the worker; zero on a queue and after the end
    pthread_mutex_t* mutex; ///< guards `done`; null when there was no memory for it
    bool running;
    bool done; ///< set by the worker behind the work
    bool onQueue;
    const void* data;
    ThreadedFunction work;
    ThreadedFunction idle;
};

#if defined(__i386__)
static_assert(offsetof(RunThreadedState, mutex) == 4 && offsetof(RunThreadedState, running) == 8 &&
              offsetof(RunThreadedState, done) == 9 && offsetof(RunThreadedState, onQueue) == 10 &&
              offsetof(RunThreadedState, data) == 12 && offsetof(RunThreadedState, work) == 16 &&
              offsetof(RunThreadedState, idle) == 20 && sizeof(RunThreadedState) == 24);
#endif

/// Calls `work(data)` on another thread and returns when it is done. Host thread only: meanwhile
/// the host is yielded to, at the start, then about every millisecond, and at the end. `idle`,
/// which may be null, is called with `data` on this thread after every wait. When no thread can be
/// made, the work is left undone without a word, so `data` should look undone before.
///
/// `work` must not call the host and must catch what it throws.
void RunThreaded(const void* data, ThreadedFunction work, ThreadedFunction idle);

/// The same on a queue of the system, for systems that have queues; RunThreaded chooses.
void RunThreadedBlocks(const void* data, ThreadedFunction work, ThreadedFunction idle);

/// The start routine of a worker thread of its own; `state` is a RunThreadedState. Returns null.
void* threadfunction(void* state);
