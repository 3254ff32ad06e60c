#include "com/Registration.h"

#include "com/Bstr.h"
#include "com/Errors.h"
#include "com/OwnFile.h"

#include <string>
#include <vector>

// In the system since Windows Vista, but not in every compiler's headers.
extern "C" {
HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND system);
}

namespace com {
namespace {

struct Entry {
    std::wstring key;    // below Software\Classes
    const wchar_t* name; // null for the key's own value
    std::wstring value;
};

HKEY root(Scope scope) { return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }
std::wstring classesKey(const std::wstring& key) { return L"Software\\Classes\\" + key; }

// Those who register a server know the system's results, not the language's numbers for them.
void check(HRESULT result) {
    if (FAILED(result)) throw automation::RunTimeError(result, systemDescription(result));
}
void checkStatus(LSTATUS status) { check(HRESULT_FROM_WIN32(static_cast<DWORD>(status))); }

std::wstring idText(const GUID& id) {
    wchar_t text[40] = L"";
    StringFromGUID2(id, text, 40);
    return text;
}
std::wstring classKey(const ServerClass& one) { return L"CLSID\\" + idText(one.id); }

std::wstring holderOf(const std::wstring& progId, Scope scope) {
    wchar_t text[40] = L"";
    DWORD size = sizeof text;
    const std::wstring key = classesKey(progId + L"\\CLSID");
    return RegGetValueW(root(scope), key.data(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size) == ERROR_SUCCESS
               ? text
               : std::wstring();
}

// Windows keeps CLSID and Interface apart for 32-bit and 64-bit programs, but ProgIDs and type libraries are of both.
constexpr bool is64Bit = sizeof(void*) == 8;

bool otherWidthHas(const std::wstring& key, Scope scope) {
    constexpr REGSAM otherView = is64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root(scope), classesKey(key).data(), 0, KEY_READ | otherView, &opened) != ERROR_SUCCESS)
        return false;
    RegCloseKey(opened);
    return true;
}

bool same(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.data(), -1, b.data(), -1, TRUE) == CSTR_EQUAL;
}

ComPtr<ITypeLib> ownTypeLibrary() {
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx(ownPath().data(), REGKIND_NONE, library.out()));
    return library;
}

std::wstring typeLibraryId() {
    const auto library = ownTypeLibrary();
    TLIBATTR* attributes = nullptr;
    check(library->GetLibAttr(&attributes));
    const std::wstring id = idText(attributes->guid);
    library->ReleaseTLibAttr(attributes);
    return id;
}

std::vector<Entry> entries(const Server& server, Scope scope) {
    std::vector<Entry> all;
    const std::wstring path = ownPath();
    const std::wstring libraryId = server.hasTypeLibrary ? typeLibraryId() : std::wstring();
    for (const ServerClass& one : server.classes) {
        const std::wstring progId = toWide(one.progId), description = toWide(one.description);
        const std::wstring key = classKey(one);
        all.push_back({key, nullptr, description});
        all.push_back({key + L"\\InprocServer32", nullptr, path});
        all.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
        all.push_back({key + L"\\ProgID", nullptr, progId});
        all.push_back({key + L"\\Programmable", nullptr, {}});
        if (!libraryId.empty()) all.push_back({key + L"\\TypeLib", nullptr, libraryId});
        const std::wstring holder = holderOf(progId, scope);
        if (!server.takesOverProgIds && !holder.empty() && !same(holder, idText(one.id))) continue;
        all.push_back({progId, nullptr, description});
        all.push_back({progId + L"\\CLSID", nullptr, idText(one.id)});
    }
    return all;
}

void write(const Entry& entry, Scope scope) {
    const auto bytes = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    checkStatus(
        RegSetKeyValueW(root(scope), classesKey(entry.key).data(), entry.name, REG_SZ, entry.value.data(), bytes));
}

void remove(const std::wstring& key, Scope scope) {
    const LSTATUS status = RegDeleteTreeW(root(scope), classesKey(key).data());
    if (status != ERROR_FILE_NOT_FOUND && status != ERROR_PATH_NOT_FOUND) checkStatus(status);
    RegDeleteKeyW(root(scope), classesKey(key).data()); // where deleting the tree leaves the key itself
}

void registerTypeLibrary(Scope scope) {
    const auto library = ownTypeLibrary();
    std::wstring path = ownPath();
    check(scope == Scope::machine ? RegisterTypeLib(library.get(), path.data(), nullptr)
                                  : RegisterTypeLibForUser(library.get(), path.data(), nullptr));
}

// The system's own routine takes the interfaces from both widths, so it is left to the last one.
void unregisterTypeLibrary(Scope scope) {
    const auto library = ownTypeLibrary();
    TLIBATTR* attributes = nullptr;
    check(library->GetLibAttr(&attributes));
    const TLIBATTR own = *attributes;
    library->ReleaseTLibAttr(attributes);

    const std::wstring versions = L"TypeLib\\" + idText(own.guid) + L"\\" + std::to_wstring(own.wMajorVerNum) + L"." +
                                  std::to_wstring(own.wMinorVerNum) + L"\\" + std::to_wstring(own.lcid);
    if (!otherWidthHas(versions + (is64Bit ? L"\\win32" : L"\\win64"), scope)) {
        const auto take = scope == Scope::machine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
        take(own.guid, own.wMajorVerNum, own.wMinorVerNum, own.lcid, own.syskind); // not there is no error
        return;
    }
    remove(versions + (is64Bit ? L"\\win64" : L"\\win32"), scope);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        TYPEATTR* type = nullptr;
        check(library->GetTypeInfo(i, info.out()));
        check(info->GetTypeAttr(&type));
        const std::wstring key = L"Interface\\" + idText(type->guid);
        const bool isInterface = type->typekind == TKIND_DISPATCH || type->typekind == TKIND_INTERFACE;
        info->ReleaseTypeAttr(type);
        if (isInterface) remove(key, scope);
    }
}

} // namespace

void writeRegistration(const Server& server, Scope scope) {
    for (const Entry& entry : entries(server, scope)) write(entry, scope);
    if (server.hasTypeLibrary) registerTypeLibrary(scope);
}

void removeRegistration(const Server& server, Scope scope) {
    for (const ServerClass& one : server.classes) {
        const std::wstring progId = toWide(one.progId);
        remove(classKey(one), scope); // first: a 32-bit Windows has no other view, and shows this one again
        if (same(holderOf(progId, scope), idText(one.id)) && !otherWidthHas(classKey(one), scope))
            remove(progId, scope);
    }
    if (server.hasTypeLibrary) unregisterTypeLibrary(scope);
}

} // namespace com
