#include "host/language/program.h"

#include "host/language/binder.h"
#include "host/language/parser.h"
#include "host/language/standard_error.h"
#include "host/objects/array.h"
#include "host/objects/runtime.h"
#include "host/plugins/foreign_exceptions.h"

#include <new>
#include <utility>

namespace host::language {
namespace {

void prepareVariables(Machine& machine, const BoundProgram& program, const RunOptions& options) {
    for (const auto& [slot, type] : program.globals)
        machine.globals()[slot] =
            type.isArray ? Value(newArray(type.element())) : neutralValue(type);
    ObjectRef arguments = newArray(Kind::String);
    for (const std::string& argument : options.arguments)
        arrayOf(arguments)->elements.emplace_back(argument);
    machine.globals()[ArgumentsVariable] = std::move(arguments);
    machine.globals()[StdErrVariable] = newStandardError(options.errorOutput);
}

TextSink sinkOrNone(const TextSink& sink) {
    return sink ? sink : [](std::string_view) {};
}

} // namespace

std::string ProgramError::text(std::string_view file) const {
    return std::string(file) + ":" + std::to_string(line) + ": " + className + ": " + message;
}

Program::Program(std::unique_ptr<BoundProgram> bound)
    : bound_(std::move(bound)) {}
Program::Program(Program&&) noexcept = default;
Program& Program::operator=(Program&&) noexcept = default;
Program::~Program() = default;

std::optional<Program> Program::compile(std::string_view source, ProgramError& error) {
    try {
        const SyntaxTree tree = parse(source);
        return Program(Binder().bind(tree));
    } catch (const SourceError& found) {
        error = {found.line, "SyntaxError", found.what()};
        return std::nullopt;
    }
}

RunResult Program::run(const RunOptions& options) const {
    Machine machine(bound_->globalCount, sinkOrNone(options.output));
    prepareVariables(machine, *bound_, options);
    try {
        const auto foreign = doUntilForeignException([&] { bound_->main.execute(machine); });
        if (!foreign) return {};
        return {1, ProgramError{machine.line, foreign->name, foreign->text}};
    } catch (const QuitRequest& quit) {
        return {quit.status, std::nullopt};
    } catch (const Raised& raised) {
        return {1, ProgramError{machine.line, raised.className(), raised.message()}};
    } catch (const std::bad_alloc&) {
        return {1, ProgramError{machine.line, "OutOfMemoryException", "There is no memory left"}};
    }
}

RunResult runProgram(std::string_view source, const RunOptions& options) {
    ProgramError error;
    const std::optional<Program> program = Program::compile(source, error);
    if (!program) return {2, error};
    return program->run(options);
}

} // namespace host::language
