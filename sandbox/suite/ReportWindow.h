// The preview of a report: its pages, a zoom, a search, and printing.
#pragma once

#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/Form.h"
#include "forms/TextBox.h"

#include <functional>
#include <string>
#include <vector>

namespace sandbox {

class ReportWindow : public forms::Form {
public:
    struct Content {
        std::string caption;
        std::vector<std::string> pages;
        bool hasZoom = true;
        bool hasSearch = true;
        bool hasRefresh = true;
        std::function<std::vector<std::string>()> refresh;         ///< gives the pages anew
        std::function<std::string(const std::string& text)> print; ///< prints all pages and says where to
    };

    ReportWindow(forms::Desktop& desktop, Content content);

    std::size_t page() const { return page_; } ///< from 0

    forms::CommandButton cmdFirst{*this, "cmdFirst"};
    forms::CommandButton cmdPrevious{*this, "cmdPrevious"};
    forms::Label lblPage{*this, "lblPage"};
    forms::CommandButton cmdNext{*this, "cmdNext"};
    forms::CommandButton cmdLast{*this, "cmdLast"};
    forms::Label lblZoom{*this, "lblZoom"};
    forms::ComboBox cboZoom{*this, "cboZoom"};
    forms::Label lblSearch{*this, "lblSearch"};
    forms::TextBox txtSearch{*this, "txtSearch"};
    forms::CommandButton cmdRefresh{*this, "cmdRefresh"};
    forms::CommandButton cmdPrint{*this, "cmdPrint"};
    forms::CommandButton cmdClose{*this, "cmdClose"};
    forms::TextBox txtPage{*this, "txtPage"};

protected:
    void design() override;
    void onLoad() override;

private:
    void show(std::size_t page);
    /// On to the next place of the text, from the one that is selected.
    void search();

    Content content_;
    std::size_t page_ = 0;
};

} // namespace sandbox
