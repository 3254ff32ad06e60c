// A list of rows in which a person searches and picks one.
#pragma once

#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"

#include <optional>

namespace sandbox {

class FetchWindow : public forms::Form {
public:
    struct Column {
        std::string caption;
        int width = 0; ///< twips; 0 hides the column
    };
    struct Content {
        std::string caption;
        std::vector<Column> columns;
        std::vector<std::vector<std::string>> rows; ///< a text for each column
    };
    /// What the person searches for: a part of the text, in any case, in one column.
    struct Search {
        std::size_t column = 0;
        std::string text;
    };

    /// A hidden search column, or one that is not there, gives way to the first shown one.
    FetchWindow(forms::Desktop& desktop, Content content, Search search);

    /// The row picked; none after Cancel.
    std::optional<std::size_t> chosen() const { return chosen_; }
    const Search& search() const { return search_; }

    forms::Label lblSearch{*this, "lblSearch"};
    forms::TextBox txtSearch{*this, "txtSearch"};
    forms::Label lblColumn{*this, "lblColumn"};
    forms::ComboBox cboColumn{*this, "cboColumn"};
    forms::Label lblCount{*this, "lblCount"};
    forms::ListView lvwItems{*this, "lvwItems"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};

protected:
    void design() override;
    void onLoad() override;
    void onActivate() override;

private:
    void filter();
    void pick();
    void moveSelection(int lines);

    Content content_;
    Search search_;
    std::vector<std::size_t> listed_; ///< the rows in the list, in its order
    std::optional<std::size_t> chosen_;
};

} // namespace sandbox
