// The members by which components reach forms and controls: one table, then the objects within lists and forms.
#include "tests/basic/ExpectError.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/User.h"

#include <gtest/gtest.h>

using namespace forms;
using automation::Array;
using automation::Missing;
using automation::ObjectPtr;
using automation::Value;
using support::ScriptedDesktop;

namespace {

Value number(int value) { return Value(std::int32_t{value}); }

class FormMembers : public testing::Test {
protected:
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);

    void SetUp() override {
        form->load = [this] {
            for (const char* shop : {"Riverside", "Station"}) form->cboShop.addItem(shop);
            for (const char* line : {"1", "2"}) form->lvwLines.add(line);
            form->flexRows.setRows(3);
        };
        form->ensureLoaded();
    }
    ObjectPtr control(const char* name) { return form->get(name).objectPtr(); }
};

} // namespace

TEST_F(FormMembers, WhatIsPutIsWhatIsRead) {
    struct Case {
        const char* control;
        const char* member;
        Value in;
        Value out;
    };
    const Case cases[] = {
        // clang-format off
        {"txtName", "Text", "abc", "abc"}, {"txtName", "TEXT", std::int16_t{12}, "12"},
        {"txtName", "", "by default", "by default"}, {"txtName", "SelStart", number(3), number(3)},
        {"txtName", "SelLength", number(99), number(7)}, {"txtName", "MaxLength", "20", number(20)},
        {"txtName", "Locked", true, true}, {"txtName", "Tag", 1.5, "1.5"}, {"txtName", "ToolTipText", "tip", "tip"},
        {"txtName", "Left", 240.0, number(240)}, {"txtName", "Width", number(900), number(900)},
        {"txtName", "ForeColor", number(255), number(255)}, {"txtName", "Enabled", std::int16_t{0}, false},
        {"txtName", "visible", "False", false}, {"lblName", "Caption", "Shop : ", "Shop : "},
        {"cmdOk", "Caption", "Save", "Save"}, {"chkDone", "Value", std::int16_t{1}, number(1)},
        {"optDown", "Value", true, true}, {"cboShop", "ListIndex", number(1), number(1)},
        {"cboShop", "Text", "Riverside", "Riverside"}, {"cboFree", "Text", "free", "free"},
        {"flexRows", "Rows", number(5), number(5)}, {"flexRows", "Cols", number(3), number(3)},
        {"flexRows", "FixedCols", number(0), number(0)}, {"flexRows", "Row", number(2), number(2)},
        {"flexRows", "Col", number(1), number(1)}, {"flexRows", "ColSel", number(2), number(2)},
        {"flexRows", "RowSel", number(4), number(4)}, {"flexRows", "FixedRows", number(2), number(2)},
        {"flexRows", "TopRow", number(2), number(2)}, {"flexRows", "Text", "cell", "cell"},
        {"flexRows", "CellForeColor", number(255), number(255)},
        {"flexRows", "BackColor", number(0xC0C0C0), number(0xC0C0C0)},
        // clang-format on
    };
    for (const Case& c : cases) {
        const ObjectPtr object = control(c.control);
        EXPECT_TRUE(object->has(c.member)) << c.control << "." << c.member;
        object->put(c.member, c.in);
        EXPECT_EQ(object->get(c.member), c.out) << c.control << "." << c.member;
    }
}

TEST_F(FormMembers, WhatIsOnlyReadTellsHowThingsStand) {
    EXPECT_EQ(form->get("Visible"), Value(false));
    EXPECT_EQ(form->get("ActiveControl"), Value(ObjectPtr()));
    support::User user(desktop);
    user.starts([this] { form->showModal(nullptr); });
    EXPECT_EQ(form->get("Visible"), Value(true));
    EXPECT_EQ(form->get("ActiveControl").objectPtr(), form->txtName.self());
    form->txtName.setMultiLine(true);
    form->txtName.select(3, 5);
    form->flexRows.pointedAt(2, 1);
    EXPECT_EQ(control("txtName")->get("MultiLine"), Value(true));
    EXPECT_EQ(control("txtName")->get("SelText"), Value("desig"));
    EXPECT_EQ(control("flexRows")->get("MouseRow"), number(2));
    EXPECT_EQ(control("flexRows")->get("MouseCol"), number(1));
}

