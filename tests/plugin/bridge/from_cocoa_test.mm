#include "plugin/bridge/bridge.h"

#include "plugin/entry/base_part.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

TEST(NothingFromCocoa, IsNil) {
    Bridge bridge;
    EXPECT_EQ(told(bridge.value_of(nil)), "Nil");
    EXPECT_EQ(told(bridge.value_of([NSNull null])), "Nil");
}

struct NumbersFromCocoa : testing::Test {
    std::string told(NSNumber* number) { return ::told(bridge.value_of(number)); }

    Pool pool;
    Bridge bridge;
};

TEST_F(NumbersFromCocoa, HaveTheKindOfTheirType) {
    EXPECT_EQ(told([NSNumber numberWithUnsignedChar:200]), "Int32 200");
    EXPECT_EQ(told([NSNumber numberWithShort:-30000]), "Int32 -30000");
    EXPECT_EQ(told([NSNumber numberWithUnsignedShort:60000]), "Int32 60000");
    EXPECT_EQ(told([NSNumber numberWithInt:-2000000000]), "Int32 -2000000000");
    EXPECT_EQ(told([NSNumber numberWithUnsignedInt:4000000000U]), "UInt32 4000000000");
    EXPECT_EQ(told([NSNumber numberWithLong:-2000000000L]), "Int32 -2000000000");
    EXPECT_EQ(told([NSNumber numberWithUnsignedLong:4000000000UL]), "UInt32 4000000000");
    EXPECT_EQ(told([NSNumber numberWithLongLong:-5000000000LL]), "Int64 -5000000000");
    EXPECT_EQ(told([NSNumber numberWithUnsignedLongLong:7]), "UInt64 7");
    EXPECT_EQ(told([NSNumber numberWithFloat:0.5F]), "Single 0.5");
    EXPECT_EQ(told([NSNumber numberWithDouble:-0.25]), "Double -0.25");
}

/// As designed: they are read as an unsigned 32-bit number.
TEST_F(NumbersFromCocoa, ThatAreUnsignedWith64BitsLoseTheirHighPart) {
    EXPECT_EQ(told([NSNumber numberWithUnsignedLongLong:5000000000ULL]), "UInt64 705032704");
    EXPECT_EQ(told([NSNumber numberWithUnsignedLongLong:~0ULL]), "UInt64 4294967295");
}

/// As designed: a Boolean is such a number, and a char cannot be told from it.
TEST_F(NumbersFromCocoa, ThatAreCharsAreBooleans) {
    EXPECT_EQ(told([NSNumber numberWithBool:YES]), "Boolean True");
    EXPECT_EQ(told([NSNumber numberWithBool:NO]), "Boolean False");
    EXPECT_EQ(told([NSNumber numberWithChar:'x']), "Boolean True");
    EXPECT_EQ(told([NSNumber numberWithChar:0]), "Boolean False");
    EXPECT_EQ(::told(bridge.value_of((id)kCFBooleanTrue)), "Boolean True");
}

} // namespace

/// A number of a type of its own choice.
@interface StrangeNumber : NSNumber
@end
@implementation StrangeNumber
- (const char*)objCType {
    return "B";
}
- (double)doubleValue {
    return 2.5;
}
@end

