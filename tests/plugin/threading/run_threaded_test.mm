#include "plugin/threading/runner.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using testing::ElementsAre;

/// Both roads keep one contract.
class RunThreadedOn : public testing::TestWithParam<Road> {
protected:
    void run(const std::function<void()>& work) {
        const Job job{work};
        runner->run(&job, Job::run, nullptr);
    }
    void wait_for_yields(int count) {
        while (runner.yields < count)
            std::this_thread::sleep_for(100us);
    }

    Runner runner{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Runner, RunThreadedOn, testing::Values(Road::threads, Road::queue),
                         [](const auto& road) {
                             return road.param == Road::threads ? "AThreadOfItsOwn" : "AQueue";
                         });

TEST_P(RunThreadedOn, RunsTheWorkOnceOnAnotherThreadAndReturnsWhenItIsDone) {
    std::vector<std::thread::id> threads;
    run([&] {
        std::this_thread::sleep_for(5ms);
        threads.push_back(std::this_thread::get_id());
    });
    ASSERT_EQ(threads.size(), 1u);
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST_P(RunThreadedOn, TakesTheRoadThatTheSystemOffers) {
    run([] {});
    if (GetParam() == Road::queue) {
        EXPECT_EQ(runner.queue()->blocks, 1);
        EXPECT_EQ(runner.queue()->priority, 0);
        EXPECT_EQ(runner.queue()->flags, 0u);
        EXPECT_THAT(runner.system().threadCalls, ElementsAre());
    } else {
#if __has_feature(thread_sanitizer)
        EXPECT_THAT(runner.system().threadCalls, ElementsAre("create", "join"));
#else
        EXPECT_THAT(runner.system().threadCalls, ElementsAre("create", "join", "detach"));
#endif
    }
}

TEST_P(RunThreadedOn, YieldsOnceBeforeOnceInEveryPassAndOnceAfter) {
    run([&] { wait_for_yields(7); });
    EXPECT_GE(runner.system().sleeps, 6);
    EXPECT_EQ(runner.yields, 1 + runner.system().sleeps + 1);
}

TEST_P(RunThreadedOn, DoesNotSleepWhenTheWorkIsDoneByTheFirstLook) {
    std::atomic<bool> worked = false;
    runner.onYield = [&] {
        while (!worked)
            std::this_thread::sleep_for(1ms);
        if (runner.yields == 1) std::this_thread::sleep_for(100ms);
    };
    run([&] { worked = true; });
    EXPECT_EQ(runner.system().sleeps, 0);
    EXPECT_EQ(runner.yields, 2);
}

TEST_P(RunThreadedOn, YieldsAboutEveryMillisecondOnTheCallingThreadOnly) {
    std::vector<Clock::time_point> times;
    runner.onYield = [&, caller = std::this_thread::get_id()] {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        times.push_back(Clock::now());
    };
    run([&] { std::this_thread::sleep_for(150ms); });
    std::vector<Clock::duration> pauses;
    // The first yield and the one at the end have no sleep behind them.
    for (std::size_t i = 2; i + 1 < times.size(); ++i)
        pauses.push_back(times[i] - times[i - 1]);
    ASSERT_GT(pauses.size(), 10u);
    EXPECT_GE(std::ranges::min(pauses), 1ms);
    std::ranges::sort(pauses);
    EXPECT_LT(pauses[pauses.size() / 2], 5ms);
}

TEST_P(RunThreadedOn, CallsIdleWithTheDataAfterEveryPassAndAtTheEnd) {
    struct Data {
        std::atomic<int> idle = 0;
        std::thread::id caller = std::this_thread::get_id();
    } data;
    runner->run(
        &data,
        [](const void* given) {
            while (static_cast<const Data*>(given)->idle < 4)
                std::this_thread::sleep_for(100us);
        },
        [](const void* given) {
            auto* const data = static_cast<Data*>(const_cast<void*>(given));
            EXPECT_EQ(std::this_thread::get_id(), data->caller);
            ++data->idle;
        });
    EXPECT_EQ(data.idle, runner.system().sleeps + 1);
    EXPECT_GE(data.idle, 5);
}

TEST_P(RunThreadedOn, ReturnsWhenThereIsNoWork) {
    runner->run(nullptr, nullptr, nullptr);
    EXPECT_GE(runner.yields, 2);
}

TEST_P(RunThreadedOn, LooksTheYieldServiceUpOnce) {
    for (int i = 0; i < 3; ++i)
        run([&] { wait_for_yields(runner.yields + 2); });
    EXPECT_EQ(runner.lookups, 1);
}

TEST_P(RunThreadedOn, SleepsOnlyOnAHostThatCannotYieldAndAsksAgainEveryTime) {
    runner.canYield = false;
    bool worked = false;
    run([&] {
        while (runner.system().sleeps < 3)
            std::this_thread::sleep_for(100us);
        worked = true;
    });
    EXPECT_TRUE(worked);
    EXPECT_EQ(runner.yields, 0);
    EXPECT_EQ(runner.lookups, 1 + runner.system().sleeps + 1);

    runner.canYield = true;
    run([] {});
    EXPECT_GE(runner.yields, 2);
}

TEST_P(RunThreadedOn, DoesItsWorkWithoutMemoryForTheMutex) {
#if __has_feature(thread_sanitizer)
    GTEST_SKIP() << "by design the flag is then shared unlocked, which the sanitizer reports";
#endif
    runner.system().noMutexMemory = true;
    bool worked = false;
    run([&] {
        wait_for_yields(3);
        worked = true;
    });
    EXPECT_TRUE(worked);
}

TEST_P(RunThreadedOn, MakesWhatTheWorkWroteVisible) {
    for (int i = 0; i < 50; ++i) {
        std::vector<int> result;
        run([&] { result.assign(1000, i); });
        ASSERT_THAT(result, testing::AllOf(testing::SizeIs(1000), testing::Each(i)));
    }
}

/// A host thread that is yielded to may start work of its own.
TEST_P(RunThreadedOn, Keeps200CallsInFlightApart) {
    constexpr int calls = 200;
    std::atomic<int> inFlight = 0;
    std::vector<int> results(calls, -1);
    int started = 0;
    const std::function<void()> start_next = [&] {
        if (started == calls) return;
        const int number = started++;
        run([&, number] {
            ++inFlight;
            while (inFlight < calls)
                std::this_thread::sleep_for(1ms);
            results[number] = number;
        });
        EXPECT_EQ(results[number], number);
    };
    runner.onYield = start_next;
    start_next();
    EXPECT_EQ(inFlight, calls);
    for (int i = 0; i < calls; ++i)
        EXPECT_EQ(results[i], i);
}

TEST_P(RunThreadedOn, GivesEverythingBackToTheSystem) {
    for (int i = 0; i < 20; ++i)
        run([] {});
    EXPECT_EQ(runner.system().attributes, 0);
    if (runner.queue()) {
        while (runner.queue()->finished < 20)
            std::this_thread::sleep_for(1ms);
    } else {
        EXPECT_EQ(std::ranges::count(runner.system().threadCalls, "join"), 20);
    }
}

// The thread

TEST(RunThreaded, GivesTheWorkerAStackOf2MiB) {
    Runner runner;
    const Job job{[] {}};
    runner->run(&job, Job::run, nullptr);
    EXPECT_EQ(runner.system().stackSize, 2u * 1024 * 1024);
}

TEST(RunThreaded, ReturnsAtOnceWithTheWorkUndoneWhenNoThreadCanBeMade) {
    Runner runner;
    runner.system().noThreads = true;
    bool worked = false;
    const Job job{[&] { worked = true; }};
    runner->run(&job, Job::run, nullptr);
    EXPECT_FALSE(worked);
    EXPECT_EQ(runner.yields, 0);
    EXPECT_EQ(runner.system().attributes, 0);
    EXPECT_THAT(runner.system().threadCalls, ElementsAre("create"));

    runner.system().noThreads = false;
    runner->run(&job, Job::run, nullptr);
    EXPECT_TRUE(worked) << "the next call tries again";
}

TEST(RunThreaded, ReturnsAtOnceWithTheWorkUndoneWithoutThreadAttributes) {
    Runner runner;
    runner.system().noThreadAttributes = true;
    bool worked = false;
    const Job job{[&] { worked = true; }};
    runner->run(&job, Job::run, nullptr);
    EXPECT_FALSE(worked);
    EXPECT_EQ(runner.yields, 0);
    EXPECT_THAT(runner.system().threadCalls, ElementsAre());
}

TEST(ThreadFunction, WorksAndThenTellsWithOrWithoutAMutex) {
    Runner runner;
    pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
    for (pthread_mutex_t* const mutex : {&lock, static_cast<pthread_mutex_t*>(nullptr)}) {
        RunThreadedState state = {};
        bool wasDone = true;
        const Job job{[&] { wasDone = state.done; }};
        state.mutex = mutex;
        state.data = &job;
        state.work = Job::run;
        EXPECT_EQ(runner->threadFunction(&state), nullptr);
        EXPECT_FALSE(wasDone);
        EXPECT_TRUE(state.done);
    }
    EXPECT_EQ(pthread_mutex_trylock(&lock), 0) << "left unlocked";
    pthread_mutex_unlock(&lock);
}

TEST(ThreadFunction, IsDoneAtOnceWithoutWork) {
    Runner runner;
    RunThreadedState state = {};
    runner->threadFunction(&state);
    EXPECT_TRUE(state.done);
}

} // namespace
