// A clerk at the request editor: the ways that lead there, said in one word each.
#pragma once

#include "tests/support/Shop.h"

namespace editor {

using forms::Answer;
using support::CompanyFile;
using support::Rows;
using support::SampleItem;

/// The shop that most of these requests are sent to. Orders are taken in shop 1.
inline constexpr int kSupplier = 2;

class Till : public support::Shop {
public:
    explicit Till(const CompanyFile& company, support::Seat seat = {}) : Shop(company, seat) {}

    /// From nothing to an empty request; `supplier` 0 leaves the shop unchosen.
    void newRequest(int supplier = kSupplier);
    /// From nothing to the stored request.
    void editRequest(const std::string& id);
    void opensRegister();
    /// From the editor into line entry for new lines, or for the one at `line`.
    void addsLines();
    void changesLine(int line);
    /// In line entry: an item by its barcode, with what to ask for.
    void line(const SampleItem& item, const std::string& quantity);
    /// From the editor: enters lines of quantity 1, 2, 3... and comes back.
    void enters(const std::vector<SampleItem>& items);
    /// Exactly one error report is up; the clerk reads it away. Returns its text.
    std::string readsReport();
    /// The texts in a column of the editor's list.
    std::vector<std::string> column(int index) const;
    /// Texts of the boxes shown so far, oldest first.
    std::vector<std::string> said() const;
};

/// A request of shop 1 that may be edited, to the usual supplier, with three lines of 4, 5.5 and 6: id 900, GR/900.
inline constexpr const char* kStored = "900";
void storeRequest(const CompanyFile& company, const std::vector<SampleItem>& items, const std::string& changes = "");

} // namespace editor
