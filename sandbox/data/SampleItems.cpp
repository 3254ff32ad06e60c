#include "sandbox/data/SampleItems.h"

#include "sandbox/data/SampleCompany.h"

#include <array>

namespace sandbox {

namespace {

constexpr int kTradeCategory = 11;
constexpr int kGardenCategory = 12;

struct Packing {
    int id;
    const char* name;
    /// How many base units one holds; 0 where it is not made for the unit. By Unit, from 1.
    std::array<int, 6> capacities;
};

constexpr Packing kPackings[] = {
    {1, "Single", {0, 1, 1, 1, 1, 1}},       {2, "Pack of 6", {0, 6, 0, 6, 0, 6}},
    {3, "Box of 12", {0, 12, 0, 12, 0, 12}}, {4, "Carton of 24", {0, 24, 0, 0, 0, 24}},
    {5, "Sack 25 kg", {0, 0, 25, 0, 0, 0}},  {6, "Tray of 30", {0, 30, 0, 0, 0, 0}},
    {7, "Bag 5 kg", {0, 0, 5, 0, 0, 0}},     {8, "Roll 50 m", {0, 0, 0, 0, 50, 0}},
    {9, "Drum 20 l", {0, 0, 0, 20, 0, 0}},   {10, "Display Stand", {0, 0, 0, 0, 0, 0}},
};
constexpr int kSingle = 1;
constexpr int kDisplayStand = 10;

constexpr const char* kBrands[] = {"Brackenway", "Wrenfold", "Ambersley", "Quillmere", "Pondsworth", "Harrowdene"};

int capacityOf(const Packing& packing, Unit unit) { return packing.capacities[static_cast<std::size_t>(unit)]; }

std::set<int> shopsOf(const SampleItem& item, Random& random) {
    // Some items are a speciality of one shop.
    if (item.id % 40 == 7) return {item.category == kGardenCategory ? kGardenShop : kMainShop};
    std::set<int> shops;
    for (int shop = 1; shop <= kSampleShops; ++shop) {
        const int chance = shop == kMainShop ? 96 : 80;
        if (random.percent(chance) && categoriesOfShop(shop).contains(item.category)) shops.insert(shop);
    }
    return shops;
}

/// The n-th shortcut number that a shop gives: one digit first, then two, three and four.
int shortcutNumber(int n) {
    if (n < 9) return n + 1;
    if (n < 60) return n + 2;
    if (n < 160) return n + 141;
    return n + 1000;
}

} // namespace

std::string money(int pence) {
    const std::string cents = std::to_string(pence % 100);
    return std::to_string(pence / 100) + (cents.size() < 2 ? ".0" : ".") + cents;
}

const std::set<int>& categoriesOfShop(int shop) {
    static const std::set<int> kNone;
    static const std::set<int> kByShop[] = {
        {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, // High Street
        {1, 2, 3, 4, 5, 6, 7, 8, 11},        // Station Road
        {1, 2, 3, 4, 5, 6, 9},               // Riverside
        {3, 4, 5, 6, 7, 8, 9, 10, 11},       // Market Square
        {1, 2, 4, 5, 6, 8},                  // Harbour
        {4, 7, 9, 10, kTradeCategory},       // Trade Counter
        {1, 2, 4, 5},                        // Old Mill
        {kGardenCategory},                   // Garden Centre
    };
    return shop >= 1 && shop <= kSampleShops ? kByShop[shop - 1] : kNone;
}

std::vector<SampleItem> makeSampleItems(Random& random) {
    std::vector<SampleItem> items;
    const int count = static_cast<int>(categories().size());
    for (int category = 1; category <= count; ++category) {
        const Category& of = categories()[static_cast<std::size_t>(category - 1)];
        const int share = kSampleItems / count + (category <= kSampleItems % count ? 1 : 0);
        int serial = 1001;
        for (Product& product : productsOf(of, static_cast<std::size_t>(share))) {
            SampleItem item;
            item.id = static_cast<int>(items.size()) + 1;
            item.category = category;
            item.code = of.code + std::to_string(serial++);
            item.product = std::move(product);
            item.typeB = category == kTradeCategory || ((category == 7 || category == 10) && item.id % 10 == 0);
            item.active = item.id % 50 != 33;
            item.shops = shopsOf(item, random);
            items.push_back(std::move(item));
        }
    }
    return items;
}

void writeUnitsAndPackings(const Rows::Execute& execute) {
    Rows units(execute, "aUnit", "UnitId,UnitCode,UnitName");
    units.add({1, "PCS", "Piece"});
    units.add({2, "KG", "Kilogram"});
    units.add({3, "LTR", "Litre"});
    units.add({4, "MTR", "Metre"});
    units.add({5, "PKT", "Packet"});
    units.flush();

    Rows types(execute, "apackingtype", "packingtypeid,PackingTypeName");
    Rows capacities(execute, "apackingtypecapacitydetail", "packingtypeid,unitsid,quantity");
    for (const Packing& packing : kPackings) {
        types.add({packing.id, packing.name});
        for (int unit = 1; unit <= 5; ++unit)
            if (const int capacity = packing.capacities[static_cast<std::size_t>(unit)])
                capacities.add({packing.id, unit, capacity});
    }
    types.flush();
    capacities.flush();
}

void writeItems(const Rows::Execute& execute, const std::vector<SampleItem>& items, Random& random) {
    Rows master(
        execute, "aitem",
        "itemid,itemcode,ItemDescription,printdescription,UnitsId,itemcategoryid,itemtype,brand,modelno,part_code,"
        "itemrate,PriceFixedAtHq,Active");
    Rows packings(execute, "aitempackingdetail", "itemid,packingtypeid,packingbarcode,RetailPacking,Active");
    Rows prices(execute, "losShopItemShipmentDetail", "ItemId,PackingTypeId,ShopId,SellingPrice,WholesalePrice");

    for (const SampleItem& item : items) {
        const std::string number = std::to_string(item.id);
        const int brand = random.below(static_cast<int>(std::size(kBrands)) + 1);
        const bool isFixedAtHeadOffice = random.percent(20);
        master.add({item.id, item.code, item.product.description,
                    item.id % 25 == 4 ? Literal(item.product.description + " *") : Literal(nullptr),
                    static_cast<int>(item.product.unit), item.category, item.typeB ? "B" : "G",
                    brand == 0 ? Literal(nullptr) : Literal(kBrands[brand - 1]),
                    item.category >= 9 ? Literal("M" + number) : Literal(nullptr),
                    item.category == 10 ? Literal("P-" + number) : Literal(nullptr),
                    Literal::plain(money(item.product.pence * 7 / 10)),
                    item.id % 100 == 99 ? Literal(nullptr) : Literal(isFixedAtHeadOffice ? 1 : 0),
                    item.active ? 1 : 0});

        // A few items are not priced yet, and a few are sold only from the carton.
        const bool isPriced = item.id % 400 != 250;
        const bool isRetail = item.id % 333 != 0;
        for (const Packing& packing : kPackings) {
            const int capacity = capacityOf(packing, item.product.unit);
            const bool isStand = packing.id == kDisplayStand && item.id % 60 == 0;
            if (!isStand && (capacity == 0 || (packing.id != kSingle && !random.percent(45)))) continue;
            const bool isActive = packing.id == kSingle || !random.percent(4);
            packings.add({item.id, packing.id, sampleBarcode(item.id, packing.id),
                          packing.id == kSingle && isRetail ? 1 : 0, isActive ? 1 : 0});
            if (!isPriced || capacity == 0) continue;

            const int price = item.product.pence * capacity * (capacity > 1 ? 95 : 100) / 100;
            const std::string thirdDecimal = item.id % 50 == 12 ? "7" : "";
            const auto priced = [&](int pence) { return Literal::plain(money(pence) + thirdDecimal); };
            prices.add({item.id, packing.id, nullptr, priced(price), priced(price * 85 / 100)});
            if (packing.id != kSingle) continue;
            for (const int shop : item.shops) {
                if (!random.percent(25)) continue;
                const int own = price * random.between(95, 108) / 100;
                prices.add({item.id, packing.id, shop, priced(own), priced(own * 85 / 100)});
            }
        }
    }
    master.flush();
    packings.flush();
    prices.flush();
}

void writeShopItems(const Rows::Execute& execute, const std::vector<SampleItem>& items, Random& random) {
    Rows details(execute, "ashopitemdetail", "shopid,itemid,ItemReorderLevel,ReorderQuantity,shortcutno");
    Rows stock(execute, "losShopItemStock", "shopid,itemid,stock");
    for (int shop = 1; shop <= kSampleShops; ++shop) {
        int shortcuts = 0;
        for (const SampleItem& item : items) {
            if (!item.shops.contains(shop)) continue;
            const bool fitsShop = item.typeB == (shop == kTradeShop);
            const bool hasShortcut = item.active && fitsShop && item.shops.size() > 1 && item.id % 6 == 1;
            details.add({shop, item.id, random.between(1, 8) * 3, random.between(1, 12) * 2,
                         hasShortcut ? Literal(shortcutNumber(shortcuts++)) : Literal(nullptr)});
            stock.add({shop, item.id, random.between(0, 60)});
        }
    }
    details.flush();
    stock.flush();
}

} // namespace sandbox
