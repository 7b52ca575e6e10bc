#include "support/host.h"

#include "host/objects/folder_item.h"
#include "host/objects/memory_block.h"

#include <algorithm>
#include <exception>

namespace {

host::Options runtimeOptions(const HostOptions& options) {
    return {.version = options.version,
            .console = options.console,
            .without = options.without,
            .systemVersion = options.systemVersion,
            .pictureLayout = options.pictureLayout,
            .withoutBase = options.withoutBase};
}

/// The member name at the start of a declaration.
std::string_view memberName(std::string_view declaration) {
    return declaration.substr(0, declaration.find_first_of(" ("));
}

bool sameDeclaration(const host::Signature& a, const host::Signature& b) {
    return a.result == b.result &&
           std::ranges::equal(a.parameters, b.parameters,
                              [](const host::Parameter& left, const host::Parameter& right) {
                                  return left.type == right.type &&
                                         left.isAssigned == right.isAssigned;
                              });
}

std::vector<const host::Method*> settersAmong(std::vector<const host::Method*> methods,
                                              bool wanted) {
    std::erase_if(methods, [&](const host::Method* method) {
        return method->signature.isSetter() != wanted;
    });
    return methods;
}

} // namespace

Host::Host(const HostOptions& options)
    : runtime_(runtimeOptions(options)) {
    std::vector<std::string> files = options.plugins;
    if (files.empty() && !options.bare) {
        if (!options.withoutBase) files.push_back(plugin("Base"));
        files.push_back(plugin("NSImage"));
    }
    for (const std::string& file : files)
        if (const auto error = runtime_.loadPlugin(file)) ADD_FAILURE() << *error;
}

Host::~Host() {
    expectExamined();
    raised_ = nullptr;
    runtime_.drainPool();
    for (const std::string& sentence : toleratesLeaks_ ? runtime_.misuse() : runtime_.report())
        ADD_FAILURE() << "the host reports: " << sentence;
}

std::string Host::plugin(std::string_view name) {
    return std::string(PROJECT_BINARY_DIR "/plugins/").append(name).append(".so");
}

void Host::expectExamined() {
    if (!raised_) return;
    ADD_FAILURE() << "nobody asked about the raised " << host::Raised(raised_).what();
    raised_ = nullptr;
}

host::Value Host::guarded(const std::function<host::Value()>& work) {
    expectExamined();
    host::Value result;
    try {
        result = work();
        raised_ = runtime_.takePending();
    } catch (const host::Raised& raised) {
        raised_ = raised.exception();
    } catch (const host::CallError& error) {
        ADD_FAILURE() << error.what();
    }
    return result;
}

std::vector<std::string> Host::takeReports() {
    std::vector<std::string> sentences = runtime_.report();
    runtime_.forgetMisuse();
    return sentences;
}

std::string Host::raised() {
    const host::ObjectRef exception = takeRaised();
    return exception ? host::Raised(exception).what() : std::string();
}

host::ObjectRef Host::takeRaised() { return std::exchange(raised_, nullptr); }

const host::Class* Host::classNamed(std::string_view name) {
    const host::Class* const type = runtime_.findClass(name);
    if (!type) ADD_FAILURE() << "there is no class " << name;
    return type;
}

const host::Method* Host::choose(std::string_view method,
                                 const std::vector<const host::Method*>& candidates,
                                 const std::vector<host::Value>& arguments) {
    try {
        if (memberName(method) == method) return &host::overloadFor(method, candidates, arguments);
    } catch (const host::CallError& error) {
        ADD_FAILURE() << error.what();
        return nullptr;
    }
    const auto wanted = host::Signature::parse(method);
    for (const host::Method* candidate : candidates)
        if (wanted && sameDeclaration(candidate->signature, *wanted)) return candidate;
    ADD_FAILURE() << "there is no method " << method;
    return nullptr;
}

host::Value Host::performed(const host::Method* method, const host::ObjectRef& object,
                            std::vector<host::Value> arguments) {
    if (!method) return {};
    return guarded([&] { return runtime_.perform(*method, object.get(), arguments); });
}

host::ObjectRef Host::instance(std::string_view className) {
    const host::Class* const type = classNamed(className);
    if (!type) return nullptr;
    return guarded([&] { return runtime_.newInstance(*type); }).objectRef();
}

