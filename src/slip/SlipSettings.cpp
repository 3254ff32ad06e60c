#include "slip/SlipSettings.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "slip/SettingsFile.h"

namespace goodsreq {
namespace {

/// The number that `read` gives, or its error with the key and the file.
template <class Read> int numberOf(const std::string& key, const Read& read) {
    try {
        return read();
    } catch (const automation::RunTimeError& error) {
        throw automation::RunTimeError(error.number(),
                                       error.description() + ". \"" + key +
                                           "\" in ShopSetting.txt is no whole number from -32768 to 32767.");
    }
}

} // namespace

PrintSettings::PrintSettings(Module& module) : module_(module), path_(module.folder() + "\\ShopSetting.txt") {}

std::string PrintSettings::text(const std::string& key) const {
    return basic::trim(basic::ucase(FileCode(module_, key, path_)));
}

int PrintSettings::strict(const std::string& key) const {
    const std::string value = text(key);
    return numberOf(key, [&] { return basic::cInt(value); });
}

int PrintSettings::lenient(const std::string& key) const {
    const std::string value = FileCode(module_, key, path_);
    return numberOf(key, [&] { return basic::cInt(basic::val(value)); });
}

SlipSettings readSlipSettings(const PrintSettings& settings) {
    struct Key {
        const char* name;
        int SlipSettings::*number; ///< null for what nothing uses; yet a file without it is refused
        bool strict;
    };
    constexpr Key kKeys[] = {{"internalprintnoofrecords", &SlipSettings::pageLines, true},
                             {"pagewidth", &SlipSettings::pageWidth, true},
                             {"SlNo", &SlipSettings::serialWidth, true},
                             {"Qty", &SlipSettings::quantityWidth, true},
                             {"Unit", &SlipSettings::unitWidth, true},
                             {"Rate", &SlipSettings::rateWidth, true},
                             {"Amount", &SlipSettings::amountWidth, true},
                             {"ExtraLine", nullptr, true},
                             {"EndPage", nullptr, true},
                             {"Seperator", nullptr, true},
                             {"showcostintrans", &SlipSettings::showCost, false},
                             {"showspintransrep", &SlipSettings::showSellingPrice, false},
                             {"showitemcodeinprint", &SlipSettings::showItemCode, false},
                             {"printinsavedorder", &SlipSettings::savedOrder, false},
                             {"printheadertopline", &SlipSettings::headerTopLine, true},
                             {"printheaderbottomline", &SlipSettings::headerBottomLine, true},
                             {"printdetailbottomline", &SlipSettings::detailBottomLine, true},
                             {"spaceinlinecode", &SlipSettings::separatorBlanks, true},
                             {"printfooterineachpage", &SlipSettings::footerOnEachPage, true},
                             {"showtotalqty", &SlipSettings::showTotalQuantity, false}};
    SlipSettings s;
    s.port = settings.text("port");
    for (const Key& key : kKeys) {
        const int number = key.strict ? settings.strict(key.name) : settings.lenient(key.name);
        if (key.number) s.*key.number = number;
    }
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
