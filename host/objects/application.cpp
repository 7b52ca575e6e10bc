#include "host/objects/folder_item.h"
#include "host/objects/host_classes.h"

namespace host {

void defineApplication(Runtime& runtime) {
    const bool console = runtime.options().console;
    defineClass(runtime, console ? "ConsoleApplication" : "Application").canBeInstantiated = false;
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
