/// Members of NSImageZNT as a host calls them, through the pointers of the class table: what a
/// property costs beside the message that it forwards, and what a second image loaded in the
/// background costs beside the first. Compare `items_per_second` of one load and of two at once.

#include "host/objects/memory_block.h"
#include "host/objects/runtime.h"
#include "host/services/services.h"

#include <Cocoa/Cocoa.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

host::Runtime& running_host() {
    static host::Runtime runtime({.version = 2013.9});
    static const bool isBooted = [] {
        for (const char* part : {BASE_PART, NSIMAGE_PART})
            if (runtime.loadPlugin(part)) std::abort();
        return true;
    }();
    static_cast<void>(isBooted);
    return runtime;
}

/// The function of a record whose text is at that word.
template <typename Function>
Function function_of(const std::vector<host::RawRecord>& records, std::size_t textWord,
                     std::size_t functionWord, const char* text) {
    for (const host::RawRecord& record : records)
        if (std::strcmp(reinterpret_cast<const char*>(record[textWord]), text) == 0)
            return reinterpret_cast<Function>(record[functionWord]);
    std::abort();
}

const host::RawDefinition& image_class() { return *running_host().findClass("NSImageZNT")->raw; }

template <typename Value>
using Getter = Value (*)(REALobjectStruct* object, REALword parameter);

template <typename Value>
Getter<Value> getter_of(const char* property) {
    return function_of<Getter<Value>>(image_class().properties, 1, 4, property);
}

using LoadData = REALobjectStruct* (*)(REALmemoryBlockStruct* data);

LoadData load_function() {
    return function_of<LoadData>(image_class().sharedMethods, 2, 0,
                                 "imageWithDataMT(data as memoryblock) as NSImageZNT");
}

// Properties

/// An NSImage of 1 by 1 point, and its wrapper.
struct WrappedImage {
    WrappedImage()
        : wrapper(running_host().newInstance("NSImageZNT")) {
        // The instance owns it from here on.
        *static_cast<NSImage**>(REALfirstClassData(wrapper.get())) = image;
    }
    NSImage* const image = [[NSImage alloc] initWithSize:NSMakeSize(1, 1)];
    host::ObjectRef wrapper;
};

void cache_mode_message(benchmark::State& state) {
    const WrappedImage wrapped;
    for (auto _ : state)
        benchmark::DoNotOptimize([wrapped.image cacheMode]);
}
BENCHMARK(cache_mode_message);

void cache_mode_property(benchmark::State& state) {
    const WrappedImage wrapped;
    const auto getter = getter_of<REALword>("cacheMode");
    for (auto _ : state)
        benchmark::DoNotOptimize(getter(wrapped.wrapper.get(), 0));
}
BENCHMARK(cache_mode_property);

void width_message(benchmark::State& state) {
    const WrappedImage wrapped;
    for (auto _ : state)
        benchmark::DoNotOptimize([wrapped.image size].width);
}
BENCHMARK(width_message);

void width_property(benchmark::State& state) {
    const WrappedImage wrapped;
    const auto getter = getter_of<double>("width");
    for (auto _ : state)
        benchmark::DoNotOptimize(getter(wrapped.wrapper.get(), 0));
}
BENCHMARK(width_property);

// Loading

/// A photo's worth of detail: 4000 by 3000 pixels of JPEG.
host::ObjectRef new_photo() {
    constexpr NSInteger width = 4000, height = 3000;
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSBitmapImageRep* const bitmap =
        [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                 pixelsWide:width
                                                 pixelsHigh:height
                                              bitsPerSample:8
                                            samplesPerPixel:3
                                                   hasAlpha:NO
                                                   isPlanar:NO
                                             colorSpaceName:NSDeviceRGBColorSpace
                                                bytesPerRow:width * 3
                                               bitsPerPixel:24] autorelease];
    unsigned char* sample = [bitmap bitmapData];
    std::uint32_t noise = 1;
    for (NSInteger y = 0; y < height; ++y)
        for (NSInteger x = 0; x < width; ++x) {
            noise = noise * 1664525 + 1013904223;
            const auto grain = static_cast<unsigned char>(noise >> 28);
            *sample++ = static_cast<unsigned char>(x * 240 / width) + grain;
            *sample++ = static_cast<unsigned char>(y * 240 / height) + grain;
            *sample++ = static_cast<unsigned char>((x + y) % 240) + grain;
        }
    NSData* const data = [bitmap
        representationUsingType:NSJPEGFileType
                     properties:[NSDictionary dictionaryWithObject:[NSNumber numberWithFloat:0.9f]
                                                            forKey:NSImageCompressionFactor]];
    host::ObjectRef photo = host::newMemoryBlock(
        std::string_view(static_cast<const char*>([data bytes]), [data length]));
    [pool release];
    return photo;
}

REALmemoryBlockStruct* photo() {
    static const host::ObjectRef block = new_photo();
    return static_cast<REALmemoryBlockStruct*>(block.get());
}

/// Loads that the host starts when it is next yielded to.
int waitingLoads = 0;

void load(LoadData function) {
    if (!host::ObjectRef::adopt(function(photo()))) std::abort();
}

void load_waiting() {
    if (waitingLoads == 0) return;
    --waitingLoads;
    load(load_function());
}

void load_at_once(benchmark::State& state, int loads) {
    const LoadData function = load_function();
    photo();
    host::Services::replace(REALservices::YieldToRB, load_waiting);
    for (auto _ : state) {
        waitingLoads = loads - 1;
        load(function);
    }
    host::Services::replace(REALservices::YieldToRB, nullptr);
    state.SetItemsProcessed(state.iterations() * loads);
}

void one_load_in_the_background(benchmark::State& state) { load_at_once(state, 1); }
BENCHMARK(one_load_in_the_background)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);

void two_loads_in_the_background(benchmark::State& state) { load_at_once(state, 2); }
BENCHMARK(two_loads_in_the_background)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);

} // namespace
