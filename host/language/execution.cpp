#include "host/language/execution.h"

#include "host/objects/runtime.h"
#include "host/plugins/foreign_exceptions.h"

#include <new>

namespace host::language {

std::string ProgramError::text(std::string_view file) const {
    return std::string(file) + ":" + std::to_string(line) + ": " + className + ": " + message;
}

void Execution::perform(const std::function<void(Machine& machine)>& work) {
    Machine machine(*this);
    const auto fail = [&](std::string className, std::string message) {
        end({1, ProgramError{machine.line, std::move(className), std::move(message)}});
    };
    try {
        if (const auto foreign = doUntilForeignException([&] { work(machine); }))
            fail(foreign->name, foreign->text);
    } catch (const EndRequest&) {
        // Whoever asked for it knows why.
    } catch (const QuitRequest& quit) {
        end({quit.status, std::nullopt});
    } catch (const Raised& raised) {
        fail(raised.className(), raised.message());
    } catch (const std::bad_alloc&) {
        fail("OutOfMemoryException", "There is no memory left");
    }
}

void Execution::end(RunResult result) {
    Scheduler& scheduler = Runtime::current().scheduler();
    // What still goes wrong in a thread that was told to end changes nothing.
    if (scheduler.current().isEnding()) return;
    result_ = std::move(result);
    scheduler.endAll();
}

} // namespace host::language
