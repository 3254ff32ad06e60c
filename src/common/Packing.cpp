#include "common/Packing.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "common/basGRtoShop.h"

namespace goodsreq {

using automation::Value;

namespace {

constexpr int kPackName = 1;
constexpr int kPackQuantity = 2;

} // namespace

double fnGetSellingPrice(Module& module, std::int32_t itemId, std::int32_t currencyId) {
    double result = 0;
    trap(module, kSharedModule, "fnGetSellingPrice", [&] {
        const Session& s = module.session;
        const std::string item = std::to_string(itemId);
        Recordset retail = module.openRecordset("select Packingtypeid from vwitemretailpacking where itemid=" + item);
        const std::int32_t packing = retail.eof() ? 0 : basic::cLng(retail.value("Packingtypeid"));
        retail.close();
        Recordset prices =
            module.openRecordset("spSellingPriceFetch " + std::to_string(s.companyId) + "," + std::to_string(s.shopId) +
                                 ",0," + item + "," + std::to_string(packing) + ",1," + std::to_string(currencyId));
        if (prices.eof()) return;
        const Value price = prices.value(s.kind().priceColumn);
        if (!price.isNull()) result = basic::val(basic::format(price, "0.00"));
    });
    return result;
}

Value fnGetShipmentSellingPrice(Module& module, std::int32_t itemId, std::int32_t shopId) {
    const std::string item = std::to_string(itemId);
    // clang-format off
    Recordset fixed = module.openRecordset("SELECT PriceFixedAtHq FROM aItem"
                                           " WHERE ItemId = " + item);
    // clang-format on
    bool atHeadOffice = false;
    if (!fixed.eof()) {
        const Value flag = fixed.value(0);
        atHeadOffice = !flag.isNull() && basic::cBool(flag);
    }
    fixed.close();
    // clang-format off
    Recordset prices = module.openRecordset("SELECT SellingPrice "
                                            " FROM vwItemRetailPacking irp, "
                                            " losShopItemShipmentDetail sisd"
                                            " WHERE irp.ItemId = sisd.ItemId"
                                            " AND irp.PackingTypeId = sisd.PackingTypeId"
                                            " AND sisd.ItemId = " + item +
                                            (atHeadOffice ? std::string(" AND sisd.ShopId IS NULL")
                                                          : " AND sisd.ShopId = " + std::to_string(shopId)));
    // clang-format on
    return prices.eof() ? Value() : prices.value(0);
}

void FillPackingTypes(Module& module, forms::ListView& list, std::int32_t itemId) {
    list.clear(); // Where the query fails, no other item's packings stay.
    trap(module, kSharedModule, "FillPackingTypes", [&] {
        // clang-format off
        Recordset packings = module.openRecordset(
            "select ad.packingtypeid ,PackingTypeName,'' as qty from aitempackingdetail ad,apackingtype ap,"
            " apackingtypecapacitydetail ac,aitem ai where ad.itemid = " + std::to_string(itemId) +
            " and ad.packingtypeid=ap.packingtypeid and ad.itemid=ai.itemid and "
            " ac.unitsid=ai.unitsid and ac.packingtypeid=ad.packingtypeid and ad.active=1");
        // clang-format on
        if (packings.eof()) return;
        const Field id = packings.field("packingtypeid");
        const Field packingName = packings.field("packingtypename");
        const Field quantity = packings.field("qty");
        for (; !packings.eof(); packings.moveNext()) {
            forms::ListItem& line = list.add(basic::concatText(id.value()));
            line.setSubItem(kPackName, basic::concatText(packingName.value()));
            line.setSubItem(kPackQuantity, basic::concatText(quantity.value()));
        }
    });
}

void FillPackingQuantities(Module& module, forms::ListView& list, std::int32_t itemId, double quantity) {
    // Where a query fails, no other quantity's packs stay.
    for (int i = 1; i <= list.count(); ++i) list.item(i).setSubItem(kPackQuantity, "");
    trap(module, kSharedModule, "FillPackingQuantities", [&] {
        for (int i = 1; i <= list.count(); ++i) {
            // clang-format off
            Recordset capacity = module.openRecordset(
                "select isnull(pk.quantity,0) qty from apackingtypecapacitydetail pk, aitem a "
                "where  a.itemid =" + std::to_string(itemId) + " and pk.packingtypeid=" + idText(list.item(i).text()) +
                " and a.unitsid=pk.unitsid");
            // clang-format on
            if (capacity.eof()) continue;
            const double units = basic::cDbl(capacity.value("qty"));
            if (units == 0) automation::raise(automation::kDivisionByZero);
            list.item(i).setSubItem(kPackQuantity, basic::format(quantity / units, "#0.00"));
        }
    });
}

std::string fnGetUnitCode(Module& module, std::int32_t itemId) {
    std::string code;
    trap(module, kSharedModule, "fnGetUnitCode", [&] {
        const CommonDb db(module.create("CommonModule.clscommondb"), module.session.connection);
        code = basic::concatText(db.lookUp("aItem i, aUnit u", "u.UnitCode",
                                           "i.UnitsId = u.UnitId AND i.ItemId = " + std::to_string(itemId)));
    });
    return code;
}

} // namespace goodsreq
