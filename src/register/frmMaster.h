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

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;

    void readSettings();
    automation::Date fnPopulateDate();
    std::string buildListQuery() const;
    void USerRights();
    bool mayUse(const std::string& letter);
    void enableRowCommands();

    void GridPopulate(const std::string& query, const std::string& tableExpression);
    void colourCancelledRows();
    void setHeadersAndWidths(const std::string& tableExpression, std::vector<int> widths);
    void fillWidth();

    void sortByChosenColumn();
    void search();
    void showCellUnderPointer();
    void showMenu(const forms::MouseEvent& event);
    void refreshRequest();
    void goToLastRow();

    void newRequest();
    void editRequest();
    void deleteRequest();
    /// Whether the request in the current row is confirmed as finished, read fresh.
    bool isFinished(const std::string& idColumn);

    std::string current(RegisterColumn column) const;
    bool hasCurrentRequest() const { return !current(kColId).empty(); }

    CommonDb db_;
};

} // namespace goodsreq