host::ObjectRef Host::createWith(std::string_view className, std::string_view constructor,
                                 std::vector<host::Value> arguments) {
    const host::Class* const type = classNamed(className);
    if (!type) return nullptr;
    const auto candidates = type->constructors();
    const host::Method* chosen = nullptr;
    if (!candidates.empty() || !arguments.empty()) {
        chosen = choose(constructor, candidates, arguments);
        if (!chosen) return nullptr;
    }
    host::ObjectRef object = instance(className);
    if (chosen) performed(chosen, object, std::move(arguments));
    return object;
}

host::Value Host::callWith(const host::ObjectRef& object, std::string_view method,
                           std::vector<host::Value> arguments) {
    const host::Class* const type = host::classOf(object.get());
    if (!type) {
        ADD_FAILURE() << method << " is called on Nil";
        return {};
    }
    const auto candidates = settersAmong(type->findMethods(memberName(method)), false);
    return performed(choose(method, candidates, arguments), object, std::move(arguments));
}

host::Value Host::sharedWith(std::string_view className, std::string_view method,
                             std::vector<host::Value> arguments) {
    const host::Class* const type = classNamed(className);
    if (!type) return {};
    const auto candidates = type->findSharedMethods(memberName(method));
    return performed(choose(method, candidates, arguments), nullptr, std::move(arguments));
}

void Host::assignWith(const host::ObjectRef& object, std::string_view method,
                      std::vector<host::Value> arguments) {
    const host::Class* const type = host::classOf(object.get());
    if (!type) {
        ADD_FAILURE() << method << " of Nil is assigned to";
        return;
    }
    const auto candidates = settersAmong(type->findMethods(memberName(method)), true);
    performed(choose(method, candidates, arguments), object, std::move(arguments));
}

host::Value Host::getValue(const host::ObjectRef& object, std::string_view property) {
    const host::Class* const type = host::classOf(object.get());
    const host::Property* const found = type ? type->findProperty(property) : nullptr;
    if (!found) {
        ADD_FAILURE() << "there is no property " << property;
        return {};
    }
    return guarded([&] { return found->get(object.get()); });
}

void Host::set(const host::ObjectRef& object, std::string_view property, const host::Value& value) {
    const host::Class* const type = host::classOf(object.get());
    const host::Property* const found = type ? type->findProperty(property) : nullptr;
    if (!found) {
        ADD_FAILURE() << "there is no property " << property;
        return;
    }
    guarded([&]() -> host::Value {
        runtime_.set(*found, object.get(), value);
        return {};
    });
}

host::Value Host::constantValue(std::string_view className, std::string_view name) {
    const host::Class* const type = classNamed(className);
    const host::Constant* const constant = type ? type->findConstant(name) : nullptr;
    if (constant) return constant->value;
    ADD_FAILURE() << "there is no constant " << name;
    return {};
}

host::ObjectRef Host::memoryBlock(std::string_view bytes) { return host::newMemoryBlock(bytes); }

std::string Host::bytes(const host::ObjectRef& memoryBlock) {
    const auto* const block = host::stateOf<host::MemoryBlock>(memoryBlock);
    if (block) return std::string(block->view());
    ADD_FAILURE() << "this is no MemoryBlock";
    return {};
}

host::ObjectRef Host::folderItem(const std::string& path) { return host::newFolderItem(path); }

std::string Host::path(const host::ObjectRef& folderItem) {
    const auto* const item = host::stateOf<host::FolderItem>(folderItem);
    if (item) return item->path.string();
    ADD_FAILURE() << "this is no FolderItem";
    return {};
}

host::StringRef Host::text(std::string_view bytes, std::uint32_t encoding) {
    return {bytes, encoding};
}

host::ObjectRef Host::arrayOf(const host::Type& elementType, std::vector<host::Value> elements) {
    host::ObjectRef object = host::newArray(elementType);
    for (host::Value& element : elements) {
        auto converted = host::convert(element, elementType);
        if (converted)
            host::stateOf<host::Array>(object)->elements.push_back(std::move(*converted));
        else
            ADD_FAILURE() << "an element is no " << elementType.name();
    }
    return object;
}

std::vector<host::Value> Host::elements(const host::Value& array) {
    if (const host::Array* const held = host::arrayOf(array)) return held->elements;
    ADD_FAILURE() << "this is no array";
    return {};
}

int Host::references(const host::ObjectRef& object) {
    return runtime_.registry().references(object.get());
}

int Host::references(const host::StringRef& string) {
    return runtime_.registry().references(string.get());
}

std::size_t Host::instances(std::string_view className) {
    return runtime_.registry().liveObjects(className);
}

void* Host::handle(const host::ObjectRef& object) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(get(object, "Handle").toInt64()));
}
