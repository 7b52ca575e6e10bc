#pragma once

/// The running host. Plug-ins reach it through plain functions, so there is one at a time.

#include "host/objects/class.h"
#include "host/objects/registry.h"

#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct Options {
    /// What REALGetRBVersion answers; it also decides which services and records there are.
    double version = 2013.9;
    /// A console application: the class ConsoleApplication stands in for Application.
    bool console = false;
    /// Services that the resolver does not know.
    std::vector<std::string> without = {};
    /// The system version that Gestalt reports, such as "10.6.8"; empty for the default.
    std::string systemVersion = {};
    /// The CGImageAlphaInfo of the bitmap contexts that Pictures are kept in; 0 for the usual ones,
    /// premultiplied alpha first with an alpha channel and skipped alpha first without.
    int pictureLayout = 0;
    /// Leaves the base part out where the default plug-ins are loaded.
    bool withoutBase = false;
};

/// A host exception on its way through host code. It never crosses a plug-in: there a raised
/// exception is pending until the member returns.
class Raised : public std::exception {
public:
    explicit Raised(ObjectRef exception);
    const ObjectRef& exception() const { return exception_; }
    const Class* type() const;
    std::string className() const;
    std::string message() const;
    const char* what() const noexcept override { return what_.c_str(); }

private:
    ObjectRef exception_;
    std::string what_; ///< "Class: message"
};

/// Throws a new exception of the class; RuntimeException stands in for an unknown one.
[[noreturn]] void raise(std::string_view className, std::string_view message,
                        std::int32_t errorNumber = 0);

class Scheduler;

class Runtime {
public:
    /// Throws std::invalid_argument for an unknown name of a service in `without`.
    explicit Runtime(Options options = {});
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    static Runtime& current();
    static bool isRunning();

    const Options& options() const { return options_; }
    Registry& registry() { return registry_; }

    // Classes

    /// Null when there is no such class.
    const Class* findClass(std::string_view name) const;
    /// The host's own and then the plug-ins', in the order of their registration.
    const std::vector<std::unique_ptr<Class>>& classes() const { return classes_; }
    Class& addClass(std::unique_ptr<Class> added);
    /// The classes of arrays and of boxed Variants, which have no name that a program could use.
    const Class& arrayClass() const { return *arrayClass_; }
    const Class& variantClass() const { return *variantClass_; }

    /// An instance with one reference whose classes' constructors have run, the superclass's first;
    /// not the methods called Constructor. Nil when there is no memory.
    ObjectRef newInstance(const Class& type);
    /// Nil also for an unknown class and one that makes no instances.
    ObjectRef newInstance(std::string_view className);
    /// What `New Class(arguments)` does: an instance, then the fitting Constructor. Throws Raised;
    /// throws CallError for arguments that no Constructor takes.
    ObjectRef construct(const Class& type, std::vector<Value> arguments = {});

    // Members. All of these throw Raised when the member raised an exception.

    /// Converts the arguments to the declared types, fills in defaults, and calls. Conversions that
    /// do not exist raise TypeMismatchException; an instance method of Nil raises
    /// NilObjectException. With ByRef parameters `arguments` receives the changed values.
    Value call(const Method& method, REALobjectStruct* self, std::vector<Value>& arguments);
    Value call(const Method& method, REALobjectStruct* self, std::vector<Value>&& arguments = {});
    /// The same, but an exception that the member raised stays pending and the result is what the
    /// member returned.
    Value perform(const Method& method, REALobjectStruct* self, std::vector<Value>& arguments);
    Value get(const Property& property, REALobjectStruct* self);
    void set(const Property& property, REALobjectStruct* self, const Value& value);

    // Functions that belong to no class; plug-ins load them by their declarations.

    void addFunction(std::string_view declaration, Method::Body body);
    std::vector<const Method*> findFunctions(std::string_view name) const;

    // Exceptions

    // What is pending is so on the current thread.

    /// Makes an exception pending, as RuntimeRaiseException does; a later one replaces it.
    void setPending(ObjectRef exception);
    bool hasPending() const;
    ObjectRef takePending();
    /// Throws the pending exception, if there is one.
    void throwPending();
    ObjectRef makeException(std::string_view className, std::string_view message,
                            std::int32_t errorNumber = 0);

    // Plug-ins

    /// Loads a plug-in for good and runs its entry point. An error says why that could not be done.
    std::optional<std::string> loadPlugin(const std::string& path);
    const std::vector<std::string>& plugins() const { return plugins_; }
    /// The layout of class definitions that the latest plug-in declared; 0 before any did.
    int controlVersion = 0;

    // What the host noticed

    /// A plug-in broke a rule of the interface. The sentence is prefixed with the service or member
    /// that is at work.
    void reportMisuse(std::string_view sentence);
    const std::vector<std::string>& misuse() const { return misuse_; }
    void forgetMisuse() { misuse_.clear(); }
    /// Misuse and what was not given back; empty when all is well.
    std::vector<std::string> report() const;

    /// The times that the plug-ins let the host's threads run.
    std::size_t yields = 0;
    /// The text of every message box that a plug-in showed.
    std::vector<std::string> messages;

    /// Releases what Cocoa code autoreleased, as a host does between events. Done by itself now and
    /// then when no member is at work.
    void drainPool();

    Scheduler& scheduler() { return *scheduler_; }
    /// Whether the caller runs on one of the host's threads; plug-ins may call from no other.
    bool onHostThread() const;

private:
    void defineClasses();

    /// Counts the members at work.
    class Depth;

    Options options_;
    std::unique_ptr<Scheduler> scheduler_;
    Registry registry_;
    std::unique_ptr<Class> arrayClass_;
    std::unique_ptr<Class> variantClass_;
    std::vector<std::unique_ptr<Class>> classes_;
    std::map<std::string, Class*, std::less<>> classesByName_;
    std::vector<std::unique_ptr<Method>> functions_;
    std::vector<std::string> plugins_;
    std::mutex misuseMutex_; ///< a plug-in's own thread may break a rule too
    std::vector<std::string> misuse_;
};

/// A call that the program got wrong: no overload takes the arguments. Not catchable by it.
class CallError : public std::exception {
public:
    explicit CallError(std::string message)
        : message_(std::move(message)) {}
    const char* what() const noexcept override { return message_.c_str(); }

private:
    std::string message_;
};

/// The overload for the arguments' own types; throws CallError naming what was given.
const Method& overloadFor(std::string_view name, std::span<const Method* const> candidates,
                          std::span<const Value> arguments);

/// Names the service or member at work, for reports, for as long as it lives. The name is kept in
/// the records of what is made meanwhile, so it must live as long as the Runtime.
class Activity {
public:
    explicit Activity(std::string_view name);
    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;
    static std::string_view current();

private:
    std::string_view name_;
    Activity* outer_;
};

} // namespace host
