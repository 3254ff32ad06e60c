// The Print button, its dialog and the three ways out of it, as a clerk uses them.
#include "tests/support/Shop.h"

#include <gtest/gtest.h>

namespace {

using support::CompanyFile;
using support::Shop;

constexpr const char* kSettings = PROJECT_DIR "/sandbox/data\\ShopSetting.txt";

class PrintDialog : public testing::Test {
protected:
    CompanyFile company;
    Shop shop{company};

    /// The sample settings with some of their lines replaced.
    void sets(std::initializer_list<std::pair<std::string, std::string>> values) {
        std::string text = shop.system.readFile(kSettings);
        for (const auto& [key, value] : values) {
            const std::size_t at = text.find("\n" + key + " :=");
            ASSERT_NE(at, std::string::npos) << key;
            const std::size_t from = at + 1 + key.size() + 3;
            text.replace(from, text.find("\r\n", from) - from, value);
        }
        shop.system.files[kSettings] = text;
    }
    void opensDialog() {
        shop.opens();
        shop.user.selectsRow("flexMaster", 1);
        shop.user.clicks("cmdPrev");
        ASSERT_EQ(shop.user.form(), "frmPrint");
    }
    std::string requestNumber() { return shop.user.grid("flexMaster").at(0).at(1); }
};

TEST_F(PrintDialog, TheSettingsChooseTheDestination) {
    struct Case {
        const char* toScreen;
        const char* reports;
        const char* chosen;
    };
    // clang-format off
    for (const Case& c : {Case{"1", "0", "optScreen"}, {"0", "0", "optPrint"}, {"2", "0", "optPrint"},
                          {"1", "1", "OptWindowsPrint"}, {"0", "1", "OptWindowsPrint"}}) {
        // clang-format on
        sets({{"printtoscreen", c.toScreen}, {"windowsprint", c.reports}});
        opensDialog();
        EXPECT_TRUE(shop.user.control<forms::OptionButton>(c.chosen)->value()) << c.toScreen << c.reports;
        EXPECT_EQ(shop.user.visible("OptWindowsPrint"), *c.reports == '1');
        shop.user.presses(forms::kKeyEscape);
        EXPECT_EQ(shop.user.form(), "frmMaster");
        shop.user.clicks("CmdClose");
    }
}

TEST_F(PrintDialog, ToScreenWritesTheSlipAndOpensTheEditor) {
    sets({{"windowsprint", "0"}});
    opensDialog();
    shop.user.clicks("cmdOK");
    EXPECT_EQ(shop.user.form(), "frmMaster");
    EXPECT_NE(shop.system.files["C:\\ShopReq.txt"].find("Request No     : " + requestNumber() + "\r\n"),
              std::string::npos);
    EXPECT_EQ(shop.desktop.programs, std::vector<std::string>{"C:\\Windows\\system32\\edit.com   c:\\ShopReq.txt"});
    EXPECT_EQ(shop.desktop.pointer, forms::Pointer::normal);
    EXPECT_TRUE(shop.errors().empty());
}

TEST_F(PrintDialog, TheEditorLiesWhereTheNameOfWindowsSays) {
    struct Case {
        const char* folder;
        const char* editor;
    };
    for (const Case& c : {Case{"C:\\WINDOWS", "C:\\WINDOWS\\command\\edit.com   c:\\ShopReq.txt"},
                          {"C:\\Windows", "C:\\Windows\\system32\\edit.com   c:\\ShopReq.txt"},
                          {"C:\\WINNT", "C:\\WINNT\\system32\\edit.com   c:\\ShopReq.txt"}}) {
        shop.system.windows = c.folder;
        sets({{"windowsprint", "0"}});
        opensDialog();
        shop.user.clicks("cmdOK");
        EXPECT_EQ(shop.desktop.programs.back(), c.editor);
        shop.user.clicks("CmdClose");
    }
}

TEST_F(PrintDialog, WithoutTheEditorTheSlipOpensInTheViewer) {
    sets({{"windowsprint", "0"}});
    shop.desktop.missingProgram = "edit.com";
    opensDialog();
    shop.user.clicks("cmdOK");
    EXPECT_EQ(shop.user.form(), "frmMaster");
    EXPECT_EQ(shop.desktop.programs, std::vector<std::string>{"C:\\Windows\\notepad.exe c:\\ShopReq.txt"});
    // With neither, the slip is written all the same, and one report says so.
    shop.desktop.missingProgram = ".";
    shop.system.files.erase("C:\\ShopReq.txt");
    shop.user.clicks("cmdPrev");
    shop.user.clicks("optScreen");
    shop.user.clicks("cmdOK");
    shop.user.answers(forms::Answer::ok);
    EXPECT_EQ(shop.user.form(), "frmPrint");
    EXPECT_TRUE(shop.system.files.contains("C:\\ShopReq.txt"));
    EXPECT_EQ(shop.errors().size(), 1u);
}

TEST_F(PrintDialog, ToPrinterWritesTheSameSlipToThePort) {
    sets({{"windowsprint", "0"}, {"port", "\\\\server\\slips"}});
    opensDialog();
    shop.user.clicks("cmdOK");
    shop.user.clicks("cmdPrev");
    shop.user.clicks("optPrint");
    shop.user.clicks("cmdOK");
    EXPECT_EQ(shop.user.form(), "frmMaster");
    EXPECT_EQ(shop.system.files["\\\\SERVER\\SLIPS"], shop.system.files["C:\\ShopReq.txt"]);
    EXPECT_EQ(shop.desktop.programs.size(), 1u);
}

TEST_F(PrintDialog, AnOutputThatCannotBeOpenedIsReportedWithWhatToDoAndMayBeTriedAgain) {
    struct Case {
        const char* option;
        const char* port;
        const char* refused;
        const char* told;
    };
    std::size_t reports = 0;
    for (const Case& c : {Case{"optScreen", "LPT1", "C:\\ShopReq.txt",
                               "The slip goes to the file C:\\ShopReq.txt; close or move what is in its way."},
                          {"optPrint", "LPT1", "LPT1",
                           "The slip goes to \"LPT1\", the port in ShopSetting.txt; check the printer and the port."},
                          {"optPrint", "NotFound", "", "ShopSetting.txt names no port to print to."}}) {
        SCOPED_TRACE(c.told);
        sets({{"windowsprint", "0"}, {"port", c.port}});
        shop.system.refused[c.refused] = 70;
        opensDialog();
        shop.user.clicks(c.option);
        shop.user.clicks("cmdOK");
        ASSERT_TRUE(shop.user.message());
        for (const char* part : {"frmPrint, cmdOK_Click", c.told})
            EXPECT_NE(shop.user.message()->text.find(part), std::string::npos) << shop.user.message()->text;
        shop.user.answers(forms::Answer::ok);
        EXPECT_EQ(shop.user.form(), "frmPrint");
        EXPECT_EQ(shop.desktop.pointer, forms::Pointer::normal);
        EXPECT_TRUE(shop.desktop.programs.empty());
        sets({{"windowsprint", "0"}, {"port", "LPT1"}});
        shop.system.refused.clear();
        shop.user.clicks("optPrint");
        shop.user.clicks("cmdOK");
        EXPECT_EQ(shop.user.form(), "frmMaster");
        EXPECT_EQ(shop.errors().size(), ++reports);
    }
}

TEST_F(PrintDialog, WithoutItsSettingTheButtonReportsAndOpensNothing) {
    shop.system.files[kSettings] = "port :=LPT1\r\n";
    shop.opens();
    shop.user.selectsRow("flexMaster", 1);
    shop.user.clicks("cmdPrev");
    shop.user.answers("printtoscreen  invalid parameter in Settings.ini file", forms::Answer::ok);
    ASSERT_TRUE(shop.user.message());
    EXPECT_NE(shop.user.message()->text.find("Where: frmMaster , cmdPrev_Click\r\n"), std::string::npos);
    shop.user.answers(forms::Answer::ok);
    EXPECT_EQ(shop.user.form(), "frmMaster");
}

struct ReportKind {
    std::int32_t screenId;
    const char* file;
    const char* title;
    const char* firstValue;
    bool hasCurrency;
};

// What the engine is told, in its order, and the preview that it shows.
TEST(ReportPreview, ShowsTheRequestAsAReport) {
    const CompanyFile company;
    for (const ReportKind& kind :
         {ReportKind{1507, "reqtoshop.rpt", "Goods Request To Shop", "Request To Shop - ", false},
          ReportKind{1611, "rptinterdivisionsalesreq.rpt", "Inter Divsion Sales Request",
                     "Inter Divison Sales Request  ", true}}) {
        Shop shop(company, {.screenId = kind.screenId});
        auto& user = shop.user;
        shop.opens();
        user.selectsRow("flexMaster", 1);
        const auto row = user.grid("flexMaster").at(0);
        user.clicks("cmdPrev");
        ASSERT_EQ(user.form(), "frmPrint");
        user.clicks("cmdOK");
        ASSERT_EQ(user.form(), "ReportWindow") << (user.message() ? user.message()->text : "");
        EXPECT_EQ(user.caption(), kind.title);

        const std::string shopName = company.value("select shopname from ashops where shopid = 1");
        const std::string department = company.value(
            "select departmentname from ashops a,adepartmentmaster b where shopid=1 and a.departmentid=b.departmentid");
        const std::string symbol = company.value(
            "select symbol from ashops a,adepartmentmaster b,acurrencymaster c where shopid=1 and a.departmentid=b.departmentid "
            "and b.depcurrencyid=c.currencyid");
        std::vector<std::string> expected{
            "LogOnServer(pdsodbc.dll|admindsnv2|adminv2|admin|brackmoss417)",
            std::string("OpenReport(" PROJECT_DIR "/sandbox/data\\reports\\") + kind.file + ")",
            std::string("SetCurrentValue 1(") + kind.firstValue + (kind.hasCurrency ? "" : shopName) + ")",
            "SetCurrentValue 2( )",
            "SetCurrentValue 3(" + row[0] + ")",
            "SetCurrentValue 4(1)",
            "SetCurrentValue 5(" + company.value("select username from lousers where userid=1") + ")",
            "SetCurrentValue 6(" + department + ")"};
        if (kind.hasCurrency) expected.push_back("SetCurrentValue 7(" + symbol + ")");
        for (const char* option :
             {"HasPrintSetupButton", "HasRefreshButton", "HasSearchButton", "HasZoomControl", "HasExportButton"})
            expected.push_back(std::string(option) + "(True)");
        expected.push_back(std::string("Preview(") + kind.title + "|0|0|0|0|" + std::to_string(0x01CF0000) + ")");
        EXPECT_EQ(shop.reportCalls, expected);

        EXPECT_NE(user.text("txtPage").find("Request No    " + row[1]), std::string::npos) << user.text("txtPage");
        EXPECT_EQ(user.text("lblPage").substr(0, 5), "1 of ");
        user.picks("cboZoom", "150 %");
        EXPECT_EQ(user.control<forms::TextBox>("txtPage")->fixedPitch(), 150);
        user.enters("txtSearch", department + "\r");
        EXPECT_EQ(user.control<forms::TextBox>("txtPage")->selLength(), static_cast<int>(department.size()));
        user.clicks("cmdClose");
        EXPECT_EQ(user.form(), "frmPrint"); // the dialog stays
        EXPECT_EQ(shop.desktop.pointer, forms::Pointer::normal);
        const char* const parts[] = {"Crystal.CRPE.Application", "Application.OpenReport"};
        for (const char* part : parts) EXPECT_TRUE(shop.holds(part)) << part;
        user.presses(forms::kKeyEscape);
        EXPECT_EQ(user.form(), "frmMaster");
        for (const char* part : parts) EXPECT_FALSE(shop.holds(part)) << part << " would keep its log-on";
    }
}

} // namespace
