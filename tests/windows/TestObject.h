// An object of ours with members of every kind, for calls over the bridges.
#pragma once

#include "automation/Members.h"

#include <stdexcept>

namespace tests {

class TestObject final : public automation::Object {
public:
    automation::Value kept;
    automation::Access lastAccess = automation::Access::get;
    automation::Value assignment; ///< what a by-reference argument becomes
    automation::Array items;

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override {
        lastAccess = access;
        return members().invoke(*this, access, member, arguments);
    }
    bool has(std::string_view member) const override { return members().has(member); }
    std::string className() const override { return "ComboBox"; }
    automation::Array elements() override { return items; }

private:
    static const automation::Members<TestObject>& members() {
        using namespace automation;
        static const auto table = [] {
            Members<TestObject> all;
            all.property(
                "Kept", [](TestObject& self) { return self.kept; },
                [](TestObject& self, const Value& value) { self.kept = value; });
            all.property(
                "", [](TestObject&) { return Value("by default"); }, nullptr);
            all.method("Echo", 1, 1, [](TestObject&, Arguments arguments) { return arguments[0].resolved(); });
            all.method("Change", 1, 1, [](TestObject& self, Arguments arguments) {
                arguments[0].resolved() = self.assignment;
                return Value();
            });
            all.method("ChangeAndFail", 1, 1, [](TestObject& self, Arguments arguments) -> Value {
                arguments[0].resolved() = self.assignment;
                throw RunTimeError(1004, "changed, then failed", "tests");
            });
            all.method("Order", 3, 3, [](TestObject&, Arguments arguments) {
                return *arguments[0].as<std::string>() + *arguments[1].as<std::string>() +
                       *arguments[2].as<std::string>();
            });
            all.method("Fail", 3, 3, [](TestObject&, Arguments arguments) -> Value {
                throw RunTimeError(*arguments[0].as<std::int32_t>(), *arguments[1].as<std::string>(),
                                   *arguments[2].as<std::string>());
            });
            all.method("Throw", 0, 0, [](TestObject&, Arguments) -> Value { throw std::logic_error("broken"); });
            all.method("ThrowOther", 0, 0, [](TestObject&, Arguments) -> Value { throw 5; });
            return all;
        }();
        return table;
    }
};

} // namespace tests
