#include "screens/fetch/FrmFetch.h"

#include "automation/RunTimeError.h"
#include "basic/Apostrophes.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "screens/lines/frmRequestDetail.h"

#include <array>
#include <limits>

namespace goodsreq {

namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 14100;
constexpr int kHeight = 7600;
constexpr int kRowHeight = 330;
constexpr int kButtonWidth = 1300;
constexpr int kButtonHeight = 390;

enum GridColumn { kFetchId, kFetchCode, kFetchDescription };

/// A choice of the boxes, and the column of the query that it stands for; its place is that of the grid's column.
struct SearchColumn {
    const char* name;
    const char* column;
};
constexpr std::array<SearchColumn, 5> kColumns{{{"ItemCode", "a.itemcode"},
                                                {"ItemDescription", "v.itemdescription"},
                                                {"Brand", "a.brand"},
                                                {"ModelNo", "a.modelno"},
                                                {"Part_Code", "a.Part_code"}}};
constexpr std::size_t kDefaultColumn = 1;
constexpr std::array<const char*, 4> kOrders{"ItemCode", "ItemDescription", "ItemCode,ItemDescription", "Part_code"};

/// What a choice of that number, from 1, stands for. Error 9 for the number of a choice that a component has added; its
/// text goes into no statement.
template <class T, std::size_t N> const T& chosenOf(const std::array<T, N>& table, std::int32_t number) {
    if (number < 1 || number > static_cast<std::int32_t>(N)) automation::raise(automation::kSubscriptOutOfRange);
    return table[static_cast<std::size_t>(number) - 1];
}

struct Heading {
    const char* text;
    int width; ///< characters, with the blanks behind the text; 0 for no blanks
};

std::string formatOf(const std::array<Heading, 5>& headings) {
    std::string format;
    for (const Heading& heading : headings) format += "|" + basic::padRight(heading.text, heading.width);
    return format; // the first column, the item id, has no heading
}

// The heading before a search, over matches, and over none differ a little, as the suite's users know them.
std::string headingAtFirst() {
    return formatOf(
        {{{"<Item Code", 49}, {"< Item Description", 112}, {"<Brand", 56}, {"< Model No", 17}, {"<Part Code", 0}}});
}
std::string headingOverMatches() {
    return formatOf(
        {{{"Item Code", 48}, {" Item Description", 114}, {"Brand", 55}, {" Model No", 14}, {"Part_Code", 0}}});
}
std::string headingOverNone() {
    return formatOf(
        {{{"Item Code", 48}, {" Item Description", 79}, {"Brand", 55}, {" Model No", 18}, {" Part Code", 0}}});
}

/// Names of columns differ in case from place to place.
bool same(const std::string& one, const std::string& other) { return basic::ucase(one) == basic::ucase(other); }

} // namespace

FrmFetch::FrmFetch(Module& module) : ModuleForm(module, "FrmFetch") {
    cboFetch.onKeyPress = cboColNames.onKeyPress = cboSearch.onKeyPress = enterMovesOn();
    txtFetch.onGotFocus = [this] { txtFetch.selectAll(); };
    txtFetch.onKeyPress = [this](std::int16_t& character) {
        if (character != forms::kKeyReturn) return;
        character = 0; // a box of one line would beep
        trap("txtFetch_KeyPress ", [this] { search(); });
    };
    txtFetch.onKeyUp = [this](std::int16_t&, std::int16_t) { trap("txtFetch_KeyUp ", [this] { moveToTyped(); }); };
    flexMaster.onKeyPress = [this](std::int16_t& character) {
        if (character == forms::kKeyReturn) cmdOk.onClick();
    };
    flexMaster.onDblClick = [this] { cmdOk.onClick(); };
    cmdOk.onClick = [this] { trap("cmdOk_Click ", [this] { accept(); }); };
    CmdClose.onClick = [this] { unload(); };
}

