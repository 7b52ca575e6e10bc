#include "host/objects/host_classes.h"

namespace host {

namespace {

struct ExceptionState : State {
    StringRef message;
    REALword errorNumber = 0;
};

ExceptionState& exceptionOf(REALobjectStruct* self) { return *stateOf<ExceptionState>(self); }

} // namespace

void defineExceptions(Runtime& runtime) {
    Class& root = defineClass(runtime, "RuntimeException");
    root.makeState = [] { return std::make_unique<ExceptionState>(); };
    root.addMethod("Constructor(message As String = \"\", errorNumber As Integer = 0)",
                   [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                       exceptionOf(self).message = *arguments[0].get<StringRef>();
                       exceptionOf(self).errorNumber =
                           static_cast<REALword>(arguments[1].toInt64());
                       return {};
                   });
    root.addProperty(
        "Message", Kind::String,
        [](REALobjectStruct* self) -> Value { return exceptionOf(self).message; },
        [](REALobjectStruct* self, const Value& message) {
            exceptionOf(self).message = message.toText();
        });
    root.addProperty(
        "ErrorNumber", Type::integer(),
        [](REALobjectStruct* self) -> Value { return exceptionOf(self).errorNumber; },
        [](REALobjectStruct* self, const Value& number) {
            exceptionOf(self).errorNumber = static_cast<REALword>(number.toInt64());
        });
    for (const std::string_view name :
         {"NilObjectException", "OutOfBoundsException", "IllegalCastException",
          "UnsupportedOperationException", "OutOfMemoryException", "TypeMismatchException",
          "KeyNotFoundException", "IOException", "UnsupportedFormatException",
          "StackOverflowException", "InvalidArgumentException", "ThreadAlreadyRunningException"})
        defineClass(runtime, name, "RuntimeException");
}

} // namespace host
