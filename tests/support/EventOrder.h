// The order of events for keys and focus changes: one small form, what a person does on it, and the handlers that run.
// Every Desktop has to pass it, the scripted one and the one of real windows.
#pragma once

#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/Desktop.h"
#include "forms/Form.h"
#include "forms/TextBox.h"
#include "tests/support/EventLog.h"

#include <string>
#include <vector>

namespace support {

/// Two boxes, of which the first sends Tab on Enter and the second selects its text when it gets the focus; a combo box
/// that goes back to its first entry when the second is chosen; a button that is the cancel button too.
class EventOrderForm : public forms::Form {
public:
    EventOrderForm(forms::Desktop& desktop, std::vector<std::string>& log)
        : Form(desktop, "frmEventOrder"), txtFirst(*this, "txtFirst"), txtSecond(*this, "txtSecond"),
          cboChoice(*this, "cboChoice"), cmdGo(*this, "cmdGo") {
        txtFirst.onKeyPress = [this](std::int16_t& character) {
            if (character == forms::kKeyReturn) this->desktop().sendKeys("{Tab}");
            if (character == '-') character = 0;
        };
        txtSecond.onGotFocus = [this] { this->desktop().sendKeys("{Home}+{End}"); };
        cboChoice.onClick = [this] {
            if (cboChoice.listIndex() == 1) cboChoice.setListIndex(0);
        };
        logEvents(*this, log);
    }

    forms::TextBox txtFirst;
    forms::TextBox txtSecond;
    forms::ComboBox cboChoice;
    forms::CommandButton cmdGo;

protected:
    void design() override {
        setCaption("Order of events");
        setSize(4800, 2400);
        txtFirst.place({120, 120, 2000, 315});
        txtSecond.place({120, 555, 2000, 315});
        txtSecond.setText("12");
        cboChoice.place({120, 990, 2000, 315});
        for (const char* entry : {"One", "Two", "Three"}) cboChoice.addItem(entry);
        cboChoice.setListIndex(0);
        cmdGo.place({120, 1425, 1200, 375});
        cmdGo.setText("&Go");
        cmdGo.setCancel(true);
    }
};

struct EventStep {
    enum class Kind {
        types,   ///< `text` by the keyboard, each key queued behind the other before the form sees the first
        tabs,    ///< Tab
        backTab, ///< Shift+Tab
        escape,
        clicks,  ///< on `control`
        picks,   ///< the entry `text` of `control`
        disables ///< the code disables `control`
    };
    Kind kind;
    const char* control = "";
    const char* text = "";
};

struct EventCase {
    const char* name;
    std::vector<EventStep> steps;
    /// What runs after the form stands with the focus in txtFirst.
    std::vector<std::string> events;
    const char* focus;  ///< who has the focus then
    const char* first;  ///< what txtFirst and
    const char* second; ///< txtSecond hold then
};

/// A printable key as it runs on `control`: `code` and `character` are the key's.
inline std::vector<std::string> keyEvents(const std::string& control, int code, int character, bool changes = true) {
    std::vector<std::string> events = {
        "Form_KeyDown " + std::to_string(code), control + "_KeyDown " + std::to_string(code),
        "Form_KeyPress " + std::to_string(character), control + "_KeyPress " + std::to_string(character)};
    if (changes) events.push_back(control + "_Change");
    events.push_back(control + "_KeyUp " + std::to_string(code));
    return events;
}

inline std::vector<std::string> focusEvents(const std::string& from, const std::string& to) {
    return {from + "_Validate", from + "_LostFocus", to + "_GotFocus"};
}

inline std::vector<std::string> joined(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> all;
    for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline std::vector<EventCase> eventOrder() {
    using Kind = EventStep::Kind;
    const std::vector<std::string> enter = {"Form_KeyDown 13", "txtFirst_KeyDown 13", "Form_KeyPress 13",
                                            "txtFirst_KeyPress 13"};
    // clang-format off
    return {
        {"a letter", {{Kind::types, "", "a"}}, keyEvents("txtFirst", 65, 97), "txtFirst", "a", "12"},
        {"a key that a handler swallows changes nothing", {{Kind::types, "", "-"}},
         keyEvents("txtFirst", 189, 45, false), "txtFirst", "", "12"},
        {"Enter that sends Tab moves the focus before its own KeyUp", {{Kind::types, "", "\r"}},
         joined({enter, focusEvents("txtFirst", "txtSecond"), {"txtSecond_KeyUp 13"}}), "txtSecond", "", "12"},
        {"a scanner's digits after Enter reach the next box and take its text's place", {{Kind::types, "", "7\r34"}},
         joined({keyEvents("txtFirst", 55, 55), enter, focusEvents("txtFirst", "txtSecond"), {"txtSecond_KeyUp 13"},
                 keyEvents("txtSecond", 51, 51), keyEvents("txtSecond", 52, 52)}), "txtSecond", "7", "34"},
        {"Tab is no key to the handlers", {{Kind::tabs}}, focusEvents("txtFirst", "txtSecond"), "txtSecond", "", "12"},
        {"Shift+Tab goes round to the last stop", {{Kind::backTab}}, focusEvents("txtFirst", "cmdGo"), "cmdGo", "", "12"},
        {"a click on a button moves the focus first", {{Kind::clicks, "cmdGo"}},
         joined({focusEvents("txtFirst", "cmdGo"), {"cmdGo_Click"}}), "cmdGo", "", "12"},
        {"Enter on a button clicks it", {{Kind::backTab}, {Kind::types, "", "\r"}},
         joined({focusEvents("txtFirst", "cmdGo"), {"Form_KeyDown 13", "cmdGo_KeyDown 13", "Form_KeyPress 13",
                 "cmdGo_KeyPress 13", "cmdGo_Click", "cmdGo_KeyUp 13"}}), "cmdGo", "", "12"},
        {"Escape clicks the cancel button and leaves the focus", {{Kind::escape}},
         {"Form_KeyDown 27", "txtFirst_KeyDown 27", "cmdGo_Click", "txtFirst_KeyUp 27"}, "txtFirst", "", "12"},
        {"another entry of a combo box is one Click", {{Kind::picks, "cboChoice", "Three"}},
         joined({focusEvents("txtFirst", "cboChoice"), {"cboChoice_Click"}}), "cboChoice", "", "12"},
        {"the same entry again is one too", {{Kind::picks, "cboChoice", "One"}},
         joined({focusEvents("txtFirst", "cboChoice"), {"cboChoice_Click"}}), "cboChoice", "", "12"},
        {"a choice taken back by its own handler is a second change", {{Kind::picks, "cboChoice", "Two"}},
         joined({focusEvents("txtFirst", "cboChoice"), {"cboChoice_Click", "cboChoice_Click"}}), "cboChoice", "", "12"},
        {"a control that is disabled passes its focus on without a question", {{Kind::disables, "txtFirst"}},
         {"txtFirst_LostFocus", "txtSecond_GotFocus"}, "txtSecond", "", "12"},
    };
    // clang-format on
}

} // namespace support
