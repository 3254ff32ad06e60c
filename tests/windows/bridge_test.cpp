// Late binding over COM: every kind of value, arguments by reference, errors, collections and identity.
#include "Relay.h"
#include "TestObject.h"
#include "com/Bstr.h"
#include "com/DispatchObject.h"
#include "com/ObjectDispatch.h"
#include "com/ObjectFactory.h"
#include "com/ReferenceArgument.h"
#include "com/Variant.h"
#include "tests/basic/ExpectError.h"

#include <bit>
#include <cstring>

using namespace automation;
using com::ComPtr;
using com::Variant;
using tests::Relay;
using tests::TestObject;

namespace {

class Bridge : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr))); }

    std::shared_ptr<TestObject> object = std::make_shared<TestObject>();
    ComPtr<Relay> relay = Relay::to(object);
    ObjectPtr foreign = com::toObject(relay.get()); ///< our object as it looks behind somebody's component
    ComPtr<IDispatch> dispatch = com::toDispatch(object);
};

TEST_F(Bridge, EveryKindOfValueComesBackAsItWent) {
    const struct {
        Value value;
        VARTYPE kind;
    } cases[] = {
        // clang-format off
        {Empty(), VT_EMPTY}, {Null(), VT_NULL}, {Missing(), VT_ERROR}, {true, VT_BOOL}, {false, VT_BOOL},
        {std::int16_t{-32768}, VT_I2}, {std::int32_t{2147483647}, VT_I4}, {0.1, VT_R8},
        {Currency{-92233720368547758}, VT_CY}, {Date{45200.75}, VT_DATE}, {Date{-1.25}, VT_DATE},
        {Decimal{"123456789012345678.125"}, VT_DECIMAL}, {Decimal{"-0.0000000000000000000000000001"}, VT_DECIMAL},
        {Decimal{"79228162514264337593543950335"}, VT_DECIMAL}, {Decimal{"1.500"}, VT_DECIMAL},
        {"", VT_BSTR}, {"Gr\u00FC\u00DFe \U0001F34E", VT_BSTR}, {std::string("a\0b", 3), VT_BSTR},
        {ObjectPtr(), VT_DISPATCH}, {Array{}, VT_ARRAY | VT_VARIANT},
        {Array{Value("a"), Value(std::int16_t{2}), Value(Array{Value(1.5)})}, VT_ARRAY | VT_VARIANT},
        // clang-format on
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(&one - cases);
        EXPECT_TRUE(foreign->call("Echo", one.value) == one.value);
        EXPECT_EQ(relay->kinds, std::vector<VARTYPE>{one.kind});
    }
    for (const char* text : {"79228162514264337593543950336", "0.00000000000000000000000000001"})
        EXPECT_EQ(errorOf([&] { foreign->call("Echo", Decimal{text}); }), kOverflow) << text;
}

TEST_F(Bridge, KindsThatOnlyOthersHaveBecomeTheNextWider) {
    const struct {
        VARTYPE kind;
        std::uint64_t bits;
        Value value;
    } cases[] = {
        // clang-format off
        {VT_UI1, 200, std::int16_t{200}},      {VT_I1, 0xFD, std::int16_t{-3}},
        {VT_UI2, 65535, std::int32_t{65535}},  {VT_UI4, 7, std::int32_t{7}},
        {VT_UI4, 4294967295, Decimal{"4294967295"}},
        {VT_I8, std::uint64_t(-9007199254740993), Decimal{"-9007199254740993"}},
        {VT_R4, std::bit_cast<std::uint32_t>(1.1f), 1.1},
        {VT_R4, std::bit_cast<std::uint32_t>(-1234567.0f), -1234567.0},  {VT_BSTR, 0, ""},
        // clang-format on
    };
    Variant variant;
    for (const auto& one : cases) {
        variant.vt = one.kind;
        variant.ullVal = one.bits;
        EXPECT_TRUE(com::toValue(variant) == one.value) << &one - cases;
    }
    variant.vt = VT_ERROR;
    variant.scode = E_FAIL;
    EXPECT_EQ(errorOf([&] { com::toValue(variant); }), kTypeMismatch);
}

std::unique_ptr<Variant> madeAs(VARTYPE made, VARTYPE shown, std::vector<SAFEARRAYBOUND> bounds = {{2, 0}}) {
    auto variant = std::make_unique<Variant>();
    variant->parray = SafeArrayCreate(made, static_cast<UINT>(bounds.size()), bounds.data());
    variant->vt = static_cast<VARTYPE>(VT_ARRAY | shown);
    return variant;
}

