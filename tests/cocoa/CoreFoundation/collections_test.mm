#include "support.h"

#include <set>
#include <vector>

namespace {

class Dictionaries : public InPool {};
class Arrays : public InPool {};
class Datas : public InPool {};
using Dictionary = cocoa::Retained<CFDictionaryRef>;
using MutableDictionary = cocoa::Retained<CFMutableDictionaryRef>;
using Array = cocoa::Retained<CFArrayRef>;
using MutableArray = cocoa::Retained<CFMutableArrayRef>;
using Data = cocoa::Retained<CFDataRef>;
using MutableData = cocoa::Retained<CFMutableDataRef>;

MutableDictionary pointerDictionary() {
    return MutableDictionary::adopt(CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr));
}

MutableDictionary objectDictionary() {
    return MutableDictionary::adopt(CFDictionaryCreateMutable(
        nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

const void* pointer(std::uintptr_t value) { return reinterpret_cast<const void*>(value); }

TEST_F(Dictionaries, WithoutCallbacksKeepPlainPointers) {
    const MutableDictionary instances = pointerDictionary();
    CFDictionarySetValue(instances.get(), pointer(1), pointer(2));
    EXPECT_EQ(CFDictionaryGetValue(instances.get(), pointer(1)), pointer(2));
    EXPECT_EQ(CFDictionaryGetCount(instances.get()), 1);
    CFDictionarySetValue(instances.get(), pointer(1), pointer(3));
    EXPECT_EQ(CFDictionaryGetValue(instances.get(), pointer(1)), pointer(3));
    EXPECT_EQ(CFDictionaryGetCount(instances.get()), 1);
    CFDictionaryRemoveValue(instances.get(), pointer(1));
    CFDictionaryRemoveValue(instances.get(), pointer(1));
    EXPECT_EQ(CFDictionaryGetValue(instances.get(), pointer(1)), nullptr);
    EXPECT_EQ(CFDictionaryGetCount(instances.get()), 0);
}

TEST_F(Dictionaries, WithoutCallbacksTellEqualObjectsApart) {
    const MutableDictionary instances = pointerDictionary();
    const String first = string("same text, not constant");
    const String second = string("same text, not constant");
    ASSERT_NE(first.get(), second.get());
    CFDictionarySetValue(instances.get(), first.get(), pointer(1));
    EXPECT_FALSE(CFDictionaryContainsKey(instances.get(), second.get()));
    CFDictionarySetValue(instances.get(), second.get(), pointer(2));
    EXPECT_EQ(CFDictionaryGetCount(instances.get()), 2);
    EXPECT_EQ(CFDictionaryGetValue(instances.get(), first.get()), pointer(1));
}

TEST_F(Dictionaries, WithoutCallbacksRetainNothing) {
    const String key = string("a key of some length");
    const String value = string("a value of some length");
    {
        const MutableDictionary instances = pointerDictionary();
        CFDictionarySetValue(instances.get(), key.get(), value.get());
        EXPECT_EQ(CFGetRetainCount(key.get()), 1);
        EXPECT_EQ(CFGetRetainCount(value.get()), 1);
    }
    EXPECT_EQ(CFGetRetainCount(key.get()), 1);
}

TEST_F(Dictionaries, WithoutCallbacksAreStillObjects) {
    const MutableDictionary instances = pointerDictionary();
    NSMutableDictionary* const object = (NSMutableDictionary*)instances.get();
    EXPECT_TRUE([object isKindOfClass:[NSMutableDictionary class]]);
    CFRetain(instances.get());
    EXPECT_EQ(CFGetRetainCount(instances.get()), 2);
    CFRelease(instances.get());
    EXPECT_EQ(CFGetTypeID(instances.get()), CFDictionaryGetTypeID());
    CFDictionarySetValue(instances.get(), pointer(0x10), pointer(0x20));
    EXPECT_EQ([object count], 1U);
    EXPECT_EQ([object objectForKey:(id)pointer(0x10)], (id)pointer(0x20));
    EXPECT_NE(std::string([[object description] UTF8String]).find("0x10"), std::string::npos);
    EXPECT_TRUE([object isEqual:object]);
    EXPECT_FALSE([object isEqual:[NSDictionary dictionary]]);
    EXPECT_FALSE([object isEqual:[NSDictionary dictionaryWithObject:@"b" forKey:@"a"]]);
}

TEST_F(Dictionaries, SayWhetherAValueIsPresent) {
    const MutableDictionary instances = pointerDictionary();
    CFDictionarySetValue(instances.get(), pointer(1), nullptr);
    const void* value = pointer(9);
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(instances.get(), pointer(1), &value));
    EXPECT_EQ(value, nullptr);
    value = pointer(9);
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(instances.get(), pointer(2), &value));
    EXPECT_EQ(value, pointer(9));
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(instances.get(), pointer(1), nullptr));
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(nullptr, pointer(1), &value));
}

