// What bridge_fuzz hands to the objects it calls: arguments of every kind, and an object of its own whose references it
// counts.
#pragma once

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Unknown.h"
#include "com/Variant.h"

#include <oaidl.h>

#include <climits>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace fuzz {

class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    std::size_t pick(std::size_t count) { return engine_() % count; }
    bool oneIn(std::size_t count) { return pick(count) == 0; }
    template <class List> const auto& of(const List& list) { return list[pick(std::size(list))]; }
    std::uint64_t bits() { return engine_(); }

private:
    std::mt19937_64 engine_;
};

inline constexpr VARTYPE kPlainKinds[] = {
    VT_EMPTY, VT_NULL, VT_I1, VT_UI1, VT_I2,   VT_UI2,  VT_I4,   VT_UI4,     VT_INT,   VT_UINT,     VT_I8,
    VT_UI8,   VT_R4,   VT_R8, VT_CY,  VT_DATE, VT_BSTR, VT_BOOL, VT_DECIMAL, VT_ERROR, VT_DISPATCH, VT_UNKNOWN};
/// Kinds that no argument of a late-bound call has.
inline constexpr VARTYPE kWrongKinds[] = {VT_VARIANT,  15,       VT_VOID,   VT_HRESULT,
                                          VT_CARRAY,   VT_LPSTR, VT_LPWSTR, VT_INT_PTR,
                                          VT_FILETIME, VT_CLSID, 0x0FFF,    VT_VECTOR | VT_I4};
// clang-format off
inline constexpr std::uint64_t kNumbers[] = {0, 1, 2, 3, 7, 100, 0x7F, 0x80, 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0x80000000,
                                      0xFFFFFFFF, 0x7FFFFFFFFFFFFFFF, 0x8000000000000000, 0xFFFFFFFFFFFFFFFF};
inline const wchar_t* const kTexts[] = {
    L"", L"1", L"-3.5", L"1e308", L"abc", L"True", L"05/03/2024", L" ", L"o'neil", L"%", L"\xD800x", L"\xE4\x20AC", L"shopid",
    L"select * from aShops", L"select shopid from aShops where shopid=1", L"select getdate()",
    L"insert into aUnit values (1,'x','y')", L"update aUnit set UnitCode='z'", L"select", L"aShops", L"ABC|DEF",
    L"Data Source=", L"frmSample", L"cboShop", L"KOVA/XB/TRAM/841"};
// clang-format on
inline constexpr double kReals[] = {0, 1, -1, 0.5, 2.5, -0.0, 40000, 45000.75, 1e15, -657435, 2958466, 1e300, 5e-324};

/// Texts that members may ask for, and others.
inline std::wstring text(Random& random) {
    if (random.oneIn(30)) return std::wstring(1 + random.pick(40000), L'x');
    if (random.oneIn(20)) return std::wstring(L"a\0b", 3);
    return random.of(kTexts);
}

inline BSTR textOrNone(Random& random, std::size_t noneOneIn) {
    return random.oneIn(noneOneIn) ? nullptr : com::Bstr(text(random)).detach();
}

inline double real(Random& random) {
    const double infinity = std::numeric_limits<double>::infinity();
    if (random.oneIn(20)) return random.oneIn(2) ? infinity : std::nan("");
    return random.of(kReals);
}

