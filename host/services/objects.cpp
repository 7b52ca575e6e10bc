#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

namespace host::exports {

namespace {

Runtime& runtime() { return Runtime::current(); }

} // namespace

void lockObject(REALobjectStruct* object) {
    if (object && arguments::isObject(1, object)) runtime().registry().retain(object);
}

void unlockObject(REALobjectStruct* object) {
    if (object && arguments::isObject(1, object)) runtime().registry().release(object);
}

REALobjectStruct* newInstance(const char* className) {
    return className ? runtime().newInstance(className).release() : nullptr;
}

REALclassRef getClassRef(const char* className) {
    return className ? reinterpret_cast<REALclassRef>(runtime().findClass(className)) : nullptr;
}

std::uint8_t objectIsA(REALobjectStruct* object, REALclassRef classRef) {
    if (!object || !arguments::isObject(1, object)) return 0;
    for (const auto& type : runtime().classes())
        if (reinterpret_cast<REALclassRef>(type.get()) == classRef) return isA(object, type.get());
    if (classRef) runtime().reportMisuse("argument 2: no class of this host");
    return 0;
}

void raiseException(REALobjectStruct* exception) {
    if (!arguments::isObject(1, exception, "RuntimeException")) return;
    runtime().setPending(ObjectRef::retain(exception));
}

} // namespace host::exports
