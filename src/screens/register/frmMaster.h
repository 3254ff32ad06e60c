// The request register: the module's main screen, from which everything else starts.
#pragma once

#include "common/ModuleForm.h"
#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/Grid.h"
#include "forms/TextBox.h"

namespace goodsreq {

/// Columns of the register's grid, in the order of the list query.
enum RegisterColumn {
    kColId,        ///< request id, hidden
    kColNumber,    ///< request number
    kColDate,      ///< request date
    kColShop,      ///< supplying shop
    kColCancelled, ///< "Yes" or "No"
    kColRemarks,
    kColUsed,      ///< whether a later process has taken the request up
    kColConfirmed, ///< "Yes" or "No"
    kColShopId,    ///< supplying shop's id, hidden
};

class frmMaster : public ModuleForm {
public:
    explicit frmMaster(Module& module);

    forms::Grid flexMaster{*this, "flexMaster"};
    forms::Label lblSort{*this, "lblSort"};
    forms::ComboBox cboColNames{*this, "cboColNames"};
    forms::OptionButton optAscend{*this, "optAscend"};
    forms::OptionButton optDescend{*this, "optDescend"};
    forms::Label lblSearch{*this, "lblSearch"};
    forms::ComboBox cboSearch{*this, "cboSearch"};
    forms::TextBox txtsearch{*this, "txtsearch"};
    forms::CommandButton cmdnew{*this, "cmdnew"};
    forms::CommandButton CmdEdit{*this, "CmdEdit"};
    forms::CommandButton CmdDelete{*this, "CmdDelete"};
    forms::CommandButton cmdPrev{*this, "cmdPrev"};
    forms::CommandButton CmdClose{*this, "CmdClose"};
    forms::MenuItem mnurefresh;
    forms::Menu mnupopup;

    std::string listQuery;      ///< what the grid shows
    std::int32_t requestId = 0; ///< of the request being edited or deleted

    /// Whether the user has the right: "N" new, "E" edit, "D" delete, "P" print. A rights text of "ADMIN" grants none.
    bool fnUSerRights(const std::string& letter);
    /// Id of the request in the current row. Error 13 where that is none.
    std::int32_t currentId() const;

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;

    void readSettings();
    automation::Date fnPopulateDate();
    std::string buildListQuery() const;
    void USerRights();
    bool mayUse(const std::string& letter);
    /// The same at the beginning of a command; tells the user where it is refused.
    bool allowed(const std::string& letter);
    void enableRowCommands();

    void GridPopulate(const std::string& query, const std::string& tableExpression);
    /// `widths` gets each column's width in characters.
    void fillRows(const std::string& query, std::vector<int>& widths);
    void colourCancelledRows();
    /// Makes room in `widths` for the headers.
    void fillHeaders(const std::string& tableExpression, std::vector<int>& widths);
    void setWidths(const std::vector<int>& widths);
    void fillWidth();

    void sortByChosenColumn();
    void search();
    void sort(int column, forms::SortOrder order);
    void showCellUnderPointer();
    void showMenu(const forms::MouseEvent& event);
    void refreshRequest();
    void goToLastRow();

    void newRequest();
    void editRequest();
    void deleteRequest();
    /// Whether the request in the current row is confirmed as finished, read fresh.
    bool isFinished(const std::string& idColumn);
    /// Brings the row of the request that was deleted, or could not be, up to date.
    void updateDeletedRow(int row);

    std::string current(RegisterColumn column) const;
    bool hasCurrentRequest() const { return !current(kColId).empty(); }
    /// Says so where the current row holds no request.
    bool requestChosen();

    CommonDb db_;
};

} // namespace goodsreq
