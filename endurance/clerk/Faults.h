// What goes wrong at one till, when it is told to, and what the suite's error component heard of it.
#pragma once

#include "automation/Object.h"

#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace support {
class Shop;
}

namespace endurance::clerk {

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

/// Members of components that may fail, by their number in a step: ProgID and name.
const std::vector<std::pair<std::string, std::string>>& members();

struct Strike {
    std::string text;   ///< the error's description; no other error has it
    bool quiet = false; ///< nobody need hear of it
};
struct Report {
    std::string module, user, routine, description;
    long number = 0;
};

class Faults {
public:
    /// Arms one; `count` is from 1. Another of the same kind takes the earlier one's place.
    void arm(Fault fault, int count, int which) { armed_[fault] = {count, which}; }
    void disarm() { armed_.clear(); }
    void nextStep(); ///< what is kept of a step goes
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
    /// Habits of the site's components, kinds of which the contracts leave open.
    bool commaIsTyped = false;       ///< the numeric key filter lets "," pass
    bool fetchHasProperties = false; ///< members of Fetch.clsFetch that are set are properties only
    bool noneIsNull = false;         ///< a look-up without a row answers Null

    // Of the step that is played.
    std::vector<Strike> strikes;
    std::vector<Report> reports;
    std::vector<std::string> sent; ///< statements
    bool dead = false, diedNow = false;
    bool openAtBegin = false; ///< a record set was open while a transaction began
    int boxesLost = 0;        ///< message boxes that could not be shown

    std::map<std::string, automation::ObjectPtr> kept; ///< forms that a component keeps, by name

protected:
    support::Shop* till = nullptr; ///< whose connection and boxes fail

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

} // namespace endurance::clerk