TEST_F(Dictionaries, RetainObjectsAndCompareThemByValue) {
    const String key = string("a key of some length");
    const String value = string("a value of some length");
    {
        const MutableDictionary made = objectDictionary();
        CFDictionarySetValue(made.get(), key.get(), value.get());
        EXPECT_EQ(CFGetRetainCount(key.get()), 2);
        EXPECT_EQ(CFGetRetainCount(value.get()), 2);
        EXPECT_EQ(CFDictionaryGetValue(made.get(), string("a key of some length").get()),
                  value.get());
        CFDictionarySetValue(made.get(), key.get(), value.get());
        EXPECT_EQ(CFGetRetainCount(key.get()), 2);
        EXPECT_EQ(CFGetRetainCount(value.get()), 2);
        CFDictionaryRemoveValue(made.get(), key.get());
        EXPECT_EQ(CFGetRetainCount(key.get()), 1);
        EXPECT_EQ(CFGetRetainCount(value.get()), 1);
        CFDictionarySetValue(made.get(), key.get(), value.get());
    }
    EXPECT_EQ(CFGetRetainCount(key.get()), 1);
    EXPECT_EQ(CFGetRetainCount(value.get()), 1);
}

TEST_F(Dictionaries, AddAndReplaceOnlyWhereTheyShould) {
    const MutableDictionary made = objectDictionary();
    CFDictionaryReplaceValue(made.get(), CFSTR("k"), CFSTR("1"));
    EXPECT_EQ(CFDictionaryGetCount(made.get()), 0);
    CFDictionaryAddValue(made.get(), CFSTR("k"), CFSTR("1"));
    CFDictionaryAddValue(made.get(), CFSTR("k"), CFSTR("2"));
    EXPECT_TRUE(CFEqual(CFDictionaryGetValue(made.get(), CFSTR("k")), CFSTR("1")));
    CFDictionaryReplaceValue(made.get(), CFSTR("k"), CFSTR("3"));
    EXPECT_TRUE(CFEqual(CFDictionaryGetValue(made.get(), CFSTR("k")), CFSTR("3")));
    EXPECT_TRUE(CFDictionaryContainsValue(made.get(), string("3").get()));
    EXPECT_FALSE(CFDictionaryContainsValue(made.get(), CFSTR("1")));
    CFDictionaryRemoveAllValues(made.get());
    EXPECT_EQ(CFDictionaryGetCount(made.get()), 0);
}

TEST_F(Dictionaries, AreMadeOfArrays) {
    const void* keys[] = {CFSTR("a"), CFSTR("b"), CFSTR("a")};
    const void* values[] = {CFSTR("1"), CFSTR("2"), CFSTR("3")};
    const Dictionary made = Dictionary::adopt(CFDictionaryCreate(nullptr, keys, values, 3,
                                                                 &kCFTypeDictionaryKeyCallBacks,
                                                                 &kCFTypeDictionaryValueCallBacks));
    EXPECT_EQ(CFDictionaryGetCount(made.get()), 2);
    EXPECT_TRUE(CFEqual(CFDictionaryGetValue(made.get(), CFSTR("a")), CFSTR("1")));
    NSDictionary* const expected =
        [NSDictionary dictionaryWithObjectsAndKeys:@"1", @"a", @"2", @"b", nil];
    EXPECT_TRUE([(NSDictionary*)made.get() isEqual:expected]);
    EXPECT_TRUE([expected isEqual:(NSDictionary*)made.get()]);
    EXPECT_EQ(raisedBy([&] {
                  CFDictionarySetValue((CFMutableDictionaryRef)made.get(), CFSTR("c"), CFSTR("3"));
              }),
              "NSInternalInconsistencyException");
    EXPECT_EQ(CFDictionaryCreate(nullptr, nullptr, nullptr, 1, nullptr, nullptr), nullptr);
    EXPECT_EQ(CFDictionaryCreate(nullptr, keys, values, -1, nullptr, nullptr), nullptr);
}

