// The members by which components reach forms and controls: one table, then the objects within lists and forms.
#include "tests/basic/ExpectError.h"
#include "tests/forms/FormTest.h"

using namespace forms;
using namespace automation;

namespace {

class FormMembers : public FormTest {
protected:
    FormMembers() {
        form->load = [this] {
            for (const char* shop : {"Riverside", "Station"}) form->cboShop.addItem(shop);
            for (const char* line : {"1", "2"}) form->lvwLines.add(line);
            form->flexRows.setRows(3);
        };
        form->ensureLoaded();
    }
    ObjectPtr control(const char* name) { return form->get(name).objectPtr(); }
};

/// Assigns the last of `arguments` to a member that takes the others as its index.
template <class... A> void assign(const ObjectPtr& object, const char* member, A... arguments) {
    std::array<Value, sizeof...(A)> list{Value(arguments)...};
    object->invoke(Access::put, member, list);
}

} // namespace

TEST_F(FormMembers, WhatIsPutIsWhatIsReadUntilTheFormIsUnloaded) {
    const std::tuple<const char*, const char*, Value, Value> cases[] = {
        // clang-format off
        {"txtName", "Text", "abc", "abc"}, {"txtName", "TEXT", std::int16_t{12}, "12"},
        {"txtName", "", "by default", "by default"}, {"txtName", "SelStart", 3, 3}, {"txtName", "SelLength", 99, 7},
        {"txtName", "MaxLength", "20", 20}, {"txtName", "Locked", true, true}, {"txtName", "Tag", 1.5, "1.5"},
        {"txtName", "ToolTipText", "tip", "tip"}, {"txtName", "Left", 240.0, 240}, {"txtName", "Width", 900, 900},
        {"txtName", "ForeColor", 255, 255}, {"txtName", "BackColor", 1, 1},
        {"txtName", "Enabled", std::int16_t{0}, false}, {"txtName", "visible", "False", false},
        {"lblName", "Caption", "Shop : ", "Shop : "}, {"lblName", "Left", 240, 240}, {"cmdOk", "Caption", "Save", "Save"},
        {"chkDone", "Value", std::int16_t{1}, 1}, {"optDown", "Value", true, true}, {"optUp", "Value", false, false},
        {"cboShop", "ListIndex", 1, 1}, {"cboShop", "Text", "Riverside", "Riverside"},
        {"cboFree", "Text", "free", "free"}, {"lvwLines", "Tag", "C", "C"}, {"flexRows", "Rows", 5, 5},
        {"flexRows", "Cols", 3, 3}, {"flexRows", "FixedCols", 0, 0}, {"flexRows", "Row", 2, 2},
        {"flexRows", "Col", 1, 1}, {"flexRows", "ColSel", 2, 2}, {"flexRows", "RowSel", 4, 4},
        {"flexRows", "FixedRows", 2, 2}, {"flexRows", "TopRow", 2, 2}, {"flexRows", "Text", "cell", "cell"},
        {"flexRows", "CellForeColor", 255, 255}, {"flexRows", "BackColor", 0xC0C0C0, 0xC0C0C0},
        // clang-format on
    };
    for (const auto& [name, member, in, out] : cases) {
        const ObjectPtr object = control(name);
        EXPECT_TRUE(object->has(member)) << name << "." << member;
        object->put(member, in);
        EXPECT_EQ(object->get(member), out) << name << "." << member;
    }
    form->setCaption("Changed");
    form->txtName.setTabStop(false);
    form->txtName.setReadAs("Item");
    form->unload();
    const auto untouched = std::make_shared<SampleForm>(desktop);
    for (const auto& [name, member, in, out] : cases)
        EXPECT_EQ(control(name)->get(member), untouched->get(name).object().get(member)) << name << "." << member;
    EXPECT_EQ(form->caption() + form->txtName.readAs(), "Sample");
    EXPECT_TRUE(form->txtName.tabStop());
    EXPECT_EQ(form->cboShop.listCount() + form->lvwLines.count(), 0);
    EXPECT_EQ(form->lvwLines.columns().size(), 2u);
}

TEST_F(FormMembers, WhatIsOnlyReadTellsHowThingsStand) {
    EXPECT_EQ(form->get("Visible"), Value(false));
    EXPECT_EQ(form->get("ActiveControl"), Value(ObjectPtr()));
    showsForm();
    EXPECT_EQ(form->get("Visible"), Value(true));
    EXPECT_EQ(form->get("ActiveControl").objectPtr(), form->txtName.self());
    form->txtName.setMultiLine(true);
    form->txtName.select(3, 5);
    form->flexRows.pointedAt(2, 1);
    EXPECT_EQ(control("txtName")->get("MultiLine"), Value(true));
    EXPECT_EQ(control("txtName")->get("SelText"), Value("desig"));
    EXPECT_EQ(control("flexRows")->get("MouseRow"), Value(2));
    EXPECT_EQ(control("flexRows")->get("MouseCol"), Value(1));
}

