#include "host/plugins/definitions.h"

#include "host/plugins/calls.h"
#include "host/services/services.h"

#include <array>

namespace host {

namespace {

/// Requests that a plug-in is to resolve before the host sees its tables.
constexpr REALword unresolvedRequests =
    REALconsoleSafeOnNewHosts | REALsystemFlag8OnNewHosts | REALreservedRequest;
/// More data than any class has, or members than any table.
constexpr REALword maximumDataSize = 1 << 20;
constexpr REALword maximumCount = 10000;

/// Words of the records by control version.
struct Layout {
    std::size_t definition, property, method, event, constant;
};
constexpr Layout olderLayout{25, 10, 4, 2, 3};
constexpr Layout newerLayout{29, 12, 6, 4, 5};

const char* textIn(REALword word) { return reinterpret_cast<const char*>(word); }
void* pointerIn(REALword word) { return reinterpret_cast<void*>(word); }

bool isIdentifier(std::string_view text) {
    const auto parsed = REALdeclarations::parse(text);
    return parsed && parsed->name == text;
}

class Reader {
public:
    Reader(Runtime& runtime, REALclassDefinition* definition)
        : runtime_(runtime)
        , definition_(definition)
        , controlVersion_(declaredVersion())
        , layout_(controlVersion_ > oldestControlVersion ? newerLayout : olderLayout) {}

    void read() {
        if (controlVersion_ == 0)
            return complain("no control version was declared before the class was registered");
        const auto* const words = reinterpret_cast<const REALword*>(definition_);
        raw_.controlVersion = controlVersion_;
        raw_.words.assign(words, words + layout_.definition);
        if (definition_->version != controlVersion_)
            return complain("the version word is " + std::to_string(definition_->version) +
                            ", but control version " + std::to_string(controlVersion_) +
                            " was declared");
        if (!definition_->name || !isIdentifier(definition_->name))
            return complain("the class has no proper name");
        name_ = definition_->name;
        if (runtime_.findClass(name_)) return complain("a class of this name exists already");
        const std::string_view superclassName =
            definition_->superclass ? definition_->superclass : "Object";
        const Class* const superclass = runtime_.findClass(superclassName);
        if (!superclass)
            return complain("the superclass " + std::string(superclassName) + " does not exist");
        if (definition_->instanceDataSize < 0 || definition_->instanceDataSize > maximumDataSize)
            return complain("the instance data size is " +
                            std::to_string(definition_->instanceDataSize));
        if (!readTables()) return;
        define(*superclass);
    }

private:
    /// Where a plug-in cannot declare a version, its records speak for themselves.
    int declaredVersion() const {
        const bool canDeclare = Services::isOffered(REALservices::RegisterPluginVersion.name);
        return canDeclare ? runtime_.controlVersion : static_cast<int>(definition_->version);
    }

    void complain(const std::string& what) {
        runtime_.reportMisuse((name_.empty() ? "" : "class " + name_ + ": ") + what);
    }

    /// Copies a table; false when it cannot be one.
    bool copy(std::vector<RawRecord>& table, const void* records, REALword count,
              std::size_t wordCount, std::string_view what) {
        if (count < 0 || count > maximumCount || (count > 0 && !records)) {
            complain(std::to_string(count) + " " + std::string(what) +
                     (records ? "" : " without a table"));
            return false;
        }
        const auto* words = static_cast<const REALword*>(records);
        for (REALword i = 0; i < count; ++i, words += wordCount)
            table.emplace_back(words, words + wordCount);
        return true;
    }

    bool readTables() {
        const REALclassDefinition& it = *definition_;
        return copy(raw_.properties, it.properties, it.propertyCount, layout_.property,
                    "properties") &&
               copy(raw_.methods, it.methods, it.methodCount, layout_.method, "methods") &&
               copy(raw_.events, it.events, it.eventCount, layout_.event, "events") &&
               copy(raw_.constants, it.constants, it.constantCount, layout_.constant,
                    "constants") &&
               copy(raw_.sharedProperties, it.sharedProperties, it.sharedPropertyCount,
                    layout_.property, "shared properties") &&
               copy(raw_.sharedMethods, it.sharedMethods, it.sharedMethodCount, layout_.method,
                    "shared methods");
    }

    void define(const Class& superclass) {
        const Registry::HostOwned own(runtime_.registry());
        auto made = std::make_unique<Class>(name_, &superclass);
        type_ = made.get();
        type_->dataSize = static_cast<std::size_t>(definition_->instanceDataSize);
        type_->flags = checkedFlags(definition_->flags, "the class");
        // A class that is not safe in a console exists there, but no program can make instances.
        type_->canBeInstantiated = isAvailable(type_->flags);
        if (definition_->constructor)
            type_->constructor = hookOf(definition_->constructor, name_ + "'s constructor");
        if (definition_->destructor)
            type_->destructor = hookOf(definition_->destructor, name_ + "'s destructor");
        for (const RawRecord& record : raw_.properties)
            addProperty(record, type_->properties, false);
        for (const RawRecord& record : raw_.sharedProperties)
            addProperty(record, type_->sharedProperties, true);
        for (const RawRecord& record : raw_.methods)
            addMethod(record, type_->methods, false);
        for (const RawRecord& record : raw_.sharedMethods)
            addMethod(record, type_->sharedMethods, true);
        for (const RawRecord& record : raw_.constants)
            addConstant(record);
        if (!runtime_.plugins().empty()) type_->plugin = runtime_.plugins().back();
        type_->raw = std::move(raw_);
        definition_->systemUse = static_cast<REALword>(type_->dataOffset);
        runtime_.addClass(std::move(made));
    }

