#include "plugin/bridge/string_array.h"

#include "plugin/bridge/strings.h"

void FillStringArray(REALarrayStruct* array, NSArray* list) {
    if (!array || !list) return;
    NSEnumerator* const elements = [list objectEnumerator];
    std::int32_t index = 0;
    while (id element = [elements nextObject]) {
        const HostString string = HostString::adopt(CFString2RBString((CFStringRef)element));
        REALInsertArrayValueString(array, index++, string.get());
    }
}
