#include "host/objects/thread.h"

#include "host/objects/host_classes.h"
#include "host/threads/scheduler.h"

#include <algorithm>

namespace host {

namespace {

// The values of the property State.
constexpr REALword running = 0;
constexpr REALword suspended = 2;
constexpr REALword sleeping = 3;
constexpr REALword notRunning = 4;

constexpr REALword normalPriority = 5;
constexpr REALword highestPriority = 100;

struct Thread : State {
    ObjectRef work; ///< a Delegate
    REALword priority = normalPriority;
    Value tag = nullptr;
    HostThread* started = nullptr; ///< null when it does not run
};

Thread& threadOf(REALobjectStruct* self) { return *stateOf<Thread>(self); }

Scheduler& scheduler() { return Runtime::current().scheduler(); }

Value construct(REALobjectStruct* self, std::span<Value> arguments) {
    threadOf(self).work = arguments[0].objectRef();
    return {};
}

Value run(REALobjectStruct* self, std::span<Value>) {
    Thread& thread = threadOf(self);
    if (thread.started) raise("ThreadAlreadyRunningException", "The Thread runs already.");
    const auto* const delegate = stateOf<Delegate>(thread.work);
    if (!delegate) raise("NilObjectException", "The Thread has no Sub to run.");
    // The system's thread keeps the object for as long as it is there.
    const auto work = [self, &thread, call = delegate->call] {
        call(ObjectRef::retain(self));
        thread.started = nullptr;
    };
    thread.started =
        scheduler().start(ObjectRef::retain(self), static_cast<int>(thread.priority), work);
    if (!thread.started) raise("OutOfMemoryException", "There is no room for a further thread.");
    return {};
}

/// A method that does nothing for a Thread that does not run.
template <typename Action>
Method::Body whileRunning(Action action) {
    return [action](REALobjectStruct* self, std::span<Value> arguments) -> Value {
        if (HostThread* const started = threadOf(self).started) action(*started, arguments);
        return {};
    };
}

Value state(REALobjectStruct* self) {
    const HostThread* const started = threadOf(self).started;
    if (!started) return notRunning;
    switch (started->state()) {
    case HostThread::State::Sleeping:
        return sleeping;
    case HostThread::State::Suspended:
        return suspended;
    default:
        return running;
    }
}

void setPriority(REALobjectStruct* self, const Value& value) {
    Thread& thread = threadOf(self);
    thread.priority =
        static_cast<REALword>(std::clamp<std::int64_t>(value.toInt64(), 1, highestPriority));
    if (thread.started) thread.started->priority = static_cast<int>(thread.priority);
}

} // namespace

ObjectRef newDelegate(std::function<void(const ObjectRef& sender)> call) {
    Runtime& runtime = Runtime::current();
    ObjectRef object = runtime.newInstance(*runtime.findClass("Delegate"));
    if (auto* const delegate = stateOf<Delegate>(object)) delegate->call = std::move(call);
    return object;
}

void defineThread(Runtime& runtime) {
    Class& delegate = defineClass(runtime, "Delegate");
    delegate.canBeInstantiated = false;
    delegate.makeState = [] { return std::make_unique<Delegate>(); };

    Class& type = defineClass(runtime, "Thread");
    type.makeState = [] { return std::make_unique<Thread>(); };
    type.addConstant("Running", running);
    type.addConstant("Suspended", suspended);
    type.addConstant("Sleeping", sleeping);
    type.addConstant("NotRunning", notRunning);
    type.addMethod("Constructor(work As Delegate)", construct);
    type.addMethod("Run()", run);
    type.addMethod("Suspend()", whileRunning([](HostThread& thread, std::span<Value>) {
                       scheduler().suspend(thread);
                   }));
    type.addMethod("Resume()", whileRunning([](HostThread& thread, std::span<Value>) {
                       scheduler().resume(thread);
                   }));
    type.addMethod("Sleep(milliseconds As Integer)",
                   whileRunning([](HostThread& thread, std::span<Value> arguments) {
                       scheduler().sleep(thread, arguments[0].toInt64());
                   }));
    type.addMethod("Kill()", whileRunning([](HostThread& thread, std::span<Value>) {
                       scheduler().end(thread);
                   }));
    type.addProperty("State", Type::integer(), state);
    type.addProperty(
        "Priority", Type::integer(),
        [](REALobjectStruct* self) -> Value { return threadOf(self).priority; }, setPriority);
    type.addProperty(
        "Tag", Kind::Variant, [](REALobjectStruct* self) -> Value { return threadOf(self).tag; },
        [](REALobjectStruct* self, const Value& value) {
            // The old value goes last: its destructor may look here.
            Value old = std::exchange(threadOf(self).tag, value);
        });
}

} // namespace host
