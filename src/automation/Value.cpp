#include "automation/Value.h"

#include "automation/Object.h"
#include "automation/RunTimeError.h"

namespace automation {

ObjectPtr Value::objectPtr() const {
    const ObjectPtr* held = as<ObjectPtr>();
    if (!held) raise(isEmpty() ? kObjectNotSet : kTypeMismatch);
    return *held;
}

Object& Value::object() const {
    ObjectPtr held = objectPtr();
    if (!held) raise(kObjectNotSet);
    return *held;
}

} // namespace automation
