// Late binding: an object whose members are reached by name.
#pragma once

#include "automation/Value.h"

#include <array>
#include <functional>
#include <span>

namespace automation {

enum class Access {
    get,    ///< read a property or call a method: the language writes both alike
    put,    ///< assign a value; it is the last argument
    putRef, ///< assign an object ("Set"); it is the last argument
};

/// In call order. An argument may be a Reference, which the member may write to.
using Arguments = std::span<Value>;

class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    /// Member names are case-insensitive; the empty name is the default member.
    /// Errors: 438 unknown member, 450 wrong number of arguments, 13 wrong kind of argument, and the member's own.
    virtual Value invoke(Access access, std::string_view member, Arguments arguments) = 0;
    virtual bool has(std::string_view member) const = 0;
    /// The class as a component asks for it by type, for example "ComboBox".
    virtual std::string className() const = 0;
    /// What a "for each" over this object visits. Error 438 where it is no collection.
    virtual Array elements();

    template <class... A> Value call(std::string_view member, A&&... arguments) {
        std::array<Value, sizeof...(A)> list{Value(std::forward<A>(arguments))...};
        return invoke(Access::get, member, list);
    }
    Value get(std::string_view member) { return invoke(Access::get, member, {}); }
    void put(std::string_view member, Value value) { invoke(Access::put, member, Arguments(&value, 1)); }
    void putRef(std::string_view member, Value value) { invoke(Access::putRef, member, Arguments(&value, 1)); }
};

/// Makes the object that a ProgID names (case-insensitive). Error 429 when there is none.
using ObjectFactory = std::function<ObjectPtr(std::string_view progId)>;

} // namespace automation