namespace {

TEST_F(NumbersFromCocoa, OfOtherTypesAreDoubles) {
    NSNumber* const strange = [[StrangeNumber alloc] init];
    EXPECT_EQ(told(strange), "Double 2.5");
    [strange release];
}

TEST(NumbersFromCocoaWithoutTheService, AreNil) {
    Pool pool;
    Bridge bridge(
        {.without = {"BooleanToVariant", "Int32ToVariant", "UInt32ToVariant", "Int64ToVariant",
                     "UInt64ToVariant", "SingleToVariant", "DoubleToVariant", "StringToVariant"}});
    for (id number : {[NSNumber numberWithBool:YES], [NSNumber numberWithUnsignedChar:1],
                      [NSNumber numberWithShort:1], [NSNumber numberWithUnsignedShort:1],
                      [NSNumber numberWithInt:1], [NSNumber numberWithUnsignedInt:1],
                      [NSNumber numberWithLong:1], [NSNumber numberWithUnsignedLong:1],
                      [NSNumber numberWithLongLong:1], [NSNumber numberWithUnsignedLongLong:1],
                      [NSNumber numberWithFloat:1], [NSNumber numberWithDouble:1]})
        EXPECT_EQ(told(bridge.value_of(number)), "Nil") << [number objCType];
    EXPECT_EQ(told(bridge.value_of(@"text")), "Nil");
}

TEST(TextFromCocoa, IsText) {
    Bridge bridge;
    EXPECT_EQ(told(bridge.value_of(@"gr\u00FCn")), "String grün");
    EXPECT_EQ(told(bridge.value_of(@"")), "String ");
}

TEST(TextFromCocoa, MayBeAnAttributedStringWhichStaysOne) {
    Bridge bridge;
    NSAttributedString* const plain = [[NSAttributedString alloc] initWithString:@"text"];
    NSMutableAttributedString* const mutableText =
        [[NSMutableAttributedString alloc] initWithString:@"text"];
    EXPECT_EQ(Bridge::class_of(bridge.value_of(plain)), "NSAttributedStringZNT");
    EXPECT_EQ(Bridge::class_of(bridge.value_of(mutableText)), "NSAttributedStringZNT");
    bridge.add_wrapper_class("NSMutableAttributedStringZNT");
    EXPECT_EQ(Bridge::class_of(bridge.value_of(mutableText)), "NSMutableAttributedStringZNT")
        << "the most derived class that the host knows";
    EXPECT_EQ(Host::retainCount(mutableText), 1);
    [plain release];
    [mutableText release];
}

TEST(DataFromCocoa, IsAMemoryBlock) {
    Pool pool;
    Bridge bridge;
    const host::Value block = bridge.value_of([NSData dataWithBytes:"\1\0\2" length:3]);
    EXPECT_EQ(bridge.host.bytes(block.objectRef()), std::string("\1\0\2", 3));
    EXPECT_EQ(bridge.host.references(block.objectRef()), 2) << "this one and the test's own";
    EXPECT_EQ(told(bridge.value_of([NSData data])), "Nil");
}

struct CollectionsFromCocoa : testing::Test {
    /// What the array holds; "(none)" when it is no array.
    static std::vector<std::string> elements(Bridge& bridge, id collection) {
        std::vector<std::string> all;
        const host::Value array = bridge.value_of(collection);
        if (!array.object()) return {"(none)"};
        for (const host::Value& element : bridge.host.elements(array))
            all.push_back(told(element));
        return all;
    }

