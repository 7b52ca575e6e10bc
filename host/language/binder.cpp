#include "host/language/binder.h"

#include "host/language/operators.h"
#include "host/language/standard_error.h"
#include "host/objects/host_classes.h"

#include <algorithm>
#include <utility>

namespace host::language {

std::unique_ptr<BoundProgram> Binder::bind(const SyntaxTree& tree) {
    program_ = std::make_unique<BoundProgram>();
    program_->globalCount = PredefinedVariableCount;
    globals_.declare(
        {"Arguments", 0,
         VariableSymbol{Storage::Global, ArgumentsVariable, Type(Kind::String, true)}});
    globals_.declare({"StdErr", 0,
                      VariableSymbol{Storage::Global, StdErrVariable,
                                     Type::object(standardErrorClass().name())}});
    globals_.declare({"App", 0,
                      VariableSymbol{Storage::Global, AppVariable,
                                     Type::object(applicationClass(Runtime::current()).name())}});
    variableCount_ = &program_->globalCount;
    declareTopLevelConstants(tree.main);
    for (const Routine& routine : tree.routines)
        declareRoutine(routine);
    bindStatements(tree.main, program_->main.statements);
    inMain_ = false;
    storage_ = Storage::Local;
    for (std::size_t i = 0; i < tree.routines.size(); ++i)
        bindRoutine(tree.routines[i], *program_->routines[i]);
    return std::move(program_);
}

void Binder::declareTopLevelConstants(const Block& main) {
    for (const Statement& statement : main)
        if (const auto* constant = std::get_if<ConstStatement>(&statement.node))
            declareConstant(*constant, statement.line);
}

void Binder::declareConstant(const ConstStatement& statement, int line) {
    const NodePointer node = bindValue(*statement.value);
    const Value* value = node->constant();
    if (!value) throw SourceError(line, "The value of " + statement.name + " is not constant");
    scope_->declare({statement.name, line, ConstantSymbol{*value, node->type()}});
}

void Binder::declareRoutine(const Routine& routine) {
    auto bound = std::make_unique<BoundRoutine>();
    bound->method.isShared = true;
    Signature& signature = bound->method.signature;
    signature.name = routine.name;
    if (routine.result) signature.result = resolve(*routine.result);
    for (const Parameter& declared : routine.parameters) {
        host::Parameter parameter;
        parameter.name = declared.name;
        parameter.type = resolve(declared.type);
        parameter.isByRef = declared.byReference;
        parameter.isOptional = declared.optional;
        if (declared.byReference && declared.optional)
            throw SourceError(routine.line, "The parameter " + declared.name +
                                                " cannot be both ByRef and optional");
        if (declared.defaultValue) {
            const NodePointer node = bindAs(*declared.defaultValue, parameter.type);
            if (!node->constant())
                throw SourceError(routine.line,
                                  "The default of " + declared.name + " is not constant");
            parameter.defaultValue = *node->constant();
        }
        signature.parameters.push_back(std::move(parameter));
    }
    const auto clashes = [&](const std::unique_ptr<BoundRoutine>& other) {
        const auto sameType = [](const host::Parameter& a, const host::Parameter& b) {
            return a.type == b.type;
        };
        const Signature& theirs = other->method.signature;
        return sameName(theirs.name, signature.name) &&
               std::ranges::equal(theirs.parameters, signature.parameters, sameType);
    };
    if (std::ranges::any_of(program_->routines, clashes))
        throw SourceError(routine.line, signature.text() + " is defined already");
    bound->node.result = signature.result;
    program_->routines.push_back(std::move(bound));
}

void Binder::bindRoutine(const Routine& routine, BoundRoutine& bound) {
    Scope scope(&globals_);
    scope_ = &scope;
    variableCount_ = &bound.node.variableCount;
    result_ = bound.node.result;
    const std::vector<host::Parameter>& parameters = bound.method.signature.parameters;
    bound.node.variableCount = parameters.size();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const bool isReference = parameters[i].isByRef;
        if (isReference) bound.node.referenceCount = parameters.size();
        scope.declare({parameters[i].name, routine.line,
                       VariableSymbol{isReference ? Storage::Reference : Storage::Local, i,
                                      parameters[i].type}});
    }
    bindStatements(routine.body, bound.node.body.statements);
    scope_ = &globals_;
}

const Class* Binder::findClass(const std::string& name) const {
    return Runtime::current().findClass(name);
}

Type Binder::resolve(const TypeName& name) const {
    Type type = Type::named(name.name, name.isArray);
    if (type.kind == Kind::Nil) throw SourceError(name.line, "Nil is a value and no type");
    if (type.kind != Kind::Object || type.className.empty()) return type;
    const Class* const found = findClass(type.className);
    if (!found) throw SourceError(name.line, "There is no type called " + name.name);
    type.className = found->name();
    return type;
}

VariableSymbol Binder::makeHiddenVariable(const Type& type) {
    return {storage_, (*variableCount_)++, type};
}

VariableSymbol Binder::declareVariable(const std::string& name, const Type& type, int line) {
    VariableSymbol symbol = makeHiddenVariable(type);
    scope_->declare({name, line, symbol});
    if (scope_ == &globals_) program_->globals.emplace_back(symbol.slot, type);
    return symbol;
}

} // namespace host::language