/// An array of one dimension that somebody made by hand.
std::unique_ptr<Variant> handMade(VARTYPE shown, ULONG elementSize, ULONG count, bool filled = true) {
    auto variant = std::make_unique<Variant>();
    EXPECT_EQ(SafeArrayAllocDescriptor(1, &variant->parray), S_OK);
    variant->vt = static_cast<VARTYPE>(VT_ARRAY | shown);
    variant->parray->cbElements = elementSize;
    variant->parray->rgsabound[0] = {count, 0};
    if (filled) {
        EXPECT_EQ(SafeArrayAllocData(variant->parray), S_OK);
        std::memset(variant->parray->pvData, 'A', elementSize * count);
    }
    return variant;
}

TEST_F(Bridge, AnArrayEndsAtItsLastElementWhereverItBegins) {
    for (const LONG lowest : {LONG{0}, LONG{-3}, LONG_MAX - 2, LONG_MIN})
        for (const ULONG count : {0ul, 2ul})
            EXPECT_TRUE(com::toValue(*madeAs(VT_I4, VT_I4, {{count, lowest}})) ==
                        Value(Array(count, Value(std::int32_t{0}))))
                << lowest;
    // One of two dimensions is an array of rows; the first dimension's index changes fastest in memory.
    const auto table = madeAs(VT_I2, VT_I2, {{2, 0}, {3, 1}});
    for (short i = 0; i < 6; ++i) static_cast<short*>(table->parray->pvData)[i] = i;
    const auto row = [](std::int16_t a, std::int16_t b, std::int16_t c) { return Value(Array{a, b, c}); };
    EXPECT_TRUE(com::toValue(*table) == Value(Array{row(0, 2, 4), row(1, 3, 5)}));
}

TEST_F(Bridge, AnArrayThatIsNotWhatItSaysIsRefused) {
    constexpr VARTYPE kAddress = sizeof(void*) == 8 ? VT_I8 : VT_I4; // a number as large as one
    const struct {
        const char* what;
        std::unique_ptr<Variant> array;
        long error = kTypeMismatch;
    } cases[] = {
        {"larger elements", handMade(VT_I4, 64, 2)},
        {"smaller elements", handMade(VT_R8, 1, 2)},
        {"no size", handMade(VT_I4, 0, 2)},
        {"no data", handMade(VT_I4, 4, 2, false)},
        {"variants as numbers", madeAs(VT_VARIANT, VT_I4)},
        {"numbers as texts", madeAs(kAddress, VT_BSTR)},
        {"texts as objects", madeAs(VT_BSTR, VT_DISPATCH)},
        {"addresses of no kind as texts", handMade(VT_BSTR, sizeof(void*), 2)},
        {"more dimensions than a language knows", madeAs(VT_I4, VT_I4, std::vector<SAFEARRAYBOUND>(65535, {1, 0}))},
        {"rows without columns, beyond count", madeAs(VT_I4, VT_I4, {{0x7FFFFFFF, 0}, {0, 0}}), 7},
        {"more elements than can be kept", madeAs(VT_UI1, VT_UI1, {{20'000'000, 0}}), 7},
    };
    for (const auto& one : cases) EXPECT_EQ(errorOf([&] { com::toValue(*one.array); }), one.error) << one.what;
    EXPECT_TRUE(com::toValue(*madeAs(VT_I4, VT_I4, std::vector<SAFEARRAYBOUND>(60, {1, 0}))).as<Array>());
    EXPECT_TRUE(com::toValue(*handMade(VT_I4, 4, 1)) == Value(Array{std::int32_t{0x41414141}}));
}

TEST_F(Bridge, AVariantWithinVariantsHasAnEnd) {
    Variant itself;
    itself.vt = VT_BYREF | VT_VARIANT;
    itself.pvarVal = &itself;
    EXPECT_EQ(errorOf([&] { com::toValue(itself); }), kTypeMismatch);
    EXPECT_EQ(errorOf([&] { com::writeThrough(itself, 1.0); }), kTypeMismatch);
    // Arrays whose elements all refer to the next one.
    const auto errorOfLevels = [](std::size_t depth, ULONG width) {
        std::vector<std::unique_ptr<Variant>> levels;
        while (levels.size() < depth) {
            levels.push_back(madeAs(VT_VARIANT, VT_VARIANT, {{width, 0}}));
            auto* elements = static_cast<VARIANT*>(levels.back()->parray->pvData);
            for (ULONG i = 0; levels.size() > 1 && i < width; ++i) {
                elements[i].vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
                elements[i].pparray = &levels[levels.size() - 2]->parray;
            }
        }
        return errorOf([&] { com::toValue(*levels.back()); });
    };
    EXPECT_EQ(errorOfLevels(1000, 1), kTypeMismatch);
    EXPECT_EQ(errorOfLevels(30, 2), 7);
}

