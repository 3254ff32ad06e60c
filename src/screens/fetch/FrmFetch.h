// Finds an item by a part of its code, description, brand, model number or part code, and hands it to line entry.
#pragma once

#include "common/ModuleForm.h"
#include "common/SuiteServices.h"
#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/Grid.h"
#include "forms/TextBox.h"

#include <functional>
#include <string>

namespace goodsreq {

class FrmFetch : public ModuleForm {
public:
    explicit FrmFetch(Module& module);

    forms::Frame fraFetch{*this, "fraFetch"};
    forms::Label lblFetch{*this, "lblFetch"};
    forms::ComboBox cboFetch{*this, "cboFetch"}; ///< the column to search in
    forms::Label lblText{*this, "lblText"};
    forms::TextBox txtFetch{*this, "txtFetch"};
    forms::Label lblOrder{*this, "lblOrder"};
    forms::ComboBox cboColNames{*this, "cboColNames"}; ///< the order of the matches
    forms::Label lblSearch{*this, "lblSearch"};
    forms::ComboBox cboSearch{*this, "cboSearch"}; ///< the column of the matches in which typing moves
    forms::Grid flexMaster{*this, "flexMaster"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
    forms::CommandButton CmdClose{*this, "CmdClose"};

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;
    void onUnload() override { forget(); }
    void forget();

    bool trap(const std::string& routine, const std::function<void()>& body) const {
        return goodsreq::trap(module(), "FrmFetch", routine, body);
    }
    void chooseDefaultColumn();
    void search();
    void GridPopulate(const std::string& query);
    void moveToTyped();
    void accept();
    /// The base query in the chosen order.
    std::string orderedQuery() const;
    std::string shop() const { return std::to_string(session().shopId); }

    CommonDb db_;
    CommonGen gen_;
    std::string baseQuery_;
    bool justLoaded_ = false;
};

} // namespace goodsreq
