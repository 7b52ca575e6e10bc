#include "host/objects/object.h"

#include "host/objects/control.h"
#include "host/objects/runtime.h"

namespace host {

ObjectRef::ObjectRef(const ObjectRef& other)
    : object_(other.object_) {
    if (object_ && Runtime::isRunning()) Runtime::current().registry().retain(object_);
}

ObjectRef::~ObjectRef() {
    if (object_ && Runtime::isRunning()) Runtime::current().registry().release(object_);
}

ObjectRef ObjectRef::adopt(REALobjectStruct* object) {
    ObjectRef reference;
    reference.object_ = object;
    return reference;
}

ObjectRef ObjectRef::retain(REALobjectStruct* object) {
    const ObjectRef borrowed = adopt(object);
    ObjectRef reference = borrowed;
    const_cast<ObjectRef&>(borrowed).release();
    return reference;
}

const Class* classOf(const REALobjectStruct* object) {
    const Control* const control = object ? controlOf(object) : nullptr;
    return control ? control->type : nullptr;
}

bool isA(const REALobjectStruct* object, const Class* wanted) {
    const Class* const type = classOf(object);
    return type && wanted && type->descendsFrom(*wanted);
}

State* stateOf(const REALobjectStruct* object) {
    const Control* const control = object ? controlOf(object) : nullptr;
    return control ? control->state.get() : nullptr;
}

} // namespace host
