#include "companion/base_host.h"

#include <objc/runtime.h>

namespace {

using host::ObjectRef;

NSException* exception(NSString* name, NSString* reason) {
    return [NSException exceptionWithName:name reason:reason userInfo:nil];
}

/// "Class: message" of the host exception that a Cocoa exception becomes.
std::string bridged(NSException* exception) {
    const ObjectRef made = ObjectRef::adopt([NSException NewNSExceptionZNT:exception]);
    return made ? host::Raised(made).what() : std::string("none");
}

TEST(ExceptionBridge, NamesTheHostClassAsTheCocoaException) {
    BaseHost host;
    EXPECT_EQ(bridged(exception(@"OutOfBoundsException", @"too far")),
              "OutOfBoundsException: OutOfBoundsException: too far");
}

TEST(ExceptionBridge, FallsBackToTheRuntimeException) {
    BaseHost host;
    EXPECT_EQ(bridged(exception(NSRangeException, @"beyond \u00E9")),
              "RuntimeException: NSRangeException: beyond \u00E9");
}

TEST(ExceptionBridge, DoesNotTakeOtherClassesForExceptions) {
    BaseHost host;
    EXPECT_EQ(bridged(exception(@"NSSizeZNT", @"no exception")),
              "RuntimeException: NSSizeZNT: no exception");
    EXPECT_EQ(host.instances("NSSizeZNT"), 0U);
}

TEST(ExceptionBridge, CopesWithMissingTexts) {
    BaseHost host;
    EXPECT_EQ(bridged(exception(@"SomeException", @"")), "RuntimeException: SomeException");
    EXPECT_EQ(bridged(exception(@"", @"reason")), "RuntimeException: reason");
    EXPECT_EQ([NSException NewNSExceptionZNT:nil], nullptr);
}

TEST(ExceptionBridge, GivesOneReferenceAndErrorNumberZero) {
    BaseHost host;
    const ObjectRef made =
        ObjectRef::adopt([NSException NewNSExceptionZNT:exception(@"IOException", @"lost")]);
    EXPECT_EQ(host.references(made), 1);
    EXPECT_EQ(host.get<int>(made, "ErrorNumber"), 0);
    EXPECT_EQ(host.get<std::string>(made, "Message"), "IOException: lost");
}

TEST(ExceptionBridge, GivesNothingWhenTheHostMakesNothing) {
    BaseHost host{{.without = {"PluginNewInstance"}}};
    EXPECT_EQ([NSException NewNSExceptionZNT:exception(@"IOException", @"lost")], nullptr);
}

TEST(ExceptionBridge, TrustsNoClassThatItCannotTest) {
    BaseHost host{{.without = {"RuntimeObjectIsa"}}};
    EXPECT_EQ(bridged(exception(@"IOException", @"lost")), "RuntimeException: IOException: lost");
}

TEST(ExceptionBridge, WorksWithoutTheServicesForItsText) {
    BaseHost host{{.without = {"REALBuildString", "REALSetStringEncoding"}}};
    EXPECT_EQ(bridged(exception(@"IOException", @"lost")), "IOException: ");
}

TEST(ExceptionBridge, LooksItsClassUpWhenItIsPrepared) {
    BaseHost host;
    [NSException PrepareNSExceptionZNT];
    const int calls = host.calls("pluginObjectType");
    EXPECT_EQ(calls, 1);
    [NSException PrepareNSExceptionZNT];
    EXPECT_EQ(bridged(exception(@"IOException", @"lost")), "IOException: IOException: lost");
    EXPECT_EQ(host.calls("pluginObjectType"), calls);
}

TEST(InstancesDictionary, IsOneAndComparesByIdentity) {
    BaseHost host;
    CFMutableDictionaryRef const instances = [NSException GetInstancesDictionaryZNT];
    EXPECT_EQ([NSException GetInstancesDictionaryZNT], instances);
    EXPECT_EQ(CFDictionaryGetCount(instances), 0);
    NSMutableString* const first = [NSMutableString stringWithString:@"same"];
    NSMutableString* const second = [NSMutableString stringWithString:@"same"];
    CFDictionarySetValue(instances, first, &host);
    EXPECT_EQ(Host::wrapper(second), nullptr);
    EXPECT_EQ([first retainCount], 1U);
    CFDictionaryRemoveValue(instances, first);
    EXPECT_EQ(CFDictionaryGetCount(instances), 0);
}

Class wrapperClass() { return static_cast<Class>(objc_getClass("ZNTREALobjectWrapper")); }

TEST(ObjectWrapper, HoldsAHostReference) {
    BaseHost host;
    const ObjectRef object = host.create("NSSizeZNT");
    {
        NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
        ZNTREALobjectWrapper* const wrapper = [wrapperClass() wrap:object.get()];
        EXPECT_EQ(host.references(object), 2);
        const ObjectRef back = ObjectRef::adopt([wrapper unwrap]);
        EXPECT_EQ(back.get(), object.get());
        EXPECT_EQ(host.references(object), 3);
        [pool release];
    }
    EXPECT_EQ(host.references(object), 1);
}

TEST(ObjectWrapper, IsNilForNull) {
    BaseHost host;
    EXPECT_EQ([wrapperClass() wrap:nullptr], nil);
}

TEST(ObjectWrapper, EqualsAnotherOfTheSameObject) {
    BaseHost host;
    const ObjectRef object = host.create("NSSizeZNT");
    const ObjectRef other = host.create("NSSizeZNT");
    ZNTREALobjectWrapper* const first = [wrapperClass() wrap:object.get()];
    ZNTREALobjectWrapper* const second = [wrapperClass() wrap:object.get()];
    EXPECT_NE(first, second);
    EXPECT_TRUE([first isEqual:second]);
    EXPECT_EQ([first hash], [second hash]);
    EXPECT_FALSE([first isEqual:[wrapperClass() wrap:other.get()]]);
    EXPECT_FALSE([first isEqual:@"text"]);
}

TEST(ObjectWrapper, IsItsOwnCopyAsAKey) {
    BaseHost host;
    const ObjectRef object = host.create("NSSizeZNT");
    ZNTREALobjectWrapper* const wrapper = [wrapperClass() wrap:object.get()];
    ZNTREALobjectWrapper* const copy = [wrapper copy];
    EXPECT_EQ(copy, wrapper);
    [copy release];
}

TEST(ObjectWrapper, IsMadeWithoutTheServiceThatCounts) {
    BaseHost host{{.without = {"REALLockObject", "REALUnlockObject"}}};
    host.tolerateLeaks();
    const ObjectRef object = host.instance("NSSizeZNT");
    ZNTREALobjectWrapper* const wrapper = [wrapperClass() wrap:object.get()];
    EXPECT_EQ([wrapper unwrap], object.get());
}

} // namespace
