#include "benchmarks/windows/Late.h"

#include "com/Bridge.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace bench {
namespace {

void require(HRESULT result, const char* what) {
    if (SUCCEEDED(result)) return;
    char code[16];
    std::snprintf(code, sizeof code, "%08lX", static_cast<unsigned long>(result));
    throw std::runtime_error(std::string(what) + " failed: " + code);
}

} // namespace

Late Late::create(const wchar_t* progId) {
    CLSID id;
    require(CLSIDFromProgID(progId, &id), "CLSIDFromProgID");
    com::ComPtr<IDispatch> object;
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.outVoid()), "CoCreateInstance");
    return Late(object.get());
}

Late Late::of(const automation::ObjectPtr& object) { return Late(com::toDispatch(object).get()); }

DISPID Late::member(const wchar_t* name) const {
    DISPID id = 0;
    auto* text = const_cast<wchar_t*>(name);
    require(object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_NEUTRAL, &id), "GetIDsOfNames");
    return id;
}

void Late::call(DISPID member, WORD kind, std::vector<VARIANT> arguments, VARIANT& result) const {
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    VariantClear(&result);
    require(object_->Invoke(member, IID_NULL, LOCALE_NEUTRAL, kind, &parameters, &result, nullptr, nullptr), "Invoke");
}

Late Late::getObject(const wchar_t* name, std::vector<VARIANT> arguments) const {
    VARIANT result;
    VariantInit(&result);
    call(member(name), DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(arguments), result);
    if (result.vt != VT_DISPATCH) throw std::runtime_error("No object came back");
    Late object(result.pdispVal);
    VariantClear(&result);
    return object;
}

VARIANT textArgument(const com::Bstr& text) {
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BSTR;
    argument.bstrVal = text.get(); // stays the caller's
    return argument;
}

VARIANT numberArgument(LONG number) {
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_I4;
    argument.lVal = number;
    return argument;
}

namespace {

/// From the current row on.
std::size_t readRows(const Late& records) {
    const Late fields = records.getObject(L"Fields");
    VARIANT value;
    VariantInit(&value);
    fields.get(fields.member(L"Count"), value);
    std::vector<Late> columns;
    for (LONG i = 0, count = value.vt == VT_I4 ? value.lVal : 0; i < count; ++i)
        columns.push_back(records.getObject(L"Fields", {numberArgument(i)}));
    if (columns.empty()) return 0;
    const DISPID member = columns.front().member(L"Value");
    const DISPID eof = records.member(L"EOF");
    const DISPID next = records.member(L"MoveNext");
    std::size_t characters = 0;
    for (records.get(eof, value); value.vt == VT_BOOL && !value.boolVal; records.get(eof, value)) {
        for (const Late& column : columns) {
            column.get(member, value);
            if (value.vt != VT_NULL) require(VariantChangeType(&value, &value, 0, VT_BSTR), "VariantChangeType");
            if (value.vt == VT_BSTR) characters += SysStringLen(value.bstrVal);
        }
        records.call(next, DISPATCH_METHOD, {}, value);
    }
    VariantClear(&value);
    return characters;
}

} // namespace

std::size_t readAllAsText(const Late& connection, const com::Bstr& query) {
    const Late records = Late::create(L"ADODB.Recordset");
    VARIANT value, active;
    VariantInit(&value);
    VariantInit(&active);
    active.vt = VT_DISPATCH;
    active.pdispVal = connection.dispatch(); // stays the caller's
    constexpr LONG kStatic = 3, kReadOnly = 1;
    records.call(records.member(L"Open"), DISPATCH_METHOD,
                 {textArgument(query), active, numberArgument(kStatic), numberArgument(kReadOnly)}, value);
    const std::size_t characters = readRows(records);
    records.call(records.member(L"Close"), DISPATCH_METHOD, {}, value);
    VariantClear(&value);
    return characters;
}

void sendAgain(const Late& connection, const std::vector<std::string>& statements) {
    const DISPID execute = connection.member(L"Execute");
    VARIANT result;
    VariantInit(&result);
    for (const std::string& statement : statements) {
        if (statement == "BEGIN TRANSACTION") {
            connection.call(connection.member(L"BeginTrans"), DISPATCH_METHOD, {}, result);
        } else if (statement == "COMMIT TRANSACTION") {
            connection.call(connection.member(L"CommitTrans"), DISPATCH_METHOD, {}, result);
        } else {
            const com::Bstr text{std::string_view(statement)};
            connection.call(execute, DISPATCH_METHOD, {textArgument(text)}, result);
            if (result.vt == VT_DISPATCH) readRows(Late(result.pdispVal));
        }
    }
    VariantClear(&result);
}

} // namespace bench
