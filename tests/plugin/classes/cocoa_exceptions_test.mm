/// What members do when Cocoa throws.

#include "plugin/classes/support/images.h"

/// Throws what it is told whenever it is asked.
@interface ThrowingImage : NSImage
+ (void)throwNext:(id)object;
@end

static id thrownNext = nil;

@implementation ThrowingImage
+ (void)throwNext:(id)object {
    thrownNext = object;
}
- (void)fail {
    if (thrownNext) @throw thrownNext;
}
- (NSImageCacheMode)cacheMode {
    [self fail];
    return NSImageCacheAlways;
}
- (void)setCacheMode:(NSImageCacheMode)mode {
    [self fail];
}
- (NSSize)size {
    [self fail];
    return [super size];
}
- (NSData*)TIFFRepresentation {
    [self fail];
    return [super TIFFRepresentation];
}
- (NSArray*)representations {
    [self fail];
    return [super representations];
}
- (BOOL)setName:(NSString*)name {
    [self fail];
    return YES;
}
@end

namespace {

class ThrowingMembers {
public:
    explicit ThrowingMembers(const HostOptions& options = {})
        : host(options) {
        host.set(image, "Handle", reinterpret_cast<REALword>([[ThrowingImage alloc] init]));
    }
    ~ThrowingMembers() { [ThrowingImage throwNext:nil]; }

    void throw_exception() {
        [ThrowingImage throwNext:[NSException exceptionWithName:@"TestException"
                                                         reason:@"out of paint"
                                                       userInfo:nil]];
    }
    /// The raised exception's text has to name both.
    void expect_raised() {
        const std::string raised = host.raised();
        EXPECT_TRUE(raised.starts_with("RuntimeException: ")) << raised;
        EXPECT_NE(raised.find("TestException"), std::string::npos) << raised;
        EXPECT_NE(raised.find("out of paint"), std::string::npos) << raised;
    }

    Host host;
    const host::ObjectRef image = host.instance("NSImageZNT");
};

TEST(MembersWhenCocoaThrows, RaiseAHostExceptionAndReturnTheNeutralValue) {
    ThrowingMembers members;
    Host& host = members.host;
    EXPECT_EQ(host.get<int>(members.image, "cacheMode"), 1) << "the control: nothing thrown";
    members.throw_exception();

    EXPECT_EQ(host.get<int>(members.image, "cacheMode"), 0);
    members.expect_raised();
    host.set(members.image, "cacheMode", REALword{1});
    members.expect_raised();
    EXPECT_EQ(host.get<double>(members.image, "width"), 0.0);
    members.expect_raised();
    EXPECT_FALSE(host.get<host::ObjectRef>(members.image, "size"));
    members.expect_raised();
    EXPECT_EQ(host.call<int>(members.image, "RepresentationWidth", 0), 0);
    members.expect_raised();
    EXPECT_FALSE(host.call<bool>(members.image, "setName", "x"));
    members.expect_raised();
    EXPECT_FALSE(host.call<host::ObjectRef>(members.image, "TIFFRepresentation"));
    members.expect_raised();
    EXPECT_FALSE(host.call<host::ObjectRef>(members.image, "imageByFadingToFraction", 0.5));
    members.expect_raised();
    EXPECT_TRUE(host.elements(host.call(members.image, "representations")).empty());
    members.expect_raised();

    [ThrowingImage throwNext:nil];
    EXPECT_EQ(host.get<int>(members.image, "cacheMode"), 1) << "nothing stays behind";
}

TEST(MembersWhenCocoaThrows, LetAForeignObjectPassUnchanged) {
    ThrowingMembers members;
    [ThrowingImage throwNext:@"a string"];
    for (const char* method : {"TIFFRepresentation", "representations"}) {
        id caught = nil;
        @try {
            members.host.call(members.image, method);
        } @catch (id object) {
            caught = object;
        }
        EXPECT_EQ(caught, @"a string") << method;
    }
    EXPECT_EQ(members.host.raised(), "");
}

TEST(MembersWhenCocoaThrows, CannotTranslateItWithoutTheBasePart) {
    ThrowingMembers members({.withoutBase = true});
    members.throw_exception();
    for (const char* method : {"TIFFRepresentation", "representations"}) {
        NSString* name = nil;
        @try {
            members.host.call(members.image, method);
        } @catch (NSException* exception) {
            name = [exception name];
        }
        EXPECT_TRUE([name isEqualToString:NSInvalidArgumentException]) << method;
    }
    EXPECT_EQ(members.host.raised(), "");
}

} // namespace
