#pragma once

/// The names that a program gives to variables and constants.

#include "host/language/value_nodes.h"
#include "host/objects/value.h"

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace host::language {

struct VariableSymbol {
    Storage storage;
    std::size_t slot;
    Type type;
};
struct ConstantSymbol {
    Value value;
    Type type;
};
struct NamedSymbol {
    std::string name;
    int line; ///< of the declaration; 0 for what every program has
    std::variant<VariableSymbol, ConstantSymbol> meaning;
};

class Scope {
public:
    explicit Scope(const Scope* outer = nullptr)
        : outer_(outer) {}
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    /// Throws SourceError when the scope has the name already.
    void declare(NamedSymbol symbol);
    /// Also in the scopes around; null when the name is unknown.
    const NamedSymbol* find(const std::string& name) const;
    const NamedSymbol* findHere(const std::string& name) const;

private:
    const Scope* outer_;
    std::map<std::string, NamedSymbol> symbols_;
};

} // namespace host::language
