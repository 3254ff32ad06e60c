// The register's list: settings, query, grid, headers, sorting and searching.
#include "automation/RunTimeError.h"
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "screens/register/frmMaster.h"

#include <algorithm>
#include <cmath>

namespace goodsreq {

using automation::Value;

namespace {

constexpr int kTwipsPerCharacter = 130;
constexpr int kWidestRemarks = 4000;
constexpr int kFirstColumnWidth = 960;
constexpr std::int32_t kRed = 255;

/// As basic::trim, without a copy of the many texts that have nothing to trim.
std::string trimmed(std::string text) {
    const bool blanks = !text.empty() && (text.front() == ' ' || text.back() == ' ');
    return blanks ? basic::trim(text) : text;
}

} // namespace

void frmMaster::readSettings() {
    Session& s = session();
    const std::string shop = std::to_string(s.shopId);
    s.userName =
        shown(db_.lookUp("lousers where userid=" + std::to_string(s.userId) + " and shopid=" + shop, "username"));
    s.fromDate = fnPopulateDate();
    s.blnIntegerQuantity = isTrue(db_.lookUp("aPAckageSettings", "IntegerQuantity"));
    s.aliasInUse = isTrue(db_.lookUp("apackagesettings", "alias"));
    if (s.aliasInUse) s.alias = shown(db_.lookUp("aalias", "Alias", "aliasid =1"));
    s.preserveItemDetails = isTrue(db_.lookUp("aShops", "PreserveItemDetails", "ShopId = " + shop));
}

automation::Date frmMaster::fnPopulateDate() {
    const std::string ofShop = " shopid=" + std::to_string(session().shopId);
    const Value backDays = db_.lookUp("LOsSettings", "sNoofBackDays", ofShop);
    // A shop without the setting has no period to show: that is an error, not a period of no days.
    if (backDays.isEmpty()) automation::raise(automation::kInvalidUseOfNull);
    const automation::Date backDate{session().processDate.days - basic::cInt(backDays)};
    const Value closed = db_.lookUp("vwshopCloseDate", "closedate", ofShop);
    if (basic::concatText(closed).empty()) return backDate;
    const automation::Date closeDate = basic::cDate(closed, desktop().locale());
    return backDate.days > closeDate.days ? backDate : closeDate;
}

std::string frmMaster::buildListQuery() const {
    const Session& s = session();
    return " select sRHrequestID,sRHrequestno,sRHrequestdate,Shopname, "
           " case sRHcancelled when 1 then 'Yes' when 0 then 'No' end Cancelled,sRHremarks, "
           " srhUsed,case SRHTransfinished when 1 then 'Yes' when 0 then 'No' end Confirmed,"
           " shopid from "
           "mesRequesttoShopHeader,ashops"
           " where mesrequesttoshopheader.srhtoShopid=ashops.shopid and "
           " srhrequestdate >=" +
           quoted(basic::format(s.fromDate, "yyyymmdd")) + " and srhShopid=" + std::to_string(s.shopId) +
           s.kind().listed;
}

// A fault of the headers or of the user's own layout costs neither the rows nor what comes after them.
void frmMaster::GridPopulate(const std::string& query, const std::string& tableExpression) {
    const forms::HourGlass busy(desktop());
    std::vector<int> widths;
    trap("GridPopulate", [&] { fillRows(query, widths); });
    if (widths.empty()) return;
    trap("GridPopulate", [&] { fillHeaders(tableExpression, widths); });
    trap("GridPopulate", [&] { setWidths(widths); });
    trap("GridPopulate", [this] {
        GridSettings(module().create("MasterGridSetting.clsMasterGridSetting"))
            .fnGridSettings(session().userId, session().companyId, flexMaster, session().connection);
    });
    trap("GridPopulate", [this] { flexMaster.selectRow(1); });
}

void frmMaster::fillRows(const std::string& query, std::vector<int>& widths) {
    flexMaster.clear();
    flexMaster.setFixedRows(1);
    flexMaster.setFixedCols(0);
    flexMaster.setCols(1);
    flexMaster.setRows(2);
    flexMaster.setColWidth(0, kFirstColumnWidth);

    Recordset records = module().openRecordset(query);
    const std::vector<Field> fields = records.fields();
    flexMaster.setCols(static_cast<int>(fields.size()));
    std::vector<int> longest(fields.size());
    std::vector<std::vector<std::string>> rows;
    for (; !records.eof(); records.moveNext()) {
        std::vector<std::string>& row = rows.emplace_back(fields.size());
        for (std::size_t col = 0; col < fields.size(); ++col) {
            row[col] = trimmed(shown(fields[col].value()));
            // A text has no more characters than bytes, so few have to be counted.
            if (row[col].size() > static_cast<std::size_t>(longest[col]))
                longest[col] = std::max(longest[col], basic::len(row[col]));
        }
    }
    if (!rows.empty()) flexMaster.setDataRows(std::move(rows));
    colourCancelledRows();
    widths = std::move(longest);
    records.close();
}

void frmMaster::colourCancelledRows() {
    for (int row = flexMaster.fixedRows(); row < flexMaster.rows(); ++row)
        if (flexMaster.cols() > kColCancelled && flexMaster.cell(row, kColCancelled) == "Yes")
            flexMaster.setRowColour(row, kRed);
}

void frmMaster::fillHeaders(const std::string& tableExpression, std::vector<int>& widths) {
    cboColNames.clear();
    cboSearch.clear();
    const Session& s = session();
    std::string header = "tc.columnheader";
    if (s.aliasInUse) {
        const std::string alias = quoted(s.alias);
        header = " replace(replace(tc.ColumnHeader, 'shop'," + alias + "),'godown'," + alias + ")";
    }
    Recordset headers = module().openRecordset("select " + header +
                                               ",tc.columnname from atables t,"
                                               "atablecolumns tc where t.tableid = tc.tableid and "
                                               "tablename =" +
                                               quoted(tableExpression));
    if (!headers.eof()) {
        const std::vector<Field> fields = headers.fields();
        headers.moveNext(); // the hidden id column's
        for (int col = 1; !headers.eof(); headers.moveNext(), ++col) {
            const std::string text = shown(fields.at(0).value());
            flexMaster.setCell(0, col, text);
            cboColNames.addItem(text, col);
            cboSearch.addItem(text, col);
            int& width = widths.at(static_cast<std::size_t>(col)); // the grid may be another by now
            width = std::max(width, basic::len(text));
        }
    }
    headers.close();
}

void frmMaster::setWidths(const std::vector<int>& widths) {
    for (int col = 0; col < flexMaster.cols(); ++col) {
        int width = std::min(widths.at(static_cast<std::size_t>(col)), forms::kFarthestTwips / kTwipsPerCharacter) *
                    kTwipsPerCharacter;
        if (col == kColId || col == kColShopId) width = 0;
        if (col == kColRemarks) width = std::min(width, kWidestRemarks);
        flexMaster.setColWidth(col, width);
    }
    fillWidth();
}

// Widens the visible columns alike until they fill the grid; the remarks only as far as they may go.
void frmMaster::fillWidth() {
    constexpr int kScrollBar = 330;
    int used = 0;
    int visible = 0;
    for (int col = 0; col < flexMaster.cols(); ++col) {
        used += flexMaster.colWidth(col);
        visible += flexMaster.colWidth(col) > 0;
    }
    const int spare = flexMaster.bounds().width - kScrollBar - used;
    if (visible < 2 || spare <= 0) return;
    const int toRemarks = std::min(spare / visible, kWidestRemarks - flexMaster.colWidth(kColRemarks));
    const int toOthers = (spare - toRemarks) / (visible - 1);
    for (int col = 0; col < flexMaster.cols(); ++col)
        if (const int width = flexMaster.colWidth(col))
            flexMaster.setColWidth(col, width + (col == kColRemarks ? toRemarks : toOthers));
}

void frmMaster::sortByChosenColumn() {
    const forms::HourGlass busy(desktop());
    if (!cboColNames.hasSelection()) return;
    // Ids rise with the dates, and compare as numbers.
    const int column = basic::containsNoCase(cboColNames.text(), "date") ? kColId : cboColNames.selectedData();
    const bool numeric = basic::isNumeric(flexMaster.cell(flexMaster.row(), column));
    using forms::SortOrder;
    if (optAscend.value())
        sort(column, numeric ? SortOrder::genericAscending : SortOrder::stringAscending);
    else
        sort(column, numeric ? SortOrder::genericDescending : SortOrder::stringDescending);
}

// The selection stays on its request.
void frmMaster::sort(int column, forms::SortOrder order) {
    const int row = flexMaster.sort(column, order);
    if (row != flexMaster.row()) {
        flexMaster.selectRow(row);
        flexMaster.setTopRow(row);
    }
}

void frmMaster::search() {
    const std::string sought = basic::trim(txtsearch.text());
    if (!cboSearch.hasSelection() || sought.empty()) return;
    const int column = cboSearch.selectedData();
    sort(column, forms::SortOrder::stringAscending);
    cboColNames.setListIndex(-1); // it may name another order

    const int length = basic::len(txtsearch.text());
    const bool numeric = basic::isNumeric(flexMaster.cell(1, column));
    const auto startOf = [&](int row) { return basic::left(basic::trim(flexMaster.cell(row, column)), length); };
    const auto compare = [&](int row) {
        const std::string start = startOf(row);
        if (!numeric) return forms::compareText(basic::ucase(start), basic::ucase(sought));
        const double difference = basic::val(start) - basic::val(sought);
        return difference < 0 ? -1 : difference > 0 ? 1 : 0;
    };
    // The first of the rows up to `row` that begin as it does; sorted as text, they stand together.
    const auto firstAlike = [&](int row) {
        const std::string start = basic::ucase(startOf(row));
        int first = 1;
        for (int last = row; first < last;) {
            const int middle = (first + last) / 2;
            if (forms::compareText(basic::ucase(startOf(middle)), start) < 0)
                first = middle + 1;
            else
                last = middle;
        }
        return first;
    };
    int low = 1;
    int high = flexMaster.rows() - 1;
    while (low <= high) {
        int middle = (low + high) / 2;
        const int order = compare(middle);
        if (order == 0) {
            middle = firstAlike(middle);
            while (middle > 1 && compare(middle - 1) == 0) middle = firstAlike(middle - 1);
            flexMaster.selectRow(middle);
            flexMaster.setTopRow(middle);
            return;
        }
        if (order < 0)
            low = middle + 1;
        else
            high = middle - 1;
    }
}

} // namespace goodsreq
