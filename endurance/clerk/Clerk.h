// One clerk at one till of the company: plays steps, and knows what the person knows.
#pragma once

#include "endurance/clerk/Company.h"
#include "endurance/clerk/Faults.h"
#include "tests/support/Shop.h"

#include <optional>
#include <set>
#include <tuple>

namespace endurance::clerk {

/// What clerks do, as plain data: any part of a list of steps is a list of steps. The verbs stand in Acts.cpp, in
/// Run.cpp those of the world around the tills. The numbers choose among what is there at that time; a step that is not
/// possible then does nothing.
struct Step {
    int till = 0;
    std::string_view verb;
    int a = 0, b = 0, c = 0;
};
using Steps = std::vector<Step>;

// What a till shows, read between two steps.
struct EditorView {
    bool shown = false;
    std::string number, date, remarks;
    int shop = -1; ///< the box's choice; -1 for none
    bool ticked = false, ok = false, dateLocked = false;
    std::vector<std::vector<std::string>> lines; ///< text and sub-items 1 to 7
    std::vector<std::string> tips;               ///< of each line's quantity
    int selected = 0;

    /// What a person has made of it.
    auto content() const { return std::tie(lines, remarks, date, shop, ticked); }
};
struct EntryView {
    bool shown = false;
    int item = 0; ///< the box's choice; 0 for none
    std::string text, quantity, bad, price;
    bool priceShown = false, newLine = false;
    std::vector<std::pair<std::string, std::string>> packs; ///< id and quantity
};
struct RegisterView {
    bool shown = false;
    std::string caption;
    std::vector<std::vector<std::string>> rows;
    int row = 0;
    std::string on; ///< letters of the commands that are
    bool descends = false;
};
struct View {
    support::Waiting waiting = support::Waiting::nothing;
    std::string form; ///< the top one
    std::string box;  ///< text of the box that is up
    RegisterView master;
    EditorView editor;
    EntryView entry;
    std::string reason, searchText; ///< what stands in the boxes of those dialogs
    int shopInForce = -1;

    bool atForm(const char* name) const { return waiting == support::Waiting::form && form == name; }
};

View look(support::Shop& till);

/// The register's last command, and what the person did since.
struct Command {
    char command = 0;                   ///< 'N', 'E', 'D', 'P', or 'R' for Refresh
    int request = 0;                    ///< whose
    std::string number;                 ///< of that request, as the register showed it
    bool rowCancelled = false;          ///< the register shows it so
    long minute = 0;                    ///< when it began
    bool rivalSince = false;            ///< somebody else changed a request since
    bool typedLines = false;            ///< lines were entered or changed since the editor opened
    std::optional<long> typedDate;      ///< the day meant by what was typed into the date box, in minutes
    std::optional<EditorView> opening;  ///< the editor when it first stood there, ready
    std::optional<EditorView> storedAs; ///< the editor at the save that went through, though it stayed open
    std::optional<Key> storedKey;       ///< of a new request that was stored so
    bool unknown = false;               ///< whether a commit happened is not known
    std::string reason;                 ///< typed for the deletion
    int boxes = 0;                      ///< that came up
};

/// What the person at the till has done and not yet seen the end of.
struct Memory : Command {
    int user = 0, shop = 0, screen = 0, locale = 0;
    bool badDate = false;                           ///< the processing date cannot be written
    bool rightsRead = false;                        ///< nothing kept the register from reading them
    bool switched = false;                          ///< a component switched a command on
    bool typedPrice = false, typedQuantity = false; ///< since the item was chosen
    std::string sought;                             ///< what the person typed into the search of the module
    std::pair<std::string, double> packs{"", -1}; ///< what stood in the quantity box, and how many the packs made of it
    std::set<std::string> touched;                ///< controls, in the last step that was no answer

    // Of this step.
    char pressed = 0;       ///< the right that the register's command needs
    std::string typed;      ///< into a number box
    std::vector<int> meant; ///< items that the scanned code may name; empty where nobody can tell
    std::optional<forms::Answer> answer;
    std::string said; ///< what happened, in words
};

struct Clerk : Faults, support::Shop {
    explicit Clerk(Company& company);
    ~Clerk();

    /// False where it is not possible now.
    bool play(const Step& step, long minute);
    /// What is possible now, each as often as it is likely.
    std::vector<std::string_view> possible() const;
    /// After a step: brings the dead connection back when its time has come.
    void recover();
    /// The transaction that a failed command left open goes, as whoever owns the connection sees to it.
    void ownerRollsBack();

    // A person's hands.
    /// Whether the person can reach the control now.
    bool can(const std::string& control) const;
    bool clicksOn(const std::string& control);
    bool comesTo(const std::string& control);
    void selectsAll();
    /// Key by key, until something else takes the screen.
    void keys(const std::string& text);
    bool fills(const std::string& box, const std::string& text);
    bool says(const std::string& what);

    Company& company;
    Memory memory;

private:
    void listen();
    /// The form that waits, or "nobody", "message", "menu".
    std::string place() const;
    int deadFor_ = 0;
};

/// One thing that can be done at a place; "" is any form.
struct Act {
    std::string_view place, verb;
    int weight; ///< 0: only where a list of steps has it
    bool (*does)(Clerk&, const Step&);
};
extern const std::vector<Act> kActs;

} // namespace endurance::clerk
