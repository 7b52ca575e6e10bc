/// Values on their way between a host and Cocoa, in a running host. Collections are measured at two
/// sizes, where the counter `per entry` must stay the same. Memory blocks are measured against
/// copying as many bytes into fresh memory in the same run: the counter `copies` is how many such
/// copies the conversion takes.

#include "bench/in_host.h"
#include "host/objects/array.h"
#include "host/objects/date.h"
#include "host/objects/dictionary.h"
#include "host/objects/memory_block.h"
#include "plugin/bridge/data.h"
#include "plugin/bridge/dictionaries.h"
#include "plugin/bridge/string_array.h"
#include "plugin/bridge/variants.h"

#include <algorithm>
#include <string>

namespace {

using host::ObjectRef;
using host::Value;

ObjectRef newBlock(std::size_t size) { return host::newMemoryBlock(std::string(size, 'b')); }

/// A value of each kind in turn.
Value mixedValue(int index) {
    const std::string text = "value " + std::to_string(index);
    switch (index % 7) {
    case 0:
        return std::int32_t{index};
    case 1:
        return 0.5 * index;
    case 2:
        return text;
    case 3:
        return index % 2 == 0;
    case 4:
        return host::newDate({.year = 1970 + index % 60, .month = 1 + index % 12});
    case 5:
        return newBlock(16);
    default:
        return nullptr;
    }
}

ObjectRef newDictionary(int count) {
    ObjectRef object = host::Runtime::current().newInstance("Dictionary");
    auto* const dictionary = host::stateOf<host::Dictionary>(object);
    for (int index = 0; index < count; ++index) {
        const bool hasTextKey = index % 2 == 0;
        const Value key = hasTextKey ? Value("key " + std::to_string(index)) : Value(index);
        dictionary->set(key, mixedValue(index));
    }
    return object;
}

ObjectRef newStrings(int count) {
    ObjectRef object = host::newArray(host::Kind::String);
    for (int index = 0; index < count; ++index)
        host::arrayOf(object)->elements.emplace_back("Text " + std::to_string(index) + " \u2192");
    return object;
}

void countEntries(benchmark::State& state) {
    using benchmark::Counter;
    state.counters["per entry"] = Counter(static_cast<double>(state.range(0)),
                                          Counter::kIsIterationInvariantRate | Counter::kInvert);
}

/// A Cocoa object made in a frame, for use in others.
template <typename Step>
auto kept(Step work) {
    return CFReference<CFTypeRef>::adopt(FullFrame([&] { return (CFTypeRef)[(id)work() retain]; }));
}

/// Times what the work makes for the host, but not the end of it.
template <typename Step>
void timeToHost(benchmark::State& state, Step work) {
    for (auto _ : state) {
        REALobjectStruct* const made = FullFrame([&]() -> REALobjectStruct* { return work(); });
        state.PauseTiming();
        if (!made) state.SkipWithError("nothing came of it");
        ObjectRef::adopt(made);
        state.ResumeTiming();
    }
}

/// Times what the work makes in Cocoa, to the end of it with the frame's pool.
template <typename Step>
void timeToCocoa(benchmark::State& state, Step work) {
    for (auto _ : state)
        if (!FullFrame([&] { return work() != nil; })) state.SkipWithError("nothing came of it");
}

void dictionaryToCocoa(benchmark::State& state) {
    const ObjectRef dictionary = newDictionary(static_cast<int>(state.range(0)));
    timeToCocoa(state, [&] { return GetVariantAsNSObject(dictionary.get()); });
    countEntries(state);
}

void dictionaryToHost(benchmark::State& state) {
    const ObjectRef source = newDictionary(static_cast<int>(state.range(0)));
    const auto dictionary = kept([&] { return GetVariantAsNSObject(source.get()); });
    timeToHost(state, [&] { return NewVariantFromNSObject((NSObject*)dictionary.get()); });
    countEntries(state);
}

/// Objects of no class that the plug-in knows, after it has tested for each that it does.
void objectsToCocoa(benchmark::State& state) {
    const ObjectRef objects = host::newArray(host::Kind::Variant);
    for (std::int64_t index = 0; index < state.range(0); ++index)
        host::arrayOf(objects)->elements.emplace_back(
            runningHost().newInstance("RuntimeException"));
    timeToCocoa(state, [&] { return GetVariantAsNSObject(objects.get()); });
    countEntries(state);
}

void stringsToCocoa(benchmark::State& state) {
    const ObjectRef strings = newStrings(static_cast<int>(state.range(0)));
    timeToCocoa(state, [&] { return GetVariantAsNSObject(strings.get()); });
    countEntries(state);
}

void stringsToVariants(benchmark::State& state) {
    const ObjectRef source = newStrings(static_cast<int>(state.range(0)));
    const auto strings = kept([&] { return GetVariantAsNSObject(source.get()); });
    timeToHost(state, [&] { return NewVariantFromNSObject((NSObject*)strings.get()); });
    countEntries(state);
}

void stringsToStringArray(benchmark::State& state) {
    const ObjectRef source = newStrings(static_cast<int>(state.range(0)));
    const auto strings = kept([&] { return GetVariantAsNSObject(source.get()); });
    timeToHost(state, [&] {
        REALarrayStruct* const array = REALCreateArray(REALarrayOfStrings, -1);
        FillStringArray(array, (NSArray*)strings.get());
        return array;
    });
    countEntries(state);
}

/// Times the work and its end.
template <typename Step>
void timeAgainstCopy(benchmark::State& state, Step work) {
    const std::string bytes(static_cast<std::size_t>(state.range(0)), 'b');
    double best = 1e9;
    for (auto _ : state)
        best = std::min(best, secondsOf(work));
    state.counters["copies"] = best / secondsOfCopy(bytes);
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void blockToCocoa(benchmark::State& state) {
    const ObjectRef block = newBlock(static_cast<std::size_t>(state.range(0)));
    timeAgainstCopy(state,
                    [&] { FullFrame([&] { return GetVariantAsNSObject(block.get()) != nil; }); });
}

void blockToHost(benchmark::State& state) {
    const ObjectRef source = newBlock(static_cast<std::size_t>(state.range(0)));
    const auto data = kept([&] { return GetVariantAsNSObject(source.get()); });
    timeAgainstCopy(state, [&] {
        ObjectRef::adopt(FullFrame([&] { return NewVariantFromNSObject((NSObject*)data.get()); }));
    });
}

constexpr std::int64_t megabyte = 1 << 20;

const bool registered = [] {
    const auto collection = [](const char* name, Work work, std::int64_t size) {
        benchmark::RegisterBenchmark(name, runAsMember, work)
            ->Arg(size / 10)
            ->Arg(size)
            ->Unit(benchmark::kMillisecond);
    };
    collection("mixed dictionary to Cocoa", dictionaryToCocoa, 10000);
    collection("mixed dictionary to the host", dictionaryToHost, 10000);
    collection("the program's own objects to Cocoa", objectsToCocoa, 10000);
    collection("strings to Cocoa", stringsToCocoa, 100000);
    collection("strings to a host array of Variants", stringsToVariants, 100000);
    collection("strings to a host array of Strings", stringsToStringArray, 100000);
    const auto block = [](const char* name, Work work) {
        benchmark::RegisterBenchmark(name, runAsMember, work)
            ->Arg(64 * megabyte / 10)
            ->Arg(64 * megabyte)
            ->Unit(benchmark::kMillisecond);
    };
    block("memory block to Cocoa", blockToCocoa);
    block("memory block to the host", blockToHost);
    return true;
}();

} // namespace