TEST_F(Bridge, AnArgumentByReferenceTravelsInItsOwnKindAndComesBackChanged) {
    const ObjectPtr other = std::make_shared<TestObject>();
    const struct {
        Value before, after;
        VARTYPE kind;
    } cases[] = {
        // clang-format off
        {std::int16_t{13}, std::int16_t{0}, VT_I2},  {std::int32_t{70000}, std::int32_t{-1}, VT_I4}, {1.5, 2.25, VT_R8},
        {false, true, VT_BOOL},                      {Date{1}, Date{2.5}, VT_DATE},
        {Currency{10000}, Currency{5}, VT_CY},       {"select 1", "select 2", VT_BSTR},
        {ObjectPtr(), other, VT_DISPATCH},           {other, ObjectPtr(), VT_DISPATCH},
        {Empty(), "text", VT_VARIANT},               {Null(), std::int32_t{4}, VT_VARIANT},
        {Decimal{"1.10"}, Decimal{"2.20"}, VT_VARIANT},
        {Array{Value(1.0)}, Array{Value("x"), Value("y")}, VT_VARIANT},
        {Array{Value("x"), Value(1.0)}, Array{Value("x")}, VT_VARIANT},
        {Array{Value("x"), Value("")}, Array{Value("y")}, VT_ARRAY | VT_BSTR},
        {Array{std::int16_t{2}, std::int16_t{-3}}, Array{std::int16_t{4}}, VT_ARRAY | VT_I2},
        {Array{std::int32_t{2000}}, Array{std::int32_t{4}, std::int32_t{5}}, VT_ARRAY | VT_I4},
        // clang-format on
    };
    const auto changed = [&](Value variable, const Value& to) {
        object->assignment = to;
        foreign->call("Change", Value::byReference(variable));
        return variable;
    };
    for (const auto& one : cases) {
        EXPECT_TRUE(changed(one.before, one.after) == one.after) << &one - cases;
        EXPECT_EQ(relay->kinds, std::vector<VARTYPE>{static_cast<VARTYPE>(VT_BYREF | one.kind)}) << &one - cases;
    }
    // It keeps the variable's kind, as a typed variable does.
    EXPECT_TRUE(changed(std::int16_t{13}, std::int32_t{14}) == Value(std::int16_t{14}));

    // What a failed call wrote stays.
    Value number(std::int32_t{1004});
    object->assignment = std::int32_t{2};
    EXPECT_EQ(errorOf([&] { foreign->call("Fail", Value::byReference(number), "changed, then failed", ""); }), 1004);
    EXPECT_TRUE(number == Value(std::int32_t{2}));
}

