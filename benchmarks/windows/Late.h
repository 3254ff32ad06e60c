// Late-bound calls with nothing around them: the bare limit of what goes through COM.
#pragma once

#include "automation/Object.h"
#include "com/Bstr.h"
#include "com/ComPtr.h"

#include <string>
#include <vector>

namespace bench {

/// An object whose members are looked up once, before the calls that are measured. Throws where a call fails.
class Late {
public:
    explicit Late(IDispatch* object) : object_(object) {}
    /// A new object of that class.
    static Late create(const wchar_t* progId);
    static Late of(const automation::ObjectPtr& object);

    DISPID member(const wchar_t* name) const;
    /// Calls a member with arguments in their usual order; `result` is cleared first.
    void call(DISPID member, WORD kind, std::vector<VARIANT> arguments, VARIANT& result) const;
    /// A property, or a method without arguments.
    void get(DISPID member, VARIANT& result) const { call(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}, result); }
    Late getObject(const wchar_t* name, std::vector<VARIANT> arguments = {}) const;
    IDispatch* dispatch() const { return object_.get(); }

private:
    com::ComPtr<IDispatch> object_;
};

VARIANT textArgument(const com::Bstr& text);
VARIANT numberArgument(LONG number);

/// Opens a record set of that query and reads each cell of it as text; the number of characters.
std::size_t readAllAsText(const Late& connection, const com::Bstr& query);

/// Sends the statements of a trace again, through the connection's own members; rows are read.
void sendAgain(const Late& connection, const std::vector<std::string>& statements);

} // namespace bench