void FrmFetch::design() {
    setSize(kWidth, kHeight);
    setResizable(true);
    setCaption("Fetch Item");
    const forms::Anchor belowRight{false, false, true, true};
    struct Row {
        forms::Label& label;
        const char* caption;
        forms::Control& box;
        int left;
        int boxLeft;
        int width;
    };
    int top = kMargin + 300;
    const auto placeRow = [&](const Row& row) {
        row.label.place({row.left, top + 45, row.boxLeft - row.left, 240});
        row.label.setText(row.caption);
        row.box.place({row.boxLeft, top, row.width, kRowHeight});
    };
    placeRow({lblFetch, "&Search in:", cboFetch, 2 * kMargin, 1500, 2600});
    placeRow({lblText, "&Text:", txtFetch, 4500, 5300, kWidth - 2 * kMargin - 5300});
    txtFetch.place(txtFetch.bounds(), {true, true, true, false});
    top += kRowHeight + 120;
    placeRow({lblOrder, "Order &by:", cboColNames, 2 * kMargin, 1500, 2600});
    placeRow({lblSearch, "&Move in:", cboSearch, 4500, 5300, 2600});
    fraFetch.place({kMargin, kMargin, kWidth - 2 * kMargin, top + kRowHeight}, {true, true, true, false});
    const int list = fraFetch.bounds().bottom() + kMargin;
    const int buttons = kHeight - kMargin - kButtonHeight;
    flexMaster.place({kMargin, list, kWidth - 2 * kMargin, buttons - kMargin - list}, {true, true, true, true});
    flexMaster.setReadAs("Items found");
    cmdOk.place({kWidth - kMargin - 2 * kButtonWidth - 100, buttons, kButtonWidth, kButtonHeight}, belowRight);
    cmdOk.setText("&OK");
    CmdClose.place({kWidth - kMargin - kButtonWidth, buttons, kButtonWidth, kButtonHeight}, belowRight);
    CmdClose.setText("&Close");
    CmdClose.setCancel(true);
}

void FrmFetch::forget() {
    gen_ = {};
    db_ = {};
    baseQuery_.clear();
}

void FrmFetch::onLoad() {
    justLoaded_ = true;
    forget();
    trap("Form_Load ", [this] {
        gen_ = CommonGen(module().create("CommonModule.clsCommonGen"));
        db_ = module().createCommonDb();
        session().formColour.Applyformcolor(*this);
        flexMaster.setFixedCols(0);
        flexMaster.setFormat(headingAtFirst());
        // The number of a choice is the grid's column.
        std::int32_t number = 0;
        for (const SearchColumn& column : kColumns) {
            cboFetch.addItem(column.name, ++number);
            cboSearch.addItem(number == 5 ? "Part_code" : column.name, number);
        }
        number = 0;
        for (const char* order : kOrders) cboColNames.addItem(order, ++number);
        baseQuery_ = "select distinct(a.itemid) "
                     "itemid,a.itemcode,v.itemdescription,a.brand,a.modelno,isnull(a.part_code,' ')part_code "
                     " from aitem a, vwItemDescription v, ashopitemdetail sd "
                     " where a.active = 1 and a.itemcategoryid in (select itemcategoryid from "
                     " ashopitemcategory where shopid=" +
                     std::to_string(session().lngOtherShopID) +
                     ") and "
                     " v.itemid=a.itemid " +
                     itemFamily(db_, session().shopId) + " and sd.shopid=" + shop() + " and sd.itemid=v.itemid";
    });
}

void FrmFetch::onActivate() {
    if (!justLoaded_) return; // a message box in between takes no choice back
    justLoaded_ = false;
    if (cboFetch.listCount() == 0) return; // the load failed, and has reported it
    trap("Form_Activate ", [this] { chooseDefaultColumn(); });
    trap("Form_Activate ", [this] {
        if (!cboFetch.hasSelection()) cboFetch.setListIndex(kDefaultColumn);
        txtFetch.setFocus();
    });
}

void FrmFetch::chooseDefaultColumn() {
    const std::string wanted = basic::concatText(db_.lookUp("lossettings", "defaultfetch", "ShopID=" + shop()));
    gen_.SelectComboItemByname(cboFetch, wanted);
    for (int i = 0; i < cboFetch.listCount() && !cboFetch.hasSelection(); ++i)
        if (same(cboFetch.entries()[static_cast<std::size_t>(i)].text, wanted)) cboFetch.setListIndex(i);
}

