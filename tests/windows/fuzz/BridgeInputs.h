// What bridge_fuzz hands to the objects it calls: arguments of every kind, and an object of its own whose references it
// counts.
#pragma once

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Unknown.h"
#include "com/Variant.h"

#include <oaidl.h>

#include <memory>
#include <random>
#include <set>
#include <string>
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

/// Texts that members may ask for, and others.
std::wstring text(Random& random);

/// An object of a component that answers as it likes: values, errors, changed arguments.
class Whimsical final : public com::Unknown<IDispatch> {
public:
    explicit Whimsical(Random& random) : random_(random) { living.insert(this); }
    inline static std::set<const IDispatch*> living;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID&, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, const IID&, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* information, UINT*) override;

private:
    ~Whimsical() override { living.erase(this); }
    Random& random_;
};

using Objects = std::vector<com::ComPtr<IDispatch>>;

/// An argument of any kind, with all that it owns or refers to.
class Argument {
public:
    Argument(Random& random, const Objects& objects);
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;

    const VARIANT& variant() const { return shown_; }

private:
    void fill(Random& random, const Objects& objects, VARIANT& value, bool nested = false);
    void fillArray(Random& random, const Objects& objects, VARIANT& value);
    void fillWrongArray(Random& random, VARIANT& value);

    com::Variant held_;               ///< what the argument owns, or refers to
    std::unique_ptr<Argument> inner_; ///< what a reference to a variant refers to
    VARIANT shown_{};                 ///< what is passed
};

} // namespace fuzz
