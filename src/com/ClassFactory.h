// Makes the objects of one class for COM.
#pragma once

#include "com/ComPtr.h"
#include "com/ModuleReference.h"
#include "com/Server.h"

#include <atomic>

namespace com {

class ClassFactory final : public IClassFactory {
public:
    /// `made` must live as long as the DLL.
    static ComPtr<IClassFactory> make(const ServerClass& made);

    HRESULT STDMETHODCALLTYPE QueryInterface(const IID& id, void** result) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, const IID& id, void** result) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    explicit ClassFactory(const ServerClass& made) : made_(made) {}
    ~ClassFactory() = default;

    const ServerClass& made_;
    std::atomic<ULONG> references_{1};
    ModuleReference module_;
};

} // namespace com
