#include "screens/print/frmPrint.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "screens/register/frmMaster.h"
#include "slip/SlipPrinter.h"

namespace goodsreq {

using automation::Value;

namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 3900;
constexpr int kOptionHeight = 300;
constexpr int kOptionStep = 390;
constexpr int kButtonWidth = 1300;
constexpr int kButtonHeight = 390;
/// An overlapped window with every part of its frame, maximised.
constexpr std::int32_t kMaximisedWindow = 0x01CF0000;

} // namespace

frmPrint::frmPrint(Module& module) : ModuleForm(module, "frmPrint") {
    onKeyPress = [this](std::int16_t& character) {
        if (character == forms::kKeyEscape) unload();
    };
    cmdOK.onClick = [this] { goodsreq::trap(this->module(), "frmPrint", "cmdOK_Click", [this] { accept(); }); };
    cmdCancel.onClick = [this] { unload(); };
}

void frmPrint::design() {
    setCaption("Print");
    struct Option {
        forms::OptionButton& button;
        const char* caption;
    };
    int top = kMargin + 300;
    for (const Option& option :
         {Option{optScreen, "To Screen"}, {optPrint, "To Printer"}, {OptWindowsPrint, "Windows Print"}}) {
        option.button.place({2 * kMargin, top, kWidth - 4 * kMargin, kOptionHeight});
        option.button.setText(option.caption);
        top += kOptionStep;
    }
    OptWindowsPrint.setVisible(false); // until the settings offer it
    fraPrint.place({kMargin, kMargin, kWidth - 2 * kMargin, top - kMargin + 60});
    Picture1.setVisible(false);
    const int buttons = fraPrint.bounds().bottom() + kMargin;
    cmdOK.place({kWidth - kMargin - 2 * kButtonWidth - 100, buttons, kButtonWidth, kButtonHeight});
    cmdOK.setText("&OK");
    cmdCancel.place({kWidth - kMargin - kButtonWidth, buttons, kButtonWidth, kButtonHeight});
    cmdCancel.setText("&Cancel");
    setSize(kWidth, buttons + kButtonHeight + kMargin);
}

void frmPrint::offer() {
    toScreen_ = PrintSettings(module()).strict("printtoscreen") == 1;
    showAfresh(&module().master());
}

void frmPrint::onLoad() {
    onUnload(); // what a dialog holds that was dropped and not closed
    offersReports_ = false;
    trap("Form_Load", [this] {
        (toScreen_ ? optScreen : optPrint).setValue(true);
        session().formColour.Applyformcolor(*this);
        const PrintSettings settings(module());
        offersReports_ = settings.lenient("windowsprint") == 1;
        OptWindowsPrint.setVisible(offersReports_);
        OptWindowsPrint.setValue(offersReports_);
        if (!offersReports_) (settings.lenient("printtoscreen") == 1 ? optScreen : optPrint).setValue(true);
    });
}

void frmPrint::onUnload() {
    report_.reset();
    engine_.reset();
}

void frmPrint::accept() {
    const forms::HourGlass busy(desktop());
    if (OptWindowsPrint.value()) {
        if (offersReports_) return WIndowsPrint();
        return module().inform("Windows Print is switched off: windowsprint in ShopSetting.txt is not 1.");
    }
    printSlip();
    unload();
}

void frmPrint::printSlip() {
    const std::string windows = module().system().windowsDirectory();
    const bool toScreen = optScreen.value();
    SlipPrinter printer(module(), toScreen ? SlipPrinter::Target::slipFile : SlipPrinter::Target::port);
    printer.PrintBill(module().master().currentId());
    if (toScreen) showSlipFile(windows);
}

void frmPrint::showSlipFile(const std::string& windows) {
    const std::string folder = windows.find("WINDOWS") != std::string::npos ? "\\command" : "\\system32";
    const std::string file = "c:\\ShopReq.txt";
    try {
        return desktop().startProgram(windows + folder + "\\edit.com", "  " + file, forms::WindowStyle::maximised);
    } catch (const automation::RunTimeError&) {
        // Later systems have no such editor, or one that they cannot run.
    }
    try {
        desktop().startProgram(module().system().sharedWindowsDirectory() + "\\notepad.exe", file,
                               forms::WindowStyle::maximised);
    } catch (const automation::RunTimeError& error) {
        throw automation::RunTimeError(error.number(),
                                       error.description() + ". The slip is in " + kSlipFile +
                                           ", but neither edit.com nor notepad.exe can show it.",
                                       error.source());
    }
}

void frmPrint::WIndowsPrint() {
    const Session& s = session();
    const RequestKind& kind = s.kind();
    const std::string shop = std::to_string(s.shopId);
    const CommonDb db = module().createCommonDb();
    const std::string userName =
        basic::concatText(db.lookUp("lousers", "username", " userid=" + std::to_string(s.userId)));

    engine_ = module().create("Crystal.CRPE.Application");
    engine_->call("LogOnServer", "pdsodbc.dll", "admindsnv2", "adminv2", "admin", "brackmoss417");
    report_ = engine_->call("OpenReport", module().folder() + kind.report).objectPtr();
    if (!report_) automation::raise(automation::kObjectNotSet);

    const std::string title =
        kind.reportTitle ? std::string(kind.reportTitle)
                         : "Request To Shop - " + basic::concatText(db.lookUp("ashops", "shopname", " shopid=" + shop));
    // clang-format off
    Recordset department = module().openRecordset("select departmentname,symbol from ashops a,adepartmentmaster b,acurrencymaster c where shopid=" +
                                                  shop + " and "
                                                  " a.departmentid=b.departmentid and b.depcurrencyid=c.currencyid");
    // clang-format on
    department.needsRow("The shop's department or its currency is missing.");
    std::vector<Value> values{title,    " ",      static_cast<double>(module().master().currentId()),
                              s.shopId, userName, basic::concatText(department.value("departmentname"))};
    if (kind.reportTitle) values.emplace_back(basic::concatText(department.value("symbol")));
    department.close();
    const automation::ObjectPtr fields = report_->get("ParameterFields").objectPtr();
    std::int32_t position = 0;
    for (const Value& value : values) fields->call("Item", ++position).object().call("SetCurrentValue", value);

    const automation::ObjectPtr options = report_->get("PrintWindowOptions").objectPtr();
    for (const char* option :
         {"HasPrintSetupButton", "HasRefreshButton", "HasSearchButton", "HasZoomControl", "HasExportButton"})
        options->put(option, true);
    constexpr std::int32_t kByEngine = 0;
    report_->call("Preview", kind.previewTitle, kByEngine, kByEngine, kByEngine, kByEngine, kMaximisedWindow);
}

} // namespace goodsreq
