#pragma once

/// A running host for a test, with the built plug-ins loaded:
///
///     Host host{{.version = 2009.05, .console = true, .without = {"REALLockObject"}}};
///     host::ObjectRef image = host.create("NSImageZNT", 100.0, 50.0);
///     EXPECT_EQ(host.get<double>(image, "width"), 100);
///     EXPECT_EQ(host.shared("NSImageZNT", "imageWithData(data as memoryblock) as NSImageZNT",
///     nullptr), nullptr); EXPECT_EQ(host.raised(), "NilObjectException: Memoryblock is nil");
///
/// A process has one host only. When it ends, every reference must have come back, no plug-in may
/// have misused the interface, and no raised exception may have been left unexamined.

#include "host/objects/array.h"
#include "host/objects/runtime.h"
#include "host/services/services.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct HostOptions {
    double version = 2013.9;
    bool console = false;
    std::vector<std::string> without = {};
    std::string systemVersion = {};
    bool withoutBase = false;
    /// As host::Options has it.
    int pictureLayout = 0;
    /// Loads these files in place of the built Base.so and NSImage.so.
    std::vector<std::string> plugins = {};
    /// Loads no plug-in.
    bool bare = false;
};

class Host {
public:
    explicit Host(const HostOptions& options = {});
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    host::Runtime& runtime() { return runtime_; }

    // Members. A member is named by its name, where the overload is chosen by the arguments, or by
    // its whole declaration. When it raises, the result is what the member returned to the host,
    // and raised() tells the exception. Result may be host::Value, host::ObjectRef, std::string
    // (UTF-8), bool, double or an integer; a member with another type of result fails the test.

    /// `New className(arguments...)`. The instance is there also when its Constructor raised.
    template <typename... Arguments>
    host::ObjectRef create(std::string_view className, Arguments&&... arguments) {
        return createWith(className, "Constructor", values(std::forward<Arguments>(arguments)...));
    }
    /// The same with the Constructor of this declaration.
    template <typename... Arguments>
    host::ObjectRef createBy(std::string_view className, std::string_view declaration,
                             Arguments&&... arguments) {
        return createWith(className, declaration, values(std::forward<Arguments>(arguments)...));
    }
    /// An instance on which no method called Constructor ran.
    host::ObjectRef instance(std::string_view className);

    template <typename Result = host::Value, typename... Arguments>
    Result call(const host::ObjectRef& object, std::string_view method, Arguments&&... arguments) {
        return as<Result>(callWith(object, method, values(std::forward<Arguments>(arguments)...)));
    }
    template <typename Result = host::Value, typename... Arguments>
    Result shared(std::string_view className, std::string_view method, Arguments&&... arguments) {
        return as<Result>(
            sharedWith(className, method, values(std::forward<Arguments>(arguments)...)));
    }
    /// `object.method(arguments...) = value`; the value is the last argument.
    template <typename... Arguments>
    void assign(const host::ObjectRef& object, std::string_view method, Arguments&&... arguments) {
        assignWith(object, method, values(std::forward<Arguments>(arguments)...));
    }
    template <typename Result = host::Value>
    Result get(const host::ObjectRef& object, std::string_view property) {
        return as<Result>(getValue(object, property));
    }
    void set(const host::ObjectRef& object, std::string_view property, const host::Value& value);
    template <typename Result = host::Value>
    Result constant(std::string_view className, std::string_view name) {
        return as<Result>(constantValue(className, name));
    }

    /// "Class: message" of the exception that the last member call raised, empty when it raised
    /// none. Asking clears it; what nobody asks for fails the test.
    std::string raised();
    /// The same exception as an object, to read its ErrorNumber from.
    host::ObjectRef takeRaised();

    // Values

    host::ObjectRef memoryBlock(std::string_view bytes);
    std::string bytes(const host::ObjectRef& memoryBlock);
    host::ObjectRef folderItem(const std::string& path);
    std::string path(const host::ObjectRef& folderItem);
    host::StringRef text(std::string_view bytes, std::uint32_t encoding = REALtextEncodingUTF8);
    host::ObjectRef arrayOf(const host::Type& elementType, std::vector<host::Value> elements = {});
    std::vector<host::Value> elements(const host::Value& array);

    // Counts

    /// Host references of an object or a string.
    int references(const host::ObjectRef& object);
    int references(const host::StringRef& string);
    /// Live instances of exactly this class.
    std::size_t instances(std::string_view className);
    /// The wrapped Cocoa object: what the property Handle holds.
    void* handle(const host::ObjectRef& object);
    /// Retain count of a Cocoa or Core Foundation object; 0 for null.
    static long retainCount(const void* cocoaObject);
    /// The host wrapper that the base part's dictionary holds for a Cocoa object, and the number of
    /// its entries; null and 0 without the base part.
    static REALobjectStruct* wrapper(const void* cocoaObject);
    static long wrapperCount();

