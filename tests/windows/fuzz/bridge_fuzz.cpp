// Calls the component and the sandbox's objects through IDispatch in every wrong way that a caller may:
//     bridge_fuzz --seconds N --seed N
// Ends with status 0 when each call came back with a result or a failure, nothing was left over and the heap is whole.
#include "com/Bridge.h"
#include "com/ObjectFactory.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/Scratch.h"
#include "tests/support/UnattendedDesktop.h"
#include "tests/windows/fuzz/BridgeInputs.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include <psapi.h>

namespace {

using namespace fuzz;
using com::ComPtr;

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kLongestCall{5}; ///< a lock is waited for two seconds
constexpr int kCallsOfARound = 300;
constexpr std::size_t kMostObjects = 40;
/// Until then the objects' own tables are filled.
constexpr int kRoundsToSettle = 100;
constexpr long long kMostGrown = 32 << 20; ///< bytes

std::string currentCall; ///< what is being done, for the report of a crash
long long calls = 0;

[[noreturn]] void finding(const std::string& what) {
    std::printf("%lld calls\nfinding: %s, in %s\n", calls, what.c_str(), currentCall.c_str());
    std::fflush(stdout);
    std::_Exit(1);
}

LONG WINAPI crashed(EXCEPTION_POINTERS* exception) {
    HMODULE module = nullptr;
    wchar_t name[MAX_PATH] = L"?";
    const auto address = static_cast<const wchar_t*>(exception->ExceptionRecord->ExceptionAddress);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, address,
                       &module);
    GetModuleFileNameW(module, name, MAX_PATH);
    finding("crash " + std::to_string(exception->ExceptionRecord->ExceptionCode & 0xFFFF) + " in " +
            com::toUtf8(std::wstring_view(name)) + " at +" +
            std::to_string(reinterpret_cast<const char*>(address) - reinterpret_cast<const char*>(module)));
}

/// All but those that wait for a person: Show (of the sandbox), Preview, ErrorTrack.
// clang-format off
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

std::vector<std::wstring> wordsOf(const wchar_t* text) {
    std::vector<std::wstring> list{L""};
    std::wistringstream words(text);
    for (std::wstring word; words >> word;) list.push_back(word);
    return list;
}

const char* const kProgIds[] = {
    "ADODB.Recordset",          "CommonModule.clsCommonDB",        "CommonModule.clsCommonGen",
    "Formcolor.clsFormcolor",   "PosUserAuditing.clsUserAuditing", "MasterGridSetting.clsMasterGridSetting",
    "ErrorHandler.ErrorDetails"};

/// A reply of GetIDsOfNames, or any number.
DISPID someMember(Random& random, IDispatch& object, bool isComponent) {
    currentCall = "any number";
    if (random.oneIn(15)) return static_cast<DISPID>(random.oneIn(2) ? random.pick(12) : random.bits());
    static const std::vector<std::wstring> names = wordsOf(kNames);
    std::wstring words[] = {random.oneIn(30) ? text(random) : random.of(names), L"argument"};
    if (isComponent && random.oneIn(20)) words[0] = L"Show";
    LPOLESTR pointers[] = {random.oneIn(500) ? nullptr : words[0].data(), words[1].data()};
    DISPID ids[] = {DISPID_UNKNOWN, DISPID_UNKNOWN};
    const UINT count = random.oneIn(12) ? static_cast<UINT>(random.pick(3)) : 1;
    currentCall = "GetIDsOfNames " + com::toUtf8(words[0]);
    const HRESULT result = random.oneIn(100)
                               ? object.GetIDsOfNames(IID_NULL, nullptr, count, 0, ids)
                               : object.GetIDsOfNames(IID_NULL, pointers, count, LOCALE_USER_DEFAULT, ids);
    if (result == S_OK && count == 1 && ids[0] == DISPID_UNKNOWN) finding("a name is known and has no number");
    return ids[0];
}

/// Walks about in a collection's elements.
void enumerate(Random& random, IUnknown* unknown) {
    auto elements = ComPtr<IUnknown>(unknown).query<IEnumVARIANT>(IID_IEnumVARIANT);
    if (!elements) return;
    currentCall += ", its elements";
    for (int i = 0; i < 6; ++i) {
        com::Variant values[3];
        ULONG fetched = 99;
        const ULONG count = static_cast<ULONG>(random.pick(4));
        if (random.oneIn(4)) elements->Skip(static_cast<ULONG>(random.pick(5)));
        if (random.oneIn(5)) elements->Reset();
        ComPtr<IEnumVARIANT> copy;
        if (random.oneIn(5) && SUCCEEDED(elements->Clone(copy.out()))) elements = copy;
        const HRESULT result = elements->Next(count, values, random.oneIn(3) ? nullptr : &fetched);
        if (fetched != 99 && (fetched > count || (result == S_OK && fetched != count)))
            finding("elements are miscounted");
    }
}

