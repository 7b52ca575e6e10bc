#include "host/objects/runtime.h"

#include "host/objects/array.h"
#include "host/objects/host_classes.h"
#include "host/services/services.h"
#include "host/threads/scheduler.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>
#include <stdexcept>

namespace host {

namespace {

Runtime* running = nullptr;

} // namespace

Raised::Raised(ObjectRef exception)
    : exception_(std::move(exception)) {
    what_ = className() + ": " + message();
}

const Class* Raised::type() const { return classOf(exception_.get()); }

std::string Raised::className() const { return type() ? type()->name() : "Nil"; }

std::string Raised::message() const {
    const Property* const property = type() ? type()->findProperty("Message") : nullptr;
    return property ? property->get(exception_.get()).utf8() : std::string();
}

void raise(std::string_view className, std::string_view message, std::int32_t errorNumber) {
    throw Raised(Runtime::current().makeException(className, message, errorNumber));
}

Runtime::Runtime(Options options)
    : options_(std::move(options)) {
    if (running) throw std::logic_error("a process has one host at a time");
    scheduler_ = std::make_unique<Scheduler>();
    Services::reset();
    for (const std::string& name : options_.without)
        if (!Services::offer(name, false))
            throw std::invalid_argument("there is no service called " + name);
    running = this;
    if (!options_.systemVersion.empty())
        setenv("COCOA_SYSTEM_VERSION", options_.systemVersion.c_str(), 1);
    const Registry::HostOwned own(registry_);
    defineClasses();
}

Runtime::~Runtime() {
    // Values that these keep release their references through the running host.
    takePending();
    scheduler_.reset();
    functions_.clear();
    classes_.clear();
    running = nullptr;
}

Runtime& Runtime::current() { return *running; }

bool Runtime::isRunning() { return running != nullptr; }

void Runtime::drainPool() {
    HostThread& thread = scheduler_->current();
    thread.callsSinceDrain = 0;
    thread.pool->drain();
}

bool Runtime::onHostThread() const { return scheduler_->onHostThread(); }

void Runtime::defineClasses() {
    auto& root = addClass(std::make_unique<Class>("Object"));
    arrayClass_ = std::make_unique<Class>("Array", &root);
    arrayClass_->makeState = [] { return std::make_unique<Array>(); };
    arrayClass_->dataSize = sizeof(REALarrayStruct) - sizeof(REALobjectStruct);
    variantClass_ = std::make_unique<Class>("Variant", &root);
    defineVariant(*variantClass_);
    defineExceptions(*this);
    defineMemoryBlock(*this);
    defineFolderItem(*this);
    defineDate(*this);
    defineDictionary(*this);
    definePicture(*this);
    defineGraphics(*this);
    defineThread(*this);
    defineApplication(*this);
    defineFunctions(*this);
}

const Class* Runtime::findClass(std::string_view name) const {
    const auto found = classesByName_.find(foldedName(name));
    return found == classesByName_.end() ? nullptr : found->second;
}

Class& Runtime::addClass(std::unique_ptr<Class> added) {
    Class& type = *classes_.emplace_back(std::move(added));
    classesByName_.emplace(foldedName(type.name()), &type);
    return type;
}

Class& defineClass(Runtime& runtime, std::string_view name, std::string_view superclass) {
    return runtime.addClass(
        std::make_unique<Class>(std::string(name), runtime.findClass(superclass)));
}

ObjectRef Runtime::newInstance(const Class& type) {
    ObjectRef object = ObjectRef::adopt(registry_.allocate(type));
    if (!object) return object;
    std::vector<const Class*> chain;
    for (const Class* owner = &type; owner; owner = owner->superclass())
        chain.push_back(owner);
    for (auto owner = chain.rbegin(); owner != chain.rend(); ++owner)
        if ((*owner)->constructor) (*owner)->constructor(object.get());
    return object;
}

ObjectRef Runtime::newInstance(std::string_view className) {
    const Class* const type = findClass(className);
    return type && type->canBeInstantiated ? newInstance(*type) : ObjectRef();
}

ObjectRef Runtime::construct(const Class& type, std::vector<Value> arguments) {
    if (!type.canBeInstantiated) throw CallError("No program can make a new " + type.name());
    const std::vector<const Method*> constructors = type.constructors();
    const Method* constructor = nullptr;
    if (!constructors.empty() || !arguments.empty())
        constructor = &overloadFor("Constructor of " + type.name(), constructors, arguments);
    ObjectRef object = newInstance(type);
    if (!object) raise("OutOfMemoryException", "There is no memory for a " + type.name() + ".");
    throwPending();
    if (constructor) call(*constructor, object.get(), arguments);
    return object;
}

void Runtime::addFunction(std::string_view declaration, Method::Body body) {
    const Registry::HostOwned own(registry_);
    auto method = std::make_unique<Method>();
    method->signature = Signature::parse(declaration).value();
    method->body = std::move(body);
    method->isShared = true;
    functions_.push_back(std::move(method));
}

std::vector<const Method*> Runtime::findFunctions(std::string_view name) const {
    std::vector<const Method*> found;
    for (const auto& function : functions_)
        if (sameName(function->signature.name, name)) found.push_back(function.get());
    return found;
}

bool Runtime::hasPending() const {
    return static_cast<bool>(scheduler_->current().pendingException);
}

void Runtime::setPending(ObjectRef exception) {
    scheduler_->current().pendingException = std::move(exception);
}

ObjectRef Runtime::takePending() {
    return std::exchange(scheduler_->current().pendingException, nullptr);
}

void Runtime::throwPending() {
    if (hasPending()) throw Raised(takePending());
}

ObjectRef Runtime::makeException(std::string_view className, std::string_view message,
                                 std::int32_t errorNumber) {
    const Class* type = findClass(className);
    const Class* const root = findClass("RuntimeException");
    if (!type || !type->descendsFrom(*root)) type = root;
    ObjectRef exception = newInstance(*type);
    if (!exception) throw std::bad_alloc();
    root->findProperty("Message")->set(exception.get(), message);
    root->findProperty("ErrorNumber")->set(exception.get(), errorNumber);
    return exception;
}

void Runtime::reportMisuse(std::string_view sentence) {
    std::string report(Activity::current());
    if (!report.empty()) report += ": ";
    report += sentence;
    const std::lock_guard lock(misuseMutex_);
    misuse_.push_back(std::move(report));
}

std::vector<std::string> Runtime::report() const {
    std::vector<std::string> sentences = misuse_;
    std::ranges::move(registry_.leaks(), std::back_inserter(sentences));
    return sentences;
}

namespace {

thread_local Activity* innermost = nullptr;

} // namespace

Activity::Activity(std::string_view name)
    : name_(name)
    , outer_(std::exchange(innermost, this)) {}

Activity::~Activity() { innermost = outer_; }

std::string_view Activity::current() { return innermost ? innermost->name_ : std::string_view{}; }

} // namespace host
