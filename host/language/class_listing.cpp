#include "host/language/class_listing.h"

#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

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

/// A plug-in's method is shown as the plug-in declares it.
std::string declarationOf(const Method& method, const std::vector<RawRecord>* records) {
    std::string text = method.signature.text();
    if (!records || !method.function) return text;
    for (const RawRecord& record : *records) {
        const auto* const declaration = reinterpret_cast<const char*>(record[2]);
        if (record[0] != reinterpret_cast<REALword>(method.function) || !declaration) continue;
        const std::optional<Signature> signature = Signature::parse(declaration);
        if (signature && signature->text() == text) return declaration;
    }
    return text;
}

std::string describe(std::string_view kind, const Method& method,
                     const std::vector<RawRecord>* records) {
    const std::string_view word =
        method.signature.result.kind == Kind::Nothing ? "Sub " : "Function ";
    return "    " + std::string(kind) + std::string(word) + declarationOf(method, records) +
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
        text += describe("", method, type.raw ? &type.raw->methods : nullptr);
    for (const Constant& constant : type.constants)
        text += describe(constant);
    for (const Property& property : type.sharedProperties)
        text += describe("Shared Property ", property);
    for (const Method& method : type.sharedMethods)
        text += describe("Shared ", method, type.raw ? &type.raw->sharedMethods : nullptr);
    return text;
}

} // namespace host::language