    Pool pool;
};

TEST_F(CollectionsFromCocoa, AreArraysOfVariantsInTheirOrder) {
    Bridge bridge;
    EXPECT_THAT(elements(bridge, [NSArray arrayWithObjects:@"eins", @"zwei", nil]),
                ElementsAre("String eins", "String zwei"));
    EXPECT_THAT(elements(bridge, [NSArray arrayWithObjects:[NSNumber numberWithInt:1],
                                                           [NSNull null], @"", nil]),
                ElementsAre("Int32 1", "Nil", "String "));
    EXPECT_THAT(elements(bridge, [NSArray array]), ElementsAre());
}

TEST_F(CollectionsFromCocoa, AreArraysWhenTheyAreSets) {
    Bridge bridge;
    EXPECT_THAT(elements(bridge, [NSSet setWithObjects:@"eins", @"zwei", nil]),
                testing::UnorderedElementsAre("String eins", "String zwei"));
    EXPECT_THAT(elements(bridge, [NSSet set]), ElementsAre());
}

TEST_F(CollectionsFromCocoa, HoldTheOnlyReferencesToTheirElements) {
    Bridge bridge;
    const host::Value array = bridge.value_of([NSArray arrayWithObject:[NSData dataWithBytes:"x"
                                                                                      length:1]]);
    const std::vector<host::Value> elements = bridge.host.elements(array);
    ASSERT_EQ(elements.size(), 1u);
    EXPECT_EQ(bridge.host.references(elements[0].objectRef()), 3)
        << "the array's, and the test's own two";
}

TEST_F(CollectionsFromCocoa, AreNilWhereTheHostMakesNoArrays) {
    Bridge bridge({.without = {"RuntimeArrayCreateSingleDimBoundedArray"}});
    EXPECT_THAT(elements(bridge, [NSArray arrayWithObject:@"x"]), ElementsAre("(none)"));
    EXPECT_THAT(elements(bridge, [NSSet setWithObject:@"x"]), ElementsAre("(none)"));
}

TEST_F(CollectionsFromCocoa, AreEmptyWhereTheHostInsertsNothing) {
    Bridge bridge({.without = {"RuntimeArrayDirectGetInsertProc"}});
    EXPECT_THAT(elements(bridge, [NSArray arrayWithObject:@"x"]), ElementsAre());
}

std::int32_t askedElementType, askedUpperBound;
REALarrayStruct* make_no_array(std::int32_t elementType, std::int32_t upperBound) {
    askedElementType = elementType;
    askedUpperBound = upperBound;
    return nullptr;
}

TEST_F(CollectionsFromCocoa, AreAskedForAsEmptyArraysOfObjects) {
    Bridge bridge;
    bridge.host.replace(REALservices::CreateArray, make_no_array);
    EXPECT_EQ(told(bridge.value_of([NSArray arrayWithObject:@"x"])), "Nil");
    EXPECT_EQ(askedElementType, 4);
    EXPECT_EQ(askedUpperBound, -1);
}

TEST_F(CollectionsFromCocoa, AreDictionariesWhenTheyAreDictionaries) {
    Bridge bridge;
    const host::Value dictionary =
        bridge.value_of([NSDictionary dictionaryWithObject:@"zwei"
                                                    forKey:[NSNumber numberWithInt:2]]);
    EXPECT_EQ(Bridge::class_of(dictionary), "Dictionary");
    EXPECT_EQ(bridge.host.call<std::string>(dictionary.objectRef(), "Lookup", 2, "missing"),
              "zwei");
}

struct WrappersFromCocoa : testing::Test {
    Pool pool;
};

TEST_F(WrappersFromCocoa, AreTheLiveOnes) {
    Bridge bridge;
    const host::ObjectRef image = bridge.host.create("NSImageZNT", 3.0, 2.0);
    const host::Value again = bridge.value_of(static_cast<id>(bridge.host.handle(image)));
    EXPECT_EQ(again.object(), image.get());
    EXPECT_EQ(bridge.host.references(image), 2);
}

TEST_F(WrappersFromCocoa, AreTheLiveOnesOfAnyObject) {
    Bridge bridge;
    NSString* const string = [[NSMutableString alloc] initWithString:@"text"];
    const host::ObjectRef stranger = bridge.host.create("Dictionary");
    CFMutableDictionaryRef const instances = [NSException GetInstancesDictionaryZNT];
    CFDictionarySetValue(instances, string, stranger.get());
    EXPECT_EQ(bridge.value_of(string).object(), stranger.get());
    CFDictionaryRemoveValue(instances, string);
    EXPECT_EQ(told(bridge.value_of(string)), "String text");
    [string release];
}

/// A Cocoa class and the host class whose instance each of its objects keeps.
struct Shared {
    const char* cocoaClass;
    const char* hostClass;
    friend void PrintTo(const Shared& shared, std::ostream* stream) { *stream << shared.hostClass; }
};

constexpr Shared sharedClasses[] = {
    {"NSCalendar", "NSCalendarZNT"},
    {"NSError", "NSErrorZNT"},
    {"NSRunningApplication", "NSRunningApplicationZNT"},
    {"NSFont", "NSFontZNT"},
    {"NSFileHandle", "NSFileHandleZNT"},
    {"NSCharacterSet", "NSCharacterSetZNT"},
    {"NSLocale", "NSLocaleZNT"},
    {"NSTimer", "NSTimerZNT"},
    {"NSTimeZone", "NSTimeZoneZNT"},
    {"NSParagraphStyle", "NSParagraphStyleZNT"},
};

/// The class of that name, made if Cocoa lacks it here.
Class class_named(const std::string& name, Class superclass = [NSObject class]) {
    if (Class const known = objc_getClass(name.c_str())) return known;
    Class const made = objc_allocateClassPair(superclass, name.c_str(), 0);
    objc_registerClassPair(made);
    return made;
}

/// An autoreleased object of a direct subclass, whose initialiser did not run.
id bare_object(Class cocoaClass) {
    static int number = 0;
    const std::string name = "Bare" + std::to_string(number++);
    Class const subclass = objc_allocateClassPair(cocoaClass, name.c_str(), 0);
    objc_registerClassPair(subclass);
    return [NSAllocateObject(subclass, 0, nullptr) autorelease];
}

class SharedWrappersFromCocoa : public testing::TestWithParam<Shared> {
    Pool pool;
};
INSTANTIATE_TEST_SUITE_P(Class, SharedWrappersFromCocoa, testing::ValuesIn(sharedClasses),
                         [](const auto& test) { return std::string(test.param.cocoaClass); });

TEST_P(SharedWrappersFromCocoa, AreMadeOnceAndRegistered) {
    Bridge bridge;
    if (!bridge.host.runtime().findClass(GetParam().hostClass))
        bridge.add_wrapper_class(GetParam().hostClass).destructor = [](REALobjectStruct* wrapper) {
            const id object = Bridge::first_word(wrapper);
            CFDictionaryRemoveValue([NSException GetInstancesDictionaryZNT], object);
            [object release];
        };
    const id object = bare_object(class_named(GetParam().cocoaClass));
    {
        const host::Value first = bridge.value_of(object);
        EXPECT_EQ(Bridge::class_of(first), GetParam().hostClass);
        EXPECT_EQ(Host::wrapper(object), first.object());
        EXPECT_EQ(bridge.value_of(object).object(), first.object());
    }
    EXPECT_EQ(Host::wrapper(object), nullptr);
}

TEST_P(SharedWrappersFromCocoa, AreNilWhereTheHostMakesNone) {
    Bridge bridge({.without = {"PluginNewInstance"}});
    EXPECT_EQ(told(bridge.value_of(bare_object(class_named(GetParam().cocoaClass)))), "Nil");
}

} // namespace

