// The routines that several screens share.
#pragma once

#include "common/Module.h"
#include "forms/Grid.h"
#include "forms/ListView.h"

#include <functional>
#include <string>

namespace goodsreq {

/// The name under which the shared routines report their errors.
inline constexpr const char* kSharedModule = "basGRtoShop ";

/// Applies the column widths and alignments that the site has stored for a list; without any, the designed ones stay.
/// A list is known by its screen, its own name and its module, whatever their letter case and outer blanks.
void LoadListViewLayout(Module& module, const std::string& screenName, forms::ListView& list,
                        const std::string& moduleName);

/// Brings the register's grid up to date with one request after a save or a deletion, without reading the list anew.
/// `condition` is the request's, as " srhrequestid =12". In edit mode "E" the current row is overwritten, otherwise a
/// row is added (or the empty row of an empty register filled). A request that the list query does not show leaves the
/// grid as it is. Returns whether the grid shows it now.
bool UpdateEditedRow(Module& module, forms::Grid& grid, const std::string& listQuery, const std::string& condition);

/// Hands an error to the suite's error component, once. Never fails: where that component is missing or fails itself, a
/// message box shows the error.
void ReportError(Module& module, const std::string& moduleName, const std::string& routine, long number,
                 const std::string& source, const std::string& description);

/// Runs the body of a routine; whatever it throws is reported under the two names. Returns whether the body ended well.
bool trap(Module& module, const std::string& moduleName, const std::string& routine, const std::function<void()>& body);

/// Enter moves the focus on, as the Tab key does.
void EnterToTab(Module& module, std::int16_t character);

/// Text between single quotes for a statement, with the apostrophes in it doubled; what a code page turns into an
/// apostrophe on the way to the server goes as one already.
std::string quoted(std::string_view text);
/// The id that a cell or a value shows, for a statement. Error 13 for anything but a whole number, 6 out of range.
std::string idText(const automation::Value& id);

/// Sets a flag for as long as it lives.
class Busy {
public:
    explicit Busy(bool& flag) : flag_(flag) { flag_ = true; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy() { flag_ = false; }

private:
    bool& flag_;
};

} // namespace goodsreq
