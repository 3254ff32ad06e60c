// Texts that mean something to a database or to a program: typed into every box, and lying in every text column.
#include "automation/RunTimeError.h"
#include "basic/Text.h"
#include "common/basGRtoShop.h"
#include "endurance/Endurance.h"
#include "forms/TextBox.h"
#include "sandbox/data/SchemaText.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace endurance {
namespace {

using namespace editor;

struct Hostile {
    const char* name;
    std::string text;
};

const std::vector<Hostile>& hostileTexts() {
    static const std::vector<Hostile> texts = {
        {"an apostrophe", "O'Brien's"},
        {"apostrophes only", "''"},
        {"a statement", "'; delete mesRequesttoShopDetail; --"},
        {"a second condition", "1' or '1'='1"},
        {"a statement after a number", "1; delete aitem"},
        {"comment marks", "/* -- */ --"},
        {"an open comment", "1 /*"},
        {"quotation marks", "\"aitem\" [aitem] `aitem`"},
        {"wild cards", "%_[a-z]^"},
        {"a null character", std::string("1\0' --", 6)},
        {"control characters", "\x01\x02\x1B\x7F"},
        {"letters outside the code page", "\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80"},
        {"no UTF-8", "\xC3\x28\xFF"},
        {"a bar and a percent sign", "|%s%n|"},
        {"8000 letters", std::string(8000, 'x')},
        {"8000 apostrophes", std::string(8000, '\'')},
        {"8000 digits", std::string(8000, '9')},
    };
    return texts;
}

/// How many rows each table has, but those that a clerk's work adds to.
Rows sizes(const CompanyFile& company) {
    Rows all;
    for (const char* table :
         {"aitem", "aShops", "ashopitemdetail", "aitempackingdetail", "loUsers", "louserrights", "aPrefix", "aUnit",
          "LOsSettings", "aPAckageSettings", "losShopItemShipmentDetail", "acompanymaster"})
        all.push_back({table, company.value(std::string("select count(*) from ") + table)});
    all.push_back(
        {"lines before", company.value("select count(*) from mesRequesttoShopDetail where srdrequestid < 900")});
    all.push_back({"requests", company.value("select count(*) from mesRequesttoShopHeader where srhrequestid < 900")});
    return all;
}

/// Reads away what is shown, as a clerk does who wants to go on. More than a few boxes for one act are too many.
void readsAll(Till& till) {
    int boxes = 0;
    for (; till.user.message() && boxes < 20; ++boxes) {
        EXPECT_FALSE(till.user.message()->text.empty());
        till.user.answers(support::ScriptedDesktop::defaultAnswer(*till.user.message()));
    }
    EXPECT_LE(boxes, 3);
}

/// Whatever stands open is left, and the register closed.
void leaves(Till& till) {
    for (int steps = 0; !till.user.ended() && steps < 20; ++steps) {
        while (till.user.message())
            till.user.answers(till.user.message()->text == "Save Changes?" ? Answer::no : Answer::ok);
        if (!till.user.ended()) till.user.closesFrame();
    }
    EXPECT_TRUE(till.user.ended());
}

struct Box {
    const char* name;
    const char* dialog;               ///< over line entry; "" for none
    std::function<void(Till&)> reach; ///< to the form that the box is on
    const char* done;                 ///< the button that takes what was entered; "" for Enter alone
};

void reachEditor(Till& till) { till.newRequest(); }
void reachLineEntry(Till& till) {
    till.newRequest();
    till.addsLines();
}
void reachDialog(Till& till) {
    reachLineEntry(till);
    till.user.presses(forms::kKeyF11);
}
void reachReason(Till& till) {
    till.opensRegister();
    const auto rows = till.user.grid("flexMaster");
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (rows[row][0] == kStored) till.user.selectsRow("flexMaster", static_cast<int>(row) + 1);
    till.user.clicks("CmdDelete");
    till.user.answers(Answer::yes);
}

const std::vector<Box>& boxes() {
    static const std::vector<Box> all = {
        {"txtsearch", "", [](Till& till) { till.opensRegister(); }, ""},
        {"txtRequestNo", "", reachEditor, "cmdOk"},
        {"txtrequestDate", "", reachEditor, "cmdOk"},
        {"txtRemarks", "", reachEditor, "cmdOk"},
        {"txtBarcode", "", reachLineEntry, "cmdOk"},
        {"txtQuantity", "", reachLineEntry, "cmdOk"},
        {"txtBadQuantity", "", reachLineEntry, "cmdOk"},
        {"txtsellingprice", "", reachLineEntry, "cmdOk"},
        {"txtcanreason", "", reachReason, "cmdOk"},
        {"txtBarcode", "scan", reachDialog, ""},
        {"txtFetch", "fetch", reachDialog, ""},
    };
    return all;
}

void entersIntoBoxes(const std::vector<SampleItem>& items, const Options& options, Cases& cases) {
    for (const Box& box : boxes()) {
        for (std::size_t i = 0; i < hostileTexts().size(); ++i) {
            const Hostile& hostile = hostileTexts()[i];
            if (options.quick && i % 4 != 2) continue;
            cases.run(std::string(box.dialog) + " " + box.name + ": " + hostile.name, [&] {
                CompanyFile company;
                storeRequest(company, items);
                const Rows before = sizes(company);
                const bool priced = std::string(box.name) == "txtsellingprice";
                Till till(company, {.screenId = priced ? 1611 : 1507});
                support::openOverLineEntry(till.module, box.dialog);
                box.reach(till);
                if (std::string(box.done) == "cmdOk" && till.user.form() == "frmRequest") till.enters({items[0]});
                if (till.user.form() == "frmRequestDetail" && std::string(box.name) != "txtBarcode")
                    till.user.enters("txtBarcode", items[0].barcode + "\r");
                auto* control = till.user.control<forms::TextBox>(box.name);
                till.user.happens([&] { control->setText(""); });
                if (control->canTakeFocus()) till.user.focuses(box.name);
                readsAll(till);
                // By the hand where it goes in, and past every limit of the box by the program.
                till.user.pastes(hostile.text.substr(0, 200));
                readsAll(till);
                till.user.happens([&] { control->setText(hostile.text); });
                if (till.user.focus() == box.name) till.user.types("\r");
                readsAll(till);
                if (*box.done && till.user.control(box.done) && till.user.enabled(box.done)) till.user.clicks(box.done);
                readsAll(till);
                leaves(till);
                EXPECT_EQ(sizes(company), before);
                EXPECT_EQ(brokenRequests(company.path(), 900), "");
                if (std::string(box.name) == "txtRemarks" && hostile.text.size() < 200) {
                    EXPECT_EQ(company.value("select SRHremarks from mesRequesttoShopHeader where srhrequestid > 900"),
                              hostile.text);
                }
            });
        }
    }
}

struct TextColumn {
    std::string table, column;
    int length; ///< characters
};

/// The schema has one column a line.
std::vector<TextColumn> textColumns() {
    static const std::regex table("^create table (\\w+).*"), column("^    (\\w+) n?varchar\\((\\d+)\\).*");
    std::vector<TextColumn> columns;
    std::istringstream schema(sandbox::schemaText());
    std::string current;
    std::smatch found;
    for (std::string line; std::getline(schema, line);) {
        if (std::regex_match(line, found, table))
            current = found[1];
        else if (std::regex_match(line, found, column))
            columns.push_back({current, found[1], std::stoi(found[2])});
    }
    return columns;
}

/// The register's last request.
void printsAndDeletes(Till& till) {
    const int rows = static_cast<int>(till.user.grid("flexMaster").size());
    if (rows == 0) return;
    till.user.selectsRow("flexMaster", rows);
    if (till.user.enabled("cmdPrev")) till.user.clicks("cmdPrev");
    readsAll(till);
    if (till.user.form() == "frmPrint") {
        till.user.clicks("optScreen");
        till.user.clicks("cmdOK");
        readsAll(till);
    }
    if (till.user.form() == "frmPrint") till.user.presses(forms::kKeyEscape);
    if (!till.user.enabled("CmdDelete")) return;
    till.user.clicks("CmdDelete");
    if (till.user.message() && till.user.message()->buttons == forms::MessageButtons::yesNo)
        till.user.answers(Answer::yes);
    if (till.user.form() == "frmcancelreason") {
        till.user.enters("txtcanreason", "not needed");
        till.user.clicks("cmdOk");
    }
    readsAll(till);
}

/// A day of a clerk on a company whose texts are not what they should be: every screen is opened, a request is stored,
/// changed, printed and deleted as far as it goes.
void works(Till& till, const std::vector<SampleItem>& items) {
    till.opens();
    readsAll(till);
    if (till.user.form() != "frmMaster") return;
    till.user.enters("txtsearch", "a");
    readsAll(till);
    if (!till.user.enabled("cmdnew")) return leaves(till);
    till.user.clicks("cmdnew");
    readsAll(till);
    auto* shops = till.user.control<forms::ComboBox>("cboShop");
    if (till.user.form() != "frmRequest" || !shops || shops->entries().empty()) return leaves(till);
    till.user.picks("cboShop", shops->entries().front().text);
    till.user.focuses("lvwrequest");
    till.user.types("\n");
    readsAll(till);
    for (const std::string& code : {items[0].barcode, items[1].code, items[2].shortcut}) {
        if (till.user.form() != "frmRequestDetail") break;
        till.user.enters("txtBarcode", code + "\r");
        readsAll(till);
        till.user.enters("txtQuantity", "2");
        readsAll(till);
        till.user.clicks("cmdOk");
        readsAll(till);
    }
    if (till.user.form() == "frmRequestDetail") till.user.clicks("cmdCancel");
    readsAll(till);
    if (till.user.form() == "frmRequest" && till.user.enabled("cmdOk")) till.user.clicks("cmdOk");
    readsAll(till);
    if (till.user.form() == "frmMaster") printsAndDeletes(till);
    leaves(till);
}

void workOnTexts(const std::vector<SampleItem>& items, const Options& options, Cases& cases) {
    std::size_t turn = 0;
    for (const TextColumn& column : textColumns()) {
        for (const Hostile& hostile : hostileTexts()) {
            if (hostile.text.size() > 1000 || (options.quick && turn++ % 16 != 0)) continue;
            cases.run(column.table + "." + column.column + ": " + hostile.name, [&] {
                CompanyFile company;
                storeRequest(company, items);
                try {
                    sandbox::openConnection(company.path())
                        ->call("Execute", "update " + column.table + " set " + column.column + " = " +
                                              goodsreq::quoted(basic::left(hostile.text, column.length)));
                } catch (const automation::RunTimeError&) {
                    return; // a key of that table, or a text that the server does not store
                }
                const Rows before = sizes(company);
                Till till(company);
                works(till, items);
                EXPECT_EQ(sizes(company), before);
            });
        }
    }
}

} // namespace

void enterHostileTexts(const Options& options, Report& report) {
    const CompanyFile sample;
    const std::vector<SampleItem> items = support::requestableItems(sample, 1, kSupplier, 4);
    Cases boxCases;
    entersIntoBoxes(items, options, boxCases);
    report.add(boxCases.row("hostile texts in every box", "entries"));
    Cases columnCases;
    workOnTexts(items, options, columnCases);
    report.add(columnCases.row("hostile texts in every text column", "companies"));
}

} // namespace endurance
