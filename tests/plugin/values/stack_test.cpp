#include "host/objects/dictionary.h"
#include "tests/plugin/values/round_trips.h"

#include <functional>
#include <pthread.h>

namespace {

/// What systems give a program's second threads at the least; sanitizers want more for each frame.
#if __has_feature(address_sanitizer)
constexpr std::size_t stackSize = std::size_t{4} << 20;
#else
constexpr std::size_t stackSize = std::size_t{512} << 10;
#endif

void runOnASmallStack(std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stackSize), 0);
    const auto run = [](void* given) -> void* {
        (*static_cast<std::function<void()>*>(given))();
        return nullptr;
    };
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

constexpr int deepest = 1000;

host::ObjectRef nestedDictionaries() {
    host::ObjectRef outer;
    for (int level = 0; level < deepest; ++level) {
        const host::ObjectRef inner = outer;
        outer = host::Runtime::current().newInstance("Dictionary");
        host::stateOf<host::Dictionary>(outer)->set("inner", inner);
    }
    return outer;
}

host::ObjectRef nestedArrays(Host& host) {
    host::ObjectRef outer = host.arrayOf(host::Kind::Variant);
    for (int level = 1; level < deepest; ++level)
        outer = host.arrayOf(host::Kind::Variant, {outer});
    return outer;
}

TEST(TheDeepestCollections, FitInASmallStackBothWays) {
    runOnASmallStack([] {
        Host host{with_probe()};
        for (const host::Value nested : {nestedDictionaries(), nestedArrays(host)}) {
            EXPECT_EQ(host.shared("ValueProbe", "RoundTrip", nested).kind(), host::Kind::Object);
            EXPECT_EQ(host.raised(), "");
        }
    });
}

} // namespace
