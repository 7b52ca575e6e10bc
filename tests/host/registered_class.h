#pragma once

/// A class registered in a running host the way a plug-in registers one.

#include "host/called_services.h"
#include "sdk/tables.h"

#include <cstring>
#include <vector>

/// The tables of a class in the newest layout. They must outlive the host.
struct ClassTables {
    std::vector<REALproperty> properties;
    std::vector<REALmethod> methods;
    std::vector<REALmethod> sharedMethods;
    std::vector<REALconstant> constants;
    REALclassDefinition definition{};

    explicit ClassTables(REALtables::ClassDescription description)
        : ClassTables(description, {}) {}

    ClassTables(REALtables::ClassDescription description, std::vector<REALproperty> properties,
                std::vector<REALmethod> methods = {}, std::vector<REALmethod> sharedMethods = {},
                std::vector<REALconstant> constants = {})
        : properties(std::move(properties))
        , methods(std::move(methods))
        , sharedMethods(std::move(sharedMethods))
        , constants(std::move(constants)) {
        description.properties = this->properties;
        description.methods = this->methods;
        description.sharedMethods = this->sharedMethods;
        description.constants = this->constants;
        definition = REALtables::class_definition(description);
    }
    ClassTables(const ClassTables&) = delete;
    ClassTables& operator=(const ClassTables&) = delete;

    /// Registers in the version's layout, which must be one of the newer ones.
    void registerAs(int version = 12) {
        service(REALservices::RegisterPluginVersion)(version);
        definition.version = version;
        service(REALservices::RegisterClass)(&definition);
    }
};
