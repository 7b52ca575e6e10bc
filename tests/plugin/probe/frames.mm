#include "plugin/entry/frames.h"
#include "plugin/bridge/strings.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

#include <string>

using namespace REALtables;

/// Counts those that live.
@interface Counted : NSObject
@end

static int liveCounted = 0;

@implementation Counted
- (id)init {
    ++liveCounted;
    return [super init];
}
- (void)dealloc {
    --liveCounted;
    [super dealloc];
}
- (NSString*)description {
    return @"Counted";
}
@end

namespace {

constexpr REALword workResult = 42;

/// What a frame's work does: leaves an object in the pool, then throws what is named, if anything.
REALword work(const std::string& thrown) {
    [[[Counted alloc] init] autorelease];
    if (thrown == "NSException") [NSException raise:@"ProbeException" format:@"thrown in a frame"];
    if (thrown == "foreign") @throw [[[Counted alloc] init] autorelease];
    return workResult;
}

std::string escaped; ///< what came out of the frame, if anything
int liveBehindFrame = 0;

template <typename Frame>
REALword run(REALstringStruct* thrown, Frame frame) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    const std::string name = thrown ? std::string(thrown->buffer + 1, thrown->length) : "";
    const int liveBefore = liveCounted;
    REALword result = -1;
    escaped.clear();
    @try {
        result = frame([&] { return work(name); });
    } @catch (NSException* exception) {
        escaped = [[exception name] UTF8String];
    } @catch (id object) {
        escaped = [[object description] UTF8String];
    }
    liveBehindFrame = liveCounted - liveBefore;
    [pool release];
    return result;
}

/// -1 when something was thrown out of the frame.
REALword run_full(REALstringStruct* thrown) {
    return run(thrown, [](auto work) { return FullFrame(work); });
}
REALword run_light(REALstringStruct* thrown) {
    return run(thrown, [](auto work) { return LightFrame(work); });
}

/// Lets what the frame throws pass on into the host.
REALword run_unguarded(REALstringStruct* thrown) {
    const std::string name = thrown ? std::string(thrown->buffer + 1, thrown->length) : "";
    return FullFrame([&] { return work(name); });
}

REALstringStruct* last_escaped() {
    return REALBuildString(escaped.data(), static_cast<std::int32_t>(escaped.size()));
}
REALword live_behind_frame() { return liveBehindFrame; }
REALword live_now() { return liveCounted; }

REALmethod sharedMethods[] = {
    shared_method("RunFull(thrown as String) as Integer", run_full),
    shared_method("RunLight(thrown as String) as Integer", run_light),
    shared_method("RunUnguarded(thrown as String) as Integer", run_unguarded),
    shared_method("Escaped as String", last_escaped),
    shared_method("LiveBehindFrame as Integer", live_behind_frame),
    shared_method("LiveNow as Integer", live_now),
};

} // namespace

REALclassDefinition FrameProbe =
    class_definition({.name = "FrameProbe", .sharedMethods = sharedMethods});
