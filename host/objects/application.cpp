#include "host/objects/folder_item.h"
#include "host/objects/host_classes.h"
#include "host/threads/scheduler.h"

namespace host {

namespace {

Scheduler& scheduler() { return Runtime::current().scheduler(); }

const char* className(const Runtime& runtime) {
    return runtime.options().console ? "ConsoleApplication" : "Application";
}

} // namespace

void defineApplication(Runtime& runtime) {
    Class& type = defineClass(runtime, className(runtime));
    type.canBeInstantiated = false;
    type.addMethod("YieldToNextThread()", [](REALobjectStruct*, std::span<Value>) -> Value {
        scheduler().yield();
        return {};
    });
    type.addMethod("SleepCurrentThread(milliseconds As Integer)",
                   [](REALobjectStruct*, std::span<Value> arguments) -> Value {
                       scheduler().sleep(scheduler().current(), arguments[0].toInt64());
                       return {};
                   });
    type.addProperty("CurrentThread", Type::object("Thread"),
                     [](REALobjectStruct*) -> Value { return scheduler().current().object; });
}

const Class& applicationClass(const Runtime& runtime) {
    return *runtime.findClass(className(runtime));
}

void defineFunctions(Runtime& runtime) {
    runtime.addFunction(
        "LenB(s As String) As Integer", [](REALobjectStruct*, std::span<Value> arguments) -> Value {
            return static_cast<REALword>(arguments[0].get<StringRef>()->bytes().size());
        });
    runtime.addFunction("VarType(value As Variant) As Int32",
                        [](REALobjectStruct*, std::span<Value> arguments) -> Value {
                            return varType(arguments[0]);
                        });
    runtime.addFunction("GetFolderItem(path As String) As FolderItem",
                        [](REALobjectStruct*, std::span<Value> arguments) -> Value {
                            return newFolderItem(arguments[0].utf8());
                        });
}

} // namespace host
