#include "automation/Value.h"

#include "automation/Object.h"
#include "automation/RunTimeError.h"

namespace automation {

const Value& Value::resolved() const {
    const auto* reference = std::get_if<Reference>(&storage_);
    return reference ? reference->target->resolved() : *this;
}

Value& Value::resolved() {
    auto* reference = std::get_if<Reference>(&storage_);
    return reference ? reference->target->resolved() : *this;
}

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