TEST_F(Dictionaries, AreWalked) {
    const MutableDictionary made = objectDictionary();
    CFDictionarySetValue(made.get(), CFSTR("a"), CFSTR("1"));
    CFDictionarySetValue(made.get(), CFSTR("b"), CFSTR("2"));
    const void* keys[2];
    const void* values[2];
    CFDictionaryGetKeysAndValues(made.get(), keys, values);
    const std::set<std::string> pairs{text((CFStringRef)keys[0]) + text((CFStringRef)values[0]),
                                      text((CFStringRef)keys[1]) + text((CFStringRef)values[1])};
    EXPECT_EQ(pairs, (std::set<std::string>{"a1", "b2"}));

    std::set<std::string> applied;
    CFDictionaryApplyFunction(
        made.get(),
        [](const void* key, const void*, void* context) {
            static_cast<std::set<std::string>*>(context)->insert(text((CFStringRef)key));
        },
        &applied);
    EXPECT_EQ(applied, (std::set<std::string>{"a", "b"}));

    NSDictionary* const object = (NSDictionary*)made.get();
    EXPECT_EQ([[object allKeys] count], 2U);
    EXPECT_TRUE([[object allValues] containsObject:@"2"]);
    int walked = 0;
    for (NSString* const key in object) {
        EXPECT_EQ([key length], 1U);
        ++walked;
    }
    EXPECT_EQ(walked, 2);
    EXPECT_TRUE([[[object objectEnumerator] allObjects] containsObject:@"1"]);
}

TEST_F(Dictionaries, CopyKeysThatMessagesSet) {
    const MutableDictionary made = objectDictionary();
    NSMutableString* const key = [NSMutableString stringWithString:@"key"];
    [(NSMutableDictionary*)made.get() setObject:@"value" forKey:key];
    [key appendString:@"!"];
    EXPECT_TRUE([[(NSDictionary*)made.get() objectForKey:@"key"] isEqual:@"value"]);
    EXPECT_EQ(raisedBy([&] { [(NSMutableDictionary*)made.get() setObject:nil forKey:@"k"]; }),
              "NSInvalidArgumentException");
}

TEST_F(Dictionaries, AreCopied) {
    const MutableDictionary original = objectDictionary();
    CFDictionarySetValue(original.get(), CFSTR("a"), CFSTR("1"));
    const Dictionary copy = Dictionary::adopt(CFDictionaryCreateCopy(nullptr, original.get()));
    const MutableDictionary mutableCopy =
        MutableDictionary::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, original.get()));
    EXPECT_TRUE(CFEqual(copy.get(), original.get()));
    CFDictionaryRemoveAllValues(original.get());
    EXPECT_EQ(CFDictionaryGetCount(copy.get()), 1);
    CFDictionarySetValue(mutableCopy.get(), CFSTR("b"), CFSTR("2"));
    EXPECT_EQ(CFDictionaryGetCount(mutableCopy.get()), 2);
    EXPECT_EQ(CFGetRetainCount(copy.get()), 1);
}

TEST_F(Dictionaries, OfFoundationAreReadAndChangedToo) {
    NSMutableDictionary* const foundation = [NSMutableDictionary dictionary];
    const auto bridged = (CFMutableDictionaryRef)foundation;
    CFDictionarySetValue(bridged, CFSTR("a"), CFSTR("1"));
    EXPECT_TRUE([[foundation objectForKey:@"a"] isEqual:@"1"]);
    EXPECT_TRUE(CFDictionaryContainsKey(bridged, CFSTR("a")));
    EXPECT_TRUE(CFDictionaryContainsValue(bridged, CFSTR("1")));
    CFDictionaryRemoveValue(bridged, CFSTR("a"));
    EXPECT_EQ(CFDictionaryGetCount(bridged), 0);
}

TEST_F(Dictionaries, ArePropertyLists) {
    const MutableDictionary made = objectDictionary();
    CFDictionarySetValue(made.get(), CFSTR("a"), CFSTR("1"));
    NSData* const data =
        [NSPropertyListSerialization dataWithPropertyList:(id)made.get()
                                                   format:NSPropertyListXMLFormat_v1_0
                                                  options:0
                                                    error:nullptr];
    id const back = [NSPropertyListSerialization propertyListWithData:data
                                                              options:0
                                                               format:nullptr
                                                                error:nullptr];
    EXPECT_TRUE([back isEqual:(id)made.get()]);
    EXPECT_TRUE([(id)made.get() isEqual:back]);
}

