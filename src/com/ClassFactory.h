// Makes the objects of one class for COM.
#pragma once

#include "com/ComPtr.h"
#include "com/ModuleReference.h"
#include "com/Server.h"
#include "com/Unknown.h"

namespace com {

class ClassFactory final : public Unknown<IClassFactory> {
public:
    /// `made` must live as long as the DLL.
    static ComPtr<IClassFactory> make(const ServerClass& made);

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, const IID& id, void** result) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    explicit ClassFactory(const ServerClass& made) : made_(made) {}

    const ServerClass& made_;
    ModuleReference module_;
};

} // namespace com
