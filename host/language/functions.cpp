#include "host/language/functions.h"

#include "host/language/machine.h"
#include "host/objects/runtime.h"

#include <chrono>
#include <initializer_list>
#include <random>

namespace host::language {
namespace {

double microsecondsSinceStart() {
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
        .count();
}

double randomNumber() {
    static std::mt19937_64 generator{std::random_device{}()};
    return std::uniform_real_distribution<double>(0, 1)(generator);
}

constexpr FunctionEntry systemTable[] = {
    {"Microseconds() As Double",
     [](std::span<Value>) -> Value { return microsecondsSinceStart(); }},
    {"Ticks() As Int64",
     [](std::span<Value>) -> Value {
         return static_cast<std::int64_t>(microsecondsSinceStart() * 60 / 1e6);
     }},
    {"Rnd() As Double", [](std::span<Value>) -> Value { return randomNumber(); }},
    {"Quit(status As Int32 = 0)",
     [](std::span<Value> arguments) -> Value {
         throw QuitRequest{static_cast<int>(arguments[0].toInt64())};
     }},
};

} // namespace

std::span<const FunctionEntry> systemFunctions() { return systemTable; }

FunctionLibrary::FunctionLibrary() {
    for (const auto& table : {textFunctions(), numberFunctions(), systemFunctions()}) {
        for (const FunctionEntry& entry : table) {
            Method& method = functions_.emplace_back();
            method.signature = Signature::parse(entry.declaration).value();
            method.isShared = true;
            method.body = [body = entry.body](REALobjectStruct*, std::span<Value> arguments) {
                return body(arguments);
            };
        }
    }
}

std::vector<const Method*> FunctionLibrary::find(std::string_view name) const {
    std::vector<const Method*> found;
    for (const Method& method : functions_)
        if (sameName(method.signature.name, name)) found.push_back(&method);
    return found;
}

} // namespace host::language
