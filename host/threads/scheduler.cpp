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

Scheduler::Scheduler() {
    HostThread& main = *threads_.emplace_back(std::make_unique<HostThread>());
    main.scheduler_ = this;
    main.pool.emplace();
    atWork_ = &main;
    self = &main;
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

bool Scheduler::canGoOn(HostThread& thread, Clock::time_point now) const {
    switch (thread.state_) {
    case HostThread::State::Running:
        return true;
    case HostThread::State::Sleeping:
        return thread.isEnding_ || now >= thread.wakeTime_;
    case HostThread::State::Suspended:
        return thread.isEnding_;
    case HostThread::State::AwaitingOthers:
    case HostThread::State::Finished:
        return false;
    }
    return false;
}

HostThread& Scheduler::next() {
    const auto here = std::ranges::find(threads_, &current(), &std::unique_ptr<HostThread>::get);
    const auto index = static_cast<std::size_t>(here - threads_.begin());
    while (true) {
        const Clock::time_point now = Clock::now();
        std::optional<Clock::time_point> wakeTime;
        for (std::size_t i = 1; i <= threads_.size(); ++i) {
            HostThread& thread = *threads_[(index + i) % threads_.size()];
            if (canGoOn(thread, now)) return thread;
            if (thread.state_ == HostThread::State::Sleeping)
                wakeTime = std::min(wakeTime.value_or(thread.wakeTime_), thread.wakeTime_);
        }
        // Only the main program's waiting can be left: no thread suspends that.
        if (!wakeTime) return *threads_.front();
        std::this_thread::sleep_until(*wakeTime);
    }
}

void Scheduler::giveTurnTo(HostThread& thread) {
    if (&thread != self) {
        std::unique_lock lock(mutex_);
        atWork_ = &thread;
        thread.turn_.notify_one();
        self->turn_.wait(lock, [this] { return atWork_ == self; });
    }
    self->state_ = HostThread::State::Running;
    beginTurn();
}

void Scheduler::yield() {
    if (hasOthers()) giveTurnTo(next());
}

void Scheduler::sleep(HostThread& thread, std::int64_t duration) {
    constexpr std::int64_t longest = 1'000'000'000'000; // thirty years
    thread.state_ = HostThread::State::Sleeping;
    thread.wakeTime_ = Clock::now() + milliseconds(std::clamp<std::int64_t>(duration, 0, longest));
    if (&thread == self) giveTurnTo(next());
}

void Scheduler::suspend(HostThread& thread) {
    thread.state_ = HostThread::State::Suspended;
    if (&thread == self) giveTurnTo(next());
}

void Scheduler::resume(HostThread& thread) { thread.state_ = HostThread::State::Running; }

void Scheduler::end(HostThread& thread) { thread.isEnding_ = true; }

void Scheduler::endAll() {
    for (const auto& thread : threads_)
        thread->isEnding_ = true;
}

void Scheduler::awaitOthers() {
    while (hasOthers()) {
        self->state_ = HostThread::State::AwaitingOthers;
        giveTurnTo(next());
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
