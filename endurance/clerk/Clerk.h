// One clerk at one till of the company: plays steps, and knows what the person knows.
#pragma once

#include "endurance/clerk/Company.h"
#include "endurance/clerk/Faults.h"
#include "endurance/clerk/Step.h"
#include "endurance/clerk/View.h"

#include <optional>

namespace endurance::clerk {

/// What the person at the till has done and not yet seen the end of.
struct Memory {
    int user = 0, shop = 0, screen = 0, locale = 0;
    bool badDate = false;                           ///< the processing date cannot be written
    char command = 0;                               ///< the register's last one: 'N', 'E', 'D'
    int request = 0;                                ///< whose
    long minute = 0;                                ///< when it began
    std::string number;                             ///< of that request, as the register showed it
    bool rowCancelled = false;                      ///< the register shows it so
    bool rivalSince = false;                        ///< somebody else changed a request since the command began
    bool typedLines = false;                        ///< lines were entered or changed since the editor opened
    std::optional<long> typedDate;                  ///< the day meant by what was typed into the date box, in minutes
    bool typedPrice = false, typedQuantity = false; ///< since the item was chosen
    std::string typed;                              ///< what the person typed into a number box in this step
    std::string sought;                             ///< what the person typed into the search of the module
    std::vector<int> meant;  ///< items that the code scanned in this step may name; empty where nobody can tell
    bool opened = false;     ///< the editor has stood there, ready, since the command
    std::string openRemarks; ///< that it had then
    bool stored = false;     ///< what the editor shows was stored, though it stayed open
    bool unknown = false;    ///< whether a commit happened is not known
    std::string reason;      ///< typed for the deletion
    int boxes = 0;           ///< that came up since the command
    bool rightsRead = false; ///< nothing kept the register from reading them
    std::pair<std::string, double> packs{"", -1}; ///< what stood in the quantity box, and how many the packs made of it
    std::string said;                             ///< what happened in this step, in words
};

class Clerk : private Faults, public support::Shop {
public:
    explicit Clerk(Company& company);
    ~Clerk();

    Faults& faults() { return *this; }
    Memory memory;

    /// False where it is not possible now.
    bool play(const Step& step, long minute);
    /// What is possible now, each as often as it is likely.
    std::vector<Verb> possible() const;
    /// After a step: brings the dead connection back when its time has come, and lets the owner end what a command left
    /// open.
    void recover();
    /// The transaction that a failed command left open goes, as whoever owns the connection sees to it.
    void ownerRollsBack();

private:
    bool showsRegister(const Step& step);
    bool atRegister(const Step& step, long minute);
    bool atEditor(const Step& step);
    bool atEntry(const Step& step);
    bool atDialogs(const Step& step);
    bool anywhere(const Step& step);
    bool readsLate(int which);

    /// Whether the person can reach the control now.
    bool can(const std::string& control) const;
    bool clicksOn(const std::string& control);
    bool comesTo(const std::string& control);
    void selectsAll();
    /// Key by key, until something else takes the screen.
    void keys(const std::string& text);
    bool fills(const std::string& box, const std::string& text);
    bool says(const std::string& what);

    Company& company_;
    int deadFor_ = 0;
};

} // namespace endurance::clerk
