/// Members that work in the background while the host goes on.

#include "plugin/classes/support/images.h"
#include "plugin/threading/queue_stand_in.h"

#include <gmock/gmock.h>

#include <functional>
#include <thread>

#include <dlfcn.h>

/// Cannot be encoded.
@interface UnpaintableImage : NSImage
@end
@implementation UnpaintableImage
- (NSData*)TIFFRepresentation {
    [NSException raise:@"PaintException" format:@"out of paint"];
    return nil;
}
@end

namespace {

using testing::ElementsAre;

constexpr const char* withData = "imageWithDataMT(data as memoryblock) as NSImageZNT";

/// What a host does when it is yielded to.
std::function<void()> onYield;

class BackgroundWork : public testing::Test {
protected:
    BackgroundWork() {
        host.replace(REALservices::YieldToRB, [] {
            if (onYield) onYield();
        });
    }
    ~BackgroundWork() override { onYield = nullptr; }

    /// A member's result as bytes; "(none)" for nil.
    std::string data_of(const host::ObjectRef& image, const std::string& method,
                        auto... arguments) {
        const auto block = host.call<host::ObjectRef>(image, method, arguments...);
        if (!block) return "(none)";
        EXPECT_EQ(host.references(block), 1);
        return host.bytes(block);
    }

