// A counted reference to a COM interface.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <utility>

namespace com {

template <class I> class ComPtr {
public:
    ComPtr() = default;
    /// Adds a reference of its own.
    explicit ComPtr(I* p) : p_(p) {
        if (p_) p_->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.p_) {}
    ComPtr(ComPtr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(p_, other.p_);
        return *this;
    }
    ~ComPtr() {
        if (p_) p_->Release();
    }

    /// Takes over the reference that the caller holds.
    static ComPtr adopt(I* p) {
        ComPtr result;
        result.p_ = p;
        return result;
    }
    /// Another interface of the object, or none when it lacks it.
    template <class J> ComPtr<J> query(const IID& id) const {
        void* found = nullptr;
        if (!p_ || FAILED(p_->QueryInterface(id, &found))) return {};
        return ComPtr<J>::adopt(static_cast<J*>(found));
    }
    template <class J> ComPtr<J> query() const { return query<J>(__uuidof(J)); }

    /// Where a call leaves its result. Whatever was held is released first.
    I** out() {
        *this = ComPtr();
        return &p_;
    }
    void** outVoid() { return reinterpret_cast<void**>(out()); }
    /// Gives the reference away.
    I* detach() { return std::exchange(p_, nullptr); }

    I* get() const { return p_; }
    I* operator->() const { return p_; }
    I& operator*() const { return *p_; }
    explicit operator bool() const { return p_ != nullptr; }

private:
    I* p_ = nullptr;
};

} // namespace com
