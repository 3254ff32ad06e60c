// What every screen owes a person without a mouse, and one who hears it read.
#include "tests/road/Screens.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>

namespace {

using forms::Control;
using forms::ControlKind;
using namespace road;
using support::CompanyFile;
using support::Till;

/// Alt letters are unique, and each control can be read out: by its caption, the label before it, or a name given for
/// it.
void expectNames(const forms::Form& form) {
    std::map<char, std::string> taken;
    std::string label; // before the control
    for (const Control* control : form.controls()) {
        const ControlKind kind = control->kind();
        const std::string& text = control->text();
        const bool passive =
            kind == ControlKind::label || kind == ControlKind::frame || kind == ControlKind::pictureBox;
        const bool captioned =
            kind == ControlKind::commandButton || kind == ControlKind::checkBox || kind == ControlKind::optionButton;
        const std::size_t mark = passive || captioned ? text.find('&') + 1 : 0;
        if (mark != 0 && mark < text.size() && control->visible()) {
            const auto [first, isNew] = taken.emplace(std::tolower(text[mark]), control->name());
            EXPECT_TRUE(isNew) << control->name() << " and " << first->second << " share the letter " << first->first;
        }
        const std::string name = captioned ? text : label + control->readAs();
        EXPECT_TRUE(passive || !control->visible() || !name.empty()) << control->name() << " has no name to read out";
        label = kind == ControlKind::label ? text : "";
    }
}

struct Screen {
    const char* form;
    std::int32_t screenId;
    void (*open)(Till& till);
};

const Screen kScreens[] = {
    {"frmMaster", 1507, openRegister},
    {"frmRequest", 1507, openEditor},
    {"frmRequest", 1611, openEditor},
    {"frmRequestDetail", 1507, openLineEntry},
    {"frmRequestDetail", 1611, openLineEntry},
    {"frmPrint", 1507, openPrint},
    {"frmcancelreason", 1507, openReason},
    {"frmscanBc", 1507, openScan},
    {"FrmFetch", 1507, openFetch},
};

std::string lookOf(const forms::Form& form) {
    const auto place = [](const forms::Rect& r) {
        return std::to_string(r.left) + "," + std::to_string(r.top) + " " + std::to_string(r.width) + "x" +
               std::to_string(r.height);
    };
    std::string look = form.name() + " \"" + form.caption() + "\" " + place({0, 0, form.width(), form.height()}) +
                       (form.resizable() ? " resizable\n" : "\n");
    for (const Control* control : form.controls()) {
        const forms::Anchor& a = control->anchor();
        look += "  " + control->name() + " \"" + control->text() + "\" " + place(control->bounds()) + " " +
                (a.left ? "l" : "") + (a.top ? "t" : "") + (a.right ? "r" : "") + (a.bottom ? "b" : "");
        if (!control->readAs().empty()) look += " read as " + control->readAs();
        look += std::string(control->visible() ? "" : " hidden") + (control->enabled() ? "" : " disabled") +
                (control->tabStop() ? "\n" : " no stop\n");
        look.pop_back();
        if (const auto* box = dynamic_cast<const forms::TextBox*>(control))
            look += std::string(box->rightAligned() ? " right" : "") + (box->multiLine() ? " lines" : "") +
                    (box->locked() ? " locked" : "");
        if (const auto* button = dynamic_cast<const forms::CommandButton*>(control); button && button->isCancel())
            look += " Escape";
        if (const auto* box = dynamic_cast<const forms::ComboBox*>(control))
            for (const forms::ComboBox::Entry& entry : box->entries()) look += " | " + entry.text;
        look += "\n";
        if (const auto* grid = dynamic_cast<const forms::Grid*>(control))
            for (int col = 0; col < grid->cols(); ++col)
                look += "    " + std::string(grid->cell(0, col)) + " " + std::to_string(grid->colWidth(col)) + "\n";
        if (const auto* list = dynamic_cast<const forms::ListView*>(control))
            for (const forms::ListColumn& column : list->columns())
                look += "    " + column.text + " " + std::to_string(column.width) + " " +
                        std::to_string(static_cast<int>(column.alignment)) + "\n";
    }
    return look;
}

TEST(Screens, LookAsBeforeAndCanBeReadOut) {
    const CompanyFile company;
    std::string look;
    for (const Screen& screen : kScreens) {
        SCOPED_TRACE(screen.form);
        Till till(company, {.screenId = screen.screenId});
        screen.open(till);
        ASSERT_EQ(till.user.form(), screen.form);
        const forms::Form& form = *till.desktop.topForm();
        look += lookOf(form);
        expectNames(form);
    }
    support::expectGolden(PROJECT_DIR "/tests/road/screens.txt", look);
}

} // namespace
