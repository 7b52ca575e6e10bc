#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"
#include "host/threads/scheduler.h"

namespace host::exports {

void yieldToRB() {
    Runtime& runtime = Runtime::current();
    ++runtime.yields;
    runtime.scheduler().yield();
}

std::uint8_t inDebugMode() { return 0; }

void messageBox(REALstringStruct* message) {
    if (!arguments::isText(1, message)) return;
    Runtime::current().messages.push_back(StringRef::retain(message).utf8());
}

} // namespace host::exports