/// Of no class; keeps the names of the classes that it was asked about.
@interface AskedObject : NSObject
@end
static std::vector<std::string> askedClasses;
@implementation AskedObject
- (BOOL)isKindOfClass:(Class)asked {
    askedClasses.emplace_back(class_getName(asked));
    return NO;
}
@end

namespace {

TEST_F(WrappersFromCocoa, AreFoundByTestingForTheClassesInAFixedOrder) {
    Bridge bridge;
    for (const Shared& shared : sharedClasses)
        class_named(shared.cocoaClass);
    bridge.host.fail(REALservices::NewInstance, 100);
    EXPECT_EQ(told(bridge.value_of([[[AskedObject alloc] init] autorelease])), "Nil");
    EXPECT_THAT(askedClasses,
                ElementsAre("NSArray", "NSSet", "NSString", "NSData", "NSNumber", "NSDate",
                            "NSDictionary", "NSAttributedString", "NSCalendar", "NSError",
                            "NSRunningApplication", "NSFont", "NSFileHandle", "NSCharacterSet",
                            "NSLocale", "NSTimer", "NSTimeZone", "NSParagraphStyle", "NSURL",
                            "ZNTREALobjectWrapper", "NSValue"));
}

/// A URL of a file is the file, any other its text.
TEST_F(WrappersFromCocoa, OfURLsAreFolderItemsOrText) {
    Bridge bridge;
    const host::Value file = bridge.value_of([NSURL fileURLWithPath:@"/usr"]);
    EXPECT_EQ(bridge.host.path(file.objectRef()), "/usr");
    EXPECT_EQ(told(bridge.value_of([NSURL URLWithString:@"http://example.org/a?b"])),
              "String http://example.org/a?b");
}

TEST_F(WrappersFromCocoa, OfDressedHostObjectsAreTheseObjects) {
    Bridge bridge;
    const host::ObjectRef dictionary = bridge.host.create("Dictionary");
    id const dressed = [objc_getClass("ZNTREALobjectWrapper") wrap:dictionary.get()];
    EXPECT_EQ(bridge.value_of(dressed).object(), dictionary.get());
}

struct ValuesFromCocoa : testing::Test {
    Pool pool;
    Bridge bridge;
};

TEST_F(ValuesFromCocoa, AreGeometryObjects) {
    const host::ObjectRef rect =
        bridge.value_of([NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]).objectRef();
    EXPECT_EQ(Bridge::class_of(rect), "NSRectZNT");
    EXPECT_EQ(bridge.host.get<double>(rect, "x"), 1);
    EXPECT_EQ(bridge.host.get<double>(rect, "y"), 2);
    EXPECT_EQ(bridge.host.get<double>(rect, "width"), 3);
    EXPECT_EQ(bridge.host.get<double>(rect, "height"), 4);
    const host::ObjectRef size =
        bridge.value_of([NSValue valueWithSize:NSMakeSize(3, 4)]).objectRef();
    EXPECT_EQ(Bridge::class_of(size), "NSSizeZNT");
    EXPECT_EQ(bridge.host.get<double>(size, "width"), 3);
    EXPECT_EQ(bridge.host.get<double>(size, "height"), 4);
    const host::ObjectRef range =
        bridge.value_of([NSValue valueWithRange:NSMakeRange(4000000000U, 7)]).objectRef();
    EXPECT_EQ(Bridge::class_of(range), "NSRangeZNT");
    EXPECT_EQ(bridge.host.get<std::int64_t>(range, "location"), 4000000000);
    EXPECT_EQ(bridge.host.get<std::int64_t>(range, "length"), 7);
    const host::ObjectRef point =
        bridge.value_of([NSValue valueWithPoint:NSMakePoint(-1, 0.5)]).objectRef();
    EXPECT_EQ(Bridge::class_of(point), "NSPointZNT");
    EXPECT_EQ(bridge.host.get<double>(point, "x"), -1);
    EXPECT_EQ(bridge.host.get<double>(point, "y"), 0.5);
}

TEST_F(ValuesFromCocoa, AreTimes) {
    for (const char* className :
         {"QTKitTimeZNT", "QTKitTimeRangeZNT", "CMTimeZNT", "CMTimeRangeZNT", "CMTimeMappingZNT"}) {
        const Held held = bridge.object_of(bridge.host.instance(className));
        const host::Value back = bridge.value_of(held.get());
        EXPECT_EQ(Bridge::class_of(back), className);
        EXPECT_EQ(bridge.host.references(back.objectRef()), 2) << className;
    }
}

TEST_F(ValuesFromCocoa, OfOtherTypesAreWrapped) {
    EXPECT_EQ(Bridge::class_of(bridge.value_of([NSValue valueWithPointer:this])), "NSObjectZNT");
}

TEST(ValuesFromCocoaWithoutTheBasePart, AreNilWhenTheyAreTimes) {
    Pool pool;
    Bridge bridge({.withoutBase = true});
    bridge.add_wrapper_class("NSObjectZNT");
    const long long time[16] = {};
    for (const char* type : {"{?=qll}", "{?={?=qll}{?=qll}}", "{?=qiIq}", "{?={?=qiIq}{?=qiIq}}",
                             "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}"})
        EXPECT_EQ(told(bridge.value_of([NSValue valueWithBytes:time objCType:type])), "Nil")
            << type;
}

} // namespace

