// One clerk at one till of the company: plays steps, knows what the person knows, and what goes wrong there when it is
// told to.
#pragma once

#include "endurance/clerk/Company.h"

#include <optional>

namespace endurance::clerk {

using support::Waiting;

enum class Fault {
    statement,     ///< the server refuses the n-th statement from now
    dies,          ///< the connection dies at it
    commitRefused, ///< the next commit is refused
    commitStuck,   ///< and the rollback after it too
    commitUnheard, ///< the next commit happens, its answer is lost
    create,        ///< the n-th component from now cannot be made
    member,        ///< a member of a component raises an error
    memberStays,   ///< and goes on raising it
    report,        ///< a member raises, the error component too, and the message box that shows it then
    rival,         ///< someone else changes a row at the n-th statement from now
    closeStays,    ///< the n-th record set from now cannot be closed and stays open
    missing,       ///< a component cannot be made, until another one takes its place here
};
inline constexpr int kFaults = 12;

/// The one of a list that a number chooses.
template <class List> const auto& of(const List& list, int number) {
    return *std::next(std::begin(list), number % static_cast<long>(std::size(list)));
}

struct Strike {
    std::string text;   ///< the error's description; no other error has it
    bool quiet = false; ///< nobody need hear of it
};
struct Report {
    std::string module, user, routine, description;
    long number = 0;
};

/// What went wrong and was heard in one step.
struct Troubles {
    std::vector<Strike> strikes;
    std::vector<Report> reports;
    std::vector<std::string> sent; ///< statements
    bool openAtBegin = false;      ///< a record set was open while a transaction began
    int boxesLost = 0;             ///< message boxes that could not be shown
};

class Faults : public Troubles {
public:
    /// Arms one; `count` is from 1. Another of the same kind takes the earlier one's place.
    void arm(Fault fault, int count, int which) { armed_[fault] = {count, which}; }
    void disarm() { armed_.clear(); }
    /// Whether others wait for what the open transaction wrote.
    bool holdsRows() const { return written_; }
    bool inTransaction() const;

    /// Throws, or changes something, where one is due.
    void statement(std::string_view text);
    void created(std::string_view progId, bool quiet);
    void called(std::string_view progId, std::string_view member, bool quiet);
    /// Before it is closed.
    void closes(const automation::ObjectPtr& recordset);

    /// A factory whose components may fail.
    automation::ObjectFactory around(automation::ObjectFactory inner);

    std::function<void()> rival; ///< what somebody else does
    bool commaIsTyped = false;   ///< the site's numeric key filter lets "," pass

    bool dead = false, diedNow = false;

protected:
    support::Till* till = nullptr; ///< whose connection and boxes fail

private:
    /// Takes one away whose time has come.
    bool due(Fault fault);
    [[noreturn]] void strike(const std::string& what, bool quiet = false);

    std::map<Fault, std::pair<int, int>> armed_; ///< how often until it strikes, and the member
    std::vector<std::weak_ptr<automation::Object>> recordsets_;
    bool written_ = false;
    bool reportFails_ = false;
    bool reporting_ = false; ///< the next helper is to name the user of a report
    int struck_ = 0;
};

/// What clerks do, as plain data: any part of a list of steps is a list of steps. The verbs stand in Acts.cpp, in
/// Run.cpp those of the world around the tills. The numbers choose among what is there at that time; a step that is not
/// possible then does nothing.
struct Step {
    int till = 0;
    std::string_view verb;
    int a = 0, b = 0, c = 0;
};
using Steps = std::vector<Step>;

/// What a form shows, by the names of its controls; nothing while it is not shown.
struct FormView {
    bool shown = false;
    /// Of visible controls; "0" or "1" of ticks and options. "BOX.id" is the number of the entry that a box has chosen.
    std::map<std::string, std::string, std::less<>> texts;
    std::set<std::string, std::less<>> on; ///< controls that can be changed or clicked on
    std::vector<Row> rows;                 ///< of the list or grid
    int row = 0;                           ///< the chosen one, from 1

    std::string operator[](std::string_view control) const;
    bool can(std::string_view control) const { return on.contains(control); }
};
/// What a till shows, read between two steps.
struct View {
    Waiting waiting = Waiting::nothing;
    std::string form; ///< the top one
    std::string box;  ///< text of the box that is up
    FormView master, editor, entry, top;
    std::string shopInForce;

    bool atForm(std::string_view name) const { return waiting == Waiting::form && form == name; }
};
FormView lookAt(const forms::Form& form);
View look(support::Till& till);

/// The register's last command, and what the person did since.
struct Command {
    char command = 0;                 ///< 'N', 'E', 'D', 'P', or 'R' for Refresh
    int request = 0;                  ///< whose
    bool rowCancelled = false;        ///< the register shows it so
    std::string minute;               ///< when it began
    bool rivalSince = false;          ///< somebody else changed a request since
    bool typedLines = false;          ///< lines were entered or changed since the editor opened
    std::string typedDate;            ///< the day meant by what was typed into the date box
    std::optional<FormView> opening;  ///< the editor when it first stood there, ready
    std::optional<FormView> storedAs; ///< the editor at the save that went through, though it stayed open
    std::optional<Key> storedKey;     ///< of a new request that was stored so
    bool unknown = false;             ///< whether a commit happened is not known
    std::string reason;               ///< typed for the deletion
    int boxes = 0;                    ///< that came up
};

/// What belongs to one step.
struct Now {
    char pressed = 0;                          ///< the right that the register's command needs
    std::pair<std::string, std::string> typed; ///< a text, and the box that it went into
    std::vector<std::string> meant; ///< items that the scanned code may name, "" for none; empty where nobody can tell
    std::optional<forms::Answer> answer;
};

/// What the person at the till has done and not yet seen the end of.
struct Memory : Command, Now {
    int user = 0, shop = 0, screen = 0, locale = 0;
    bool badDate = false;                         ///< the processing date cannot be written
    bool rightsRead = false;                      ///< nothing kept the register from reading them
    std::set<std::string> typedInto;              ///< boxes, since the item was chosen
    std::string sought;                           ///< what the person typed into the search of the module
    std::pair<std::string, double> packs{"", -1}; ///< what stood in the quantity box, and how many the packs made of it
};

struct Clerk : Faults, support::Till {
    explicit Clerk(Company& company);
    ~Clerk();

    /// False where it is not possible now.
    bool play(const Step& step, automation::Date time);
    /// What is possible now, each as often as it is likely.
    std::vector<std::string_view> possible() const;
    /// After a step: brings the dead connection back when its time has come.
    void recover();
    /// The transaction that a failed command left open goes, as whoever owns the connection sees to it.
    void ownerRollsBack();

    // A person's hands.
    bool atForm() const { return desktop.waiting() == Waiting::form; }
    FormView sees() const { return lookAt(*desktop.topForm()); }
    /// Whether the person can reach the control now.
    bool can(const std::string& control) const;
    bool clicksOn(const std::string& control);
    bool comesTo(const std::string& control);
    void selectsAll();
    /// Key by key, until something else takes the screen.
    void keys(const std::string& text);
    bool fills(const std::string& box, const std::string& text);
    bool picksRow(const std::string& list, int which);

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
    std::function<bool(Clerk&, const Step&)> does;
};
extern const std::vector<Act> kActs;

} // namespace endurance::clerk
