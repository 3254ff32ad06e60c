#include "com/Errors.h"

#include "com/Bstr.h"
#include "com/ComPtr.h"

#include <array>
#include <cstdio>
#include <new>

namespace com {
namespace {

constexpr HRESULT kLanguageFacility = static_cast<HRESULT>(0x800A0000);
constexpr unsigned kFacilityMask = 0xFFFF0000u;
constexpr HRESULT kServerUnavailable = static_cast<HRESULT>(0x800706BA);

struct KnownResult {
    HRESULT result;
    long number;
};
constexpr std::array kKnownResults{
    // clang-format off
    KnownResult{DISP_E_MEMBERNOTFOUND, 438},  KnownResult{DISP_E_UNKNOWNNAME, 438},
    KnownResult{DISP_E_TYPEMISMATCH, 13},     KnownResult{DISP_E_BADVARTYPE, 13},
    KnownResult{DISP_E_BADPARAMCOUNT, 450},   KnownResult{DISP_E_PARAMNOTFOUND, 448},
    KnownResult{DISP_E_PARAMNOTOPTIONAL, 449}, KnownResult{DISP_E_NONAMEDARGS, 446},
    KnownResult{DISP_E_OVERFLOW, 6},          KnownResult{DISP_E_BADINDEX, 9},
    KnownResult{DISP_E_ARRAYISLOCKED, 10},    KnownResult{DISP_E_DIVBYZERO, 11},
    KnownResult{E_INVALIDARG, 5},             KnownResult{E_OUTOFMEMORY, 7},
    KnownResult{E_NOTIMPL, 445},              KnownResult{E_NOINTERFACE, 430},
    KnownResult{E_ACCESSDENIED, 70},          KnownResult{REGDB_E_CLASSNOTREG, 429},
    KnownResult{CO_E_CLASSSTRING, 429},       KnownResult{kServerUnavailable, 462},
    // clang-format on
};

// The language's own wording where it has one.
std::string knownDescription(long number) {
    switch (number) {
    case automation::kInvalidCall:
    case automation::kOverflow:
    case automation::kSubscriptOutOfRange:
    case automation::kDivisionByZero:
    case automation::kTypeMismatch:
    case automation::kCannotCreateObject:
    case automation::kNoSuchMember:
    case automation::kWrongNumberOfArguments: break;
    default: return {};
    }
    try {
        automation::raise(static_cast<automation::ErrorNumber>(number));
    } catch (const automation::RunTimeError& error) {
        return error.description();
    }
}

/// None where the object does not say that its information is meant.
ComPtr<IErrorInfo> informationLeftBy(IUnknown* called) {
    const auto support = ComPtr<IUnknown>(called).query<ISupportErrorInfo>(IID_ISupportErrorInfo);
    ComPtr<IErrorInfo> information;
    if (!support || GetErrorInfo(0, information.out()) != S_OK) return {};
    GUID interfaceId{};
    information->GetGUID(&interfaceId); // a dual interface's own, as a rule
    const bool meant = support->InterfaceSupportsErrorInfo(IID_IDispatch) == S_OK ||
                       support->InterfaceSupportsErrorInfo(interfaceId) == S_OK;
    return meant ? information : ComPtr<IErrorInfo>();
}

} // namespace

long errorNumber(HRESULT result) {
    if ((static_cast<unsigned>(result) & kFacilityMask) == static_cast<unsigned>(kLanguageFacility))
        return static_cast<long>(static_cast<unsigned>(result) & ~kFacilityMask);
    for (const KnownResult& known : kKnownResults)
        if (known.result == result) return known.number;
    return result;
}

HRESULT errorResult(long number) {
    if (number > 0 && number <= 0xFFFF) return kLanguageFacility | static_cast<HRESULT>(number);
    return number < 0 ? static_cast<HRESULT>(number) : E_FAIL;
}

std::string systemDescription(HRESULT result) {
    wchar_t* text = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring_view trimmed(text ? text : L"", length);
    while (!trimmed.empty() && (trimmed.back() == L'\n' || trimmed.back() == L'\r' || trimmed.back() == L' '))
        trimmed.remove_suffix(1);
    std::string description = toUtf8(trimmed);
    LocalFree(text);
    return description.empty() ? "Automation error" : description;
}

std::string resultText(HRESULT result) {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "0x%08lX", static_cast<unsigned long>(result));
    return std::string(number.data()) + ": " + systemDescription(result);
}

void raiseResult(HRESULT result, EXCEPINFO* information, IUnknown* called) {
    std::string source, description;
    long number = errorNumber(result);
    bool told = false;
    if (information && result == DISP_E_EXCEPTION) {
        if (information->pfnDeferredFillIn) information->pfnDeferredFillIn(information);
        source = toUtf8(information->bstrSource);
        description = toUtf8(information->bstrDescription);
        if (FAILED(information->scode)) result = information->scode;
        number = information->wCode ? information->wCode : errorNumber(result);
        told = number != DISP_E_EXCEPTION || !source.empty() || !description.empty();
    }
    if (const auto left = told ? ComPtr<IErrorInfo>() : informationLeftBy(called)) {
        Bstr leftSource, leftDescription;
        left->GetSource(leftSource.out());
        left->GetDescription(leftDescription.out());
        source = leftSource.utf8();
        description = leftDescription.utf8();
    }
    if (description.empty()) description = knownDescription(number);
    if (description.empty()) description = systemDescription(result);
    throw automation::RunTimeError(number, description, source);
}

Failure currentFailure() noexcept {
    Failure failure;
    try {
        try {
            throw;
        } catch (const automation::RunTimeError& error) {
            failure.result = errorResult(error.number());
            failure.source = error.source();
            failure.description = error.description();
        } catch (const std::bad_alloc&) {
            failure.result = E_OUTOFMEMORY;
            failure.description = "Out of memory";
        } catch (const std::exception& error) {
            failure.result = E_FAIL;
            failure.description = error.what();
        } catch (...) {
            failure.description = "Unexpected error";
        }
    } catch (...) { // no memory for the texts: the result alone has to do
    }
    return failure;
}

void setErrorInfo(const Failure& failure, const IID& interfaceId) noexcept {
    try {
        ComPtr<ICreateErrorInfo> creation;
        if (FAILED(CreateErrorInfo(creation.out()))) return;
        creation->SetGUID(interfaceId);
        creation->SetSource(toWide(failure.source).data());
        creation->SetDescription(toWide(failure.description).data());
        if (const auto information = creation.query<IErrorInfo>(IID_IErrorInfo)) SetErrorInfo(0, information.get());
    } catch (...) { // the result alone has to do
    }
}

void fill(EXCEPINFO& information, const Failure& failure) noexcept {
    information = EXCEPINFO{};
    information.scode = failure.result;
    try {
        information.bstrSource = Bstr(failure.source).detach();
        information.bstrDescription = Bstr(failure.description).detach();
    } catch (...) { // the result alone has to do
    }
}

} // namespace com
