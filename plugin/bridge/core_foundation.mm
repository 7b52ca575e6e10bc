#include "plugin/bridge/core_foundation.h"

#include "plugin/entry/references.h"

namespace {

/// "FCBR" in memory order: what the constructors of the family's Core Foundation classes set.
constexpr std::uint32_t coreFoundationTag = 0x52424346;

constexpr const char* generalClass = "CFObjectZNT";

/// The start of the class data of a host object that wraps a Core Foundation object.
struct WrapperData {
    CFTypeRef object; ///< retained
    REALword hostWord;
    std::uint32_t tag;
};

/// A type and the host class that wraps its objects.
struct WrappedType {
    CFTypeID (*typeID)();
    const char* hostClass;
};

/// Tested in this order. A system without a framework lacks the functions of its types.
constexpr WrappedType wrappedTypes[] = {
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
    {CGImageGetTypeID, "CGImageZNT"},
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
    // Asked for again by design; this row never decides.
    {CTTypesetterGetTypeID, "CTTypesetterZNT"},
};

const char* host_class_of(CFTypeID type) {
    for (const WrappedType& wrapped : wrappedTypes)
        if (wrapped.typeID && wrapped.typeID() == type) return wrapped.hostClass;
    return generalClass;
}

REALobjectStruct* new_image_wrapper(CGImageRef image) {
    REALobjectStruct* const wrapper = REALnewInstance("CGImageZNT");
    if (wrapper) *static_cast<CGImageRef*>(REALfirstClassData(wrapper)) = CGImageRetain(image);
    return wrapper;
}

} // namespace

REALobjectStruct* NewCFObjectZNT(CFTypeRef object) {
    const CFTypeID type = CFGetTypeID(object);
    if (type == CGImageGetTypeID()) return new_image_wrapper((CGImageRef)object);
    HostObject wrapper = HostObject::adopt(REALnewInstance(host_class_of(type)));
    if (!wrapper) wrapper = HostObject::adopt(REALnewInstance(generalClass));
    if (!wrapper) return nullptr;
    auto* const data = static_cast<WrapperData*>(REALfirstClassData(wrapper.get()));
    if (data->tag != coreFoundationTag) return nullptr;
    data->object = CFRetain(object);
    return wrapper.leak();
}
