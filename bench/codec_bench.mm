/// Encoding and decoding by NSBitmapImageRep against the bare libraries at the same settings, on a
/// 12-megapixel picture like a photo. Both sides work in turn and into fresh memory; the counters
/// tell their median times in milliseconds of the processor, which a busy machine does not change
/// much, and `ratio`, ours to the bare one.

#import <AppKit/AppKit.h>

#include "bench/bare_codecs.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>

using bench::Bytes;
using bench::Picture;

namespace {

double processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

template <class Work>
double milliseconds(Work work) {
    const double start = processorTime();
    work();
    return processorTime() - start;
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(),
                     values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

template <class Ours, class Bare>
void compare(benchmark::State& state, Ours ours, Bare bare) {
    std::vector<double> oursTimes;
    std::vector<double> bareTimes;
    for (auto unused : state) {
        static_cast<void>(unused);
        oursTimes.push_back(milliseconds(ours));
        bareTimes.push_back(milliseconds(bare));
        state.SetIterationTime(oursTimes.back() / 1000);
    }
    state.counters["ours"] = median(oursTimes);
    state.counters["bare"] = median(bareTimes);
    state.counters["ratio"] = median(oursTimes) / median(bareTimes);
}

/// Hills of noise in several sizes, lit from one side, with the grain of a camera.
Picture photo(int samples) {
    Picture picture{4000, 3000, samples, {}};
    picture.pixels.resize(std::size_t{4000} * 3000 * static_cast<std::size_t>(samples));
    std::uint32_t random = 20090511;
    std::size_t at = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const double u = x / 4000.0;
            const double v = y / 3000.0;
            double hills = 0;
            double size = 1;
            for (int octave = 1; octave <= 7; ++octave, size /= 1.8) {
                const double f = std::pow(2.1, octave);
                hills += size * std::sin(f * (u * 3 + std::sin(v * f * 0.7 + octave))) *
                         std::cos(f * (v * 2 + std::sin(u * f * 0.6 - octave)));
            }
            for (int sample = 0; sample < samples; ++sample) {
                random = random * 1664525 + 1013904223;
                const double grain = static_cast<double>(random >> 24) / 64 - 2;
                const double value = 128 + 45 * hills + 60 * (v - 0.5) * (sample - 1) + grain;
                picture.pixels[at++] = static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
            }
        }
    }
    return picture;
}

const Picture& colorPhoto() {
    static const Picture picture = photo(3);
    return picture;
}
const Picture& grayPhoto() {
    static const Picture picture = photo(1);
    return picture;
}

NSBitmapImageRep* newBitmap(const Picture& picture) {
    auto* pixels = const_cast<unsigned char*>(picture.pixels.data());
    return [[NSBitmapImageRep alloc]
        initWithBitmapDataPlanes:&pixels
                      pixelsWide:picture.width
                      pixelsHigh:picture.height
                   bitsPerSample:8
                 samplesPerPixel:picture.samples
                        hasAlpha:NO
                        isPlanar:NO
                  colorSpaceName:picture.samples == 3 ? NSDeviceRGBColorSpace
                                                      : NSDeviceWhiteColorSpace
                     bytesPerRow:picture.width * picture.samples
                    bitsPerPixel:picture.samples * 8];
}

/// The same with an alpha, as pictures come out of drawing.
NSBitmapImageRep* newDrawing(const Picture& picture) {
    NSBitmapImageRep* bitmap =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                pixelsWide:picture.width
                                                pixelsHigh:picture.height
                                             bitsPerSample:8
                                           samplesPerPixel:4
                                                  hasAlpha:YES
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                               bytesPerRow:0
                                              bitsPerPixel:32];
    unsigned char* out = [bitmap bitmapData];
    for (std::size_t at = 0; at < picture.pixels.size(); at += 3, out += 4) {
        std::copy_n(&picture.pixels[at], 3, out);
        out[3] = 255;
    }
    return bitmap;
}

void check(bool good) {
    if (good) return;
    std::fprintf(stderr, "codec_bench: one side failed\n");
    std::exit(1);
}

using BareDecoder = bool (*)(const Bytes&);
using BareEncoder = Bytes (*)(const Picture&);

void decode(benchmark::State& state, Bytes (*make)(), BareDecoder bare) {
    const Bytes file = make();
    NSData* data = [[NSData alloc] initWithBytes:file.data() length:file.size()];
    compare(
        state,
        [data] {
            NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
            check([NSBitmapImageRep imageRepWithData:data] != nil);
            [pool release];
        },
        [&] { check(bare(file)); });
    [data release];
}

Bytes encodedByUs(const Picture& picture, NSBitmapImageFileType type, NSDictionary* properties) {
    NSBitmapImageRep* bitmap = newBitmap(picture);
    NSData* data = [bitmap representationUsingType:type properties:properties];
    check(data != nil);
    const auto* bytes = static_cast<const std::uint8_t*>([data bytes]);
    Bytes file(bytes, bytes + [data length]);
    [bitmap release];
    return file;
}

NSDictionary* property(NSString* key, id value) {
    return [NSDictionary dictionaryWithObject:value forKey:key];
}

