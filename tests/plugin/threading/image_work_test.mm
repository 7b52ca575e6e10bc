#include "plugin/threading/runner.h"

#include <Cocoa/Cocoa.h>

#include <gmock/gmock.h>

#include <fstream>

#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#endif

using testing::ElementsAre;

/// Notes what is asked of it and does what it is told.
@interface EncodingImage : NSImage {
@public
    std::vector<std::string>* messages;
    const std::function<NSData*()>* behaviour;
}
@end

@implementation EncodingImage
- (NSData*)answer:(std::string)message {
    messages->push_back(message);
    return (*behaviour)();
}
- (NSData*)GIFRepresentationZNT {
    return [self answer:"GIF"];
}
- (NSData*)BMPRepresentationZNT {
    return [self answer:"BMP"];
}
- (NSData*)PNGRepresentationZNT {
    return [self answer:"PNG"];
}
- (NSData*)JPEGRepresentationWithCompressionFactorZNT:(float)factor {
    return [self answer:factor == 0.1f ? "JPEG 0.1f" : "JPEG of another factor"];
}
- (NSData*)JPEGRepresentationZNT {
    return [self answer:"JPEG"];
}
- (NSData*)TIFFRepresentation {
    return [self answer:"TIFF"];
}
- (NSData*)TIFFRepresentationUsingCompression:(NSTIFFCompression)compression factor:(float)factor {
    return [self answer:"TIFF " + std::to_string(compression) + (factor == 0.1f ? " 0.1f" : "")];
}
@end

/// Data that cannot be read.
@interface UnreadableData : NSData
@end
@implementation UnreadableData
- (id)init {
    return self;
}
- (const void*)bytes {
    [NSException raise:@"DataException" format:@"out of data"];
    return nullptr;
}
- (NSUInteger)length {
    return [self bytes] ? 1 : 0;
}
@end

namespace {

class ImageWork : public testing::Test {
protected:
    ImageWork() {
        image->messages = &messages;
        image->behaviour = &behaviour;
    }
    ~ImageWork() override {
        [data release];
        [image release];
        [pool release];
    }

    NSData* encoded(int operation) {
        ImageEncodeRequest request = {nil, image, 0.1, operation, NSTIFFCompressionLZW};
        runner->encode(&request);
        return [request.result autorelease];
    }
    static NSException* paint_exception(id info = nil) {
        return [NSException
            exceptionWithName:@"PaintException"
                       reason:@"out of paint"
                     userInfo:info ? [NSDictionary dictionaryWithObject:info forKey:@"info"] : nil];
    }

    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    Runner runner;
    EncodingImage* const image = [[EncodingImage alloc] init];
    NSData* const data = [[NSMutableData alloc] initWithLength:3];
    std::function<NSData*()> behaviour = [this] { return data; };
    std::vector<std::string> messages;
};

TEST_F(ImageWork, EncodesByTheOperation) {
    for (int operation = 1; operation <= 7; ++operation)
        EXPECT_EQ(encoded(operation), data) << operation;
    EXPECT_THAT(messages,
                ElementsAre("GIF", "BMP", "PNG", "JPEG 0.1f", "JPEG", "TIFF", "TIFF 5 0.1f"));
}

TEST_F(ImageWork, DoesNothingForAnUnknownOperation) {
    for (const int operation : {0, 8, -1, 1 << 30}) {
        EXPECT_EQ(encoded(operation), nil) << operation;
        ImageEncodeRequest request = {data, image, 0.1, operation, 1};
        runner->encode(&request);
        EXPECT_EQ(request.result, data) << "untouched";
    }
    EXPECT_THAT(messages, ElementsAre());
}

TEST_F(ImageWork, RetainsTheDataForTheCaller) {
    ImageEncodeRequest request = {nil, image, 0, ImageEncodeGIF, 0};
    runner->encode(&request);
    EXPECT_EQ([data retainCount], 2u) << "the image's and the request's";
    [request.result release];
}

TEST_F(ImageWork, GivesNoDataForNoImageAndForAnImageWithoutData) {
    ImageEncodeRequest request = {nil, nil, 0, ImageEncodeTIFF, 0};
    runner->encode(&request);
    EXPECT_EQ(request.result, nil);
    behaviour = []() -> NSData* { return nil; };
    EXPECT_EQ(encoded(ImageEncodePNG), nil);
}

TEST_F(ImageWork, LogsAnExceptionInOneLineAndSwallowsIt) {
    behaviour = []() -> NSData* { @throw paint_exception(); };
    testing::internal::CaptureStderr();
    EXPECT_EQ(encoded(ImageEncodeBMP), nil);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    EXPECT_NE(log.find("out of paint"), std::string::npos) << log;
}

TEST_F(ImageWork, LetsAForeignObjectPass) {
    behaviour = []() -> NSData* { @throw @"a string"; };
    id caught = nil;
    @try {
        encoded(ImageEncodeBMP);
    } @catch (id object) {
        caught = object;
    }
    EXPECT_EQ(caught, @"a string");
}

TEST_F(ImageWork, FreesWhatWasAutoreleasedMeanwhileAlsoBehindAnException) {
    NSObject* const object = [[[NSObject alloc] init] autorelease];
    behaviour = [&]() -> NSData* {
        [[object retain] autorelease];
        return nil;
    };
    encoded(ImageEncodePNG);
    EXPECT_EQ([object retainCount], 1u);

    behaviour = [&]() -> NSData* { @throw paint_exception(object); };
    testing::internal::CaptureStderr();
    encoded(ImageEncodePNG);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ([object retainCount], 1u);
}

// Loading

/// What is lost while this lives, by Cocoa's own rules, is no leak.
struct LostObjects {
#if __has_feature(address_sanitizer)
    const __lsan::ScopedDisabler disabler;
#else
    LostObjects() {}
#endif
};

class ImageLoading : public testing::Test {
protected:
    ImageLoading() { std::ofstream(path, std::ios::binary) << bitmap(); }
    ~ImageLoading() override {
        std::remove(path.c_str());
        [pool release];
    }