TEST_F(FormMembers, WrongMembersAndValuesAreTheirErrors) {
    const std::tuple<const char*, const char*, Value, long> cases[] = {
        // clang-format off
        {"txtName", "Caption", "x", kNoSuchMember}, {"txtName", "Name", "x", kNoSuchMember},
        {"lblName", "Text", "x", kNoSuchMember}, {"cmdOk", "Value", true, kNoSuchMember},
        {"txtName", "MaxLength", "many", kTypeMismatch}, {"txtName", "Enabled", Null(), kInvalidUseOfNull},
        {"txtName", "SelStart", -1, kInvalidCall}, {"flexRows", "Rows", 0x7FFFFFFF, kInvalidCall},
        {"flexRows", "Cols", 0x7FFFFFFF, kInvalidCall}, {"chkDone", "Value", true, 380},
        {"cboShop", "ListIndex", 2, kSubscriptOutOfRange}, {"cboShop", "ListCount", 2, kNoSuchMember},
        {"cboShop", "List", "x", kNoSuchMember}, {"flexRows", "Row", 3, kSubscriptOutOfRange},
        {"flexRows", "Rows", 3e9, kOverflow}, {"flexRows", "Sort", 4, 380},
        {"flexRows", "TextMatrix", "x", kWrongNumberOfArguments},
        // clang-format on
    };
    for (const auto& [name, member, value, error] : cases)
        EXPECT_EQ(errorOfPut(control(name), member, value), error) << name << "." << member;
}

