#include "host/services/arguments.h"

#include "host/objects/runtime.h"

namespace host::arguments {

namespace {

bool refuse(int number, const std::string& why) {
    Runtime::current().reportMisuse("argument " + std::to_string(number) + ": " + why);
    return false;
}

} // namespace

bool isObject(int number, REALobjectStruct* object, std::string_view className) {
    Runtime& runtime = Runtime::current();
    const Registry::Entry entry = runtime.registry().find(object);
    const std::string described = runtime.registry().describe(object);
    const std::string wanted(className.empty() ? "an object" : className);
    if (entry.kind != Registry::Kind::Object) {
        return refuse(number, described + " where " + wanted + " is expected");
    }
    if (!entry.alive) return refuse(number, described);
    const Class* const type = className.empty()      ? entry.type
                              : className == "Array" ? &runtime.arrayClass()
                                                     : runtime.findClass(className);
    if (!type || !entry.type->descendsFrom(*type))
        return refuse(number, described + " where " + wanted + " is expected");
    return true;
}

bool isString(int number, REALstringStruct* string) {
    const Registry& registry = Runtime::current().registry();
    const Registry::Entry entry = registry.find(string);
    if (entry.kind != Registry::Kind::String)
        return refuse(number, registry.describe(string) + " where a String is expected");
    if (!entry.alive) return refuse(number, registry.describe(string));
    return true;
}

bool isText(int number, REALstringStruct* string) { return !string || isString(number, string); }

bool isGiven(int number, const void* pointer) {
    return pointer || refuse(number, "null where memory is expected");
}

} // namespace host::arguments
