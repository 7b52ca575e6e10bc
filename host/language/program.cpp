#include "host/language/program.h"

#include "host/language/binder.h"
#include "host/language/parser.h"
#include "host/language/standard_error.h"
#include "host/objects/array.h"
#include "host/objects/host_classes.h"

#include <utility>

namespace host::language {
namespace {

void prepareVariables(std::vector<Value>& globals, const BoundProgram& program,
                      const RunOptions& options) {
    Runtime& runtime = Runtime::current();
    for (const auto& [slot, type] : program.globals)
        globals[slot] = type.isArray ? Value(newArray(type.element())) : neutralValue(type);
    ObjectRef arguments = newArray(Kind::String);
    for (const std::string& argument : options.arguments)
        arrayOf(arguments)->elements.emplace_back(argument);
    globals[ArgumentsVariable] = std::move(arguments);
    globals[StdErrVariable] = newStandardError(options.errorOutput);
    globals[AppVariable] = runtime.newInstance(applicationClass(runtime));
}

TextSink sinkOrNone(const TextSink& sink) {
    return sink ? sink : [](std::string_view) {};
}

} // namespace

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
    Execution execution(bound_->globalCount, sinkOrNone(options.output));
    execution.perform([&](Machine& machine) {
        prepareVariables(machine.globals(), *bound_, options);
        bound_->main.execute(machine);
    });
    Runtime::current().scheduler().awaitOthers();
    return execution.result();
}

RunResult runProgram(std::string_view source, const RunOptions& options) {
    ProgramError error;
    const std::optional<Program> program = Program::compile(source, error);
    if (!program) return {2, error};
    return program->run(options);
}

} // namespace host::language
