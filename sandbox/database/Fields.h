// ADODB.Fields and ADODB.Field: the columns of a record set, live on its current row.
#pragma once

#include "sandbox/database/Recordset.h"

namespace sandbox {

class Fields : public automation::WithMembers<Fields> {
public:
    explicit Fields(std::shared_ptr<Recordset> records) : records_(std::move(records)) {}

    static const automation::Members<Fields>& members();
    std::string className() const override { return "Fields"; }

    /// By name or by position from 0. Error 3265 for neither.
    automation::ObjectPtr item(const automation::Value& nameOrPosition) const;

private:
    std::shared_ptr<Recordset> records_;
};

class Field : public automation::Object {
public:
    Field(std::shared_ptr<Recordset> records, std::size_t index) : records_(std::move(records)), index_(index) {}

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;
    bool has(std::string_view member) const override;
    std::string className() const override { return "Field"; }

private:
    static const automation::Members<Field>& members();
    const OutputColumn& column() const;

    std::shared_ptr<Recordset> records_;
    std::size_t index_;
};

} // namespace sandbox
