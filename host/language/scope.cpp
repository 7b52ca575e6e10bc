#include "host/language/scope.h"

#include "host/language/lexer.h"
#include "host/language/source_error.h"

#include <utility>

namespace host::language {

void Scope::declare(NamedSymbol symbol) {
    if (const NamedSymbol* other = findHere(symbol.name); other && other->line > 0)
        throw SourceError(symbol.line, symbol.name + " is declared already, in line " +
                                           std::to_string(other->line));
    std::string key = foldCase(symbol.name);
    symbols_.insert_or_assign(std::move(key), std::move(symbol));
}

const NamedSymbol* Scope::findHere(const std::string& name) const {
    const auto found = symbols_.find(foldCase(name));
    return found == symbols_.end() ? nullptr : &found->second;
}

const NamedSymbol* Scope::find(const std::string& name) const {
    const NamedSymbol* symbol = findHere(name);
    return !symbol && outer_ ? outer_->find(name) : symbol;
}

} // namespace host::language
