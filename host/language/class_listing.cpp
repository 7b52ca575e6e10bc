#include "host/language/class_listing.h"

#include <initializer_list>
#include <string_view>

namespace host::language {
namespace {

std::string notes(std::initializer_list<std::string_view> notes) {
    std::string text;
    for (const std::string_view note : notes) {
        if (note.empty()) continue;
        text += text.empty() ? "  [" : ", ";
        text += note;
    }
    return text.empty() ? text : text + "]";
}

std::string_view consoleNote(REALword flags) {
    return flags & REALconsoleSafe ? "console-safe" : "";
}

std::string describe(std::string_view kind, const Property& property) {
    return "    " + std::string(kind) + property.name + " As " + property.type.name() +
           notes({property.set ? "" : "read-only", consoleNote(property.flags)}) + "\n";
}

std::string describe(std::string_view kind, const Method& method) {
    const std::string_view word =
        method.signature.result.kind == Kind::Nothing ? "Sub " : "Function ";
    return "    " + std::string(kind) + std::string(word) + method.signature.text() +
           notes({consoleNote(method.flags)}) + "\n";
}

std::string describe(const Constant& constant) {
    const bool isText = constant.value.kind() == Kind::String;
    const std::string value = constant.value.utf8();
    return "    Const " + constant.name + " = " + (isText ? "\"" + value + "\"" : value) + "\n";
}

} // namespace

std::string describe(const Class& type) {
    std::string text = "Class " + type.name();
    const bool isRoot = !type.superclass() || !type.superclass()->superclass();
    if (!isRoot) text += " Inherits " + type.superclass()->name();
    text += notes({consoleNote(type.flags)}) + "\n";
    for (const Property& property : type.properties)
        text += describe("Property ", property);
    for (const Method& method : type.methods)
        text += describe("", method);
    for (const Constant& constant : type.constants)
        text += describe(constant);
    for (const Property& property : type.sharedProperties)
        text += describe("Shared Property ", property);
    for (const Method& method : type.sharedMethods)
        text += describe("Shared ", method);
    return text;
}

} // namespace host::language