TEST_F(FormMembers, WrongMembersAndValuesAreTheirErrors) {
    struct Case {
        const char* control;
        const char* member;
        Value value;
        long error;
    };
    const Case cases[] = {
        {"txtName", "Caption", "x", automation::kNoSuchMember},
        {"txtName", "Name", "x", automation::kNoSuchMember},
        {"lblName", "Text", "x", automation::kNoSuchMember},
        {"cmdOk", "Value", true, automation::kNoSuchMember},
        {"txtName", "MaxLength", "many", automation::kTypeMismatch},
        {"txtName", "Enabled", automation::Null{}, automation::kInvalidUseOfNull},
        {"txtName", "SelStart", number(-1), automation::kInvalidCall},
        {"flexRows", "Rows", number(0x7FFFFFFF), automation::kInvalidCall},
        {"flexRows", "Cols", number(0x7FFFFFFF), automation::kInvalidCall},
        {"chkDone", "Value", true, 380},
        {"cboShop", "ListIndex", number(2), automation::kSubscriptOutOfRange},
        {"cboShop", "ListCount", number(2), automation::kNoSuchMember},
        {"cboShop", "List", "x", automation::kNoSuchMember},
        {"flexRows", "Row", number(3), automation::kSubscriptOutOfRange},
        {"flexRows", "Rows", 3e9, automation::kOverflow},
        {"flexRows", "Sort", number(4), 380},
        {"flexRows", "TextMatrix", "x", automation::kWrongNumberOfArguments},
    };
    for (const Case& c : cases)
        EXPECT_EQ(errorOf([&] { control(c.control)->put(c.member, c.value); }), c.error)
            << c.control << "." << c.member;
}