    // Services

    /// How often a plug-in looked the service up.
    int lookups(std::string_view service) { return host::Services::lookups(service); }
    /// How often a plug-in called it.
    int calls(std::string_view service) { return host::Services::calls(service); }
    /// Offers a service or withdraws it, for lookups from now on.
    void offer(std::string_view service, bool offered = true) {
        host::Services::offer(service, offered);
    }
    /// Lets the next calls of the service return the neutral value and do nothing.
    template <typename Function>
    void fail(const REALservice<Function>& service, int times = 1) {
        host::Services::fail(service.name, times);
    }
    /// Puts another function in the service's place, for callers that know its address too; null
    /// puts the host's own back.
    template <typename Function>
    void replace(const REALservice<Function>& service,
                 std::type_identity_t<Function>* replacement) {
        host::Services::replace(service, replacement);
    }

    // What the host noticed

    /// What the plug-ins did wrong so far, and what is not given back right now. The former is
    /// forgotten and no longer fails the test.
    std::vector<std::string> takeReports();
    /// For tests in which a reference cannot come back, such as with REALUnlockObject left out.
    void tolerateLeaks() { toleratesLeaks_ = true; }

    // Programs

    struct Outcome {
        int status = 0;     ///< as rbhost's exit status
        std::string output; ///< what it printed
        std::string error;  ///< what it wrote to StdErr, and "program.bas:LINE: Class: message\n"
    };
    /// Runs a program of the host's language in this host.
    Outcome run(std::string_view source, std::vector<std::string> arguments = {});

    /// The file of a plug-in that the build made: "Base", "NSImage".
    static std::string plugin(std::string_view name);

private:
    static std::vector<host::Value> values(auto&&... arguments) {
        std::vector<host::Value> list;
        (list.emplace_back(std::forward<decltype(arguments)>(arguments)), ...);
        return list;
    }
    template <typename Result>
    Result as(const host::Value& value);

    /// The class of the name, which the test must not have got wrong.
    const host::Class* classNamed(std::string_view name);
    /// The candidate of that declaration, or the one for the arguments; null fails the test.
    static const host::Method* choose(std::string_view method,
                                      const std::vector<const host::Method*>& candidates,
                                      const std::vector<host::Value>& arguments);
    host::Value performed(const host::Method* method, const host::ObjectRef& object,
                          std::vector<host::Value> arguments);
    /// Does the work and keeps the exception that it raises.
    host::Value guarded(const std::function<host::Value()>& work);
    void expectExamined();

    host::ObjectRef createWith(std::string_view className, std::string_view constructor,
                               std::vector<host::Value> arguments);
    host::Value callWith(const host::ObjectRef& object, std::string_view method,
                         std::vector<host::Value> arguments);
    host::Value sharedWith(std::string_view className, std::string_view method,
                           std::vector<host::Value> arguments);
    void assignWith(const host::ObjectRef& object, std::string_view method,
                    std::vector<host::Value> arguments);
    host::Value getValue(const host::ObjectRef& object, std::string_view property);
    host::Value constantValue(std::string_view className, std::string_view name);

    host::Runtime runtime_;
    host::ObjectRef raised_;
    bool toleratesLeaks_ = false;
};

template <typename Result>
Result Host::as(const host::Value& value) {
    if constexpr (std::same_as<Result, host::Value>) {
        return value;
    } else if constexpr (std::same_as<Result, host::ObjectRef>) {
        EXPECT_EQ(value.kind(), host::Kind::Object) << "the result is no object";
        return value.objectRef();
    } else if constexpr (std::same_as<Result, std::string>) {
        EXPECT_EQ(value.kind(), host::Kind::String) << "the result is no String";
        return value.utf8();
    } else if constexpr (std::same_as<Result, bool>) {
        EXPECT_EQ(value.kind(), host::Kind::Boolean) << "the result is no Boolean";
        return value.toBoolean();
    } else if constexpr (std::floating_point<Result>) {
        EXPECT_TRUE(value.isNumber()) << "the result is no number";
        return static_cast<Result>(value.toDouble());
    } else {
        static_assert(std::integral<Result>);
        EXPECT_TRUE(host::Type(value.kind()).isInteger()) << "the result is no integer";
        return static_cast<Result>(value.toInt64());
    }
}
