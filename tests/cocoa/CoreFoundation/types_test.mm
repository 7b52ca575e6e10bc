#include "support.h"

#include <Carbon/Carbon.h>

#include <cstring>
#include <set>
#include <utility>
#include <vector>

namespace {

class Types : public InPool {};

/// All types, by the functions that tell them.
const std::vector<std::pair<const char*, CFTypeID (*)()>> allTypes = {
#define TYPE(name)                                                                                 \
    { #name, name##GetTypeID }
    TYPE(CFNull),           TYPE(CFURL),          TYPE(CFDictionary),  TYPE(CFString),
    TYPE(CFNumber),         TYPE(CFArray),        TYPE(CFBoolean),     TYPE(CFData),
    TYPE(CFCharacterSet),   TYPE(CFBundle),       TYPE(CFSet),         TYPE(CFBag),
    TYPE(CFUUID),           TYPE(CFTimeZone),     TYPE(CFDate),        TYPE(CFAttributedString),
    TYPE(CFError),          TYPE(CGPSConverter),  TYPE(CGContext),     TYPE(CGColorSpace),
    TYPE(CGColor),          TYPE(CGImage),        TYPE(CGLayer),       TYPE(CGFont),
    TYPE(CGDataConsumer),   TYPE(CGDataProvider), TYPE(CTFont),        TYPE(CTFontCollection),
    TYPE(CTFrame),          TYPE(CTFramesetter),  TYPE(CTGlyphInfo),   TYPE(CTLine),
    TYPE(CTParagraphStyle), TYPE(CTRun),          TYPE(CTRunDelegate), TYPE(CTTypesetter),
#undef TYPE
};

TEST_F(Types, HaveAnIDEach) {
    std::set<CFTypeID> known;
    for (const auto& [name, typeID] : allTypes) {
        EXPECT_GT(typeID(), 0U) << name;
        EXPECT_TRUE(known.insert(typeID()).second) << name;
    }
}

TEST_F(Types, AreThoseOfTheFoundationClasses) {
    EXPECT_EQ(CFGetTypeID([NSSet set]), CFSetGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSCountedSet set]), CFSetGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSTimeZone localTimeZone]), CFTimeZoneGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSTimeZone timeZoneForSecondsFromGMT:3600]), CFTimeZoneGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSCharacterSet letterCharacterSet]), CFCharacterSetGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSMutableCharacterSet letterCharacterSet]), CFCharacterSetGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSError errorWithDomain:@"d" code:1 userInfo:nil]), CFErrorGetTypeID());
    NSAttributedString* const text =
        [[[NSMutableAttributedString alloc] initWithString:@"x"] autorelease];
    EXPECT_EQ(CFGetTypeID(text), CFAttributedStringGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSCalendarDate calendarDate]), CFDateGetTypeID());
    EXPECT_EQ(CFGetTypeID(kCFBooleanTrue), CFBooleanGetTypeID());
}

TEST_F(Types, AreNotThoseOfOtherFoundationObjects) {
    for (NSObject* const object :
         {(NSObject*)[NSValue valueWithSize:NSMakeSize(1, 2)], (NSObject*)[NSBundle mainBundle],
          (NSObject*)[NSThread currentThread]})
        EXPECT_FALSE([object respondsToSelector:@selector(_cfTypeID)])
            << [[object description] UTF8String];
}

class UUIDs : public InPool {
protected:
    using UUID = cocoa::Retained<CFUUIDRef>;

    static UUID uuid(std::string_view text) {
        return UUID::adopt(CFUUIDCreateFromString(nullptr, string(text).get()));
    }
    static std::string text(const UUID& uuid) {
        return ::text(String::adopt(CFUUIDCreateString(nullptr, uuid.get())));
    }

    const CFUUIDBytes bytes = {0x68, 0x75, 0x3A, 0x44, 0x4D, 0x6F, 0x12, 0x26,
                               0x9C, 0x60, 0x00, 0x50, 0xE4, 0xC0, 0x00, 0x67};
};

TEST_F(UUIDs, AreWrittenInUpperCase) {
    const UUID made = UUID::adopt(CFUUIDCreateFromUUIDBytes(nullptr, bytes));
    EXPECT_EQ(text(made), "68753A44-4D6F-1226-9C60-0050E4C00067");
    EXPECT_EQ(CFGetTypeID(made.get()), CFUUIDGetTypeID());
    EXPECT_EQ(CFGetRetainCount(made.get()), 1);
}

TEST_F(UUIDs, AreReadInEitherCase) {
    const UUID read = uuid("68753a44-4d6F-1226-9c60-0050e4c00067");
    ASSERT_TRUE(read);
    const CFUUIDBytes found = CFUUIDGetUUIDBytes(read.get());
    EXPECT_EQ(std::memcmp(&found, &bytes, sizeof bytes), 0);
}