/// An object of a component that answers as it likes: values, errors, changed arguments.
class Whimsical final : public com::Unknown<IDispatch> {
public:
    explicit Whimsical(Random& random) : random_(random) { living.insert(this); }
    inline static std::set<const IDispatch*> living;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = random_.pick(2);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override {
        *result = nullptr;
        return random_.oneIn(2) ? E_NOTIMPL : TYPE_E_ELEMENTNOTFOUND;
    }
    /// Knows most names, but not those that tell a connection, which the session would keep.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID&, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const bool known = lstrcmpiW(names[0], L"BeginTrans") != 0 && !random_.oneIn(8);
        ids[0] = known ? lstrlenW(names[0]) : DISPID_UNKNOWN;
        return known ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, const IID&, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* information, UINT*) override {
        if (parameters->cArgs && random_.oneIn(3)) {
            VARIANT& argument = parameters->rgvarg[random_.pick(parameters->cArgs)];
            if (argument.vt == (VT_BYREF | VT_VARIANT)) {
                com::toVariant(std::int16_t{7}, *argument.pvarVal);
            } else if (argument.vt == (VT_BYREF | VT_BSTR)) {
                SysFreeString(*argument.pbstrVal);
                *argument.pbstrVal = textOrNone(random_, 3);
            }
        }
        if (random_.oneIn(6)) {
            static const HRESULT kFailures[] = {DISP_E_MEMBERNOTFOUND, DISP_E_TYPEMISMATCH, E_FAIL,
                                                DISP_E_BADPARAMCOUNT};
            if (!information || random_.oneIn(2)) return random_.of(kFailures);
            information->bstrDescription = com::Bstr(text(random_)).detach();
            if (random_.oneIn(2))
                information->wCode = static_cast<WORD>(random_.pick(70000));
            else
                information->scode = static_cast<SCODE>(random_.bits());
            return DISP_E_EXCEPTION;
        }
        if (result) answer(*result);
        return S_OK;
    }

private:
    ~Whimsical() override { living.erase(this); }
    /// Numbers stay small, so that nobody counts to them for long.
    void answer(VARIANT& result) {
        switch (random_.pick(7)) {
        case 0: return;
        case 1: return com::toVariant(automation::Null(), result);
        case 2:
            result.vt = VT_BSTR;
            result.bstrVal = com::Bstr(text(random_)).detach();
            return;
        case 3:
            result.vt = VT_DISPATCH;
            result.pdispVal = random_.oneIn(3) ? nullptr : this;
            if (result.pdispVal) AddRef();
            return;
        case 4: return com::toVariant(random_.oneIn(2), result);
        default: return com::toVariant(static_cast<std::int32_t>(random_.pick(5)) - 1, result);
        }
    }
    Random& random_;
};

using Objects = std::vector<com::ComPtr<IDispatch>>;

/// An argument of any kind, with all that it owns or refers to.
class Argument {
public:
    Argument(Random& random, const Objects& objects) {
        fill(random, objects, held_);
        shown_ = held_;
        const auto show = [&](int kind, void* what) {
            shown_ = VARIANT{};
            shown_.vt = static_cast<VARTYPE>(kind);
            shown_.byref = what;
        };
        if (random.oneIn(200)) {
            show(VT_BYREF | VT_VARIANT, &shown_);
        } else if (random.oneIn(25)) { // the kind is looked at first
            show(random.of(kWrongKinds), nullptr);
        } else if (random.oneIn(8)) {
            inner_ = std::make_unique<Argument>(random, objects);
            show(VT_BYREF | VT_VARIANT, inner_->shown_.vt & VT_BYREF ? static_cast<VARIANT*>(&held_) : &inner_->held_);
        } else if (random.oneIn(5) && held_.vt != VT_EMPTY && held_.vt != VT_NULL) {
            show(VT_BYREF | held_.vt, held_.vt == VT_DECIMAL ? static_cast<void*>(&held_.decVal) : &held_.lVal);
        }
    }

    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    const VARIANT& variant() const { return shown_; }

private:
    static void fill(Random& random, const Objects& objects, VARIANT& value, bool nested = false) {
        if (!nested && random.oneIn(10))
            return random.oneIn(3) ? fillWrongArray(random, value) : fillArray(random, objects, value);
        const VARTYPE kind = random.of(kPlainKinds);
        if (kind == VT_DECIMAL) {
            value.decVal.Lo64 = random.bits();
            value.decVal.Hi32 = random.oneIn(2) ? 0 : static_cast<ULONG>(random.bits());
            value.decVal.scale = static_cast<BYTE>(random.pick(29));
            value.decVal.sign = random.oneIn(2) ? DECIMAL_NEG : 0;
        } else if (kind == VT_BSTR) {
            value.bstrVal = textOrNone(random, 10);
        } else if (kind == VT_DISPATCH || kind == VT_UNKNOWN) {
            com::ComPtr<IDispatch> object;
            if (!random.oneIn(5))
                object = random.oneIn(2) ? com::ComPtr<IDispatch>::adopt(new Whimsical(random)) : random.of(objects);
            value.pdispVal = object.detach();
        } else if (kind == VT_R8 || kind == VT_DATE) {
            value.dblVal = real(random);
        } else if (kind == VT_R4) {
            value.fltVal = static_cast<float>(random.oneIn(3) ? 1.5 : real(random) / 1e300);
        } else if (kind == VT_BOOL) {
            value.boolVal = static_cast<VARIANT_BOOL>(random.of(kNumbers));
        } else if (kind == VT_ERROR) {
            value.scode = random.oneIn(3) ? E_FAIL : DISP_E_PARAMNOTFOUND;
        } else {
            value.ullVal = random.oneIn(4) ? random.bits() : random.of(kNumbers);
        }
        value.vt = kind;
    }

