// A clerk at the request editor: the ways that lead there, and what is done there over and over, said in one word each.
#pragma once

#include "tests/support/Till.h"

#include <gtest/gtest.h>

namespace editor {

using forms::Answer;
using support::CompanyFile;
using support::Rows;
using support::SampleItem;
using support::User;
using Items = std::vector<SampleItem>;
using Names = std::vector<std::string>;
/// Rows of cases.
template <class... Fields> using Table = std::vector<std::tuple<Fields...>>;
using Text = const char*;

/// The shop that most of these requests are sent to. Orders are taken in shop 1.
inline constexpr int kSupplier = 2;

class Till : public support::Till {
public:
    explicit Till(const CompanyFile& company, support::Seat seat = {}) : support::Till(company, seat) {}

    /// From nothing or the register to an empty request; `supplier` 0 leaves the shop unchosen.
    Till& newRequest(int supplier = kSupplier);
    /// From nothing to the stored request of that id.
    Till& editRequest(const std::string& id);
    /// From the editor into line entry for new lines, or for the one at `line`.
    Till& addsLines();
    Till& changesLine(int line);
    /// In line entry: a code into the barcode box, with Enter.
    Till& scans(const std::string& code);
    /// In line entry: an item by its barcode, with what to ask for.
    Till& line(const SampleItem& item, const std::string& quantity);
    /// From the editor: enters lines of quantity 1, 2, 3... and comes back.
    Till& enters(const Items& items);
    /// From line entry back to the editor.
    Till& backToEditor();

    /// OK, which stores the request.
    Till& saves();
    /// OK, which is answered by a message.
    Till& oksAndReads(const std::string& message);
    /// The module asks; `byDefault` is what Enter would answer.
    Till& isAsked(const std::string& question, Answer byDefault, Answer answer);
    /// Exactly one error report is up, which holds `part`; the clerk reads it away.
    Till& readsReport(const std::string& part = "");

    /// A component puts a text into a box, or into a cell of the editor's list, past every key.
    Till& puts(const std::string& box, const std::string& text);
    Till& putsCell(int line, int column, const std::string& text);
    /// Looks at each statement that is sent, before the server gets it.
    void watches(std::function<void(std::string_view statement)> look);

    forms::ListView& lines();
    /// What stands in several controls.
    Names texts(std::initializer_list<const char*> controls) const;
    /// The texts in a column of the editor's list.
    Names column(int index) const { return user.column("lvwrequest", index); }
    /// Texts of the boxes shown so far, oldest first.
    Names said() const;
};

/// A company of the test's own, with so many items that may be requested.
template <int kItems> class EditorTest : public testing::Test {
protected:
    CompanyFile company;
    Items items = support::requestableItems(company, 1, kSupplier, kItems);
    const SampleItem &item = items[0], &other = items[1];
};

/// A field of the newest request of shop 1.
std::string newest(const CompanyFile& company, const std::string& field);

/// A request of shop 1 that may be edited, to the usual supplier, with three lines of 4, 5.5 and 6: id 900, GR/900.
inline constexpr const char* kStored = "900";
inline constexpr const char* kOfStored = " where srhshopid = 1 and srhrequestid = 900";
void storeRequest(const CompanyFile& company, const Items& items, const std::string& changes = "");

} // namespace editor
