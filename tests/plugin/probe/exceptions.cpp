#include "plugin/entry/exceptions.h"

#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

#include <string>

using namespace REALtables;

namespace {

std::string text_of(REALstringStruct* string) {
    return string ? std::string(string->buffer + 1, static_cast<std::size_t>(string->length)) : "";
}

/// An empty text is passed as null.
void raise(REALstringStruct* className, REALstringStruct* message, REALword number) {
    const std::string name = text_of(className);
    const std::string text = text_of(message);
    RaiseException(name.empty() ? nullptr : name.c_str(), text.empty() ? nullptr : text.c_str(),
                   REALtextEncodingASCII, static_cast<std::int32_t>(number));
}

void raise_out_of_bounds(std::int64_t value, std::int64_t lower, std::int64_t count,
                         REALstringStruct* method) {
    const std::string name = text_of(method);
    RaiseOutOfBoundsException(value, lower, count, "index", name.empty() ? nullptr : name.c_str());
}

REALmethod sharedMethods[] = {
    shared_method("Raise(className as String, message as String, number as Integer)", raise),
    shared_method("RaiseOutOfBounds(value as Int64, lower as Int64, count as Int64, "
                  "method as String)",
                  raise_out_of_bounds),
};

} // namespace

REALclassDefinition ExceptionProbe =
    class_definition({.name = "ExceptionProbe", .sharedMethods = sharedMethods});
