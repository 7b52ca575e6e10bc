/// Host Pictures to images and back, 4000 x 3000 pixels in a running host. Each is measured against
/// copying as many bytes as it reads and writes, in the same run: the counter `copies` is how many
/// such copies it takes. Images are made in fresh memory and so are the copies then; Pictures are
/// made by the host, whose time is not counted: it hands out one that is there, again and again.

#include "bench/in_host.h"
#include "host/objects/picture.h"
#include "plugin/picture/copy_picture.h"
#include "plugin/picture/new_image.h"
#include "plugin/picture/pixel_kernels.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int width = 4000;
constexpr int height = 3000;
constexpr std::size_t pixelCount = std::size_t{width} * height;

REALpictureStruct* pictureIn(const host::ObjectRef& object) {
    return static_cast<REALpictureStruct*>(object.get());
}

host::ObjectRef newPattern() {
    runningHost();
    host::ObjectRef object = host::newPicture(width, height);
    host::PixelStore& pixels = *host::stateOf<host::Picture>(object)->pixels();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, 0xFF000000U | static_cast<std::uint32_t>(x * 0x010203 ^ y));
    return object;
}

/// A copy of n bytes reads and writes 2 n. By the seconds that one takes.
template <typename Step, typename CopySeconds>
void timeAgainst(benchmark::State& state, Step work, CopySeconds secondsOfOneCopy) {
    double best = 1e9;
    double bestCopy = 1e9;
    for (auto _ : state) {
        best = std::min(best, secondsOf(work));
        state.PauseTiming();
        bestCopy = std::min(bestCopy, secondsOfOneCopy());
        state.ResumeTiming();
    }
    state.counters["copies"] = best / bestCopy;
}

/// `traffic` is the bytes that the work reads and writes.
template <typename Step>
void timeAgainstFreshCopy(benchmark::State& state, std::size_t traffic, Step work) {
    const std::string source(traffic / 2, 'p');
    timeAgainst(state, work, [&] { return secondsOfCopy(source); });
}

template <typename Step>
void timeAgainstWarmCopy(benchmark::State& state, std::size_t traffic, Step work) {
    const std::string source(traffic / 2, 'p');
    std::string copy(traffic / 2, ' ');
    timeAgainst(state, work, [&] {
        return secondsOf([&] {
            std::memcpy(copy.data(), source.data(), copy.size());
            benchmark::ClobberMemory();
        });
    });
}

void pictureToImage(benchmark::State& state) {
    const host::ObjectRef picture = newPattern();
    setenv("COCOA_SYSTEM_VERSION", "10.5", 1); // by its pixels, not by the host's own image
    timeAgainstFreshCopy(state, pixelCount * (4 + 3), [&] {
        if (!FullFrame([&] { return NewNSImage(pictureIn(picture), nullptr) != nil; }))
            state.SkipWithError("nothing came of it");
    });
}

void maskedPictureToImage(benchmark::State& state) {
    const host::ObjectRef picture = newPattern();
    const host::ObjectRef mask = newPattern();
    timeAgainstFreshCopy(state, pixelCount * (4 + 4 + 4), [&] {
        if (!FullFrame([&] { return NewNSImage(pictureIn(picture), pictureIn(mask)) != nil; }))
            state.SkipWithError("nothing came of it");
    });
}

/// An image that keeps its pixels; transparent in part.
NSImage* newImage() {
    NSImage* const image = [[NSImage alloc] initWithSize:NSMakeSize(width, height)];
    NSBitmapImageRep* const bitmap =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                pixelsWide:width
                                                pixelsHigh:height
                                             bitsPerSample:8
                                           samplesPerPixel:4
                                                  hasAlpha:YES
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                               bytesPerRow:0
                                              bitsPerPixel:0];
    std::uint8_t* const bytes = [bitmap bitmapData];
    for (std::size_t i = 0; i < pixelCount * 4; ++i)
        bytes[i] = static_cast<std::uint8_t>(i % 4 == 3 ? 200 : i % 200);
    [image addRepresentation:bitmap];
    [bitmap release];
    return image;
}

host::ObjectRef handedOut;
REALpictureStruct* handOut(std::int32_t, std::int32_t, std::int32_t) {
    return static_cast<REALpictureStruct*>(host::ObjectRef(handedOut).release());
}

template <typename Copy>
void timeCopy(benchmark::State& state, std::size_t traffic, Copy copy) {
    NSImage* const image = newImage();
    handedOut = newPattern();
    host::Services::replace(REALservices::NewPicture, handOut);
    timeAgainstWarmCopy(state, traffic, [&] {
        if (!host::ObjectRef::adopt(FullFrame([&] { return copy(image); })))
            state.SkipWithError("nothing came of it");
    });
    host::Services::replace(REALservices::NewPicture, nullptr);
    handedOut = nullptr;
    [image release];
}

void imageToPicture(benchmark::State& state) {
    timeCopy(state, pixelCount * (4 + 4),
             [](NSImage* image) { return NSImageCopyPictureRect(image, 0, 0, 0, 0, nullptr); });
}

/// The alphas are drawn into a plane of their own, from which the mask's pixels are written.
void imageToMask(benchmark::State& state) {
    timeCopy(state, pixelCount * (4 + 1 + 1 + 4), NSImageCopyPictureMask);
}

// The loops alone, in memory that is there

template <typename Loop>
void timeKernel(benchmark::State& state, std::size_t traffic, Loop loop) {
    std::vector<std::uint8_t> pixels(pixelCount * 4, 77), mask(pixelCount * 4, 100);
    std::vector<std::uint8_t> target(pixelCount * 4);
    timeAgainstWarmCopy(state, traffic, [&] {
        loop(pixels.data(), mask.data(), target.data());
        benchmark::ClobberMemory();
    });
}

const bool registered = [] {
    const auto conversion = [](const char* name, Work work) {
        benchmark::RegisterBenchmark(name, runAsMember, work)->Unit(benchmark::kMillisecond);
    };
    conversion("Picture to NSImage", pictureToImage);
    conversion("Picture and mask to NSImage", maskedPictureToImage);
    conversion("NSImage to Picture", imageToPicture);
    conversion("NSImage to mask", imageToMask);
    for (const PixelKernels* const kernels : usable_pixel_kernels()) {
        const std::string name = kernels->name;
        const auto loop = [&](const std::string& work, std::size_t traffic, auto step) {
            benchmark::RegisterBenchmark(
                (work + ", " + name).c_str(),
                [traffic, step](benchmark::State& state) { timeKernel(state, traffic, step); })
                ->Unit(benchmark::kMillisecond);
        };
        loop("RGB", pixelCount * 7, [kernels](const auto* pixels, const auto*, auto* target) {
            kernels->copyRGB[1](pixels, pixelCount, target);
        });
        loop("premultiplied", pixelCount * 12,
             [kernels](const auto* pixels, const auto* mask, auto* target) {
                 kernels->premultiply[1][1](pixels, mask, pixelCount, target);
             });
        loop("mask", pixelCount * 5, [kernels](const auto* pixels, const auto*, auto* target) {
            kernels->writeMask[1](pixels, pixelCount, target);
        });
    }
    return true;
}();

} // namespace