TEST_F(FormMembers, NoNumberIsTooLargeForTheWindow) {
    constexpr int kFar = 500'000; // twips
    const ObjectPtr list = control("lvwLines");
    const ObjectPtr line = list->get("ListItems").object().call("Add").objectPtr();
    const ObjectPtr column = list->call("ColumnHeaders", number(1)).objectPtr();
    const ObjectPtr grid = control("flexRows");
    for (const std::int32_t far : {0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        const std::int32_t kept = far < 0 ? -kFar : kFar;
        for (const char* name : {"txtName", "cmdOk", "flexRows"})
            for (const char* member : {"Left", "Top", "Width", "Height"}) {
                control(name)->put(member, number(far));
                EXPECT_EQ(control(name)->get(member), number(kept)) << name << "." << member;
            }
        for (const char* member : {"Width", "Height"}) form->put(member, number(far));
        form->resized(30000, 20000);
        column->put("Width", number(far));
        EXPECT_EQ(column->get("Width"), number(std::max(kept, 0)));
        std::array<Value, 2> cell{number(far), "x"};
        EXPECT_EQ(errorOf([&] { line->invoke(automation::Access::put, "SubItems", cell); }), automation::kInvalidCall);
    }
    std::array<Value, 2> width{number(1), number(0x7FFFFFFF)};
    grid->invoke(automation::Access::put, "ColWidth", width);
    EXPECT_EQ(grid->call("ColWidth", number(1)), number(kFar));
    grid->put("FormatString", std::string(30'000'000, 'x'));
    EXPECT_EQ(grid->call("ColWidth", number(0)), number(kFar));
}

TEST_F(FormMembers, AComponentFillsACombo) {
    const ObjectPtr combo = control("cboShop");
    combo->call("Clear");
    for (const auto& [text, id] : {std::pair("Riverside", 4), std::pair("Station", 9)}) {
        combo->call("AddItem", text);
        Value data[] = {combo->get("NewIndex"), number(id)};
        combo->invoke(automation::Access::put, "ItemData", data);
    }
    combo->call("AddItem", "Airport", number(0));
    EXPECT_EQ(combo->get("ListCount"), number(3));
    EXPECT_EQ(combo->call("List", number(0)), Value("Airport"));
    EXPECT_EQ(combo->call("ItemData", number(2)), number(9));
    EXPECT_EQ(combo->call("List", number(3)), Value(""));
    EXPECT_EQ(errorOf([&] { combo->call("ItemData", number(3)); }), automation::kSubscriptOutOfRange);
    combo->call("RemoveItem", number(1));
    EXPECT_EQ(combo->call("List", number(1)), Value("Station"));
}

TEST_F(FormMembers, AComponentWorksOnTheLinesOfAList) {
    const ObjectPtr list = control("lvwLines");
    const ObjectPtr items = list->get("ListItems").objectPtr();
    const ObjectPtr added = items->call("Add", Missing{}, "k3", "3").objectPtr();
    Value cell[] = {number(1), "Soap"};
    added->invoke(automation::Access::put, "SubItems", cell);
    EXPECT_EQ(items->get("Count"), number(3));
    EXPECT_EQ(items->call("Item", number(3)).object().call("SubItems", number(1)), Value("Soap"));
    EXPECT_EQ(list->call("ListItems", "k3").object().get("Index"), number(3));
    EXPECT_EQ(list->get("SelectedItem").object().get("Text"), Value("1"));
    added->put("Tag", "of the line");
    added->put("ToolTipText", "tip");
    EXPECT_EQ(added->get("Tag"), Value("of the line"));
    EXPECT_EQ(added->get("ToolTipText"), Value("tip"));
    EXPECT_EQ(form->lvwLines.item(3).toolTip(0), "tip");
    added->put("Selected", true);
    EXPECT_EQ(list->get("SelectedItem").objectPtr(), added);
    list->putRef("SelectedItem", items->call("", number(2)));
    EXPECT_EQ(form->lvwLines.selectedIndex(), 2);

    std::string texts;
    for (const Value& item : items->elements()) texts += item.object().get("").as<std::string>()->c_str();
    EXPECT_EQ(texts, "123");
    items->call("Remove", number(1));
    EXPECT_EQ(added->get("Index"), number(2));
    EXPECT_EQ(errorOf([&] { items->call("Item", number(3)); }), automation::kSubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { items->call("Item", "gone"); }), automation::kSubscriptOutOfRange);
    items->call("Clear");
    EXPECT_EQ(list->get("SelectedItem").objectPtr(), nullptr);
    added->put("Text", "out of its list");
    EXPECT_EQ(added->get("Index"), number(0));
}

TEST_F(FormMembers, AComponentSetsTheColumnsOfAList) {
    const ObjectPtr headers = control("lvwLines")->get("ColumnHeaders").objectPtr();
    EXPECT_EQ(headers->get("Count"), number(2));
    const ObjectPtr second = headers->call("Item", 2.0).objectPtr();
    second->put("Width", 1200.4);
    second->put("Alignment", number(2));
    EXPECT_EQ(second->get("Text"), Value("Item"));
    EXPECT_EQ(second->get("Index"), number(2));
    EXPECT_EQ(form->lvwLines.columns()[1].width, 1200);
    EXPECT_EQ(form->lvwLines.columns()[1].alignment, ColumnAlignment::centre);
    EXPECT_EQ(errorOf([&] { second->put("Alignment", number(3)); }), 380);
    EXPECT_EQ(errorOf([&] { headers->call("Item", number(3)); }), automation::kSubscriptOutOfRange);
    EXPECT_EQ(headers->elements().size(), 2u);
}