/// Claims a type, and answers its size by raising.
@interface RaisingValue : NSValue
@end
@implementation RaisingValue
- (const char*)objCType {
    return @encode(NSSize);
}
- (NSSize)sizeValue {
    [NSException raise:NSGenericException format:@"no size today"];
    return NSZeroSize;
}
@end

namespace {

TEST_F(ValuesFromCocoa, ThatRaiseAreNil) {
    EXPECT_EQ(told(bridge.value_of([[[RaisingValue alloc] init] autorelease])), "Nil");
    EXPECT_EQ(bridge.host.raised(), "");
}

struct OtherObjectsFromCocoa : testing::Test {
    Pool pool;
    id const object = bare_object([NSObject class]);
};

TEST_F(OtherObjectsFromCocoa, AreWrappedByTheMostDerivedClassThatTheHostKnows) {
    Bridge bridge({.withoutBase = true});
    EXPECT_EQ(told(bridge.value_of(object)), "Nil");
    bridge.add_wrapper_class("NSObjectZNT");
    EXPECT_EQ(Bridge::class_of(bridge.value_of(object)), "NSObjectZNT");
    bridge.add_wrapper_class(std::string(class_getName([object class])) + "ZNT");
    const host::Value wrapper = bridge.value_of(object);
    EXPECT_EQ(Bridge::class_of(wrapper), std::string(class_getName([object class])) + "ZNT");
    EXPECT_EQ(Bridge::first_word(wrapper.object()), object);
    EXPECT_EQ(Host::retainCount(object), 2);
}

TEST_F(OtherObjectsFromCocoa, AreWrappedAnewEachTime) {
    Bridge bridge;
    const host::Value first = bridge.value_of(object);
    EXPECT_EQ(Bridge::class_of(first), "NSObjectZNT");
    EXPECT_NE(bridge.value_of(object).object(), first.object());
    EXPECT_EQ(Host::wrapper(object), nullptr);
}

} // namespace
