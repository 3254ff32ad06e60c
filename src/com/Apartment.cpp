#include "com/Apartment.h"

#include <windows.h>

#include <objbase.h>
#include <objidl.h>

#include <atomic>

namespace com {
namespace {

thread_local unsigned current = 0; ///< 0 until it is asked for, and after each end

/// Hears of each end of COM on its threads. It lives as long as the process.
class End final : public IInitializeSpy {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(const IID& id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IInitializeSpy ? this : nullptr;
        return *result ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD left) override {
        if (left == 0) current = 0;
        return S_OK;
    }
};

} // namespace

unsigned apartment() noexcept {
    static std::atomic<unsigned> last{0};
    if (!current) current = ++last;
    return current;
}

void noticeItsEnd() noexcept {
    static End& end = *new End;
    thread_local bool listens = false;
    ULARGE_INTEGER cookie{};
    if (!listens) listens = SUCCEEDED(CoRegisterInitializeSpy(&end, &cookie));
}

} // namespace com