std::string FrmFetch::orderedQuery() const {
    if (!cboColNames.hasSelection()) return baseQuery_;
    return baseQuery_ + " order by " + chosenOf(kOrders, cboColNames.selectedData());
}

void FrmFetch::search() {
    const std::string column = chosenOf(kColumns, cboFetch.selectedData()).column;
    const std::string whole = orderedQuery();
    const std::size_t order = whole.find("order by");
    const std::string first = whole.substr(0, order);
    const std::string ordering = order == std::string::npos ? std::string() : whole.substr(order);
    const std::string typed = txtFetch.text();
    const std::string sought = basic::trim(typed);
    // The box shows what is sent.
    if (basic::hasApostrophe(sought)) txtFetch.setText(basic::replaceApostrophes(sought, "''"));
    const bool hasCondition = basic::ucase(first).find("WHERE") != std::string::npos;
    try {
        GridPopulate(first + (hasCondition ? " and " : " where ") + column + " like " + quoted("%" + sought + "%") +
                     " " + ordering);
    } catch (...) {
        txtFetch.setText(typed); // for another try
        throw;
    }
    txtFetch.setText("");
}

void FrmFetch::GridPopulate(const std::string& query) {
    const forms::HourGlass busy(desktop());
    Recordset found = module().openRecordset(query, Cursor::statik);
    flexMaster.setFormat(headingOverMatches());
    if (found.eof()) {
        flexMaster.setRows(2);
        flexMaster.setCols(1);
        flexMaster.clear();
        flexMaster.setFormat(headingOverNone());
        flexMaster.setColWidth(0, 0);
    } else {
        const std::int32_t matches = found.recordCount();
        if (matches == std::numeric_limits<std::int32_t>::max())
            throw automation::RunTimeError(automation::kOverflow, "Too many items match. Type more of the text.");
        flexMaster.setRows(matches + 1);
        flexMaster.setCols(static_cast<int>(found.fields().size()));
        flexMaster.setCurrent(1, 0);
        flexMaster.setRowSel(flexMaster.rows() - 1);
        flexMaster.setColSel(flexMaster.cols() - 1);
        flexMaster.setClip(found.clipText());
        flexMaster.selectRow(flexMaster.rows() - 1);
        flexMaster.setTopRow(flexMaster.rows() - 1);
    }
    found.close();
}

// As in any list that is searched by typing: the first match that begins so becomes the current one.
void FrmFetch::moveToTyped() {
    const std::string typed = txtFetch.text();
    if (typed.empty() || !cboSearch.hasSelection()) return;
    const int column = cboSearch.selectedData();
    for (int row = flexMaster.fixedRows(); row < flexMaster.rows() && column < flexMaster.cols(); ++row) {
        if (!basic::startsWithNoCase(flexMaster.cell(row, column), typed)) continue;
        flexMaster.selectRow(row);
        flexMaster.setTopRow(row);
        return;
    }
}

void FrmFetch::accept() {
    const int row = flexMaster.row();
    const std::string id(flexMaster.cell(row, kFetchId));
    const bool isItem = row >= flexMaster.fixedRows() && basic::isNumeric(id) && basic::val(id) > 0;
    if (isItem && !module().requestDetail().itemStands()) {
        const std::int32_t item = basic::cLng(id);
        const std::string code(flexMaster.cell(row, kFetchCode));
        frmRequestDetail& lineEntry = forms::touch(module().requestDetail());
        lineEntry.showItem({item, code, std::string(flexMaster.cell(row, kFetchDescription))});
        lineEntry.fillPackings(); // as the form lists them; what follows shows the item anew
        try {
            lineEntry.DisplayBarcodeItemDetails(code, item);
        } catch (...) {
            lineEntry.clearItem(); // whether both shops carry it is not known
            throw;
        }
        if (lineEntry.cboItem.hasSelection()) {
            lineEntry.fillPackings();
            lineEntry.txtQuantity.setFocus();
        }
    }
    unload();
}

} // namespace goodsreq
