#include "slip/SlipSettings.h"

#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "slip/SettingsFile.h"

namespace goodsreq {

PrintSettings::PrintSettings(Module& module) : module_(module), path_(module.folder() + "\\ShopSetting.txt") {}

std::string PrintSettings::text(const std::string& key) const {
    return basic::trim(basic::ucase(FileCode(module_, key, path_)));
}

int PrintSettings::strict(const std::string& key) const { return basic::cInt(text(key)); }

int PrintSettings::lenient(const std::string& key) const {
    return basic::cInt(basic::val(FileCode(module_, key, path_)));
}

SlipSettings readSlipSettings(const PrintSettings& settings) {
    SlipSettings s;
    s.port = settings.text("port");
    s.pageLines = settings.strict("internalprintnoofrecords");
    s.pageWidth = settings.strict("pagewidth");
    s.serialWidth = settings.strict("SlNo");
    s.quantityWidth = settings.strict("Qty");
    s.unitWidth = settings.strict("Unit");
    s.rateWidth = settings.strict("Rate");
    s.amountWidth = settings.strict("Amount");
    // Nothing uses these three, yet a file without them is refused.
    for (const char* unused : {"ExtraLine", "EndPage", "Seperator"}) settings.strict(unused);
    s.showCost = settings.lenient("showcostintrans");
    s.showSellingPrice = settings.lenient("showspintransrep");
    s.showItemCode = settings.lenient("showitemcodeinprint");
    s.savedOrder = settings.lenient("printinsavedorder");
    s.headerTopLine = settings.strict("printheadertopline");
    s.headerBottomLine = settings.strict("printheaderbottomline");
    s.detailBottomLine = settings.strict("printdetailbottomline");
    s.separatorBlanks = settings.strict("spaceinlinecode");
    s.footerOnEachPage = settings.strict("printfooterineachpage");
    s.showTotalQuantity = settings.lenient("showtotalqty");
    return s;
}

HeaderSettings readHeaderSettings(const PrintSettings& settings) {
    HeaderSettings h;
    h.leftMargin = settings.strict("headerleftmargin");
    h.linesToSkipFirst = settings.strict("linetoskipfirst");
    h.totalHeadCount = settings.lenient("totalheadcount");
    h.linesAfterAddress = settings.strict("linesafteraddress");
    h.linesAfterHeader = settings.strict("linesafterheader");
    h.titleAbove = settings.lenient("printtransnameabove");
    h.companyName = settings.strict("PrintCompanyName");
    if (h.companyName == 1) {
        h.address1 = settings.strict("printadd1");
        h.address2 = settings.strict("printadd2");
        h.address3 = settings.strict("printadd3");
    }
    return h;
}

} // namespace goodsreq
