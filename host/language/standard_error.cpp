#include "host/language/standard_error.h"

#include "host/objects/runtime.h"

#include <utility>

namespace host::language {
namespace {

constexpr const char* className = "StandardErrorStream";

struct Stream : State {
    TextSink sink;
};

void write(REALobjectStruct* self, const std::string& text) {
    const auto* stream = stateOf<Stream>(self);
    if (stream->sink) stream->sink(text);
}

} // namespace

const Class& standardErrorClass() {
    Runtime& runtime = Runtime::current();
    if (const Class* known = runtime.findClass(className)) return *known;
    Class& added =
        runtime.addClass(std::make_unique<Class>(className, runtime.findClass("Object")));
    added.canBeInstantiated = false;
    added.makeState = [] { return std::make_unique<Stream>(); };
    added.addMethod("WriteLine(text As String = \"\")",
                    [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                        write(self, arguments[0].utf8() + "\n");
                        return {};
                    });
    added.addMethod("Write(text As String)",
                    [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                        write(self, arguments[0].utf8());
                        return {};
                    });
    return added;
}

ObjectRef newStandardError(TextSink sink) {
    ObjectRef object = Runtime::current().newInstance(standardErrorClass());
    if (auto* stream = stateOf<Stream>(object)) stream->sink = std::move(sink);
    return object;
}

} // namespace host::language
