// The value that crosses the module's edge: what a late-bound call takes and gives.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace automation {

class Object;
class Value;
using ObjectPtr = std::shared_ptr<Object>;
using Array = std::vector<Value>;

struct Empty {
    bool operator==(const Empty&) const = default;
};
struct Null {
    bool operator==(const Null&) const = default;
};
/// An optional argument that the caller left out.
struct Missing {
    bool operator==(const Missing&) const = default;
};
/// Fixed-point money with four decimals.
struct Currency {
    std::int64_t tenThousandths = 0;
    bool operator==(const Currency&) const = default;
};
/// A decimal number kept as its exact text: an optional "-", digits, and optionally "." with digits.
struct Decimal {
    std::string text;
    bool operator==(const Decimal&) const = default;
};
/// Days since 1899-12-30; the fraction is the time of day (also before that day, where the fraction still counts up).
struct Date {
    double days = 0;
    bool operator==(const Date&) const = default;
};
/// An argument passed by reference: the called member may write to `target`, which must outlive the call.
struct Reference {
    Value* target = nullptr;
    bool operator==(const Reference&) const = default;
};

/// Text is UTF-8. Conversions between the kinds are the language's rules and live in `basic/`.
class Value {
public:
    using Storage = std::variant<Empty, Null, Missing, bool, std::int16_t, std::int32_t, double, Currency, Decimal,
                                 Date, std::string, Array, ObjectPtr, Reference>;

    Value() = default;
    Value(Empty) {}
    Value(Null v) : storage_(v) {}
    Value(Missing v) : storage_(v) {}
    Value(bool v) : storage_(v) {}
    Value(std::int16_t v) : storage_(v) {}
    Value(std::int32_t v) : storage_(v) {}
    Value(double v) : storage_(v) {}
    Value(Currency v) : storage_(v) {}
    Value(Decimal v) : storage_(std::move(v)) {}
    Value(Date v) : storage_(v) {}
    Value(std::string v) : storage_(std::move(v)) {}
    Value(std::string_view v) : storage_(std::string(v)) {}
    Value(const char* v) : storage_(std::string(v)) {}
    Value(Array v) : storage_(std::move(v)) {}
    Value(ObjectPtr v) : storage_(std::move(v)) {}
    template <std::derived_from<Object> T> Value(std::shared_ptr<T> v) : storage_(ObjectPtr(std::move(v))) {}

    /// Passes `target` by reference.
    static Value byReference(Value& target) {
        Value v;
        v.storage_ = Reference{&target};
        return v;
    }

    /// The value itself, or what a reference refers to.
    const Value& resolved() const {
        const auto* reference = std::get_if<Reference>(&storage_);
        return reference ? reference->target->resolved() : *this;
    }
    Value& resolved() {
        auto* reference = std::get_if<Reference>(&storage_);
        return reference ? reference->target->resolved() : *this;
    }

    template <class T> bool is() const { return std::holds_alternative<T>(resolved().storage_); }
    template <class T> const T* as() const { return std::get_if<T>(&resolved().storage_); }
    bool isReference() const { return std::holds_alternative<Reference>(storage_); }
    bool isEmpty() const { return is<Empty>(); }
    bool isNull() const { return is<Null>(); }
    bool isMissing() const { return is<Missing>(); }
    bool isObject() const { return is<ObjectPtr>(); }
    bool isText() const { return is<std::string>(); }

    /// The object held. Errors: 13 when this is no object, 91 when it is an object variable that holds none.
    Object& object() const;
    ObjectPtr objectPtr() const;

    const Storage& storage() const { return resolved().storage_; }
    bool operator==(const Value&) const = default;

private:
    Storage storage_;
};

} // namespace automation
