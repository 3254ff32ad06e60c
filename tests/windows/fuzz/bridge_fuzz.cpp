// Calls the component and the sandbox's objects through IDispatch in every wrong way that a caller may:
//     bridge_fuzz SECONDS SEED
// Ends with status 0 when each call came back with a result or a failure, nothing was left over and the heap is whole.
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/ObjectFactory.h"
#include "com/Variant.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/Scratch.h"
#include "tests/support/UnattendedDesktop.h"

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>

#include <psapi.h>

namespace {

using automation::Value;
using com::ComPtr;
using Objects = std::vector<ComPtr<IDispatch>>;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kLongestCall{5}; ///< a lock is waited for two seconds
constexpr int kCallsOfARound = 300;
constexpr std::size_t kMostObjects = 40;
constexpr int kRoundsToSettle = 100;       ///< until the objects' own tables are filled
constexpr long long kMostGrown = 32 << 20; ///< bytes

std::mt19937_64 chance;
std::string currentCall; ///< what is being done, for the report of a crash
long long calls = 0;

std::size_t pick(std::size_t count) { return chance() % count; }
bool oneIn(std::size_t count) { return pick(count) == 0; }
template <class List> const auto& anyOf(const List& list) { return list[pick(std::size(list))]; }

// clang-format off
constexpr VARTYPE kKinds[] = {
    VT_EMPTY, VT_NULL, VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_I8, VT_UI8, VT_R4, VT_R8, VT_CY,
    VT_DATE, VT_BSTR, VT_BOOL, VT_DECIMAL, VT_ERROR, VT_DISPATCH, VT_UNKNOWN};
/// Kinds that no argument of a late-bound call has.
constexpr VARTYPE kWrongKinds[] = {
    VT_VARIANT, 15, VT_VOID, VT_HRESULT, VT_CARRAY, VT_LPSTR, VT_LPWSTR, VT_INT_PTR, VT_FILETIME, VT_CLSID, 0x0FFF,
    VT_VECTOR | VT_I4};
constexpr VARTYPE kElements[] = {VT_VARIANT, VT_UI1, VT_I2, VT_I4, VT_R8, VT_BSTR, VT_DECIMAL, VT_DISPATCH, VT_CY};
constexpr std::uint64_t kNumbers[] = {
    0, 1, 2, 3, 7, 100, 0x7F, 0x80, 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x7FFFFFFFFFFFFFFF,
    0x8000000000000000, 0xFFFFFFFFFFFFFFFF};
constexpr double kReals[] = {
    0, 1, -1, 0.5, 2.5, -0.0, 40000, 45000.75, 1e15, -657435, 2958466, 1e300, 5e-324,
    std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
/// Texts that members may ask for, and others.
const std::wstring kTexts[] = {
    L"", L"1", L"-3.5", L"1e308", L"abc", L"True", L"05/03/2024", L" ", L"o'neil", L"%", L"\xD800x", L"\xE4\x20AC",
    L"shopid", L"select * from aShops", L"select shopid from aShops where shopid=1", L"select getdate()",
    L"insert into aUnit values (1,'x','y')", L"update aUnit set UnitCode='z'", L"select", L"aShops", L"ABC|DEF",
    L"Data Source=", L"frmSample", L"cboShop", L"KOVA/XB/TRAM/841", {L"a\0b", 3}, std::wstring(40000, L'x')};
const char* const kProgIds[] = {
    "ADODB.Recordset", "CommonModule.clsCommonDB", "CommonModule.clsCommonGen", "Formcolor.clsFormcolor",
    "PosUserAuditing.clsUserAuditing", "MasterGridSetting.clsMasterGridSetting", "ErrorHandler.ErrorDetails"};
/// All but those that wait for a person: Show (of the sandbox), Preview, ErrorTrack.
constexpr const wchar_t* kNames =
    L"_NewEnum NoSuch VALUE adocon strProjectKey strMsgboxCaption intCompanyID intUserID intShopid interfaceid "
    L"dtProcessDate Open Close Execute execute BeginTrans CommitTrans RollbackTrans State EOF RecordCount MoveNext "
    L"GetString Fields AddNew Update Count Item Value Name Type fnReturnField fnReturnRecords fnGetNextMaxNo "
    L"fnUpdateListViewDetails populateComboorList SelectComboItemByValue SelectComboItemByname TextValidateNum "
    L"getRecordset getCancelledStatus Applyformcolor fnGridSettings OpenObject SaveUserAuditingInfo SaveInToTag "
    L"DataChanged SetCurrentValue ParameterFields FormulaFields PrintWindowOptions LogOnServer OpenReport Controls "
    L"Caption BackColor Width Height Tag Visible ActiveControl Text Enabled AddItem RemoveItem Clear ListCount "
    L"ListIndex List ItemData NewIndex SelStart SelLength Locked ListItems ColumnHeaders Add Remove SubItems "
    L"Selected Index Alignment SelectedItem Rows Cols Row Col TextMatrix ColWidth CellForeColor CellBackColor "
    L"RowHeight Sort FixedRows FixedCols ColAlignment RowData cboShop flexRows lvwLines txtName SetFocus RowSel "
    L"ColSel TopRow FormatString MaxLength SelText Left Top ForeColor ToolTipText Key MouseRow MouseCol ";
// clang-format on

[[noreturn]] void finding(const std::string& what) {
    std::printf("%lld calls\nfinding: %s, in %s\n", calls, what.c_str(), currentCall.c_str());
    std::fflush(stdout);
    std::_Exit(1);
}

LONG WINAPI crashed(EXCEPTION_POINTERS* exception) {
    finding("crash " + std::to_string(exception->ExceptionRecord->ExceptionCode & 0xFFFF));
}

/// A component that answers as it likes: values, errors, changed arguments. Numbers stay small, so that nobody counts
/// to them for long.
struct Whimsical : automation::Object {
    Whimsical() { ++living; }
    ~Whimsical() override { --living; }
    inline static int living = 0;

    Value invoke(automation::Access, std::string_view, automation::Arguments arguments) override {
        if (!arguments.empty() && arguments[0].isReference() && oneIn(3)) arguments[0].resolved() = answer();
        if (oneIn(6))
            throw automation::RunTimeError(static_cast<std::int32_t>(chance()), com::toUtf8(anyOf(kTexts)), "whim");
        return answer();
    }
    /// Most names, but not those that tell a connection, which the session would keep.
    bool has(std::string_view member) const override { return member != "BeginTrans" && !oneIn(8); }
    std::string className() const override { return "Whimsical"; }
    automation::Array elements() override { return automation::Array(pick(3), answer()); }

    static Value answer() {
        switch (pick(7)) {
        case 0: return {};
        case 1: return automation::Null();
        case 2: return com::toUtf8(anyOf(kTexts));
        case 3: return oneIn(3) ? automation::ObjectPtr() : std::make_shared<Whimsical>();
        case 4: return oneIn(2);
        default: return static_cast<std::int32_t>(pick(5)) - 1;
        }
    }
};

void fill(VARIANT& value, const Objects& objects);

void fillArray(VARIANT& value, const Objects& objects) {
    static const LONG kLowest[] = {0, 1, -3, LONG_MAX - 2, LONG_MIN};
    const VARTYPE kind = anyOf(kElements);
    const bool deep = oneIn(50);
    std::vector<SAFEARRAYBOUND> bounds(1 + pick(deep ? 65535 : 3), {1, 0});
    for (SAFEARRAYBOUND& bound : bounds)
        if (!deep) bound = {static_cast<ULONG>(pick(4)), anyOf(kLowest)};
    value.parray = oneIn(10) ? nullptr : SafeArrayCreate(kind, static_cast<UINT>(bounds.size()), bounds.data());
    value.vt = static_cast<VARTYPE>(VT_ARRAY | (oneIn(3) ? anyOf(kElements) : kind)); // not always what it says
    void* data = nullptr;
    if (!value.parray || kind != VT_VARIANT || FAILED(SafeArrayAccessData(value.parray, &data))) return;
    std::size_t count = 1;
    for (const SAFEARRAYBOUND& bound : bounds) count *= bound.cElements;
    for (std::size_t i = 0; i < count; ++i) fill(static_cast<VARIANT*>(data)[i], objects);
    SafeArrayUnaccessData(value.parray);
}

void fill(VARIANT& value, const Objects& objects) {
    if (oneIn(10)) return fillArray(value, objects);
    const VARTYPE kind = anyOf(kKinds);
    value.ullVal = oneIn(4) ? chance() : anyOf(kNumbers);
    if (kind == VT_DECIMAL) {
        value.decVal.Lo64 = chance();
        value.decVal.Hi32 = oneIn(2) ? 0 : static_cast<ULONG>(chance());
        value.decVal.scale = static_cast<BYTE>(pick(29));
        value.decVal.sign = oneIn(2) ? DECIMAL_NEG : 0;
    } else if (kind == VT_BSTR) {
        value.bstrVal = oneIn(10) ? nullptr : com::Bstr(anyOf(kTexts)).detach();
    } else if (kind == VT_DISPATCH || kind == VT_UNKNOWN) {
        ComPtr<IDispatch> object = oneIn(2) ? com::toDispatch(std::make_shared<Whimsical>()) : anyOf(objects);
        value.pdispVal = oneIn(5) ? nullptr : object.detach();
    } else if (kind == VT_R8 || kind == VT_DATE) {
        value.dblVal = anyOf(kReals);
    } else if (kind == VT_R4) {
        value.fltVal = static_cast<float>(anyOf(kReals) / 1e300);
    } else if (kind == VT_ERROR) {
        value.scode = oneIn(3) ? E_FAIL : DISP_E_PARAMNOTFOUND;
    }
    value.vt = kind;
}

/// What an argument owns or refers to, and what is passed of it.
struct Argument {
    com::Variant held, outer;
    VARIANT passed{};

    explicit Argument(const Objects& objects) {
        fill(held, objects);
        passed = held;
        const auto refersTo = [](VARIANT& from, int kind, void* what) {
            from = VARIANT{};
            from.vt = static_cast<VARTYPE>(kind);
            from.byref = what;
        };
        if (oneIn(200))
            refersTo(passed, VT_BYREF | VT_VARIANT, &passed);
        else if (oneIn(25))
            refersTo(passed, anyOf(kWrongKinds), nullptr);
        else if (oneIn(8))
            refersTo(passed, VT_BYREF | VT_VARIANT, &held);
        else if (oneIn(20))
            refersTo(outer, VT_BYREF | VT_VARIANT, &held), refersTo(passed, VT_BYREF | VT_VARIANT, &outer);
        else if (oneIn(5) && held.vt != VT_EMPTY && held.vt != VT_NULL)
            refersTo(passed, VT_BYREF | held.vt, held.vt == VT_DECIMAL ? &held : static_cast<void*>(&held.lVal));
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
};

/// A reply of GetIDsOfNames, or any number.
DISPID someMember(IDispatch& object, bool isComponent) {
    static const std::vector<std::wstring> names = [] {
        std::wistringstream words(kNames);
        return std::vector<std::wstring>(std::istream_iterator<std::wstring, wchar_t>(words), {});
    }();
    currentCall = "any number";
    if (oneIn(15)) return static_cast<DISPID>(oneIn(2) ? pick(12) : chance());
    std::wstring words[] = {oneIn(30) ? anyOf(kTexts) : oneIn(80) ? std::wstring() : anyOf(names), L"argument"};
    if (isComponent && oneIn(20)) words[0] = L"Show";
    LPOLESTR pointers[] = {oneIn(500) ? nullptr : words[0].data(), words[1].data()};
    DISPID ids[] = {DISPID_UNKNOWN, DISPID_UNKNOWN};
    const UINT count = oneIn(12) ? static_cast<UINT>(pick(3)) : 1;
    currentCall = "GetIDsOfNames " + com::toUtf8(words[0]);
    const HRESULT result =
        object.GetIDsOfNames(IID_NULL, oneIn(100) ? nullptr : pointers, count, LOCALE_USER_DEFAULT, ids);
    if (result == S_OK && count == 1 && ids[0] == DISPID_UNKNOWN) finding("a name is known and has no number");
    return ids[0];
}

/// Walks about in a collection's elements.
void enumerate(IUnknown* unknown) {
    auto elements = ComPtr<IUnknown>(unknown).query<IEnumVARIANT>(IID_IEnumVARIANT);
    currentCall += ", its elements";
    for (int i = 0; elements && i < 6; ++i) {
        com::Variant values[3];
        ULONG fetched = 99;
        const ULONG count = static_cast<ULONG>(pick(4));
        if (oneIn(4)) elements->Skip(static_cast<ULONG>(pick(5)));
        if (oneIn(5)) elements->Reset();
        ComPtr<IEnumVARIANT> copy;
        if (oneIn(5) && SUCCEEDED(elements->Clone(copy.out()))) elements = copy;
        const HRESULT result = elements->Next(count, values, oneIn(3) ? nullptr : &fetched);
        if (fetched != 99 && (fetched > count || (result == S_OK && fetched != count)))
            finding("elements are miscounted");
    }
}

void call(Objects& objects, IDispatch* component) {
    static const LCID kLocales[] = {0, 1033, 1025, 99999};
    static const WORD kFlags[] = {1, 2, 3, 3, 3, 4, 4, 8, 12, 0, 5, 15, 0x10, 0xFFFF};
    const ComPtr<IDispatch> object = anyOf(objects);
    const DISPID id = someMember(*object, object.get() == component);
    std::vector<std::unique_ptr<Argument>> arguments(oneIn(20) ? pick(12) : pick(5));
    std::vector<VARIANT> passed;
    for (auto& argument : arguments) {
        argument = std::make_unique<Argument>(objects);
        passed.push_back(argument->passed);
        currentCall += " " + std::to_string(passed.back().vt);
    }
    const WORD flags = anyOf(kFlags);
    const bool assigns = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    DISPID named[] = {oneIn(10) ? static_cast<DISPID>(pick(4)) : DISPID_PROPERTYPUT, static_cast<DISPID>(pick(3)), 7};
    DISPPARAMS parameters{oneIn(500) ? nullptr : passed.data(), oneIn(500) ? nullptr : named,
                          static_cast<UINT>(passed.size()), assigns ? !oneIn(6) : oneIn(15)};
    if (oneIn(40)) parameters.cNamedArgs = static_cast<UINT>(pick(4));
    com::Variant result;
    EXCEPINFO information{};
    UINT wrong = 0;
    const bool asksForResult = !oneIn(4), asksForInformation = !oneIn(4);
    currentCall += ", id " + std::to_string(id) + ", flags " + std::to_string(flags) + ", named " +
                   std::to_string(parameters.cNamedArgs);
    ++calls;
    const auto started = Clock::now();
    const HRESULT called = object->Invoke(id, oneIn(20) ? IID_IDispatch : IID_NULL, anyOf(kLocales), flags,
                                          oneIn(200) ? nullptr : &parameters, asksForResult ? &result : nullptr,
                                          asksForInformation ? &information : nullptr, oneIn(2) ? &wrong : nullptr);
    if (Clock::now() - started > kLongestCall) finding("a call that takes long");
    if (information.pfnDeferredFillIn) information.pfnDeferredFillIn(&information);
    if (called == DISP_E_EXCEPTION && asksForInformation && !information.wCode && !FAILED(information.scode))
        finding("a failure without a number");
    if (called != DISP_E_EXCEPTION && (information.bstrDescription || information.bstrSource))
        finding("texts of an error that is none");
    for (BSTR one : {information.bstrSource, information.bstrDescription, information.bstrHelpFile}) SysFreeString(one);
    if (FAILED(called) && result.vt != VT_EMPTY) finding("a result of a call that failed");
    if (result.vt == VT_UNKNOWN) enumerate(result.punkVal);
    if (result.vt == VT_DISPATCH && result.pdispVal && objects.size() < kMostObjects)
        objects.emplace_back(result.pdispVal);
    ComPtr<ITypeInfo> type;
    if (oneIn(50)) object->GetTypeInfo(static_cast<UINT>(pick(2)), 0, type.out());
}

void round(const std::string& database) {
    currentCall = "creating the objects";
    support::UnattendedDesktop desktop;
    auto form = std::make_shared<SampleForm>(desktop);
    const std::weak_ptr<SampleForm> watch = form;
    const auto create = com::comObjectFactory();
    const auto component = com::toDispatch(create("goodsreq.clsGRtoShop"));
    Objects objects{component, com::toDispatch(std::make_shared<Whimsical>())};
    for (const char* name : {"cboShop", "lvwLines", "flexRows", "txtName"})
        objects.push_back(com::toDispatch(form->get(name).objectPtr()));
    objects.push_back(com::toDispatch(form));
    form.reset();
    for (const char* progId : kProgIds)
        if (oneIn(2)) objects.push_back(com::toDispatch(create(progId)));
    const auto connection = create("ADODB.Connection");
    if (!oneIn(4)) connection->call("Open", database);
    objects.push_back(com::toDispatch(connection));
    for (int i = 0; i < kCallsOfARound; ++i) call(objects, component.get());
    currentCall = "letting go of the objects";
    objects.clear();
    if (Whimsical::living) finding("an object handed in is held for ever");
    if (!watch.expired()) finding("a form is held for ever");
    if (!HeapValidate(GetProcessHeap(), 0, nullptr)) finding("the heap is damaged");
}

std::size_t bytesUsed() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

} // namespace

int main(int count, char** arguments) {
    const int seconds = count > 1 ? std::atoi(arguments[1]) : 60;
    chance.seed(count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 1);
    SetUnhandledExceptionFilter(crashed);
    // Strings that are freed go back to the heap at once, where freeing them twice shows.
    if (const auto set = GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache"))
        reinterpret_cast<void (*)()>(set)();
    CoInitialize(nullptr);
    const std::string database = support::scratch("fuzz.db");
    sandbox::createCompany(database, sandbox::schemaText());
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    std::size_t memory = 0;
    for (int rounds = 1; Clock::now() < end; ++rounds) {
        round(database);
        if (rounds <= kRoundsToSettle) memory = bytesUsed();
    }
    const auto grown = static_cast<long long>(bytesUsed() - memory);
    if (grown > kMostGrown) finding("memory that grew by " + std::to_string(grown) + " bytes");
    std::printf("%lld calls in %d s, memory grew by %lld KiB, nothing found\n", calls, seconds, grown / 1024);
    std::fflush(stdout);
    std::_Exit(0); // the system's own threads may outlive our clean-up
}