TEST_F(Dictionaries, CopyStringKeysWhenToldTo) {
    const MutableDictionary made = MutableDictionary::adopt(CFDictionaryCreateMutable(
        nullptr, 0, &kCFCopyStringDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    const MutableString key =
        MutableString::adopt(CFStringCreateMutableCopy(nullptr, 0, CFSTR("key")));
    CFDictionarySetValue(made.get(), key.get(), CFSTR("1"));
    CFStringAppend(key.get(), CFSTR("!"));
    EXPECT_TRUE(CFDictionaryContainsKey(made.get(), CFSTR("key")));
    EXPECT_EQ(CFGetRetainCount(key.get()), 1);
}

TEST_F(Arrays, WithCallbacksRetainAndCompareObjects) {
    const String value = string("a value of some length");
    {
        const MutableArray made =
            MutableArray::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        CFArrayAppendValue(made.get(), value.get());
        CFArrayAppendValue(made.get(), CFSTR("b"));
        EXPECT_EQ(CFGetRetainCount(value.get()), 2);
        EXPECT_EQ(CFArrayGetFirstIndexOfValue(made.get(), CFRangeMake(0, 2), string("b").get()), 1);
        EXPECT_EQ(CFArrayGetFirstIndexOfValue(made.get(), CFRangeMake(0, 1), CFSTR("b")),
                  kCFNotFound);
        EXPECT_TRUE([(NSArray*)made.get() containsObject:@"b"]);
        CFArraySetValueAtIndex(made.get(), 0, CFSTR("a"));
        EXPECT_EQ(CFGetRetainCount(value.get()), 1);
        CFArraySetValueAtIndex(made.get(), 2, CFSTR("c"));
        CFArrayInsertValueAtIndex(made.get(), 1, value.get());
        const auto expected = cocoa::Retained<NSArray*>::adopt(
            [[NSArray alloc] initWithObjects:@"a", (NSString*)value.get(), @"b", @"c", nil]);
        EXPECT_TRUE([(NSArray*)made.get() isEqual:expected.get()]);
        EXPECT_TRUE([expected.get() isEqual:(NSArray*)made.get()]);
        CFArrayRemoveValueAtIndex(made.get(), 0);
        EXPECT_EQ(CFArrayGetCount(made.get()), 3);
    }
    EXPECT_EQ(CFGetRetainCount(value.get()), 1);
}

TEST_F(Arrays, WithoutCallbacksKeepPlainPointers) {
    const void* values[] = {pointer(1), pointer(2)};
    const Array made = Array::adopt(CFArrayCreate(nullptr, values, 2, nullptr));
    EXPECT_EQ(CFArrayGetValueAtIndex(made.get(), 1), pointer(2));
    EXPECT_TRUE(CFArrayContainsValue(made.get(), CFRangeMake(0, 2), pointer(1)));
    EXPECT_FALSE(CFArrayContainsValue(made.get(), CFRangeMake(1, 1), pointer(1)));
    const Array copy = Array::adopt(CFArrayCreateCopy(nullptr, made.get()));
    EXPECT_TRUE(CFEqual(copy.get(), made.get()));
    const void* back[1];
    CFArrayGetValues(made.get(), CFRangeMake(1, 1), back);
    EXPECT_EQ(back[0], pointer(2));
}

TEST_F(Arrays, RaiseOutsideOfThemselves) {
    const MutableArray made =
        MutableArray::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    EXPECT_EQ(raisedBy([&] { CFArrayGetValueAtIndex(made.get(), 0); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFArrayGetValueAtIndex(made.get(), -1); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFArrayInsertValueAtIndex(made.get(), 1, CFSTR("x")); }),
              "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFArrayRemoveValueAtIndex(made.get(), 0); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { [(NSMutableArray*)made.get() removeLastObject]; }),
              "NSRangeException");
    EXPECT_EQ(raisedBy([&] { [(NSMutableArray*)made.get() addObject:nil]; }),
              "NSInvalidArgumentException");
}

TEST_F(Arrays, MadeOfValuesCannotBeChanged) {
    const void* values[] = {CFSTR("a")};
    const Array made = Array::adopt(CFArrayCreate(nullptr, values, 1, &kCFTypeArrayCallBacks));
    EXPECT_EQ(raisedBy([&] { CFArrayAppendValue((CFMutableArrayRef)made.get(), CFSTR("b")); }),
              "NSInternalInconsistencyException");
    const MutableArray copy = MutableArray::adopt(CFArrayCreateMutableCopy(nullptr, 0, made.get()));
    CFArrayAppendValue(copy.get(), CFSTR("b"));
    EXPECT_EQ(CFArrayGetCount(copy.get()), 2);
    CFArrayRemoveAllValues(copy.get());
    EXPECT_EQ(CFArrayGetCount(copy.get()), 0);
    EXPECT_EQ(CFArrayCreate(nullptr, nullptr, 1, nullptr), nullptr);
}

TEST_F(Arrays, AreWalked) {
    const void* values[] = {CFSTR("a"), CFSTR("b")};
    const Array made = Array::adopt(CFArrayCreate(nullptr, values, 2, &kCFTypeArrayCallBacks));
    std::string walked;
    for (NSString* const element in (NSArray*)made.get())
        walked += [element UTF8String];
    CFArrayApplyFunction(
        made.get(), CFRangeMake(1, 1),
        [](const void* value, void* context) {
            *static_cast<std::string*>(context) += text((CFStringRef)value);
        },
        &walked);
    EXPECT_EQ(walked, "abb");
    EXPECT_EQ(CFArrayGetCount((CFArrayRef)[NSArray arrayWithObject:@"x"]), 1);
}

TEST_F(Datas, AreFoundationsData) {
    const UInt8 bytes[] = {1, 2, 3};
    const Data made = Data::adopt(CFDataCreate(nullptr, bytes, 3));
    EXPECT_EQ([(NSData*)made.get() length], 3U);
    EXPECT_EQ(CFDataGetBytePtr(made.get())[2], 3);
    EXPECT_NE(CFDataGetBytePtr(made.get()), bytes);
    EXPECT_EQ(CFGetTypeID(made.get()), CFDataGetTypeID());
    EXPECT_TRUE(CFEqual(made.get(), [NSData dataWithBytes:bytes length:3]));
    UInt8 back[2];
    CFDataGetBytes(made.get(), CFRangeMake(1, 2), back);
    EXPECT_EQ(back[0], 2);
    EXPECT_EQ(raisedBy([&] { CFDataGetBytes(made.get(), CFRangeMake(2, 2), back); }),
              "NSRangeException");
    EXPECT_EQ(CFDataCreate(nullptr, nullptr, 1), nullptr);
    EXPECT_EQ(CFDataCreate(nullptr, bytes, -1), nullptr);
    EXPECT_EQ(CFDataGetLength(Data::adopt(CFDataCreate(nullptr, nullptr, 0)).get()), 0);
}

TEST_F(Datas, KeepTheCallersBufferWhenAsked) {
    const UInt8 bytes[] = {1, 2, 3};
    const Data borrowed =
        Data::adopt(CFDataCreateWithBytesNoCopy(nullptr, bytes, 3, kCFAllocatorNull));
    EXPECT_EQ(CFDataGetBytePtr(borrowed.get()), bytes);
    auto* const buffer = static_cast<UInt8*>(std::malloc(4));
    const Data owned =
        Data::adopt(CFDataCreateWithBytesNoCopy(nullptr, buffer, 4, kCFAllocatorMalloc));
    EXPECT_EQ(CFDataGetBytePtr(owned.get()), buffer);
}

TEST_F(Datas, AreChanged) {
    const MutableData made = MutableData::adopt(CFDataCreateMutable(nullptr, 0));
    const UInt8 bytes[] = {1, 2, 3};
    CFDataAppendBytes(made.get(), bytes, 3);
    CFDataIncreaseLength(made.get(), 2);
    EXPECT_EQ(CFDataGetLength(made.get()), 5);
    EXPECT_EQ(CFDataGetBytePtr(made.get())[4], 0);
    CFDataDeleteBytes(made.get(), CFRangeMake(0, 1));
    CFDataReplaceBytes(made.get(), CFRangeMake(0, 1), bytes, 2);
    const UInt8 expected[] = {1, 2, 3, 0, 0};
    EXPECT_TRUE(CFEqual(made.get(), [NSData dataWithBytes:expected length:5]));
    CFDataGetMutableBytePtr(made.get())[0] = 9;
    EXPECT_EQ(CFDataGetBytePtr(made.get())[0], 9);
    const Data copy = Data::adopt(CFDataCreateCopy(nullptr, made.get()));
    CFDataSetLength(made.get(), 1);
    EXPECT_EQ(CFDataGetLength(copy.get()), 5);
    EXPECT_EQ(raisedBy([&] { CFDataSetLength(made.get(), -1); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFDataDeleteBytes(made.get(), CFRangeMake(0, 2)); }),
              "NSRangeException");
}

} // namespace
