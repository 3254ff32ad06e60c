#include "com/ClassInfo.h"

#include "com/Bstr.h"

#include <ocidl.h>

#include <map>
#include <mutex>

namespace com {
namespace {

#ifdef _WIN64
constexpr SYSKIND kSystem = SYS_WIN64;
#else
constexpr SYSKIND kSystem = SYS_WIN32;
#endif

ComPtr<ITypeInfo> makeInfo(const std::string& className) {
    ComPtr<ICreateTypeLib2> library; // lives in memory; the file would only come to be by saving it
    if (FAILED(CreateTypeLib2(kSystem, L"classes.tlb", library.out()))) return {};
    ComPtr<ICreateTypeInfo> creation;
    std::wstring name = toWide(className);
    if (FAILED(library->CreateTypeInfo(name.data(), TKIND_DISPATCH, creation.out()))) return {};
    creation->LayOut(); // Asked for before anything is read; a type without members has nothing that could fail to fit.
    return creation.query<ITypeInfo>(IID_ITypeInfo);
}

std::string nameIn(ITypeInfo& info) {
    Bstr name;
    if (FAILED(info.GetDocumentation(MEMBERID_NIL, name.out(), nullptr, nullptr, nullptr))) return {};
    std::string text = name.utf8();
    return text.starts_with('_') ? text.substr(1) : text; // an interface is named after its class, with "_" before
}

} // namespace

ComPtr<ITypeInfo> classInfo(const std::string& className) {
    // Never destroyed: objects may outlive the DLL's own clean-up at the end of the process.
    static auto& mutex = *new std::mutex;
    static auto& known = *new std::map<std::string, ComPtr<ITypeInfo>>;
    const std::lock_guard lock(mutex);
    auto [entry, isNew] = known.try_emplace(className);
    if (isNew) entry->second = makeInfo(className);
    return entry->second;
}

std::string classNameOf(IDispatch& dispatch) {
    ComPtr<ITypeInfo> info;
    std::string name;
    if (const auto provider = ComPtr<IDispatch>(&dispatch).query<IProvideClassInfo>(IID_IProvideClassInfo))
        if (SUCCEEDED(provider->GetClassInfo(info.out())) && info) name = nameIn(*info);
    if (name.empty() && SUCCEEDED(dispatch.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.out())) && info)
        name = nameIn(*info);
    return name.empty() ? "Object" : name;
}

} // namespace com
