// Stand-in for Fetch.clsFetch: a person searches the rows of a query and picks one of them.
#pragma once

#include "forms/Desktop.h"
#include "sandbox/suite/FetchWindow.h"
#include "sandbox/suite/StandIn.h"

#include <map>

namespace sandbox {

class ClsFetch : public StandIn<ClsFetch> {
public:
    static constexpr const char* kClassName = "clsFetch";
    static const automation::Members<ClsFetch>& members();

    /// `desktop` outlives this.
    explicit ClsFetch(forms::Desktop& desktop) : desktop_(desktop) {}

    /// What is set may be assigned or be given as the one argument of a call.
    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;

private:
    void setRecordset(const automation::Value& value);
    void Show();
    /// Opens the record set of the one row; into the caller's own where there is one.
    void openResult(const automation::Value& key);

    forms::Desktop& desktop_;
    automation::ObjectPtr connection_;
    automation::ObjectPtr recordset_; ///< the caller's, or that of the last choice
    bool ownsRecordset_ = true;
    std::string query_;
    std::string caption_;
    std::vector<std::string> fields_; ///< the first one tells the rows apart
    std::vector<std::string> captions_;
    std::vector<std::int32_t> widths_;
    std::int32_t defaultField_ = 0;
    bool preserve_ = false; ///< the search of one showing is there again in the next
    FetchWindow::Search lastSearch_;
    bool shownBefore_ = false;
    bool cancelled_ = true;
    std::map<std::string, automation::Value, automation::NameLess> told_; ///< what this dialog needs no answer to
};

} // namespace sandbox
