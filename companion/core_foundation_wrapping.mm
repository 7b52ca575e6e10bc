#include "companion/core_foundation_wrapping.h"

#include <cstddef>

namespace base_part {
namespace {

static_assert(offsetof(CoreFoundationData, object) == 0);
static_assert(offsetof(CoreFoundationData, tag) == 2 * sizeof(REALword));

CoreFoundationData& dataOf(REALobjectStruct* wrapper) {
    return *static_cast<CoreFoundationData*>(REALfirstClassData(wrapper));
}

} // namespace

void tagWrapper(REALobjectStruct* wrapper) { dataOf(wrapper).tag = coreFoundationTag; }

REALobjectStruct* newCoreFoundationWrapper(CFTypeRef object, const char* className) {
    if (!object) return nullptr;
    HostObject wrapper = HostObject::adopt(newInstance(className));
    if (!wrapper || dataOf(wrapper.get()).tag != coreFoundationTag) return nullptr;
    dataOf(wrapper.get()).object = CFRetain(object);
    return wrapper.leak();
}

CFTypeRef wrappedOfType(REALobjectStruct* wrapper, CFTypeID type) {
    const CFTypeRef object = wrappedBy<const void>(wrapper);
    return object && CFGetTypeID(object) == type ? object : nullptr;
}

} // namespace base_part