    REALword checkedFlags(REALword flags, const std::string& what) {
        if (flags & unresolvedRequests)
            complain("the flags of " + what + " still hold the plug-in's own requests");
        return flags;
    }

    /// A console hides what is not marked as safe there.
    bool isAvailable(REALword flags) const {
        return !runtime_.options().console || (flags & REALconsoleSafe);
    }

    void addProperty(const RawRecord& record, std::vector<Property>& properties, bool isShared) {
        const char* const name = textIn(record[1]);
        const char* const typeName = textIn(record[2]);
        if (!name || !isIdentifier(name)) return complain("a property has no proper name");
        const std::string what = std::string("property ") + name;
        const std::string declaration = "p as " + std::string(typeName ? typeName : "");
        const auto declared = REALdeclarations::parse(declaration);
        if (!declared) return complain(what + " has no proper type");
        Property property;
        property.name = name;
        property.type = Type::of(declared->result);
        property.isShared = isShared;
        property.flags = checkedFlags(record[3], what);
        if (!isAvailable(property.flags)) return;
        const REALword parameter = record[6];
        const std::string label = name_ + "." + property.name;
        property.isDirect = record[4] == REALdirectAccess || record[5] == REALdirectAccess;
        if (property.isDirect && !isField(property.type, parameter, isShared))
            return complain(what + " is no field of the instance data");
        const std::size_t offset = type_->dataOffset + static_cast<std::size_t>(parameter);
        if (record[4] == REALdirectAccess)
            property.get = fieldGetter(offset, property.type, label);
        else if (record[4])
            property.get =
                getterOf(pointerIn(record[4]), property.type, parameter, isShared, label);
        else
            return complain(what + " has no getter");
        if (record[5] == REALdirectAccess)
            property.set = fieldSetter(offset, property.type);
        else if (record[5])
            property.set =
                setterOf(pointerIn(record[5]), property.type, parameter, isShared, label);
        properties.push_back(std::move(property));
    }

    bool isField(const Type& type, REALword offset, bool isShared) const {
        const auto size = fieldSize(type);
        return size && !isShared && offset >= 0 &&
               static_cast<std::size_t>(offset) + *size <= type_->dataSize;
    }

    void addMethod(const RawRecord& record, std::vector<Method>& methods, bool isShared) {
        const char* const declaration = textIn(record[2]);
        const auto signature = declaration ? Signature::parse(declaration) : std::nullopt;
        const std::string what = declaration ? std::string(declaration) : "a method";
        if (!signature) return complain("\"" + what + "\" is no declaration");
        if (!record[0]) return complain(what + " has no function");
        const REALword flags = checkedFlags(record[3], what);
        if (!isAvailable(flags)) return;
        methods.push_back({*signature,
                           methodBody(pointerIn(record[0]), *signature, isShared, name_), flags,
                           isShared, pointerIn(record[0])});
        if (!record[1]) return;
        Signature setter = *signature;
        setter.parameters.push_back(
            {"value", std::exchange(setter.result, Type()), std::nullopt, false, true, false});
        methods.push_back({setter, methodBody(pointerIn(record[1]), setter, isShared, name_), flags,
                           isShared, pointerIn(record[1]), nullptr});
    }

    void addConstant(const RawRecord& record) {
        const char* const declaration = textIn(record[0]);
        const auto parsed =
            declaration ? REALdeclarations::parse_constant(declaration) : std::nullopt;
        const auto value = parsed ? parseLiteral(parsed->value) : std::nullopt;
        if (!value)
            return complain("\"" + std::string(declaration ? declaration : "") +
                            "\" is no constant");
        type_->addConstant(parsed->name, *value);
    }

    Runtime& runtime_;
    REALclassDefinition* definition_;
    int controlVersion_;
    Layout layout_;
    std::string name_;
    RawDefinition raw_;
    Class* type_ = nullptr;
};

} // namespace

int newestControlVersion(double hostVersion) {
    if (hostVersion >= 2013.03) return 12;
    if (hostVersion >= 2013.0) return 11;
    if (hostVersion >= 2012.0) return 10;
    return oldestControlVersion;
}

void readDefinition(Runtime& runtime, REALclassDefinition* definition) {
    Reader(runtime, definition).read();
}

} // namespace host