TEST_F(FormMembers, AComponentWorksOnAGrid) {
    const ObjectPtr grid = control("flexRows");
    Value cell[] = {number(2), number(1), "first"};
    grid->invoke(automation::Access::put, "TextMatrix", cell);
    Value width[] = {number(1), number(0)};
    grid->invoke(automation::Access::put, "ColWidth", width);
    EXPECT_EQ(grid->call("ColWidth", number(1)), number(0));
    width[1] = number(-1); // the width that a new column has
    grid->invoke(automation::Access::put, "ColWidth", width);
    EXPECT_EQ(grid->call("ColWidth", number(1)), number(960));
    grid->call("AddItem", "x\tanother");
    grid->put("Col", number(1));
    grid->put("Sort", number(8));
    EXPECT_EQ(grid->call("TextMatrix", number(1), number(1)), Value("first"));
    EXPECT_EQ(grid->call("TextMatrix", number(2), number(1)), Value("another"));
    grid->call("RemoveItem", number(1));
    EXPECT_EQ(grid->call("TextMatrix", number(1), number(1)), Value("another"));
    EXPECT_EQ(errorOf([&] { grid->get("Sort"); }), automation::kNoSuchMember);
    EXPECT_EQ(errorOf([&] { grid->call("TextMatrix", number(9), number(1)); }), automation::kSubscriptOutOfRange);
}

TEST_F(FormMembers, AFormGivesItsControlsByNameNumberAndOneByOne) {
    EXPECT_EQ(form->get("Name"), Value("frmSample"));
    const ObjectPtr controls = form->get("Controls").objectPtr();
    EXPECT_EQ(controls->get("Count"), number(11));
    EXPECT_EQ(controls->call("Item", number(1)).objectPtr().get(), &form->txtName);
    EXPECT_EQ(form->call("Controls", number(0)).objectPtr().get(), &form->lblName);
    EXPECT_EQ(form->call("Controls", "CBOSHOP").objectPtr().get(), &form->cboShop);
    EXPECT_EQ(controls->elements().size(), 11u);
    EXPECT_EQ(controls->elements()[0].object().get("TabIndex"), number(0));
    form->put("txtName", "through the form");
    EXPECT_EQ(form->txtName.text(), "through the form");
    form->put("Caption", "New caption");
    form->put("BackColor", number(0x00FFEE));
    form->put("Tag", "of the form");
    EXPECT_EQ(form->get("Tag"), Value("of the form"));
    EXPECT_EQ(form->caption(), "New caption");
    EXPECT_EQ(form->get("BackColor"), number(0x00FFEE));
    EXPECT_EQ(errorOf([&] { form->get("txtNothing"); }), automation::kNoSuchMember);
    EXPECT_EQ(errorOf([&] { controls->call("Item", "txtNothing"); }), 730);
    EXPECT_EQ(errorOf([&] { controls->call("Item", number(11)); }), automation::kSubscriptOutOfRange);
}

TEST_F(FormMembers, AComponentThatComesLateLoadsNothingAndLeavesNothing) {
    form->put("txtName", "of the last user");
    form->unload();
    EXPECT_EQ(form->get("txtName").object().get("Text"), Value("as designed"));
    EXPECT_EQ(form->call("Controls", "cboShop").object().get("ListCount"), number(0));
    EXPECT_EQ(form->elements().size(), 11u);
    EXPECT_FALSE(form->loaded());
    form->put("txtName", "written late");
    form->ensureLoaded();
    EXPECT_EQ(form->txtName.text(), "as designed");
    EXPECT_EQ(form->loads, 2);
    // Loaded, but never shown: what begins next drops it.
    form->txtName.setText("left");
    form->discard();
    EXPECT_FALSE(form->loaded());
    EXPECT_EQ(form->txtName.text(), "as designed");
}

TEST_F(FormMembers, AControlInAComponentsHandsKeepsItsFormAlive) {
    const ObjectPtr held = control("txtName");
    const std::weak_ptr<SampleForm> watched = form;
    form.reset();
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(held->get("Text"), Value("as designed"));
}
