#include "host/language/machine.h"

#include "host/language/execution.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <pthread.h>
#include <utility>

namespace host::language {
namespace {

/// Below this address calls are refused, so that what a statement calls still has room: expressions
/// nested to the parser's limit, and plug-ins.
const char* stackLimitOfThisThread() {
    constexpr std::size_t reserve = std::size_t{2} << 20;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return nullptr;
    void* lowest = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &lowest, &size);
    pthread_attr_destroy(&attributes);
    return static_cast<const char*>(lowest) + std::min(reserve, size / 2);
}

} // namespace

Machine::Machine(Execution& execution)
    : execution_(execution)
    , globals_(execution.globals())
    , scheduler_(Runtime::current().scheduler())
    , thread_(scheduler_.current())
    , stackLimit_(stackLimitOfThisThread()) {}

void Machine::checkStack() const {
    if (static_cast<const char*>(__builtin_frame_address(0)) < stackLimit_)
        raise("StackOverflowException", "The calls are nested too deep");
}

Value Machine::call(const RoutineNode& routine, Frame& frame) {
    checkStack();
    struct Switch {
        Switch(Frame*& current, Frame& next)
            : current(current)
            , previous(std::exchange(current, &next)) {}
        ~Switch() { current = previous; }
        Frame*& current;
        Frame* previous;
    } const entered(frame_, frame);
    const int callingLine = line;
    const Flow flow = routine.body.execute(*this);
    line = callingLine;
    return flow == Flow::Return ? std::exchange(result, Value()) : neutralValue(routine.result);
}

} // namespace host::language
