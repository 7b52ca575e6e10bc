#include "plugin/probe/probe_host.h"

#include <Cocoa/Cocoa.h>
#include <objc/runtime.h>

namespace {

/// Stands in for the base part's exception bridge, so that each of its parts can be there or not.
class ExceptionBridge {
public:
    static void offerPreparation() { add(@selector(PrepareNSExceptionZNT), (IMP)prepare, "v@:"); }
    static void offerConversion() { add(@selector(NewNSExceptionZNT:), (IMP)convert, "^v@:@"); }
    static void offerFailingConversion() {
        add(@selector(NewNSExceptionZNT:), (IMP)throwForeign, "^v@:@");
    }
    static void offerEmptyConversion() {
        add(@selector(NewNSExceptionZNT:), (IMP)convertToNothing, "^v@:@");
    }

    static inline int preparations = 0;

private:
    static void add(SEL selector, IMP method, const char* types) {
        class_addMethod(object_getClass([NSException class]), selector, method, types);
    }
    static void prepare(id, SEL) { ++preparations; }
    static REALobjectStruct* convert(id, SEL, NSException* exception) {
        return host::Runtime::current()
            .makeException("IOException", [[exception reason] UTF8String])
            .release();
    }
    static REALobjectStruct* convertToNothing(id, SEL, NSException*) { return nullptr; }
    static REALobjectStruct* throwForeign(id, SEL, NSException*) {
        @throw @"the bridge is broken";
        return nullptr;
    }
};

class Frames : public testing::Test {
protected:
    long run_full(const char* thrown = "") {
        return host.shared<long>("FrameProbe", "RunFull", thrown);
    }
    long run_light(const char* thrown = "") {
        return host.shared<long>("FrameProbe", "RunLight", thrown);
    }
    std::string escaped() { return host.shared<std::string>("FrameProbe", "Escaped"); }
    long live_behind_frame() { return host.shared<long>("FrameProbe", "LiveBehindFrame"); }
    long live_now() { return host.shared<long>("FrameProbe", "LiveNow"); }

    Host host{with_probe({.withoutBase = true})};
};

TEST_F(Frames, ReturnTheResultOfTheWork) {
    EXPECT_EQ(run_full(), 42);
    EXPECT_EQ(run_light(), 42);
}

TEST_F(Frames, OfTheFullKindDrainTheirPoolBeforeReturning) {
    run_full();
    EXPECT_EQ(live_behind_frame(), 0);
    run_light();
    EXPECT_EQ(live_behind_frame(), 1) << "the light frame has no pool";
    EXPECT_EQ(live_now(), 0);
}

TEST_F(Frames, TurnAnNSExceptionIntoAHostExceptionAndTheNeutralValue) {
    ExceptionBridge::offerConversion();
    EXPECT_EQ(run_full("NSException"), 0);
    EXPECT_EQ(host.raised(), "IOException: thrown in a frame");
    EXPECT_EQ(escaped(), "");
    EXPECT_EQ(live_behind_frame(), 0);
    EXPECT_EQ(run_light("NSException"), 0);
    EXPECT_EQ(host.raised(), "IOException: thrown in a frame");
    EXPECT_EQ(host.instances("IOException"), 0u);
}

TEST_F(Frames, RaiseNothingWhenTheBridgeMakesNothingOfAnException) {
    ExceptionBridge::offerEmptyConversion();
    EXPECT_EQ(run_full("NSException"), 0);
    EXPECT_EQ(run_light("NSException"), 0);
    EXPECT_EQ(host.raised(), "");
}

TEST_F(Frames, LetAForeignObjectPassOnceThePoolIsGone) {
    EXPECT_EQ(run_full("foreign"), -1);
    EXPECT_EQ(escaped(), "Counted") << "the same object, alive though the frame's pool held it";
    EXPECT_EQ(live_behind_frame(), 1) << "what was thrown; the rest went with the pool";
    EXPECT_EQ(live_now(), 0) << "nobody holds on to it afterwards";
    EXPECT_EQ(host.raised(), "");
}

TEST_F(Frames, OfTheLightKindLetAForeignObjectPass) {
    EXPECT_EQ(run_light("foreign"), -1);
    EXPECT_EQ(escaped(), "Counted");
    EXPECT_EQ(live_now(), 0);
}

TEST_F(Frames, LetAFailureOfTheHandlingPassOnceThePoolIsGone) {
    ExceptionBridge::offerFailingConversion();
    EXPECT_EQ(run_full("NSException"), -1);
    EXPECT_EQ(escaped(), "the bridge is broken");
    EXPECT_EQ(live_behind_frame(), 0);
}

TEST_F(Frames, FailToConvertAnNSExceptionWithoutTheBasePart) {
    EXPECT_EQ(run_full("NSException"), -1);
    EXPECT_EQ(escaped(), "NSInvalidArgumentException") << "NSException lacks the conversion";
    EXPECT_EQ(live_behind_frame(), 0);
    EXPECT_EQ(run_light("NSException"), -1);
    EXPECT_EQ(escaped(), "NSInvalidArgumentException");
}

TEST_F(Frames, PrepareTheBridgeOnceAsSoonAsItIsThere) {
    run_full();
    EXPECT_EQ(ExceptionBridge::preparations, 0);
    ExceptionBridge::offerPreparation();
    run_light();
    EXPECT_EQ(ExceptionBridge::preparations, 0) << "the light frame does not prepare";
    run_full();
    EXPECT_EQ(ExceptionBridge::preparations, 1);
    run_full();
    EXPECT_EQ(ExceptionBridge::preparations, 1);
}

TEST_F(Frames, LetAForeignObjectPassThroughTheHostUnchanged) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSString* description = nil;
    @try {
        host.shared("FrameProbe", "RunUnguarded", "foreign");
    } @catch (id object) {
        description = [[object description] retain];
    }
    EXPECT_STREQ([description UTF8String], "Counted");
    [description release];
    [pool release];
    EXPECT_EQ(live_now(), 0);
}

} // namespace