    /// A TIFF of 3 by 2 black pixels, one bit each.
    static std::string bitmap() {
        const auto field = [](int tag, int type, int value) {
            return std::string{static_cast<char>(tag),
                               static_cast<char>(tag >> 8),
                               static_cast<char>(type),
                               0,
                               1,
                               0,
                               0,
                               0,
                               static_cast<char>(value),
                               0,
                               0,
                               0};
        };
        return std::string("II*\0\x08\0\0\0\x08\0", 10) + field(256, 3, 3) + field(257, 3, 2) +
               field(258, 3, 1) + field(259, 3, 1) + field(262, 3, 1) + field(273, 4, 110) +
               field(278, 3, 2) + field(279, 4, 2) + std::string(6, '\0');
    }
    NSData* data(const std::string& bytes) {
        return [NSData dataWithBytes:bytes.data() length:bytes.size()];
    }
    NSSize loaded(ImageLoadRequest request) {
        runner->load(&request);
        EXPECT_EQ([request.result retainCount], request.result ? 1u : 0u) << "the request's own";
        return [[request.result autorelease] size];
    }

    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    Runner runner;
    const std::string path = testing::TempDir() + "load-" + std::to_string(getpid()) + ".tif";
    NSString* const file = [NSString stringWithUTF8String:path.c_str()];
};

TEST_F(ImageLoading, TakesDataAURLOrAPath) {
    EXPECT_EQ(loaded({.data = data(bitmap())}).width, 3);
    EXPECT_EQ(loaded({.url = [NSURL fileURLWithPath:file]}).width, 3);
    EXPECT_EQ(loaded({.path = file}).height, 2);
}

TEST_F(ImageLoading, GivesNoImageForWhatIsNone) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(loaded({}).width, 0);
    EXPECT_EQ(loaded({.data = data("this is no image")}).width, 0);
    EXPECT_EQ(loaded({.data = data(bitmap().substr(0, 50))}).width, 0);
    EXPECT_EQ(loaded({.url = [NSURL URLWithString:@"file:///no/such/file.tif"]}).width, 0);
    EXPECT_EQ(loaded({.path = @"/no/such/file.tif"}).width, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "nothing is thrown, nothing logged";
}

TEST_F(ImageLoading, LogsAnExceptionInOneLineAndSwallowsIt) {
    ImageLoadRequest request = {.data = [[[UnreadableData alloc] init] autorelease]};
    testing::internal::CaptureStderr();
    {
        const LostObjects anObjectWhoseInitialiserThrows;
        runner->load(&request);
    }
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(request.result, nil);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    EXPECT_NE(log.find("out of data"), std::string::npos) << log;
}

// Thread names

std::vector<std::string> namesGiven;

int note_name(const char* name) {
    namesGiven.push_back(name);
    return 0;
}

TEST_F(ImageWork, NamesItsThreadThroughAFunctionLookedUpOnce) {
    runner.system().threadLibrary = &runner;
    runner.system().nameThread = note_name;
    ImageLoadRequest nothing = {};
    runner->load(&nothing);
    encoded(ImageEncodePNG);
    runner->load(&nothing);
    EXPECT_THAT(namesGiven, ElementsAre("NSImageLoad", "NSImageCompression", "NSImageLoad"));
    EXPECT_THAT(runner.system().lookups,
                ElementsAre("/usr/lib/libpthread.dylib", "pthread_setname_np"));
}

TEST_F(ImageWork, StaysNamelessWhereTheLookUpFailedOnce) {
    runner.system().threadLibrary = &runner;
    encoded(ImageEncodePNG);
    runner.system().nameThread = note_name;
    encoded(ImageEncodePNG);
    EXPECT_THAT(namesGiven, ElementsAre());
    EXPECT_EQ(runner.system().lookups.size(), 2u) << "not tried again";
    EXPECT_EQ(messages.size(), 2u) << "the work is done all the same";
}

TEST_F(ImageWork, BearsItsNameOnLinuxAsFarAsThatHasRoom) {
    char before[16] = {};
    pthread_getname_np(pthread_self(), before, sizeof before);
    const auto name_after = [](auto work) {
        char name[16] = {};
        work();
        pthread_getname_np(pthread_self(), name, sizeof name);
        return std::string(name);
    };
    ImageLoadRequest nothing = {};
    EXPECT_EQ(name_after([&] { runner->load(&nothing); }), "NSImageLoad");
    EXPECT_EQ(name_after([&] { encoded(ImageEncodePNG); }), "NSImageCompress");
    pthread_setname_np(pthread_self(), before);
}

} // namespace