    static void fillArray(Random& random, const Objects& objects, VARIANT& value) {
        static const VARTYPE kKinds[] = {VT_VARIANT, VT_UI1,     VT_I2,       VT_I4, VT_R8,
                                         VT_BSTR,    VT_DECIMAL, VT_DISPATCH, VT_CY};
        static const LONG kLowest[] = {0, 1, -3, LONG_MAX - 2, LONG_MIN};
        const VARTYPE kind = random.of(kKinds);
        const bool deep = random.oneIn(50);
        const auto dimensions = static_cast<UINT>(1 + random.pick(deep ? 65535 : 3));
        std::vector<SAFEARRAYBOUND> bounds(dimensions, {1, 0});
        for (SAFEARRAYBOUND& bound : bounds)
            if (!deep) bound = {static_cast<ULONG>(random.pick(4)), random.of(kLowest)};
        SAFEARRAY* array = random.oneIn(10) ? nullptr : SafeArrayCreate(kind, dimensions, bounds.data());
        value.vt = static_cast<VARTYPE>(VT_ARRAY | kind);
        value.parray = array;
        void* data = nullptr;
        if (!array || kind != VT_VARIANT || FAILED(SafeArrayAccessData(array, &data))) return;
        std::size_t count = 1;
        for (const SAFEARRAYBOUND& bound : bounds) count *= bound.cElements;
        for (std::size_t i = 0; i < count; ++i) fill(random, objects, static_cast<VARIANT*>(data)[i], true);
        SafeArrayUnaccessData(array);
    }

    /// An array that is not what it says: elements of another kind or size, no data, rows without columns.
    static void fillWrongArray(Random& random, VARIANT& value) {
        static const VARTYPE kKinds[] = {VT_VARIANT, VT_UI1, VT_I4, VT_R8, VT_BSTR, VT_DECIMAL, VT_DISPATCH, VT_RECORD};
        static const ULONG kSizes[] = {0, 1, 4, 7, 8, 16, 24, 64, 4096};
        value.vt = static_cast<VARTYPE>(VT_ARRAY | random.of(kKinds));
        SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(1 + random.pick(3)), 0}, {0, 0}};
        if (random.oneIn(4)) {
            bounds[0].cElements = 0x7FFFFFFF;
            value.parray = SafeArrayCreate(VT_I4, 2, bounds);
        } else if (random.oneIn(2)) {
            value.parray = SafeArrayCreate(random.oneIn(2) ? VT_I8 : VT_VARIANT, 1, bounds);
        } else if (SUCCEEDED(SafeArrayAllocDescriptor(1, &value.parray))) {
            value.parray->cbElements = random.of(kSizes);
            value.parray->rgsabound[0] = bounds[0];
            if (random.oneIn(3) || FAILED(SafeArrayAllocData(value.parray))) return;
            for (ULONG i = 0; i < value.parray->cbElements * bounds[0].cElements; ++i)
                static_cast<BYTE*>(value.parray->pvData)[i] = static_cast<BYTE>(random.bits());
        }
    }

    com::Variant held_;               ///< what the argument owns, or refers to
    std::unique_ptr<Argument> inner_; ///< what a reference to a variant refers to
    VARIANT shown_{};                 ///< what is passed
};

} // namespace fuzz
