// What views are told: each change of a model, and what of it has changed.
#include "tests/forms/FormTest.h"

#include <map>

using namespace forms;

namespace {

/// Everything that the form and its controls tell, a word each.
class Told : public ControlView, public FormView {
public:
    explicit Told(SampleForm& form) : form_(form) {
        form.attach(this);
        for (Control* control : form.controls()) control->attach(this);
    }
    ~Told() override {
        form_.attach(nullptr);
        for (Control* control : form_.controls()) control->attach(nullptr);
    }
    void changed(Control& control, Aspect aspect) override { says(control.name() + words_.at(aspect)); }
    void captionChanged() override { says("caption"); }
    void sizeChanged() override { says("size"); }
    void coloursChanged() override { says("colours"); }
    void focusChanged(Control& control) override { says("focus " + control.name()); }
    void formUnloaded() override { says("unloaded"); }

    std::string text;

private:
    void says(const std::string& what) { text += (text.empty() ? "" : ", ") + what; }

    const std::map<Aspect, const char*> words_{
        {Aspect::text, " text"},       {Aspect::enabled, " enabled"}, {Aspect::visible, " visible"},
        {Aspect::bounds, " bounds"},   {Aspect::items, " items"},     {Aspect::selection, " selection"},
        {Aspect::columns, " columns"}, {Aspect::toolTip, " toolTip"}, {Aspect::colours, " colours"},
        {Aspect::font, " font"},       {Aspect::focus, " focus"}};
    SampleForm& form_;
};

} // namespace

TEST_F(FormTest, AViewIsToldOfEachChange) {
    SampleForm& f = touch(*form);
    Grid& grid = f.flexRows;
    ListView& list = f.lvwLines;
    const auto twoLines = [&] { list.clear(), list.add("1"), list.add("2"); };
    const std::tuple<const char*, std::function<void()>> cases[] = {
        // clang-format off
        {"caption", [&] { f.setCaption("another"); }},
        {"size", [&] { f.setSize(7000, 6000); }},
        {"colours", [&] { f.setBackColor(255); }},
        {"lblName text", [&] { f.lblName.setText("another"); }},
        {"txtName text", [&] { f.txtName.setText("another"); }},
        {"txtName enabled", [&] { f.txtName.setLocked(true); }},
        {"txtName font", [&] { f.txtName.setFixedPitch(100); }},
        {"cmdOk enabled", [&] { f.cmdOk.setEnabled(false); }},
        {"cmdOk visible", [&] { f.cmdOk.setVisible(false); }},
        {"cmdOk bounds", [&] { f.cmdOk.setBounds({1, 2, 3, 4}); }},
        {"cmdOk toolTip", [&] { f.cmdOk.setToolTip("tip"); }},
        {"cmdOk colours", [&] { f.cmdOk.setBackColor(255); }},
        {"cmdOk colours", [&] { f.cmdOk.setForeColor(255); }},
        {"chkDone selection", [&] { f.chkDone.setValue(1); }},
        {"optUp selection, optDown selection", [&] { f.optDown.setValue(true); }},
        {"cboShop items", [&] { f.cboShop.addItem("Riverside", 1); }},
        {"cboShop selection", [&] { f.cboShop.setListIndex(0); }},
        {"cboFree text", [&] { f.cboFree.setText("River"); }},
        {"lvwLines columns", [&] { list.setColumns({{"a", 600}}); }},
        {"lvwLines columns", [&] { list.setColumnText(1, "b"); }},
        {"lvwLines columns", [&] { list.setColumnWidth(1, 700); }},
        {"lvwLines columns", [&] { list.setColumnAlignment(1, 1); }},
        {"flexRows items", [&] { grid.setRows(5); }},
        {"flexRows columns", [&] { grid.setCols(3); }},
        {"flexRows items", [&] { grid.setFixedRows(2); }},
        {"flexRows columns", [&] { grid.setFixedCols(0); }},
        {"flexRows items", [&] { grid.setCell(2, 1, "a"); }},
        {"flexRows columns", [&] { grid.setColWidth(1, 700); }},
        {"flexRows items", [&] { grid.setRowColour(3, 255); }},
        {"flexRows selection", [&] { grid.selectRow(3); }},
        {"flexRows selection", [&] { grid.setTopRow(4); }},
        {"flexRows items", [&] { grid.sort(1, SortOrder::stringAscending); }},
        {"txtName selection", [&] { f.txtName.select(0, 1); }},
        {"cboShop items", [&] { f.cboShop.insertItem(0, "Harbour"); }},
        {"cboShop items", [&] { f.cboShop.removeItem(0); }},
        {"cboShop items", [&] { f.cboShop.clear(); }},
        {"lvwLines items", [&] { list.add("1"); }},
        {"lvwLines items", [&] { list.remove(1); }},
        {"lvwLines items", [&] { list.clear(); }},
        {"lvwLines items, lvwLines items, lvwLines items, lvwLines selection", [&] { twoLines(), list.select(2); }},
        {"lvwLines selection", [&] { list.reveal(1); }},
        {"lvwLines items", [&] { list.item(1).setSubItem(1, "a"); }},
        {"flexRows items", [&] { grid.addItem("a"); }},
        {"flexRows items", [&] { grid.removeItem(2); }},
        {"flexRows items", [&] { grid.setClip("a"); }},
        {"flexRows items", [&] { grid.setDataRows({{"a"}}); }},
        {"flexRows items", [&] { grid.clear(); }},
        // clang-format on
    };
    for (const auto& [what, change] : cases) {
        Told told(f);
        change();
        EXPECT_EQ(told.text, what);
    }
}