struct Encoding {
    const char* name;
    NSBitmapImageFileType type;
    NSDictionary* (*properties)();
    const Picture& (*picture)();
    BareEncoder bare;
    bool drawn = false; ///< ours has an alpha, which is full everywhere
};

void encode(benchmark::State& state, const Encoding& encoding) {
    NSAutoreleasePool* outer = [[NSAutoreleasePool alloc] init];
    const Picture& picture = encoding.picture();
    NSBitmapImageRep* bitmap = encoding.drawn ? newDrawing(picture) : newBitmap(picture);
    NSDictionary* properties = encoding.properties();
    double oursSize = 0;
    double bareSize = 0;
    compare(
        state,
        [&] {
            NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
            NSData* data = [bitmap representationUsingType:encoding.type properties:properties];
            oursSize = [data length];
            check(data != nil);
            [pool release];
        },
        [&] { bareSize = static_cast<double>(encoding.bare(picture).size()); });
    check(bareSize > 0);
    state.counters["sizes"] = oursSize / bareSize;
    [bitmap release];
    [outer release];
}

/// There is no bare library for choosing colours; what it comes to is told beside the time.
void gifOfPhoto(benchmark::State& state) {
    const Picture& picture = colorPhoto();
    NSAutoreleasePool* outer = [[NSAutoreleasePool alloc] init];
    NSBitmapImageRep* bitmap = newBitmap(picture);
    NSData* kept = nil;
    for (auto unused : state) {
        static_cast<void>(unused);
        [kept release];
        state.SetIterationTime(milliseconds([&] {
                                   kept = [[bitmap representationUsingType:NSGIFFileType
                                                                properties:nil] retain];
                               }) /
                               1000);
    }
    NSBitmapImageRep* back = [NSBitmapImageRep imageRepWithData:kept];
    const unsigned char* pixels = [back bitmapData];
    double error = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        error += std::pow(picture.pixels[i] - pixels[i], 2);
    state.counters["dB"] =
        10 * std::log10(255.0 * 255.0 * static_cast<double>(picture.pixels.size()) / error);
    state.counters["MB"] = [kept length] / 1e6;
    [kept release];
    [bitmap release];
    [outer release];
}

NSDictionary* none() { return nil; }
NSDictionary* quality80() {
    return property(NSImageCompressionFactor, [NSNumber numberWithFloat:0.8F]);
}
NSDictionary* progressive() {
    return [NSDictionary
        dictionaryWithObjectsAndKeys:[NSNumber numberWithFloat:0.8F], NSImageCompressionFactor,
                                     [NSNumber numberWithBool:YES], NSImageProgressive, nil];
}
NSDictionary* lzw() {
    return property(NSImageCompressionMethod, [NSNumber numberWithInt:NSTIFFCompressionLZW]);
}

const Encoding encodings[] = {
    {"JPEG", NSJPEGFileType, quality80, colorPhoto, bench::encodeJPEG},
    {"JPEG of a drawing", NSJPEGFileType, quality80, colorPhoto, bench::encodeJPEG, true},
    {"progressive JPEG", NSJPEGFileType, progressive, colorPhoto, bench::encodeProgressiveJPEG},
    {"PNG", NSPNGFileType, none, colorPhoto, bench::encodePNG},
    {"TIFF", NSTIFFFileType, none, colorPhoto, bench::encodeTIFF},
    {"TIFF LZW", NSTIFFFileType, lzw, colorPhoto, bench::encodeTIFFLZW},
    {"GIF of greys", NSGIFFileType, none, grayPhoto, bench::encodeGrayGIF},
    {"BMP", NSBMPFileType, none, colorPhoto, bench::encodeBMP},
};

struct Decoding {
    const char* name;
    Bytes (*make)();
    BareDecoder bare;
};

const Decoding decodings[] = {
    {"JPEG", [] { return bench::encodeJPEG(colorPhoto()); }, bench::decodeJPEG},
    {"progressive JPEG", [] { return bench::encodeProgressiveJPEG(colorPhoto()); },
     bench::decodeJPEG},
    {"PNG", [] { return bench::encodePNG(colorPhoto()); }, bench::decodePNG},
    {"TIFF", [] { return bench::encodeTIFF(colorPhoto()); }, bench::decodeTIFF},
    {"TIFF LZW", [] { return bench::encodeTIFFLZW(colorPhoto()); }, bench::decodeTIFF},
    {"GIF", [] { return encodedByUs(colorPhoto(), NSGIFFileType, nil); }, bench::decodeGIF},
    {"BMP", [] { return bench::encodeBMP(colorPhoto()); }, bench::decodeBMP},
};

} // namespace

int main(int count, char** arguments) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    const auto settle = [](benchmark::internal::Benchmark* benchmark) {
        benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
    };
    for (const Decoding& job : decodings)
        settle(benchmark::RegisterBenchmark(
            (std::string("decode ") + job.name).c_str(),
            [&job](benchmark::State& state) { decode(state, job.make, job.bare); }));
    for (const Encoding& job : encodings)
        settle(
            benchmark::RegisterBenchmark((std::string("encode ") + job.name).c_str(),
                                         [&job](benchmark::State& state) { encode(state, job); }));
    settle(benchmark::RegisterBenchmark("encode GIF of a photo", gifOfPhoto));
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    [pool release];
    return 0;
}
