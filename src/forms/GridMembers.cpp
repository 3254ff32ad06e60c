// The members by which a component reaches a grid.
#include "basic/Conversion.h"
#include "forms/Desktop.h"
#include "forms/Form.h"
#include "forms/Grid.h"

namespace forms {

using automation::Access;
using automation::Arguments;
using automation::Members;
using automation::Value;

namespace {

std::string textOf(Grid& grid, const Value& value) { return basic::cStr(value, grid.form().desktop().locale()); }

void addNumber(Members<Grid>& members, const char* name, int (Grid::*get)() const, void (Grid::*set)(int)) {
    members.property(
        name, [get](Grid& g) { return Value(std::int32_t{(g.*get)()}); },
        set ? Members<Grid>::Setter([set](Grid& g, const Value& v) { (g.*set)(basic::cLng(v)); }) : nullptr);
}

SortOrder sortOrder(const Value& value) {
    const std::int32_t order = basic::cLng(value);
    switch (order) {
    case 0:
    case 1:
    case 2:
    case 7:
    case 8: return static_cast<SortOrder>(order);
    default: throw automation::RunTimeError(380, "Invalid property value");
    }
}

Members<Grid> gridMembers() {
    Members<Grid> m;
    addNumber(m, "Rows", &Grid::rows, &Grid::setRows);
    addNumber(m, "Cols", &Grid::cols, &Grid::setCols);
    addNumber(m, "FixedRows", &Grid::fixedRows, &Grid::setFixedRows);
    addNumber(m, "FixedCols", &Grid::fixedCols, &Grid::setFixedCols);
    addNumber(m, "Row", &Grid::row, &Grid::setRow);
    addNumber(m, "Col", &Grid::col, &Grid::setCol);
    addNumber(m, "RowSel", &Grid::rowSel, &Grid::setRowSel);
    addNumber(m, "ColSel", &Grid::colSel, &Grid::setColSel);
    addNumber(m, "TopRow", &Grid::topRow, &Grid::setTopRow);
    addNumber(m, "MouseRow", &Grid::mouseRow, nullptr);
    addNumber(m, "MouseCol", &Grid::mouseCol, nullptr);
    for (const char* name : {"Text", ""})
        m.property(
            name, [](Grid& g) { return Value(g.cell(g.row(), g.col())); },
            [](Grid& g, const Value& v) { g.setCell(g.row(), g.col(), textOf(g, v)); });
    m.indexed(
        "TextMatrix", 2, [](Grid& g, Arguments a) { return Value(g.cell(basic::cLng(a[0]), basic::cLng(a[1]))); },
        [](Grid& g, Arguments a) {
            g.setCell(basic::cLng(a[0]), basic::cLng(a[1]), textOf(g, a[2]));
            return Value();
        });
    m.indexed(
        "ColWidth", 1, [](Grid& g, Arguments a) { return Value(std::int32_t{g.colWidth(basic::cLng(a[0]))}); },
        [](Grid& g, Arguments a) {
            g.setColWidth(basic::cLng(a[0]), basic::cLng(a[1]));
            return Value();
        });
    m.property(
        "CellForeColor", [](Grid& g) { return Value(g.rowColour(g.row())); },
        [](Grid& g, const Value& v) { g.setRowColour(g.row(), basic::cLng(v)); });
    m.property(
        "Sort", [](Grid&) -> Value { automation::raise(automation::kNoSuchMember); }, // It is an act, not a state.
        [](Grid& g, const Value& v) { g.sort(g.col(), sortOrder(v)); });
    m.property(
        "FormatString", [](Grid&) -> Value { automation::raise(automation::kNoSuchMember); }, // The headings hold it.
        [](Grid& g, const Value& v) { g.setFormat(textOf(g, v)); });
    m.method("AddItem", 1, 1, [](Grid& g, Arguments a) {
        g.addItem(textOf(g, a[0]));
        return Value();
    });
    m.method("RemoveItem", 1, 1, [](Grid& g, Arguments a) {
        g.removeItem(basic::cLng(a[0]));
        return Value();
    });
    m.method("Clear", 0, 0, [](Grid& g, Arguments) {
        g.clear();
        return Value();
    });
    return m;
}

const Members<Grid>& members() {
    static const Members<Grid> table = gridMembers();
    return table;
}

} // namespace

Value Grid::invoke(Access access, std::string_view member, Arguments arguments) {
    if (members().has(member)) return members().invoke(*this, access, member, arguments);
    return Control::invoke(access, member, arguments);
}

bool Grid::has(std::string_view member) const { return members().has(member) || Control::has(member); }

} // namespace forms