    Host host;
};

TEST_F(BackgroundWork, EncodesAsTheMembersWithoutItDo) {
    const auto image = new_image(host, {{2, 1, 4, {200, 100, 50, 128, 9, 9, 9, 0}}});
    for (const std::string method : {"GIFRepresentation", "BMPRepresentation", "PNGRepresentation",
                                     "JPEGRepresentation", "TIFFRepresentation"}) {
        const std::string expected = data_of(image, method);
        EXPECT_NE(expected, "(none)") << method;
        EXPECT_EQ(data_of(image, method + "MT"), expected) << method;
    }
    const std::string jpeg = "JPEGRepresentationWithCompressionFactor";
    EXPECT_EQ(data_of(image, jpeg + "MT", 0.1), data_of(image, jpeg, 0.1));
    EXPECT_NE(data_of(image, jpeg + "MT", 0.1), data_of(image, jpeg + "MT", 1.0));
    const std::string tiff = "TIFFRepresentationUsingCompression";
    for (const REALword compression : {NSTIFFCompressionNone, NSTIFFCompressionLZW})
        EXPECT_EQ(data_of(image, tiff + "MT", compression, 0.0),
                  data_of(image, tiff, compression, 0.0));
}

constexpr const char* encoders[] = {"GIFRepresentationMT", "BMPRepresentationMT",
                                    "PNGRepresentationMT", "JPEGRepresentationMT",
                                    "TIFFRepresentationMT"};

TEST_F(BackgroundWork, YieldsInEveryEncoderAndNotInItsTwin) {
    const auto image = new_image(host, {four_colors()});
    int yields = 0;
    onYield = [&] { ++yields; };
    for (const std::string encoder : encoders) {
        yields = 0;
        data_of(image, encoder.substr(0, encoder.size() - 2));
        EXPECT_EQ(yields, 0) << encoder;
        data_of(image, encoder);
        EXPECT_GE(yields, 2) << encoder;
    }
    yields = 0;
    data_of(image, "JPEGRepresentationWithCompressionFactorMT", 0.5);
    EXPECT_GE(yields, 2);
    yields = 0;
    data_of(image, "TIFFRepresentationUsingCompressionMT", REALword{1}, 0.0);
    EXPECT_GE(yields, 2);
}

TEST_F(BackgroundWork, HoldsTheInstanceAndItsImageWhileItLasts) {
    const auto image = new_image(host, {four_colors()});
    NSImage* const held = image_in(host, image);
    int references = 0;
    long retains = 0;
    onYield = [&] {
        references = std::max(references, host.references(image));
        retains = std::max(retains, Host::retainCount(held));
    };
    data_of(image, "PNGRepresentationMT");
    EXPECT_EQ(references, 3) << "the program's, the calling host's and the plug-in's";
    EXPECT_EQ(retains, 2) << "the wrapper's and the plug-in's";
    EXPECT_EQ(host.references(image), 1);
    EXPECT_EQ(Host::retainCount(held), 1);
}

TEST_F(BackgroundWork, FinishesWhenTheProgramReplacesTheImageMeanwhile) {
    const auto image = new_image(host, {four_colors()});
    const std::string expected = data_of(image, "PNGRepresentation");
    const auto block = host.memoryBlock(plain_tiff(9, 9));
    onYield = [&, isReplaced = false]() mutable {
        if (!std::exchange(isReplaced, true)) host.call(image, "initWithData", block);
    };
    EXPECT_EQ(data_of(image, "PNGRepresentationMT"), expected) << "of the image as it was";
    EXPECT_EQ(host.get<double>(image, "width"), 9);
}

TEST_F(BackgroundWork, GivesNilForAnInstanceWithoutAnImage) {
    const auto none = host.instance("NSImageZNT");
    for (const char* encoder : encoders)
        EXPECT_EQ(data_of(none, encoder), "(none)") << encoder;
    EXPECT_EQ(host.raised(), "");
}

TEST_F(BackgroundWork, LogsWhatCocoaThrowsInsteadOfRaisingIt) {
    const auto image = host.instance("NSImageZNT");
    host.set(image, "Handle", reinterpret_cast<REALword>([[UnpaintableImage alloc] init]));
    EXPECT_EQ(data_of(image, "PNGRepresentation"), "(none)");
    EXPECT_THAT(host.raised(), testing::HasSubstr("out of paint")) << "the control";

    for (const char* encoder :
         {"PNGRepresentationMT", "GIFRepresentationMT", "TIFFRepresentationMT"}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(data_of(image, encoder), "(none)");
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
        EXPECT_THAT(log, testing::HasSubstr("out of paint"));
        EXPECT_EQ(host.raised(), "");
    }
    EXPECT_EQ(host.references(image), 1);
}

TEST_F(BackgroundWork, DecodesOnTheWorkerAlready) {
    const auto image = host.shared<host::ObjectRef>("NSImageZNT", withData,
                                                    host.memoryBlock(tiff_of({four_colors()})));
    EXPECT_THAT(pixels_of(image_in(host, image)), ElementsAre(red, green, blue, white));
}

// Many at once

/// Checks that a loaded image is the one asked for, told by its width.
void expect_image_of_width(Host& host, const host::ObjectRef& image, int width) {
    ASSERT_TRUE(image) << width;
    EXPECT_EQ(host.references(image), 1);
    EXPECT_EQ(Host::retainCount(host.handle(image)), 1);
    EXPECT_EQ(host.get<double>(image, "width"), width);
}

TEST_F(BackgroundWork, Keeps200CallsInFlightApart) {
    constexpr int calls = 200;
    int started = 0;
    int inFlight = 0;
    int mostInFlight = 0;
    const auto encoded = new_image(host, {four_colors()});
    const std::string png = data_of(encoded, "PNGRepresentation");
    // A host thread that is yielded to starts a call of its own, and so on.
    const std::function<void()> start_next = [&] {
        if (started == calls) return;
        const int number = started++;
        mostInFlight = std::max(mostInFlight, ++inFlight);
        if (number % 3 == 0) {
            EXPECT_EQ(data_of(encoded, "PNGRepresentationMT"), png);
        } else {
            const auto data = host.memoryBlock(plain_tiff(static_cast<std::uint16_t>(number), 2));
            expect_image_of_width(host, host.shared<host::ObjectRef>("NSImageZNT", withData, data),
                                  number);
            EXPECT_EQ(host.references(data), 1);
        }
        --inFlight;
    };
    onYield = start_next;
    start_next();
    EXPECT_EQ(started, calls);
    EXPECT_EQ(mostInFlight, calls);
    EXPECT_EQ(host.references(encoded), 1);
    EXPECT_EQ(Host::retainCount(host.handle(encoded)), 1);
}

TEST_F(BackgroundWork, RepeatsWithoutLeavingAnythingBehind) {
    const auto data = host.memoryBlock(plain_tiff(7, 2));
    const long wrappers = Host::wrapperCount();
    for (int i = 0; i < 200; ++i) {
        const auto image = host.shared<host::ObjectRef>("NSImageZNT", withData, data);
        expect_image_of_width(host, image, 7);
        EXPECT_NE(data_of(image, "TIFFRepresentationMT"), "(none)");
    }
    EXPECT_EQ(Host::wrapperCount(), wrappers);
    EXPECT_EQ(host.instances("NSImageZNT"), 0u);
    EXPECT_EQ(host.references(data), 1);
}

// Roads

TEST(BackgroundWorkOn, ASystemWithoutQueuesIsDone) {
    ASSERT_EQ(dlsym(RTLD_DEFAULT, "dispatch_async"), nullptr);
    Host host;
    const auto data = host.memoryBlock(plain_tiff(7, 2));
    expect_image_of_width(host, host.shared<host::ObjectRef>("NSImageZNT", withData, data), 7);
}

TEST(BackgroundWorkOn, ASystemWithQueuesIsHandedToOne) {
    void* const library = dlopen(QUEUE_STAND_IN, RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const QueueCalls& queue =
        *reinterpret_cast<decltype(&queue_calls)>(dlsym(library, "queue_calls"))();
    Host host;
    const auto data = host.memoryBlock(plain_tiff(7, 2));
    const auto image = host.shared<host::ObjectRef>("NSImageZNT", withData, data);
    expect_image_of_width(host, image, 7);
    EXPECT_EQ(queue.blocks, 1);
    EXPECT_TRUE(host.call<host::ObjectRef>(image, "PNGRepresentationMT"));
    EXPECT_EQ(queue.blocks, 2);
    while (queue.finished < 2)
        std::this_thread::yield();
}

TEST(BackgroundWorkOn, AHostThatCannotYieldIsDoneAllTheSame) {
    Host host{{.without = {"REALYieldToRB"}}};
    const auto data = host.memoryBlock(plain_tiff(7, 2));
    const auto image = host.shared<host::ObjectRef>("NSImageZNT", withData, data);
    expect_image_of_width(host, image, 7);
    EXPECT_TRUE(host.call<host::ObjectRef>(image, "PNGRepresentationMT"));
    EXPECT_GE(host.lookups("REALYieldToRB"), 4) << "looked up at every use";
}

TEST(BackgroundWorkOn, AHostThatCannotLockUnlocksNothing) {
    Host host{{.without = {"REALLockObject"}}};
    const auto image = new_image(host, {four_colors()});
    EXPECT_TRUE(host.call<host::ObjectRef>(image, "PNGRepresentationMT"));
    EXPECT_EQ(host.references(image), 1);
}

} // namespace