TEST_F(UUIDs, AreNotReadFromOtherText) {
    for (const char* const wrong :
         {"", "6", "68753A44-4D6F-1226-9C60-0050E4C0006", "68753A44-4D6F-1226-9C60-0050E4C000670",
          "68753A444-D6F-1226-9C60-0050E4C00067", "68753A44-4D6F-1226-9C60-0050E4C0006G",
          "68753A44 4D6F 1226 9C60 0050E4C00067", "{68753A44-4D6F-1226-9C60-0050E4C000}",
          "\xC3\xA9"
          "753A44-4D6F-1226-9C60-0050E4C00067"})
        EXPECT_FALSE(uuid(wrong)) << wrong;
    EXPECT_EQ(CFUUIDCreateFromString(nullptr, nullptr), nullptr);
    EXPECT_EQ(CFUUIDCreateString(nullptr, nullptr), nullptr);
}

TEST_F(UUIDs, AreRandomVersionFourWhenNew) {
    const UUID first = UUID::adopt(CFUUIDCreate(nullptr));
    const UUID second = UUID::adopt(CFUUIDCreate(nullptr));
    EXPECT_FALSE(CFEqual(first.get(), second.get()));
    EXPECT_EQ(CFUUIDGetUUIDBytes(first.get()).byte6 >> 4, 4);
    EXPECT_EQ(CFUUIDGetUUIDBytes(first.get()).byte8 >> 6, 2);
    EXPECT_TRUE(CFEqual(first.get(), uuid(text(first)).get()));
    EXPECT_EQ(CFHash(first.get()), CFHash(uuid(text(first)).get()));
}

class Bags : public InPool {
protected:
    using Bag = cocoa::Retained<CFBagRef>;
    using MutableBag = cocoa::Retained<CFMutableBagRef>;
};

TEST_F(Bags, CountEqualValues) {
    const void* values[] = {@"a", @"b", @"a"};
    const Bag bag = Bag::adopt(CFBagCreate(nullptr, values, 3, &kCFTypeBagCallBacks));
    EXPECT_EQ(CFGetTypeID(bag.get()), CFBagGetTypeID());
    EXPECT_EQ(CFBagGetCount(bag.get()), 3);
    EXPECT_EQ(CFBagGetCountOfValue(bag.get(), @"a"), 2);
    EXPECT_FALSE(CFBagContainsValue(bag.get(), @"c"));
    const void* found[4] = {};
    CFBagGetValues(bag.get(), found);
    EXPECT_EQ(std::set<const void*>(found, found + 3), std::set<const void*>(values, values + 2));
    EXPECT_EQ(found[3], nullptr);
}

TEST_F(Bags, RetainAValueAsOftenAsItStandsInThem) {
    NSObject* const value = [[NSObject alloc] init];
    {
        const MutableBag bag =
            MutableBag::adopt(CFBagCreateMutable(nullptr, 0, &kCFTypeBagCallBacks));
        CFBagAddValue(bag.get(), value);
        CFBagAddValue(bag.get(), value);
        CFBagAddValue(bag.get(), value);
        EXPECT_EQ(CFGetRetainCount(value), 4);
        CFBagRemoveValue(bag.get(), value);
        EXPECT_EQ(CFGetRetainCount(value), 3);
        CFBagRemoveValue(bag.get(), @"another");
        EXPECT_EQ(CFBagGetCount(bag.get()), 2);
    }
    EXPECT_EQ(CFGetRetainCount(value), 1);
    [value release];
}

TEST_F(Bags, KeepPlainPointersWithoutCallbacks) {
    const MutableBag bag = MutableBag::adopt(CFBagCreateMutable(nullptr, 0, nullptr));
    CFBagAddValue(bag.get(), reinterpret_cast<void*>(1));
    CFBagAddValue(bag.get(), nullptr);
    EXPECT_EQ(CFBagGetCountOfValue(bag.get(), reinterpret_cast<void*>(1)), 1);
    EXPECT_TRUE(CFBagContainsValue(bag.get(), nullptr));
    CFBagRemoveAllValues(bag.get());
    EXPECT_EQ(CFBagGetCount(bag.get()), 0);
}

TEST_F(Bags, AreEqualWhenTheirCountsAre) {
    const void* first[] = {@"a", @"b", @"a"};
    const void* second[] = {@"b", @"a", @"a"};
    const void* third[] = {@"b", @"a", @"b"};
    const auto bag = [](const void** values) {
        return Bag::adopt(CFBagCreate(nullptr, values, 3, &kCFTypeBagCallBacks));
    };
    EXPECT_TRUE(CFEqual(bag(first).get(), bag(second).get()));
    EXPECT_EQ(CFHash(bag(first).get()), CFHash(bag(second).get()));
    EXPECT_FALSE(CFEqual(bag(first).get(), bag(third).get()));
    EXPECT_FALSE(CFEqual(bag(first).get(), [NSSet set]));
}

