// An object of ours with members of every kind, for calls over the bridges.
#pragma once

#include "automation/Members.h"

#include <stdexcept>

namespace tests {

class TestObject final : public automation::WithMembers<TestObject> {
public:
    automation::Value kept;
    automation::Access lastAccess = automation::Access::get;
    automation::Value assignment; ///< what a by-reference argument becomes
    automation::Array items;

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override {
        lastAccess = access;
        return WithMembers::invoke(access, member, arguments);
    }
    std::string className() const override { return "ComboBox"; }
    automation::Array elements() override { return items; }

    static const automation::Members<TestObject>& members() {
        using namespace automation;
        static const Members<TestObject> all =
            Members<TestObject>()
                .property(
                    "Kept", [](TestObject& self) { return self.kept; },
                    [](TestObject& self, const Value& value) { self.kept = value; })
                .readOnly("", [](TestObject&) { return Value("by default"); })
                .method("Echo", 1, 1, [](TestObject&, Arguments arguments) { return arguments[0].resolved(); })
                .method("Change", 1, 1,
                        [](TestObject& self, Arguments arguments) {
                            arguments[0].resolved() = self.assignment;
                            return Value();
                        })
                .method("Fail", 3, 3, // with that number, description and source, and after it has changed the first
                        [](TestObject& self, Arguments arguments) -> Value {
                            const RunTimeError error(*arguments[0].resolved().as<std::int32_t>(),
                                                     *arguments[1].as<std::string>(), *arguments[2].as<std::string>());
                            arguments[0].resolved() = self.assignment;
                            throw error;
                        })
                .method("Execute", 0, 0, [](TestObject&, Arguments) { return Value(); }) // as a connection has, too
                .method("Throw", 0, 0, [](TestObject&, Arguments) -> Value { throw std::logic_error("broken"); })
                .method("ThrowOther", 0, 0, [](TestObject&, Arguments) -> Value { throw 5; });
        return all;
    }
};

} // namespace tests
