#include "slip/SlipPrinter.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "common/Packing.h"
#include "common/basGRtoShop.h"

namespace goodsreq {

using automation::Value;

namespace {

constexpr const char* kReportedForm = "FrmMaster";
constexpr const char* kLineEnd = "\r\n";
constexpr const char* kFormFeed = "\f";

/// A number that is Null or missing counts as 0: an item without a cost still prints.
double numberOf(const Value& value) { return value.isNull() || value.isEmpty() ? 0 : basic::cDbl(value); }

} // namespace

void SlipPrinter::PrintBill(std::int32_t requestId) {
    settings_ = readSlipSettings(PrintSettings(module_));
    separatorLine(settings_.pageWidth, settings_.separatorBlanks); // raises its error before anything is opened
    db_ = module_.createCommonDb();
    std::vector<SlipLine> lines = readLines(requestId);
    openOutput();
    if (!lines.empty()) HeaderPrint(requestId);

    SlipParts parts;
    parts.line = [&](int index) {
        SlipLine& line = lines[static_cast<std::size_t>(index)];
        addPrices(line, static_cast<std::size_t>(index));
        return line;
    };
    parts.footer = [this] { FooterPrint(); };
    parts.print = [this](const std::string& text) { print(text); };
    parts.formFeed = [this] { write(kFormFeed); };
    const SlipTotals totals = printPages(settings_, headerLines_, static_cast<int>(lines.size()), parts);

    if (const auto text = totalLine(settings_, totals.quantity, totals.cost)) {
        print(*text);
        print("");
    }
    FooterPrint();
    atOutput([this] { output_->close(); });
}

void SlipPrinter::openOutput() {
    const bool toFile = target_ == Target::slipFile;
    // Without a port no file of that name is to appear in some folder.
    if (!toFile && (settings_.port.empty() || settings_.port == "NOTFOUND"))
        throw automation::RunTimeError(52, "Bad file name or number. ShopSetting.txt names no port to print to.");
    // Every user of the machine can reach the file's folder, so somebody may have put something else in its place.
    atOutput([&] {
        output_ = toFile ? module_.system().openPlainFile(kSlipFile) : module_.system().openForOutput(settings_.port);
    });
}

void SlipPrinter::atOutput(const std::function<void()>& act) const {
    try {
        act();
    } catch (const automation::RunTimeError& error) {
        const std::string where =
            target_ == Target::slipFile
                ? std::string("the file ") + kSlipFile + "; close or move what is in its way."
                : "\"" + settings_.port + "\", the port in ShopSetting.txt; check the printer and the port.";
        throw automation::RunTimeError(error.number(), error.description() + ". The slip goes to " + where,
                                       error.source());
    }
}

void SlipPrinter::write(const std::string& bytes) {
    atOutput([&] { output_->write(bytes); });
}

void SlipPrinter::print(const std::string& text) { write(module_.system().encode(text).append(kLineEnd)); }

// An item with several packings comes once for each of them: the slip lists it so.
std::vector<SlipLine> SlipPrinter::readLines(std::int32_t requestId) {
    std::string order;
    if (settings_.savedOrder == 1) order = " order by srdShopId, SRDrequestid, srdItemId";
    if (settings_.savedOrder == 2) order = " order by a.itemdescription";
    // clang-format off
    Recordset rows = module_.openRecordset(
        "select UnitCode, h.SRHrequestNO, d.SRDItemId,ai.itemcode, srdgoodqty,"
        "a.itemdescription, ai.itemrate "
        " from mesRequestToShopHeader h, mesRequestToShopDetail d, "
        " vwitemdescriptionPrint a, aItem ai, aUnit u, "
        " aItemPackingDetail pd"
        " where h.SRHrequestID=d.SRDrequestID and a.ItemId=d.SRDItemId and "
        " h.SRHShopId=" + shop() + " and h.SRHShopId=d.SRDShopId and "
        " h.srhRequestId = " + std::to_string(requestId) + " and a.ItemId=ai.ItemId "
        " and pd.ItemId = ai.ItemId "
        " and ai.UnitsId = u.UnitId " + order,
        Cursor::keyset, Lock::readOnly);
    // clang-format on
    std::vector<SlipLine> lines;
    items_.clear();
    if (rows.eof()) return lines;
    const Field item = rows.field("SRDItemId");
    const Field code = rows.field("itemcode");
    const Field description = rows.field("itemdescription");
    const Field quantity = rows.field("srdgoodqty");
    const Field unit = rows.field("UnitCode");
    const Field rate = rows.field("itemrate");
    for (; !rows.eof(); rows.moveNext()) {
        SlipLine line;
        line.number = static_cast<int>(lines.size()) + 1;
        line.code = basic::concatText(code.value());
        line.description = basic::concatText(description.value());
        line.quantity = quantity.value();
        line.unit = basic::concatText(unit.value());
        lines.push_back(std::move(line));
        items_.push_back({basic::cLng(item.value()), numberOf(rate.value())});
    }
    rows.close();
    return lines;
}

void SlipPrinter::addPrices(SlipLine& line, std::size_t index) {
    const ItemFacts& item = items_[index];
    const double revision = numberOf(db_.lookUp("ashops", "revisedcostpricepercent", " ShopId=" + shop()));
    line.costPrice = item.rate * (1 + revision / 100);
    line.lineCost = numberOf(line.quantity) * line.costPrice;
    if (settings_.showSellingPrice == 1)
        line.sellingPrice = fnGetShipmentSellingPrice(module_, item.itemId, module_.session.shopId);
}

void SlipPrinter::HeaderPrint(std::int32_t requestId) {
    trap(module_, kReportedForm, "HeaderPrint ", [&] {
        const HeaderSettings header = readHeaderSettings(PrintSettings(module_));
        // Prints until the block has its full height; then the rest of the header is left out, and nothing more is
        // looked up for it.
        const auto full = [&] { return header.totalHeadCount >= 1 && headerLines_ == header.totalHeadCount; };
        const auto printAll = [&](const std::vector<std::string>& lines) {
            for (std::size_t i = 0; i < lines.size() && !full(); ++i, ++headerLines_) print(lines[i]);
        };
        const int width = settings_.pageWidth;
        printAll(headerOpening(header, width));
        for (const char* field : companyFields(header)) {
            if (full()) return;
            printAll({companyLine(header, basic::concatText(db_.lookUp("acompanymaster", field)))});
        }
        if (full()) return;
        printAll(headerBody(header, width, readRequest(requestId)));
        if (header.linesAfterHeader != 1) return;
        for (; headerLines_ < header.totalHeadCount; ++headerLines_) print("");
    });
}

RequestFacts SlipPrinter::readRequest(std::int32_t requestId) const {
    const auto text = [&](const Recordset& row, const char* name) {
        return basic::concatText(row.value(name), module_.desktop().locale());
    };
    RequestFacts facts;
    // clang-format off
    Recordset request = module_.openRecordset("select SRHrequestNO,SRHrequestdate,SRHremarks,a.shopname"
                                              " from mesrequesttoshopheader,ashops a where"
                                              " SRHtoShopid=a.shopid and SRHshopid=" + shop() +
                                              " and SRHrequestid=" + std::to_string(requestId));
    // clang-format on
    request.needsRow("The request or the shop that it goes to is missing.");
    facts.number = text(request, "SRHrequestNO");
    facts.date = text(request, "SRHrequestdate");
    facts.remarks = text(request, "SRHremarks");
    facts.toShop = text(request, "shopname");
    request.close();
    // clang-format off
    Recordset sender = module_.openRecordset("select shopname, address, CityName, CountryName, telephoneno, faxno"
                                             " from ashops s, acountrymaster co, acity  ci where s.countryid = co.countryid and "
                                             " ci.cityid = s.cityid and s.shopid=" + shop());
    // clang-format on
    sender.needsRow("The shop's address cannot be printed: aShops names no city or no country for it.");
    facts.fromShop = text(sender, "shopname");
    facts.address = text(sender, "address");
    facts.city = text(sender, "CityName");
    facts.country = text(sender, "CountryName");
    facts.telephone = text(sender, "telephoneno");
    facts.fax = text(sender, "faxno");
    sender.close();
    return facts;
}

void SlipPrinter::FooterPrint() {
    trap(module_, kReportedForm, "FooterPrint", [&] {
        const int width = settings_.pageWidth;
        Recordset messages = module_.openRecordset("select * from ashopprintmessages where shopid = " + shop() +
                                                   " and transtype = 'POSPO' order by messageid");
        for (; !messages.eof(); messages.moveNext())
            print(messageLine(basic::concatText(messages.value("message")),
                              basic::concatText(messages.value("allignment")), width));
        messages.close();
        print("");
        Recordset user = module_.openRecordset("select Username from Lousers where userid = " +
                                               std::to_string(module_.session.userId) + " and shopid = " + shop());
        const std::string name = user.eof() ? std::string() : basic::concatText(user.value("UserName"));
        user.close();
        const automation::Date now = module_.desktop().now();
        print(centred(inOneLine(name) + " - " + basic::format(now, "dd/mm/yyyy") + " " + basic::format(now, "HH:MM:SS"),
                      width));
    });
}

} // namespace goodsreq