TEST_F(FormMembers, NoNumberIsTooLargeForTheWindow) {
    constexpr int kFar = 500'000; // twips
    const ObjectPtr list = control("lvwLines"), grid = control("flexRows");
    const ObjectPtr line = list->get("ListItems").object().call("Add").objectPtr();
    const ObjectPtr column = list->call("ColumnHeaders", 1).objectPtr();
    for (const std::int32_t far : {0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        const std::int32_t kept = far < 0 ? -kFar : kFar;
        for (const char* name : {"txtName", "cmdOk", "flexRows"})
            for (const char* member : {"Left", "Top", "Width", "Height"}) {
                control(name)->put(member, far);
                EXPECT_EQ(control(name)->get(member), Value(kept)) << name << "." << member;
            }
        for (const char* member : {"Width", "Height"}) {
            form->put(member, far);
            EXPECT_EQ(form->get(member), Value(kept)) << member;
        }
        form->resized(30000, 20000);
        column->put("Width", far);
        EXPECT_EQ(column->get("Width"), Value(std::max(kept, 0)));
        EXPECT_EQ(errorOf([&] { assign(line, "SubItems", far, "x"); }), kInvalidCall);
    }
    assign(grid, "ColWidth", 1, 0x7FFFFFFF);
    grid->put("FormatString", std::string(30'000'000, 'x'));
    for (const int col : {0, 1}) EXPECT_EQ(grid->call("ColWidth", col), Value(kFar));
}

TEST_F(FormMembers, AComponentFillsACombo) {
    const ObjectPtr combo = control("cboShop");
    combo->call("Clear");
    for (const auto& [text, id] : {std::pair("Riverside", 4), std::pair("Station", 9)}) {
        combo->call("AddItem", text);
        assign(combo, "ItemData", combo->get("NewIndex"), id);
    }
    combo->call("AddItem", "Airport", 0);
    EXPECT_EQ(combo->get("ListCount"), Value(3));
    EXPECT_EQ(combo->call("List", 0), Value("Airport"));
    EXPECT_EQ(combo->call("ItemData", 2), Value(9));
    EXPECT_EQ(combo->call("List", 3), Value(""));
    EXPECT_EQ(errorOfCall(combo, "ItemData", 3), kSubscriptOutOfRange);
    combo->call("RemoveItem", 1);
    EXPECT_EQ(combo->call("List", 1), Value("Station"));
}

TEST_F(FormMembers, AComponentWorksOnTheLinesOfAList) {
    const ObjectPtr list = control("lvwLines");
    const ObjectPtr items = list->get("ListItems").objectPtr();
    const ObjectPtr added = items->call("Add", Missing(), "k3", "3").objectPtr();
    assign(added, "SubItems", 1, "Soap");
    EXPECT_EQ(items->get("Count"), Value(3));
    EXPECT_EQ(items->call("Item", 3).object().call("SubItems", 1), Value("Soap"));
    EXPECT_EQ(list->call("ListItems", "k3").object().get("Index"), Value(3));
    EXPECT_EQ(list->get("SelectedItem").object().get("Text"), Value("1"));
    for (const char* member : {"Tag", "ToolTipText"}) {
        added->put(member, member);
        EXPECT_EQ(added->get(member), Value(member));
    }
    EXPECT_EQ(form->lvwLines.item(3).toolTip(0), "ToolTipText");
    added->put("Selected", true);
    EXPECT_EQ(list->get("SelectedItem").objectPtr(), added);
    list->putRef("SelectedItem", items->call("", 2));
    EXPECT_EQ(form->lvwLines.selectedIndex(), 2);

    std::string texts;
    for (const Value& item : items->elements()) texts += *item.object().get("").as<std::string>();
    EXPECT_EQ(texts, "123");
    items->call("Remove", 1);
    EXPECT_EQ(added->get("Index"), Value(2));
    EXPECT_EQ(errorOfCall(items, "Item", 3), kSubscriptOutOfRange);
    EXPECT_EQ(errorOfCall(items, "Item", "gone"), kSubscriptOutOfRange);
    items->call("Clear");
    EXPECT_EQ(list->get("SelectedItem").objectPtr(), nullptr);
    added->put("Text", "out of its list");
    EXPECT_EQ(added->get("Index"), Value(0));
}

TEST_F(FormMembers, AComponentSetsTheColumnsOfAList) {
    const ObjectPtr headers = control("lvwLines")->get("ColumnHeaders").objectPtr();
    EXPECT_EQ(headers->get("Count"), Value(2));
    const ObjectPtr second = headers->call("Item", 2.0).objectPtr();
    second->put("Width", 1200.4);
    second->put("Alignment", 2);
    EXPECT_EQ(second->get("Text"), Value("Item"));
    EXPECT_EQ(second->get("Index"), Value(2));
    EXPECT_EQ(form->lvwLines.columns()[1].width, 1200);
    EXPECT_EQ(form->lvwLines.columns()[1].alignment, ColumnAlignment::centre);
    EXPECT_EQ(errorOfPut(second, "Alignment", 3), 380);
    EXPECT_EQ(errorOfCall(headers, "Item", 3), kSubscriptOutOfRange);
    EXPECT_EQ(headers->elements().size(), 2u);
}

TEST_F(FormMembers, AComponentWorksOnAGrid) {
    const ObjectPtr grid = control("flexRows");
    assign(grid, "TextMatrix", 2, 1, "first");
    for (const auto& [width, kept] : {std::pair(0, 0), std::pair(-1, 960)}) { // -1: what a new column has
        assign(grid, "ColWidth", 1, width);
        EXPECT_EQ(grid->call("ColWidth", 1), Value(kept));
    }
    grid->call("AddItem", "x\tanother");
    grid->put("Col", 1);
    grid->put("Sort", 8);
    EXPECT_EQ(grid->call("TextMatrix", 1, 1), Value("first"));
    EXPECT_EQ(grid->call("TextMatrix", 2, 1), Value("another"));
    grid->call("RemoveItem", 1);
    EXPECT_EQ(grid->call("TextMatrix", 1, 1), Value("another"));
    EXPECT_EQ(errorOfCall(grid, "Sort"), kNoSuchMember);
    EXPECT_EQ(errorOfCall(grid, "TextMatrix", 9, 1), kSubscriptOutOfRange);
}

TEST_F(FormMembers, AFormGivesItsControlsByNameNumberAndOneByOne) {
    EXPECT_EQ(form->get("Name"), Value("frmSample"));
    const ObjectPtr controls = form->get("Controls").objectPtr();
    EXPECT_EQ(controls->get("Count"), Value(11));
    EXPECT_EQ(controls->call("Item", 1).objectPtr().get(), &form->txtName);
    EXPECT_EQ(form->call("Controls", 0).objectPtr().get(), &form->lblName);
    EXPECT_EQ(form->call("Controls", "CBOSHOP").objectPtr().get(), &form->cboShop);
    EXPECT_EQ(controls->elements().size(), 11u);
    EXPECT_EQ(controls->elements()[0].object().get("TabIndex"), Value(0));
    form->put("txtName", "through the form");
    EXPECT_EQ(form->txtName.text(), "through the form");
    for (const auto& [member, value] :
         {std::pair("Caption", Value("New caption")), {"BackColor", 0x00FFEE}, {"Tag", "of the form"}}) {
        form->put(member, value);
        EXPECT_EQ(form->get(member), value);
    }
    EXPECT_EQ(errorOfCall(form, "txtNothing"), kNoSuchMember);
    EXPECT_EQ(errorOfCall(controls, "Item", "txtNothing"), 730);
    EXPECT_EQ(errorOfCall(controls, "Item", 11), kSubscriptOutOfRange);
}

TEST_F(FormMembers, AComponentThatComesLateLoadsNothingAndLeavesNothing) {
    form->put("txtName", "of the last user");
    form->unload();
    EXPECT_EQ(form->get("txtName").object().get("Text"), Value("as designed"));
    EXPECT_EQ(form->call("Controls", "cboShop").object().get("ListCount"), Value(0));
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
