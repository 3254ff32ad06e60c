// The Print button, its dialog and the three ways out of it, as a clerk uses them.
#include "tests/road/Screens.h"

#include <gtest/gtest.h>

namespace {

using support::CompanyFile;
using support::Till;

constexpr const char* kSettings = PROJECT_DIR "/sandbox/data\\ShopSetting.txt";

class PrintDialog : public testing::Test {
protected:
    CompanyFile company;
    Till till{company};

    /// The sample settings with others before them; of two the first one holds.
    void sets(std::initializer_list<std::pair<std::string, std::string>> values) {
        std::string text = till.system.readFile(kSettings);
        for (const auto& [key, value] : values) text.insert(0, key + " :=" + value + "\r\n");
        till.system.files[kSettings] = text;
    }
    void leaves(const char* option) { till.user.clicks(option).clicks("cmdOK"); }
    /// Reads all boxes away that are up.
    std::string reads() {
        std::string told;
        for (; till.user.message(); till.user.answers(forms::Answer::ok)) told += till.user.message()->text + "\n";
        return told;
    }
};

TEST_F(PrintDialog, TheSettingsChooseTheDestination) {
    for (const auto& [toScreen, reports, chosen] : {std::tuple("1", "0", "optScreen"),
                                                    {"0", "0", "optPrint"},
                                                    {"2", "0", "optPrint"},
                                                    {"1", "1", "OptWindowsPrint"},
                                                    {"0", "1", "OptWindowsPrint"},
                                                    {"0", "1x", "OptWindowsPrint"},
                                                    {"1", "2", "optScreen"}}) {
        sets({{"printtoscreen", toScreen}, {"windowsprint", reports}});
        road::openPrint(till);
        EXPECT_TRUE(till.user.control<forms::OptionButton>(chosen)->value()) << toScreen << reports;
        EXPECT_EQ(till.user.visible("OptWindowsPrint"), *reports == '1');
        if (*reports != '1') { // and where a component shows it
            till.user.happens([&] { till.user.control("OptWindowsPrint")->setVisible(true); });
            leaves("OptWindowsPrint");
            till.user.answers("Windows Print is switched off: windowsprint in ShopSetting.txt is not 1.",
                              forms::Answer::ok);
        }
        till.user.presses(forms::kKeyEscape);
        EXPECT_EQ(till.user.form(), "frmMaster");
        till.user.clicks("CmdClose");
    }
}

TEST_F(PrintDialog, TheSlipIsShownInTheEditorOfWindowsOrWrittenToThePort) {
    sets({{"windowsprint", "0"}, {"port", "\\\\server\\slips"}});
    // The name of Windows says where its editor lies; another takes its place.
    for (const auto& [folder, missing, started] :
         {std::tuple("C:\\Windows", "", "C:\\Windows\\system32\\edit.com   c:\\ShopReq.txt"),
          {"C:\\WINDOWS", "", "C:\\WINDOWS\\command\\edit.com   c:\\ShopReq.txt"},
          {"C:\\WINDOW", "", "C:\\WINDOW\\system32\\edit.com   c:\\ShopReq.txt"},
          {"C:\\WINDOWS", "edit.com", "D:\\Windows\\notepad.exe c:\\ShopReq.txt"}}) {
        till.system.windows = folder;
        till.desktop.missingProgram = missing;
        till.desktop.programs.clear();
        road::openPrint(till);
        till.desktop.pointers.clear();
        till.user.clicks("cmdOK");
        EXPECT_EQ(till.desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
        EXPECT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(till.desktop.programs, std::vector<std::string>{started});
        till.user.clicks("CmdClose");
    }
    road::openPrint(till);
    leaves("optPrint");
    EXPECT_EQ(till.user.form(), "frmMaster");
    const std::string& slip = till.system.files["\\\\SERVER\\SLIPS"];
    EXPECT_EQ(slip, till.system.files["C:\\ShopReq.txt"]);
    EXPECT_NE(slip.find("Request No     : " + till.user.rows("flexMaster").at(0).at(1) + "\r\n"), std::string::npos);
    EXPECT_EQ(till.desktop.programs.size(), 1u);
    EXPECT_TRUE(till.errors().empty());
    sets({{"port", "NotFound"}}); // which the screen does not want
    till.user.clicks("cmdPrev");
    leaves("optScreen");
    EXPECT_EQ(till.desktop.programs.size(), 2u);
}

// Printer, database, files: what fails is told with what to do, and may be tried again.
TEST_F(PrintDialog, WhatFailsOutsideIsToldByItsName) {
    const std::string toFile = ". The slip goes to the file C:\\ShopReq.txt; close or move what is in its way.";
    const std::string toPort =
        ". The slip goes to \"LPT1\", the port in ShopSetting.txt; check the printer and the port.";
    const char* const noPort = "Error 52: Bad file name or number. ShopSetting.txt names no port to print to.";
    const std::string mended =
        "update aShops set cityid = " + company.value("select cityid from aShops where shopid = 1") +
        " where shopid = 1;update adepartmentmaster set depcurrencyid = 1";
    const auto refuses = [&](const char* what, long number) {
        return [=, this] { till.system.refused[what] = number; };
    };
    const auto has = [&](const char* key, const char* value) { return [=, this] { sets({{key, value}}); }; };
    const auto changes = [&](const char* script) { return [=, this] { company.change(script); }; };
    struct Case {
        const char* option;
        std::function<void()> fails;
        std::string told;
        bool stays = true;
    };
    // clang-format off
    for (const Case& c : {
             Case{"optScreen", refuses("C:\\ShopReq.txt", 70), "Error 70: Cannot open" + toFile},
             {"optPrint", refuses("LPT1", 68), "Error 68: Cannot open" + toPort},
             {"optPrint", refuses("write LPT1", 57), "Error 57: Cannot write" + toPort},
             {"optPrint", refuses("close LPT1", 57), "Error 57: Cannot close" + toPort}, // where a short slip fails
             {"optPrint", has("port", "NotFound"), noPort},
             {"optPrint", has("port", ""), noPort},
             {"optScreen", has("Qty", "4o"),
              "Error 13: Type mismatch. \"Qty\" in ShopSetting.txt is no whole number from -32768 to 32767."},
             {"optScreen", [&] { till.breaks("mesRequestToShopDetail d"); }, "The server refused the statement."},
             {"optScreen", [&] { till.desktop.missingProgram = "."; },
              "Error 53: File not found. The slip is in C:\\ShopReq.txt, but neither edit.com nor notepad.exe can show it."},
             {"optScreen", changes("update aShops set cityid = 0 where shopid = 1"),
              "Error 3021: The shop's address cannot be printed: aShops names no city or no country for it.", false},
             {"OptWindowsPrint", changes("update adepartmentmaster set depcurrencyid = 0"),
              "Error 3021: The shop's department or its currency is missing."},
         }) {
        // clang-format on
        SCOPED_TRACE(c.told);
        sets({{"windowsprint", *c.option == 'O' ? "1" : "0"}, {"port", "LPT1"}});
        till.system.files["C:\\ShopReq.txt"] = "the last slip";
        c.fails();
        road::openPrint(till);
        leaves(c.option);
        const std::string told = reads();
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_EQ(told.find("frmPrint, cmdOK_Click") != std::string::npos, c.stays) << told;
        EXPECT_EQ(till.user.form(), c.stays ? "frmPrint" : "frmMaster");
        EXPECT_EQ(till.desktop.pointer, forms::Pointer::normal);
        const bool written = !till.desktop.missingProgram.empty() || !c.stays;
        EXPECT_EQ(till.system.files["C:\\ShopReq.txt"] != "the last slip", written);
        till.system.files.erase(kSettings);
        till.system.refused.clear();
        till.breaks("");
        till.desktop.missingProgram.clear();
        company.change(mended);
        if (!c.stays) till.user.clicks("cmdPrev");
        leaves("optPrint");
        EXPECT_EQ(till.user.form(), "frmMaster");
    }
}

TEST_F(PrintDialog, WithoutItsSettingTheButtonReportsAndOpensNothing) {
    // What is said before the button's own report.
    for (const auto& [refused, content, said] :
         {std::tuple<long, const char*, std::string>{0, "port :=LPT1\r\n",
                                                     "printtoscreen  invalid parameter in Settings.ini file"},
          {0, "printtoscreen :=yes", ""},
          {53, "", " Settings.ini file not found"},
          {70, "", std::string("Error 70: Cannot read: ") + kSettings}}) {
        till.system.files[kSettings] = content;
        till.system.refused = {{refused == 0 ? "" : kSettings, refused}};
        road::openPrint(till);
        ASSERT_TRUE(till.user.message());
        EXPECT_EQ(till.user.message()->icon, forms::MessageIcon::critical);
        if (!said.empty() && refused != 70) {
            EXPECT_EQ(till.user.message()->title, till.module.session.messageBoxCaption);
        }
        const std::string told = reads();
        EXPECT_TRUE(told.starts_with(said)) << told;
        for (const char* part : {"Error 13: Type mismatch. \"printtoscreen\" in ShopSetting.txt is no whole number",
                                 "Where: frmMaster , cmdPrev_Click\r\n"})
            EXPECT_NE(told.find(part), std::string::npos) << told;
        EXPECT_EQ(till.user.form(), "frmMaster");
    }
}

struct ReportKind {
    std::int32_t screenId;
    const char *file, *title, *firstValue;
    bool hasCurrency = false;
};

// What the engine is told, in its order, and the preview that it shows.
TEST(ReportPreview, ShowsTheRequestAsAReport) {
    const CompanyFile company;
    const std::string from = " from ashops a,adepartmentmaster b,acurrencymaster c where shopid=1 and "
                             "a.departmentid=b.departmentid and b.depcurrencyid=c.currencyid";
    const std::string department = company.value("select departmentname" + from);
    const char* const request = "Goods Request To Shop";
    for (const ReportKind& kind :
         {ReportKind{1507, "reqtoshop.rpt", request, "Request To Shop - "},
          {1611, "rptinterdivisionsalesreq.rpt", "Inter Divsion Sales Request", "Inter Divison Sales Request  ", true},
          {1700, "reqtoshop.rpt", request, "Request To Shop - "}}) {
        Till till(company, {.screenId = kind.screenId});
        auto& user = till.user;
        road::openPrint(till);
        const auto row = support::rowsOf(till.module.master().flexMaster).at(0);
        user.clicks("cmdOK");
        ASSERT_EQ(user.form(), "ReportWindow") << (user.message() ? user.message()->text : "");
        EXPECT_EQ(user.caption(), kind.title);

        const std::string shopName = company.value("select shopname" + from);
        std::vector<std::string> expected{
            "LogOnServer(pdsodbc.dll|admindsnv2|adminv2|admin|brackmoss417)",
            std::string("OpenReport(" PROJECT_DIR "/sandbox/data\\reports\\") + kind.file + ")",
            std::string("SetCurrentValue 1(") + kind.firstValue + (kind.hasCurrency ? "" : shopName) + ")",
            "SetCurrentValue 2( )",
            "SetCurrentValue 3(" + row[0] + "#)",
            "SetCurrentValue 4(1%)",
            "SetCurrentValue 5(" + company.value("select username from lousers where userid=1") + ")",
            "SetCurrentValue 6(" + department + ")"};
        if (kind.hasCurrency) expected.push_back("SetCurrentValue 7(" + company.value("select symbol" + from) + ")");
        for (const char* option :
             {"HasPrintSetupButton", "HasRefreshButton", "HasSearchButton", "HasZoomControl", "HasExportButton"})
            expected.push_back(std::string(option) + "(True)");
        expected.push_back(std::string("Preview(") + kind.title + "|0|0|0|0|" + std::to_string(0x01CF0000) + ")");
        EXPECT_EQ(till.reportCalls, expected);

        EXPECT_NE(user.text("txtPage").find("Request No    " + row[1]), std::string::npos) << user.text("txtPage");
        EXPECT_EQ(user.text("lblPage").substr(0, 5), "1 of ");
        user.picks("cboZoom", "150 %");
        EXPECT_EQ(user.control<forms::TextBox>("txtPage")->fixedPitch(), 150);
        user.enters("txtSearch", department + "\r");
        EXPECT_EQ(user.control<forms::TextBox>("txtPage")->selLength(), static_cast<int>(department.size()));
        user.clicks("cmdClose");
        EXPECT_EQ(user.form(), "frmPrint"); // the dialog stays
        EXPECT_EQ(till.desktop.pointer, forms::Pointer::normal);
        const char* const parts[] = {"Crystal.CRPE.Application", "Application.OpenReport"};
        for (const char* part : parts) EXPECT_TRUE(till.holds(part)) << part;
        user.presses(forms::kKeyEscape);
        EXPECT_EQ(user.form(), "frmMaster");
        for (const char* part : parts) EXPECT_FALSE(till.holds(part)) << part << " would keep its log-on";
    }
}

} // namespace
