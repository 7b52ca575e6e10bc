// Compiled only by the tests, once for each kind of entry.

#include "sdk/tables.h"

namespace {

using namespace REALtables;

REALobjectStruct* make(REALmemoryBlockStruct*) { return nullptr; }
REALword count(REALobjectStruct*, REALword) { return 0; }

#if defined(ENTRY_CONTROL)
REALmethod entry = shared_method("make(data as memoryblock) as NSImageZNT", make);
REALproperty number = property("count", "Integer", count);
REALconstant constant_entry = constant("Limit = 10");
#elif defined(ENTRY_WRONG_PARAMETER)
REALmethod entry = shared_method("make(data as string) as NSImageZNT", make);
#elif defined(ENTRY_WRONG_RESULT)
REALmethod entry = shared_method("make(data as memoryblock) as boolean", make);
#elif defined(ENTRY_WRONG_COUNT)
REALmethod entry = shared_method("make(data as memoryblock, more as double) as NSImageZNT", make);
#elif defined(ENTRY_WRONG_PROPERTY)
REALproperty number = property("count", "Double", count);
#elif defined(ENTRY_WRONG_CONSTANT)
REALconstant constant_entry = constant("Limit");
#elif defined(ENTRY_NOT_A_DECLARATION)
REALmethod entry = shared_method("make(data as memoryblock as NSImageZNT", make);
#endif

} // namespace