TEST_F(Bags, RefuseChangesWhenImmutableAndValuesThatAreNotThere) {
    const Bag bag = Bag::adopt(CFBagCreate(nullptr, nullptr, 0, &kCFTypeBagCallBacks));
    auto* const hacked = (CFMutableBagRef)bag.get();
    EXPECT_EQ(raisedBy([&] { CFBagAddValue(hacked, @"a"); }), "NSInternalInconsistencyException");
    EXPECT_EQ(CFBagCreate(nullptr, nullptr, 1, nullptr), nullptr);
    EXPECT_EQ(CFBagCreate(nullptr, nullptr, -1, nullptr), nullptr);
}

class Sets : public InPool {};

TEST_F(Sets, AreFoundationSets) {
    NSMutableSet* const set = [NSMutableSet setWithObject:@"a"];
    auto* const reference = (CFMutableSetRef)set;
    CFSetAddValue(reference, @"b");
    CFSetAddValue(reference, @"a");
    EXPECT_EQ(CFSetGetCount(reference), 2);
    EXPECT_EQ(CFSetGetValue(reference, [NSMutableString stringWithString:@"b"]), @"b");
    EXPECT_TRUE(CFSetContainsValue(reference, @"a"));
    CFSetRemoveValue(reference, @"a");
    const void* values[2] = {};
    CFSetGetValues(reference, values);
    EXPECT_EQ(values[0], @"b");
    EXPECT_EQ(values[1], nullptr);
    EXPECT_FALSE(CFSetContainsValue(reference, nullptr));
}

class Errors : public InPool {
protected:
    using Error = cocoa::Retained<CFErrorRef>;

    static NSError* error(NSInteger code, NSDictionary* userInfo = nil) {
        return [NSError errorWithDomain:@"some.domain" code:code userInfo:userInfo];
    }
    static std::string description(NSError* error) {
        return [[error localizedDescription] UTF8String];
    }
};

TEST_F(Errors, AreFoundationErrors) {
    const Error made = Error::adopt(CFErrorCreate(nullptr, CFSTR("some.domain"), -5, nullptr));
    EXPECT_EQ(CFGetRetainCount(made.get()), 1);
    EXPECT_EQ(text(CFErrorGetDomain(made.get())), "some.domain");
    EXPECT_EQ(CFErrorGetCode(made.get()), -5);
    EXPECT_TRUE(CFEqual(made.get(), error(-5)));
    EXPECT_EQ(CFErrorCreate(nullptr, nullptr, 1, nullptr), nullptr);
}

TEST_F(Errors, AlwaysHaveADictionary) {
    EXPECT_EQ([[error(1) userInfo] count], 0U);
    EXPECT_NE([error(1) userInfo], nil);
    const auto copy =
        cocoa::Retained<CFDictionaryRef>::adopt(CFErrorCopyUserInfo((CFErrorRef)error(1)));
    EXPECT_EQ(CFDictionaryGetCount(copy.get()), 0);
}

TEST_F(Errors, SayWhatHappened) {
    EXPECT_EQ(description(error(3)),
              "The operation couldn\u2019t be completed. (some.domain error 3.)");
    NSDictionary* const given = [NSDictionary dictionaryWithObject:@"It rained."
                                                            forKey:NSLocalizedDescriptionKey];
    EXPECT_EQ(description(error(3, given)), "It rained.");
    EXPECT_EQ(description([NSError errorWithDomain:NSPOSIXErrorDomain code:2 userInfo:nil]),
              "The operation couldn\u2019t be completed. No such file or directory");
    const String copy = String::adopt(CFErrorCopyDescription((CFErrorRef)error(3, given)));
    EXPECT_EQ(text(copy), "It rained.");
    EXPECT_STREQ([[error(3) description] UTF8String],
                 "Error Domain=some.domain Code=3 \"The operation couldn\u2019t be completed. "
                 "(some.domain error 3.)\"");
}

TEST_F(Errors, AreTheirOwnCopies) {
    NSError* const original = error(1);
    const Error copy = Error::adopt((CFErrorRef)[original copy]);
    EXPECT_EQ(copy.get(), (CFErrorRef)original);
}

TEST_F(Errors, AreEqualByValue) {
    NSDictionary* const info = [NSDictionary dictionaryWithObject:@"v" forKey:@"k"];
    EXPECT_TRUE([error(3) isEqual:error(3)]);
    EXPECT_EQ([error(3) hash], [error(3) hash]);
    EXPECT_FALSE([error(3) isEqual:error(4)]);
    EXPECT_FALSE([error(3) isEqual:error(3, info)]);
    EXPECT_TRUE([error(3, info) isEqual:error(3, info)]);
    EXPECT_FALSE([error(3) isEqual:@"some.domain"]);
}

} // namespace