void call(Random& random, Objects& objects, IDispatch* component) {
    const ComPtr<IDispatch> object = random.of(objects);
    if (Whimsical::living.contains(object.get())) return; // it is there to be handed in
    const DISPID id = someMember(random, *object, object.get() == component);
    std::string shown = std::move(currentCall);
    std::vector<std::unique_ptr<Argument>> arguments;
    std::vector<VARIANT> variants;
    const std::size_t count = random.oneIn(20) ? random.pick(12) : random.pick(5);
    for (std::size_t i = 0; i < count; ++i) {
        variants.push_back(arguments.emplace_back(std::make_unique<Argument>(random, objects))->variant());
        shown += " " + std::to_string(variants.back().vt);
    }
    static const LCID kLocales[] = {0, 1033, 1025, 99999};
    static const WORD kFlags[] = {1, 2, 3, 3, 3, 4, 4, 8, 12, 0, 5, 15, 0x10, 0xFFFF};
    const WORD flags = random.of(kFlags);
    DISPID named[] = {DISPID_PROPERTYPUT, static_cast<DISPID>(random.pick(3)), 7};
    if (random.oneIn(10)) named[0] = static_cast<DISPID>(random.pick(4));
    DISPPARAMS parameters{variants.data(), named, static_cast<UINT>(count), 0};
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF) ? !random.oneIn(6) : random.oneIn(15))
        parameters.cNamedArgs = 1;
    if (random.oneIn(40)) parameters.cNamedArgs = static_cast<UINT>(random.pick(4));
    if (random.oneIn(500)) parameters.rgvarg = nullptr;
    if (random.oneIn(500)) parameters.rgdispidNamedArgs = nullptr;
    com::Variant result;
    EXCEPINFO information{};
    UINT wrong = 0;
    const bool asksForResult = !random.oneIn(4), asksForInformation = !random.oneIn(4);
    currentCall = shown + ", id " + std::to_string(id) + ", flags " + std::to_string(flags) + ", named " +
                  std::to_string(parameters.cNamedArgs) + " " + std::to_string(named[0]) +
                  (parameters.rgvarg ? "" : ", nothing behind the count") + (asksForResult ? "" : ", no result") +
                  (asksForInformation ? "" : ", no information") +
                  (object.get() == component ? ", of the component" : "");
    ++calls;
    const auto started = Clock::now();
    const HRESULT called =
        object->Invoke(id, random.oneIn(20) ? IID_IDispatch : IID_NULL, random.of(kLocales), flags,
                       random.oneIn(200) ? nullptr : &parameters, asksForResult ? &result : nullptr,
                       asksForInformation ? &information : nullptr, random.oneIn(2) ? &wrong : nullptr);
    if (Clock::now() - started > kLongestCall) finding("a call that takes long");
    if (information.pfnDeferredFillIn) information.pfnDeferredFillIn(&information);
    if (called == DISP_E_EXCEPTION && asksForInformation && !information.wCode && !FAILED(information.scode))
        finding("a failure without a number");
    if (called != DISP_E_EXCEPTION && (information.bstrDescription || information.bstrSource))
        finding("texts of an error that is none");
    for (BSTR one : {information.bstrSource, information.bstrDescription, information.bstrHelpFile}) SysFreeString(one);
    if (FAILED(called) && result.vt != VT_EMPTY) finding("a result of a call that failed");
    if (result.vt == VT_UNKNOWN) enumerate(random, result.punkVal);
    if (result.vt == VT_DISPATCH && result.pdispVal && objects.size() < kMostObjects)
        objects.emplace_back(result.pdispVal);
    ComPtr<ITypeInfo> type;
    if (random.oneIn(50)) object->GetTypeInfo(static_cast<UINT>(random.pick(2)), 0, type.out());
}

std::size_t bytesUsed() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

void round(Random& random, const std::string& database) {
    currentCall = "creating the objects";
    support::UnattendedDesktop desktop;
    auto form = std::make_shared<SampleForm>(desktop);
    const std::weak_ptr<SampleForm> watch = form;
    Objects objects;
    const auto create = com::comObjectFactory();
    const auto component = com::toDispatch(create("goodsreq.clsGRtoShop"));
    objects.push_back(component);
    for (const char* name : {"cboShop", "lvwLines", "flexRows", "txtName"})
        objects.push_back(com::toDispatch(form->get(name).objectPtr()));
    objects.push_back(com::toDispatch(form));
    form.reset();
    for (const char* progId : kProgIds)
        if (random.oneIn(2)) objects.push_back(com::toDispatch(create(progId)));
    const auto connection = create("ADODB.Connection");
    if (!random.oneIn(4)) connection->call("Open", database);
    objects.push_back(com::toDispatch(connection));
    objects.push_back(ComPtr<IDispatch>::adopt(new Whimsical(random)));
    for (int i = 0; i < kCallsOfARound; ++i) call(random, objects, component.get());
    currentCall = "letting go of the objects";
    objects.clear();
    if (!Whimsical::living.empty()) finding("an object handed in is held for ever");
    if (!watch.expired()) finding("a form is held for ever");
    if (!HeapValidate(GetProcessHeap(), 0, nullptr)) finding("the heap is damaged");
}

} // namespace

int main(int count, char** arguments) {
    int seconds = 60;
    std::uint64_t seed = 1;
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::string_view(arguments[i]) == "--seconds") seconds = std::atoi(arguments[i + 1]);
        if (std::string_view(arguments[i]) == "--seed") seed = std::strtoull(arguments[i + 1], nullptr, 10);
    }
    SetUnhandledExceptionFilter(crashed);
    // Strings that are freed go back to the heap at once, where freeing them twice shows.
    if (const auto set = GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache"))
        reinterpret_cast<void (*)()>(set)();
    CoInitialize(nullptr);
    const std::string database = support::scratch("fuzz.db");
    sandbox::createCompany(database, sandbox::schemaText());
    Random random(seed);
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    std::size_t memory = 0;
    for (int rounds = 1; Clock::now() < end; ++rounds) {
        round(random, database);
        if (rounds <= kRoundsToSettle) memory = bytesUsed();
    }
    const auto grown = static_cast<long long>(bytesUsed() - memory);
    if (grown > kMostGrown) finding("memory that grew by " + std::to_string(grown) + " bytes");
    std::printf("%lld calls in %d s, seed %llu, memory grew by %lld KiB, nothing found\n", calls, seconds,
                static_cast<unsigned long long>(seed), grown / 1024);
    std::fflush(stdout);
    std::_Exit(0); // the system's own threads may outlive our clean-up
}
