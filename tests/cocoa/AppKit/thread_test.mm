/// Many threads at once, each with images of its own, as background work does. The thread sanitizer
/// proves the most of it.

#include "files.h"

#include <atomic>
#include <thread>

namespace appkit_test {
namespace {

class Threads : public AppKitTest {};

constexpr int threadCount = 4;
constexpr int rounds = 20;

/// Runs the work in every round of every thread, each round with a pool of its own.
void onAllThreads(const std::function<void(int thread, int round)>& work) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([thread, &work] {
            [NSThread currentThread]; // makes one of it that Base knows
            for (int round = 0; round < rounds; ++round) {
                NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
                work(thread, round);
                [pool drain];
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST_F(Threads, LoadImagesFromDataAtOnce) {
    const ByteVector files[] = {fourColorPNG(), quarteredJPEG(6), twoPageTIFF()};
    std::atomic<int> loaded = 0;
    onAllThreads([&](int thread, int round) {
        NSData* data = toData(files[(thread + round) % 3]);
        NSImage* image = [[NSImage alloc] initWithData:data];
        if ([image isValid] && [image size].width > 0) ++loaded;
        [image release];
    });
    EXPECT_EQ(threadCount * rounds, loaded);
}

TEST_F(Threads, LoadImagesFromFilesAtOnce) {
    codecs_test::TemporaryFolder folder;
    const std::string path = folder.write("four.png", fourColorPNG());
    std::atomic<int> loaded = 0;
    onAllThreads([&](int thread, int) {
        NSString* name = [NSString stringWithUTF8String:path.c_str()];
        NSImage* image = thread % 2
                             ? [[NSImage alloc] initWithContentsOfFile:name]
                             : [[NSImage alloc] initWithContentsOfURL:[NSURL fileURLWithPath:name]];
        if (image) ++loaded;
        [image release];
    });
    EXPECT_EQ(threadCount * rounds, loaded);
}

TEST_F(Threads, EncodeImagesAtOnce) {
    std::atomic<int> encoded = 0;
    onAllThreads([&](int thread, int round) {
        NSImage* image = makeImage(fourColors());
        NSBitmapImageRep* bitmap = [NSBitmapImageRep imageRepWithData:[image TIFFRepresentation]];
        const NSBitmapImageFileType type = round % 2 ? NSPNGFileType : NSJPEGFileType;
        if ([[bitmap representationUsingType:type properties:nil] length] > 0) ++encoded;
    });
    EXPECT_EQ(threadCount * rounds, encoded);
}

TEST_F(Threads, DrawImagesAtOnce) {
    std::atomic<int> right = 0;
    onAllThreads([&](int, int) {
        NSBitmapImageRep* drawn = drawing(1, 1, [] {
            [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
            [makeImage(makeRGBA(2, 2, {red, red, red, red})) drawInRect:NSMakeRect(0, 0, 1, 1)
                                                               fromRect:NSZeroRect
                                                              operation:NSCompositeCopy
                                                               fraction:1];
        });
        if (pixelAt(drawn, 0, 0) == red) ++right;
    });
    EXPECT_EQ(threadCount * rounds, right);
}

TEST_F(Threads, ReadOneImageAtOnce) {
    NSImage* image = makeImage(fourColors());
    std::atomic<int> right = 0;
    onAllThreads([&](int, int) {
        const bool isSame = [image backgroundColor] == [image backgroundColor];
        if ([[image TIFFRepresentation] length] > 0 && [image size].width == 2 && isSame &&
            [[image representations] count] == 1)
            ++right;
    });
    EXPECT_EQ(threadCount * rounds, right);
}

TEST_F(Threads, AskForTypesAtOnce) {
    onAllThreads([](int, int) {
        [NSImage imageFileTypes];
        [NSImageRep imageRepClassForFileType:@"png"];
        [NSImageRep imageRepClassForData:toData(fourColorPNG())];
    });
}

/// An image is named, found and let go of by all, and never found when it is gone.
TEST_F(Threads, NameFindAndReleaseImagesAtOnce) {
    std::atomic<int> named = 0;
    onAllThreads([&](int, int round) {
        NSString* name = round % 2 ? @"shared" : @"other";
        NSImage* image = [[NSImage alloc] initWithSize:NSMakeSize(3, 3)];
        if ([image setName:name]) ++named;
        NSImage* found = [NSImage imageNamed:name];
        if (found) EXPECT_EQ(3, [found size].width);
        [image release];
    });
    EXPECT_GT(named, 0);
    EXPECT_EQ(nil, [NSImage imageNamed:@"shared"]);
    EXPECT_EQ(nil, [NSImage imageNamed:@"other"]);
}

} // namespace
} // namespace appkit_test
