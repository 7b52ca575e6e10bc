#include "plugin/bridge/bridge.h"

/// A Core Foundation object of any type.
@interface TypedObject : NSObject {
@public
    CFTypeID type;
}
- (CFTypeID)_cfTypeID;
@end
@implementation TypedObject
- (CFTypeID)_cfTypeID {
    return type;
}
@end

namespace {

struct TypeRow {
    CFTypeID (*typeID)();
    const char* hostClass;
    friend void PrintTo(const TypeRow& row, std::ostream* stream) { *stream << row.hostClass; }
};

const TypeRow typeRows[] = {
    {CFURLGetTypeID, "CFURLZNT"},
    {CFDictionaryGetTypeID, "CFDictionaryZNT"},
    {CFStringGetTypeID, "CFStringZNT"},
    {CFNumberGetTypeID, "CFNumberZNT"},
    {CFArrayGetTypeID, "CFArrayZNT"},
    {CFBooleanGetTypeID, "CFBooleanZNT"},
    {CFDataGetTypeID, "CFBinaryDataZNT"},
    {CFCharacterSetGetTypeID, "CFCharacterSetZNT"},
    {CFBundleGetTypeID, "CFBundleZNT"},
    {CFSetGetTypeID, "CFSetZNT"},
    {CFBagGetTypeID, "CFBagZNT"},
    {CFUUIDGetTypeID, "CFUUIDZNT"},
    {CFTimeZoneGetTypeID, "CFTimeZoneZNT"},
    {CFDateGetTypeID, "CFDateZNT"},
    {CFAttributedStringGetTypeID, "CFAttributedStringZNT"},
    {CFErrorGetTypeID, "CFErrorZNT"},
    {CGPSConverterGetTypeID, "CGPSConverterZNT"},
    {CGContextGetTypeID, "CGContextZNT"},
    {CGColorSpaceGetTypeID, "CGColorSpaceZNT"},
    {CGColorGetTypeID, "CGColorZNT"},
    {CGLayerGetTypeID, "CGLayerZNT"},
    {CGFontGetTypeID, "CGFontZNT"},
    {CGDataConsumerGetTypeID, "CGDataConsumerZNT"},
    {CGDataProviderGetTypeID, "CGDataProviderZNT"},
    {CTFontGetTypeID, "CTFontZNT"},
    {CTFontCollectionGetTypeID, "CTFontCollectionZNT"},
    {CTFrameGetTypeID, "CTFrameZNT"},
    {CTFramesetterGetTypeID, "CTFramesetterZNT"},
    {CTGlyphInfoGetTypeID, "CTGlyphInfoZNT"},
    {CTLineGetTypeID, "CTLineZNT"},
    {CTParagraphStyleGetTypeID, "CTParagraphStyleZNT"},
    {CTRunGetTypeID, "CTRunZNT"},
    {CTRunDelegateGetTypeID, "CTRunDelegateZNT"},
    {CTTypesetterGetTypeID, "CTTypesetterZNT"},
    // Types without a host class of their own
    {CFNullGetTypeID, "CFObjectZNT"},
};

TypedObject* typed(CFTypeID type) {
    TypedObject* const object = [[[TypedObject alloc] init] autorelease];
    object->type = type;
    return object;
}

constexpr std::uint32_t coreFoundationTag = 0x52424346;

/// The tag in the third word of a host object of such a class.
std::uint32_t& tag_of(REALobjectStruct* wrapper) {
    return *reinterpret_cast<std::uint32_t*>(static_cast<REALword*>(REALfirstClassData(wrapper)) +
                                             2);
}

class CoreFoundationRows : public testing::TestWithParam<TypeRow> {
protected:
    void add_class(const char* name, std::uint32_t tag = coreFoundationTag) {
        bridge.add_wrapper_class(name, 3).constructor = [tag](REALobjectStruct* wrapper) {
            tag_of(wrapper) = tag;
        };
    }

    Pool pool;
    Bridge bridge{{.withoutBase = true}};
};
INSTANTIATE_TEST_SUITE_P(Class, CoreFoundationRows, testing::ValuesIn(typeRows),
                         [](const auto& test) { return std::string(test.param.hostClass); });

TEST_P(CoreFoundationRows, GiveTheirClassHoldingOneRetain) {
    add_class(GetParam().hostClass);
    if (GetParam().hostClass != std::string("CFObjectZNT")) add_class("CFObjectZNT");
    TypedObject* const object = typed(GetParam().typeID());
    const host::Value wrapper = bridge.value_of(object);
    ASSERT_EQ(Bridge::class_of(wrapper), GetParam().hostClass);
    EXPECT_EQ(Bridge::first_word(wrapper.object()), object);
    EXPECT_EQ(Host::retainCount(object), 2);
}

TEST_P(CoreFoundationRows, GiveTheGeneralClassWhereTheHostLacksTheirs) {
    add_class("CFObjectZNT");
    EXPECT_EQ(Bridge::class_of(bridge.value_of(typed(GetParam().typeID()))), "CFObjectZNT");
}

TEST_P(CoreFoundationRows, GiveNilWhereTheHostHasNeitherClass) {
    bridge.add_wrapper_class("NSObjectZNT");
    EXPECT_EQ(told(bridge.value_of(typed(GetParam().typeID()))), "Nil");
}

TEST_P(CoreFoundationRows, GiveNilWhereTheTagIsAbsent) {
    add_class(GetParam().hostClass, 0);
    TypedObject* const object = typed(GetParam().typeID());
    EXPECT_EQ(told(bridge.value_of(object)), "Nil");
    EXPECT_EQ(Host::retainCount(object), 1);
}

struct ImagesFromCocoa : testing::Test {
    ~ImagesFromCocoa() override {
        CGImageRelease(image);
        CGContextRelease(context);
        CGColorSpaceRelease(space);
    }

    Pool pool;
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context =
        CGBitmapContextCreate(nullptr, 2, 1, 8, 8, space, kCGImageAlphaPremultipliedLast);
    CGImageRef const image = CGBitmapContextCreateImage(context);
};

TEST_F(ImagesFromCocoa, HoldOneMoreRetain) {
    Bridge bridge;
    {
        const host::Value wrapper = bridge.value_of((id)image);
        EXPECT_EQ(Bridge::class_of(wrapper), "CGImageZNT");
        EXPECT_EQ(Bridge::first_word(wrapper.object()), (id)image);
        EXPECT_EQ(Host::retainCount(image), 2);
    }
    EXPECT_EQ(Host::retainCount(image), 1);
}

TEST_F(ImagesFromCocoa, AreNotCheckedForTheTag) {
    Bridge bridge({.withoutBase = true});
    bridge.add_wrapper_class("CGImageZNT");
    EXPECT_EQ(Bridge::class_of(bridge.value_of((id)image)), "CGImageZNT");
}

TEST_F(ImagesFromCocoa, HaveNoOtherClass) {
    Bridge bridge({.withoutBase = true});
    bridge.add_wrapper_class("CFObjectZNT", 3);
    EXPECT_EQ(told(bridge.value_of((id)image)), "Nil");
}

TEST(ObjectsOfTypeZeroFromCocoa, AreWrappedAsOtherObjectsAre) {
    Pool pool;
    Bridge bridge({.withoutBase = true});
    bridge.add_wrapper_class("CFObjectZNT", 3);
    bridge.add_wrapper_class("NSObjectZNT");
    EXPECT_EQ(Bridge::class_of(bridge.value_of(typed(0))), "NSObjectZNT");
}

} // namespace