TEST_F(Bridge, AScriptsVariableIsWrittenThroughWhateverKindItHeld) {
    Variant variable, argument;
    com::toVariant("before", variable);
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &variable;
    wchar_t name[] = L"change";
    LPOLESTR names[] = {name};
    DISPID id = 0;
    ASSERT_EQ(dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
    const auto change = [&](const Value& to) {
        object->assignment = to;
        DISPPARAMS parameters{&argument, nullptr, 1, 0};
        return dispatch->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
    };
    ASSERT_EQ(change(Decimal{"3.50"}), S_OK);
    EXPECT_TRUE(com::toValue(variable) == Value(Decimal{"3.50"}));

    // A typed variable that cannot take the value is a type mismatch, and keeps what it had.
    short number = 7;
    argument.vt = VT_BYREF | VT_I2;
    argument.piVal = &number;
    EXPECT_EQ(change("no number"), static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(number, 7);
}

TEST_F(Bridge, ErrorsKeepNumberSourceAndDescription) {
    for (const std::int32_t number : {5, 91, 1004, 32767, 65535, -2147217900, -2147221503}) {
        const Failure error = failureOf([&] { foreign->call("Fail", number, "Kein gr\u00FCner Apfel", "shop"); });
        EXPECT_EQ(error.number, number);
        EXPECT_EQ(error.text, "Kein gr\u00FCner Apfel");
        EXPECT_EQ(error.source, "shop");
    }
    // What is no run-time error does not unwind into the caller.
    EXPECT_EQ(failureOf([&] { foreign->call("Throw"); }).text, "broken");
    EXPECT_EQ(errorOf([&] { foreign->call("ThrowOther"); }), E_UNEXPECTED);
}

TEST_F(Bridge, APlainResultHasTheTextOfItsErrorInformation) {
    for (const HRESULT answer : {E_FAIL, DISP_E_EXCEPTION}) // the other without what it promises
        for (const bool explains : {true, false}) {
            relay->answer = answer;
            relay->explains = explains;
            const Failure error = failureOf([&] { foreign->call("Echo", 1.0); });
            EXPECT_EQ(error.number, answer);
            EXPECT_EQ(error.text == "no server there", explains) << error.text;
            EXPECT_EQ(error.source == "driver", explains) << error.source;
        }
}

TEST_F(Bridge, WrongCallsHaveTheLanguagesNumbers) {
    EXPECT_EQ(errorOf([&] { foreign->call("NoSuchThing"); }), kNoSuchMember);
    EXPECT_EQ(errorOf([&] { foreign->call("Echo"); }), kWrongNumberOfArguments);
    EXPECT_EQ(errorOf([&] { foreign->put("Echo", 1.0); }), kNoSuchMember);
    EXPECT_FALSE(foreign->has("NoSuchThing"));
    EXPECT_TRUE(foreign->has("ECHO"));
}

TEST_F(Bridge, OnlyAMembersNameIsKnownAndLookedUpOnce) {
    wchar_t member[] = L"Echo", argument[] = L"Kept";
    LPOLESTR names[] = {member, argument};
    DISPID ids[2] = {0, 0};
    EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, names, 2, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_GT(ids[0], 0);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    for (int i = 0; i < 5; ++i) foreign->call(i % 2 ? "echo" : "Echo", 1.0);
    EXPECT_TRUE(foreign->get("") == Value("by default"));
    EXPECT_EQ(relay->lookUps, 1);
}

TEST_F(Bridge, AssigningFallsBackToTheWayThatTheComponentOffers) {
    const ObjectPtr other = std::make_shared<TestObject>();
    const struct {
        WORD refused;
        Access wanted;
        Value value;
        Access taken;
    } cases[] = {
        {0, Access::put, "value", Access::put},
        {0, Access::putRef, other, Access::putRef},
        {DISPATCH_PROPERTYPUTREF, Access::putRef, ObjectPtr(), Access::put},
        {DISPATCH_PROPERTYPUT, Access::put, other, Access::putRef},
    };
    for (const auto& one : cases) {
        relay->refused = one.refused;
        Value value[] = {one.value};
        foreign->invoke(one.wanted, "Kept", value);
        EXPECT_TRUE(object->kept == one.value) << &one - cases;
        EXPECT_EQ(object->lastAccess, one.taken) << &one - cases;
    }
}

TEST_F(Bridge, ACollectionIsVisitedInItsOrder) {
    object->items = {Value("a"), Value(std::int32_t{2}), Value(ObjectPtr(object)), Value(Null())};
    EXPECT_TRUE(foreign->elements() == object->items);
    object->items.clear();
    EXPECT_TRUE(foreign->elements().empty());
}

TEST_F(Bridge, AnObjectStaysItselfOverTheEdge) {
    EXPECT_EQ(com::toObject(com::toDispatch(object).get()), object);
    EXPECT_EQ(com::toDispatch(object).get(), dispatch.get());
    EXPECT_EQ(foreign->className(), "ComboBox"); // from its type information
    EXPECT_EQ(com::toObject(relay.get()), foreign);
    EXPECT_EQ(com::toDispatch(foreign).get(), relay.get());
    EXPECT_TRUE(foreign->call("Echo", ObjectPtr(object)) == Value(ObjectPtr(object)));
    EXPECT_TRUE(foreign->call("Echo", foreign) == Value(foreign));
    EXPECT_EQ(com::toObject(nullptr), nullptr);
    EXPECT_FALSE(com::toDispatch(nullptr));
    // It says which interface it lacks.
    static IID told;
    com::ObjectDispatch::refused = [](const IID& id) { told = id; };
    EXPECT_FALSE(dispatch.query<IPersist>(IID_IPersist));
    EXPECT_EQ(told, IID_IPersist);
    com::ObjectDispatch::refused = nullptr;
}

TEST_F(Bridge, ADictionaryOfTheSystemIsDrivenByName) {
    const ObjectPtr dictionary = com::comObjectFactory()("Scripting.Dictionary");
    EXPECT_EQ(dictionary->className(), "Dictionary");
    dictionary->call("Add", "apple", std::int16_t{3});
    EXPECT_TRUE(dictionary->call("", "apple") == Value(std::int16_t{3}));
    EXPECT_TRUE(dictionary->elements() == Array{Value("apple")});
    EXPECT_EQ(errorOf([&] { dictionary->call("Add", "apple", 1.0); }), 457);
    const Failure error = failureOf([] { com::comObjectFactory()("Nobody.HasThis"); });
    EXPECT_EQ(error.number, kCannotCreateObject);
    EXPECT_NE(error.text.find("Nobody.HasThis (0x800401F3: "), std::string::npos) << error.text;
}

} // namespace
