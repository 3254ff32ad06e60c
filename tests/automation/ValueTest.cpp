#include "automation/Value.h"
#include "automation/Members.h"
#include "automation/Object.h"
#include "tests/basic/ExpectError.h"

#include <gtest/gtest.h>

using namespace automation;

namespace {

/// A list box in small: every kind of member that a table can hold.
struct Shelf : WithMembers<Shelf> {
    std::string className() const override { return "Shelf"; }

    std::string caption = "left";
    std::array<std::string, 2> goods{"tea", "salt"};

    std::string& at(const Value& index) {
        const auto* place = index.as<std::int32_t>();
        if (!place) raise(kTypeMismatch);
        if (*place < 0 || *place > 1) raise(kSubscriptOutOfRange);
        return goods[static_cast<std::size_t>(*place)];
    }
    static const Members<Shelf>& members() {
        static const Members<Shelf> table =
            Members<Shelf>()
                .property(
                    "Caption", [](Shelf& self) { return Value(self.caption); },
                    [](Shelf& self, const Value& value) { self.caption = *value.as<std::string>(); })
                .readOnly("Count", [](Shelf&) { return Value(2); })
                .indexed(
                    "Goods", 1, [](Shelf& self, Arguments a) { return Value(self.at(a[0])); },
                    [](Shelf& self, Arguments a) { return Value(self.at(a[0]) = *a[1].as<std::string>()); })
                .method("Swap", 1, 2,
                        [](Shelf&, Arguments a) { return a[0].resolved() = Value(a.size() == 2 ? "both" : "one"); });
        return table;
    }
};

TEST(LateBinding, FindsMembersByNameInAnyCase) {
    Shelf shelf;
    EXPECT_EQ(shelf.get("caption"), Value("left"));
    Value variable("renamed");
    shelf.put("CAPTION", Value::byReference(variable));
    EXPECT_EQ(shelf.caption, "renamed");
    EXPECT_EQ(shelf.call("goods", 1), Value("salt"));
    std::array<Value, 2> indexAndValue{Value(1), Value("rice")};
    shelf.invoke(Access::put, "Goods", indexAndValue);
    EXPECT_EQ(shelf.goods[1], "rice");
    EXPECT_TRUE(shelf.has("COUNT"));
    EXPECT_FALSE(shelf.has("Coun"));
    // What is passed by reference is written to.
    shelf.call("Swap", Value::byReference(variable));
    EXPECT_EQ(variable, Value("one"));
    shelf.call("Swap", variable, 2.0);
    EXPECT_EQ(variable, Value("one"));
}

TEST(LateBinding, SaysWhatIsWrongWithACall) {
    Shelf shelf;
    const std::pair<ErrorNumber, std::vector<std::function<void()>>> cases[] = {
        {kNoSuchMember,
         {[&] { shelf.get("Colour"); }, [&] { shelf.put("Colour", 1.0); }, [&] { shelf.put("Count", 3); },
          [&] { shelf.put("Swap", 1.0); }, [&] { shelf.elements(); }}},
        {kWrongNumberOfArguments,
         {[&] { shelf.call("Caption", 1.0); }, [&] { shelf.get("Goods"); }, [&] { shelf.put("Goods", "x"); },
          [&] { shelf.call("Swap"); }, [&] { shelf.call("Swap", 1.0, 2.0, 3.0); }}},
        {kTypeMismatch,
         {[&] { shelf.call("Goods", "first"); }, [] { Value("text").object(); }, [] { Value(Null()).object(); }}},
        {kSubscriptOutOfRange, {[&] { shelf.call("Goods", 2); }}},
        {kObjectNotSet, {[] { Value().object(); }, [] { Value(ObjectPtr()).object(); }}},
    };
    for (const auto& [error, acts] : cases)
        for (const auto& act : acts) EXPECT_EQ(errorOf(act), error) << &act - acts.data();
    EXPECT_EQ(shelf.caption, "left");
}

TEST(MemberNames, CompareWithoutCaseInAsciiOnly) {
    EXPECT_TRUE(sameName("ListCount", "LISTcount"));
    // "@" and "`" are 32 apart as letters are, but no letters.
    for (const auto& [a, b] : {std::pair("List", "ListCount"), {"@", "`"}, {"[", "{"}, {"\u00c9", "\u00e9"}})
        EXPECT_FALSE(sameName(a, b)) << a;
    EXPECT_FALSE(NameLess()("ABC", "abc") || NameLess()("abc", "ABC"));
    EXPECT_TRUE(NameLess()("abc", "ABD") && NameLess()("AB", "abc"));
}

TEST(Value, KeepsItsKindAlsoThroughReferences) {
    const auto shelf = std::make_shared<Shelf>();
    EXPECT_TRUE(Value().isEmpty() && Value(Null()).isNull() && Value(Missing()).isMissing());
    EXPECT_TRUE(Value("text").isText()); // not a boolean, which a pointer would become
    EXPECT_TRUE(Value(true).is<bool>() && Value(1).is<std::int32_t>() && Value(std::int16_t{1}).is<std::int16_t>());
    EXPECT_TRUE(Value(shelf).isObject());
    EXPECT_EQ(&Value(shelf).object(), shelf.get());
    EXPECT_EQ(Value(ObjectPtr()).objectPtr(), nullptr);
    EXPECT_NE(Value(std::int16_t{1}), Value(1));
    EXPECT_NE(Value(), Value(Null()));
    EXPECT_NE(Value(Decimal{"1.0"}), Value(Decimal{"1.00"}));
    Value innermost("text");
    Value middle = Value::byReference(innermost);
    Value outer = Value::byReference(middle);
    EXPECT_TRUE(outer.isReference() && outer.isText());
    EXPECT_EQ(&outer.resolved(), &innermost);
    outer.resolved() = Value(Null());
    EXPECT_TRUE(innermost.isNull() && outer.isNull());
}

TEST(RunTimeErrors, CarryTheTextUsersKnow) {
    const std::pair<ErrorNumber, const char*> cases[] = {
        // clang-format off
        {kInvalidCall, "5 Invalid procedure call or argument"}, {kOverflow, "6 Overflow"},
        {kSubscriptOutOfRange, "9 Subscript out of range"}, {kTypeMismatch, "13 Type mismatch"},
        {kFileNotFound, "53 File not found"}, {kPathAccess, "75 Path/File access error"},
        {kPathNotFound, "76 Path not found"}, {kObjectNotSet, "91 Object variable or With block variable not set"},
        {kInvalidUseOfNull, "94 Invalid use of Null"},
        {kCannotCreateObject, "429 ActiveX component can't create object"},
        {kNoSuchMember, "438 Object doesn't support this property or method"},
        {kWrongNumberOfArguments, "450 Wrong number of arguments or invalid property assignment"},
        // clang-format on
    };
    for (const auto& c : cases) {
        const Failure failure = failureOf([&] { raise(c.first); });
        EXPECT_EQ(std::to_string(failure.number) + " " + failure.text, c.second);
        EXPECT_EQ(failure.source, "goodsreq");
    }
}

} // namespace
