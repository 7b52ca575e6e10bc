#include "host/threads/scheduler.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <thread>
#include <utility>

namespace host {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Room for programs to nest their calls and for plug-ins, in an address space that many threads
/// share.
constexpr std::size_t stackSize = std::size_t{sizeof(void*) == 8 ? 8 : 4} << 20;

/// A turn's length at the priority 1, in time of the processor: how busy the machine is with other
/// things does not shorten it.
constexpr nanoseconds turnPerPriority = std::chrono::microseconds(800);
/// But what waits for the machine, rather than computing, gives the others a turn as well.
constexpr milliseconds longestTurn{100};

thread_local HostThread* self = nullptr;

nanoseconds processorTime() {
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

} // namespace

bool Scheduler::isAtRest(const HostThread& thread) {
    return thread.state_ == HostThread::State::Sleeping ||
           thread.state_ == HostThread::State::Suspended;
}

bool Scheduler::wakesBefore(const std::unique_ptr<HostThread>& a,
                            const std::unique_ptr<HostThread>& b) {
    const bool aSleeps = a->state_ == HostThread::State::Sleeping;
    const bool bSleeps = b->state_ == HostThread::State::Sleeping;
    return aSleeps && (!bSleeps || a->wakeTime_ < b->wakeTime_);
}

Scheduler::Scheduler()
    : main_(*threads_.emplace_back(std::make_unique<HostThread>())) {
    main_.scheduler_ = this;
    main_.pool.emplace();
    atWork_ = &main_;
    self = &main_;
    beginTurn();
}

Scheduler::~Scheduler() {
    endAll();
    awaitOthers();
    current().pool.reset();
    self = nullptr;
}

bool Scheduler::onHostThread() const { return self && self->scheduler_ == this; }

HostThread& Scheduler::current() const { return *self; }

HostThread* Scheduler::start(ObjectRef object, int priority, std::function<void()> work) {
    auto started = std::make_unique<HostThread>();
    started->scheduler_ = this;
    started->object = std::move(object);
    started->priority = priority;
    started->work_ = std::move(work);
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return nullptr;
    pthread_attr_setstacksize(&attributes, stackSize);
    const int error = pthread_create(&started->thread_, &attributes, enter, started.get());
    pthread_attr_destroy(&attributes);
    if (error != 0) return nullptr;
    return threads_.emplace_back(std::move(started)).get();
}

void* Scheduler::enter(void* raw) {
    HostThread& thread = *static_cast<HostThread*>(raw);
    Scheduler& scheduler = *thread.scheduler_;
    self = &thread;
    {
        std::unique_lock lock(scheduler.mutex_);
        thread.turn_.wait(lock, [&] { return scheduler.atWork_ == &thread; });
    }
    {
        const CocoaThread registered;
        thread.pool.emplace();
        scheduler.beginTurn();
        thread.work_();
        // What these keep goes while there is a pool, and while it is this thread's turn.
        thread.work_ = nullptr;
        thread.pendingException = nullptr;
        thread.object = nullptr;
        thread.pool.reset();
    }
    scheduler.finish(thread);
    return nullptr;
}

void Scheduler::beginTurn() {
    joinFinished();
    turnStart_ = Clock::now();
    turnStartInProcessorTime_ = processorTime();
}

bool Scheduler::turnIsOver() const {
    const auto length = turnPerPriority * current().priority;
    const auto passed = Clock::now() - turnStart_;
    // The time that has passed is cheaper to ask for, and no less than that of the processor.
    if (passed < length) return false;
    return passed >= longestTurn || processorTime() - turnStartInProcessorTime_ >= length;
}

void Scheduler::wakeSleepers() {
    const Clock::time_point now = Clock::now();
    const auto sleepsOn = [now](const auto& thread) {
        const bool isDue =
            thread->state_ == HostThread::State::Sleeping && now >= thread->wakeTime_;
        const bool isRoused = isAtRest(*thread) && thread->isEnding_;
        return !isDue && !isRoused;
    };
    const auto woken = std::stable_partition(threads_.begin(), threads_.end(), sleepsOn);
    std::stable_sort(woken, threads_.end(), wakesBefore);
    std::for_each(woken, threads_.end(),
                  [](const auto& thread) { thread->state_ = HostThread::State::Running; });
}

void Scheduler::moveToBack(const HostThread& thread) {
    const auto here = std::ranges::find(threads_, &thread, &std::unique_ptr<HostThread>::get);
    std::rotate(here, here + 1, threads_.end());
}

HostThread& Scheduler::next() {
    const auto isReady = [](const auto& thread) {
        return thread->state_ == HostThread::State::Running;
    };
    while (true) {
        wakeSleepers();
        const auto ready = std::ranges::find_if(threads_, isReady);
        if (ready != threads_.end()) return **ready;
        const auto first = std::ranges::min_element(threads_, wakesBefore);
        // Only the main program's waiting can be left: no thread suspends that.
        if ((*first)->state_ != HostThread::State::Sleeping) return main_;
        std::this_thread::sleep_until((*first)->wakeTime_);
    }
}

void Scheduler::endTurn() {
    wakeSleepers();
    moveToBack(*self);
    HostThread& successor = next();
    if (&successor != self) {
        std::unique_lock lock(mutex_);
        atWork_ = &successor;
        successor.turn_.notify_one();
        self->turn_.wait(lock, [this] { return atWork_ == self; });
    }
    self->state_ = HostThread::State::Running;
    beginTurn();
}

void Scheduler::yield() {
    if (hasOthers()) endTurn();
}

void Scheduler::sleep(HostThread& thread, std::int64_t duration) {
    constexpr std::int64_t longest = 1'000'000'000'000; // thirty years
    thread.state_ = HostThread::State::Sleeping;
    thread.wakeTime_ = Clock::now() + milliseconds(std::clamp<std::int64_t>(duration, 0, longest));
    if (&thread == self) endTurn();
}

void Scheduler::suspend(HostThread& thread) {
    thread.state_ = HostThread::State::Suspended;
    if (&thread == self) endTurn();
}

void Scheduler::resume(HostThread& thread) {
    if (!isAtRest(thread)) return;
    thread.state_ = HostThread::State::Running;
    moveToBack(thread);
}

void Scheduler::end(HostThread& thread) { thread.isEnding_ = true; }

void Scheduler::endAll() {
    for (const auto& thread : threads_)
        thread->isEnding_ = true;
}

void Scheduler::awaitOthers() {
    while (hasOthers()) {
        self->state_ = HostThread::State::AwaitingOthers;
        endTurn();
        for (const auto& thread : threads_)
            if (thread.get() != self) thread->isEnding_ = true;
    }
    self->isEnding_ = false;
}

void Scheduler::finish(HostThread& thread) {
    thread.state_ = HostThread::State::Finished;
    HostThread& successor = next();
    const auto here = std::ranges::find(threads_, &thread, &std::unique_ptr<HostThread>::get);
    finished_.push_back(std::move(*here));
    threads_.erase(here);
    const std::lock_guard lock(mutex_);
    atWork_ = &successor;
    successor.turn_.notify_one();
}

void Scheduler::joinFinished() {
    for (const auto& thread : finished_)
        pthread_join(thread->thread_, nullptr);
    finished_.clear();
}

} // namespace host
