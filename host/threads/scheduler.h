#pragma once

/// The threads that programs start. They take turns: exactly one of them, or the main program, runs
/// at a time, so nothing of the host's needs a lock. Each has a stack and a thread of the system's
/// of its own. A turn is given up in the functions below alone, and the next is of the thread that
/// has been ready for one longest: since it had its last turn, was started, resumed or awoke.

#include "host/objects/object.h"
#include "host/plugins/pool.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <vector>

namespace host {

class Scheduler;

class HostThread {
public:
    enum class State {
        Running, ///< now, or as soon as it is its turn
        Sleeping,
        Suspended,
        AwaitingOthers, ///< the main program, which is at its end
        Finished,
    };

    HostThread() = default;
    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;

    State state() const { return state_; }
    /// Whether the thread has been asked to end. It leaves the plug-in that it may be in first.
    bool isEnding() const { return isEnding_; }

    // What the host keeps for each of its threads.

    std::optional<AutoreleasePool> pool;
    int membersAtWork = 0;
    int callsSinceDrain = 0;
    ObjectRef pendingException;
    /// The instance of the class Thread; Nil for the main program.
    ObjectRef object;
    /// How long its turns are: the normal priority is 5, and one of 10 has turns twice as long.
    int priority = 5;

private:
    friend Scheduler;

    Scheduler* scheduler_ = nullptr;
    State state_ = State::Running;
    std::chrono::steady_clock::time_point wakeTime_;
    bool isEnding_ = false;
    pthread_t thread_{};
    std::function<void()> work_;
    std::condition_variable turn_;
};

/// Is made on the thread of the main program. Its functions are called by the thread whose turn it
/// is.
class Scheduler {
public:
    Scheduler();
    /// Ends the other threads and waits for that.
    ~Scheduler();
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    /// Whether the caller is one of the host's threads, and so the one whose turn it is.
    bool onHostThread() const;
    HostThread& current() const;
    bool hasOthers() const { return threads_.size() > 1; }

    /// The work is done when the new thread has its turn. It throws nothing, and ends soon when
    /// isEnding() is true. Null when the system has no room for a further thread.
    HostThread* start(ObjectRef object, int priority, std::function<void()> work);

    /// Gives each of the other threads that can go on a turn.
    void yield();
    /// The same, when the caller's turn has lasted long enough. What loops call in each round.
    void yieldAfterTurn() {
        if (hasOthers() && turnIsOver()) yield();
    }
    /// For a number of milliseconds; one below 0 counts as 0.
    void sleep(HostThread& thread, std::int64_t duration);
    /// Until resume().
    void suspend(HostThread& thread);
    /// Lets a suspended or sleeping thread go on.
    void resume(HostThread& thread);

    void end(HostThread& thread);
    /// Asks every thread to end, the main program too.
    void endAll();
    /// Called by the main program: returns when no other thread is left. Those that are suspended
    /// when nobody is left to resume them are ended.
    void awaitOthers();

private:
    using Clock = std::chrono::steady_clock;

    static void* enter(void* thread);
    void beginTurn();
    bool turnIsOver() const;
    /// Whether somebody or a time must come for the thread to go on.
    static bool isAtRest(const HostThread& thread);
    static bool wakesBefore(const std::unique_ptr<HostThread>& a,
                            const std::unique_ptr<HostThread>& b);
    void wakeSleepers();
    void moveToBack(const HostThread& thread);
    /// The thread to go on now, which may be the current one. Sleeps while all do.
    HostThread& next();
    /// Returns at the current thread's next turn.
    void endTurn();
    void finish(HostThread& thread);
    void joinFinished();

    std::mutex mutex_;
    HostThread* atWork_ = nullptr; ///< guarded by the mutex; all else is the thread's at work
    /// Those that are ready stand in the order of their turns.
    std::vector<std::unique_ptr<HostThread>> threads_;
    std::vector<std::unique_ptr<HostThread>> finished_;
    HostThread& main_;
    Clock::time_point turnStart_;
    std::chrono::nanoseconds turnStartInProcessorTime_{};
};

} // namespace host
