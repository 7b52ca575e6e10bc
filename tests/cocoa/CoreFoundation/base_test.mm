#include "support.h"

namespace {

class Objects : public InPool {};

TEST_F(Objects, AreRetainedAndReleased) {
    NSObject* const object = [[NSObject alloc] init];
    EXPECT_EQ(CFRetain(object), object);
    EXPECT_EQ(CFGetRetainCount(object), 2);
    CFRelease(object);
    EXPECT_EQ(CFGetRetainCount(object), 1);
    [object release];
}

TEST_F(Objects, AreEqualByValueAndNullEqualsOnlyNull) {
    EXPECT_TRUE(CFEqual(nullptr, nullptr));
    EXPECT_FALSE(CFEqual(nullptr, @"a"));
    EXPECT_FALSE(CFEqual(@"a", nullptr));
    EXPECT_FALSE(CFEqual(@"1", [NSNumber numberWithInt:1]));
    EXPECT_TRUE(CFEqual([NSArray arrayWithObject:@"a"], [NSArray arrayWithObject:@"a"]));
}

TEST_F(Objects, TellTheirType) {
    EXPECT_EQ(CFGetTypeID([NSNull null]), CFNullGetTypeID());
    EXPECT_EQ((id)kCFNull, [NSNull null]);
    EXPECT_EQ(CFGetTypeID([NSMutableArray array]), CFArrayGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSMutableDictionary dictionary]), CFDictionaryGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSDate date]), CFDateGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSURL URLWithString:@"http://a/b"]), CFURLGetTypeID());
    NSObject* const plain = [[[NSObject alloc] init] autorelease];
    EXPECT_EQ(CFGetTypeID(plain), 0U);
    EXPECT_FALSE([plain respondsToSelector:@selector(_cfTypeID)]);
}

TEST_F(Objects, AreDescribed) {
    const String description = String::adopt(CFCopyDescription(@"text"));
    EXPECT_EQ(text(description), "text");
}

} // namespace
