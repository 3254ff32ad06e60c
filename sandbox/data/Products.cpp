#include "sandbox/data/Products.h"

#include <stdexcept>
#include <string_view>

namespace sandbox {

namespace {

using enum Unit;

constexpr ProductLine kBakery[] = {
    {"White|Wholemeal|Seeded|Sourdough|Rye|Oat", "Loaf", "400 g|600 g|800 g", piece, 110},
    {"White|Wholemeal|Brioche|Seeded|Potato", "Burger Buns", "4 pack|6 pack|12 pack", packet, 120},
    {"Plain|Garlic|Onion|Tomato|Olive", "Flatbread", "2 pack|4 pack|8 pack", packet, 130},
    {"Butter|Almond|Chocolate|Cheese|Apricot", "Croissants", "2 pack|4 pack|8 pack", packet, 145},
    {"Plain|Fruit|Cheese|Cherry|Wholemeal", "Scones", "2 pack|4 pack|6 pack", packet, 125},
    {"Blueberry|Lemon|Chocolate|Banana|Carrot", "Muffins", "2 pack|4 pack|6 pack", packet, 150},
    {"Lemon|Ginger|Fruit|Carrot|Coffee|Madeira", "Cake", "small|medium|large", piece, 240},
    {"Jam|Custard|Apple|Sugared|Iced", "Doughnuts", "2 pack|5 pack|10 pack", packet, 95},
    {"Plain|Poppy Seed|Sesame|Cinnamon|Onion", "Bagels", "2 pack|5 pack|10 pack", packet, 115},
    {"Apple|Cherry|Pecan|Apricot|Rhubarb", "Tart", "single|4 pack|family size", piece, 135},
    {"Plain|Wholemeal|Seeded|Spinach|Chilli", "Wraps", "6 pack|8 pack|12 pack", packet, 125},
};

constexpr ProductLine kDairy[] = {
    {"Whole|Semi-skimmed|Skimmed|Lactose Free|Goat", "Milk", "500 ml|1 l|2 l", litre, 75},
    {"Natural|Strawberry|Raspberry|Vanilla|Peach|Honey", "Yoghurt", "125 g|450 g|1 kg", piece, 60},
    {"Salted|Unsalted|Spreadable|Garlic|Whey", "Butter", "200 g|250 g|500 g", piece, 190},
    {"Mild|Medium|Mature|Extra Mature|Smoked", "Cheddar", "200 g|350 g|700 g", piece, 240},
    {"Single|Double|Whipping|Soured|Clotted", "Cream", "150 ml|300 ml|600 ml", piece, 95},
    {"Free Range|Barn|Organic|Large|Mixed Size", "Eggs", "6 pack|10 pack|15 pack", packet, 165},
    {"Soft|Chive|Garlic|Light|Pepper", "Cream Cheese", "100 g|180 g|340 g", piece, 130},
    {"Plain|Sunflower|Olive|Light|Dairy Free", "Spread", "250 g|500 g|1 kg", piece, 140},
    {"Oat|Soya|Almond|Coconut|Rice", "Drink", "330 ml|1 l|1.5 l", litre, 110},
    {"Vanilla|Chocolate|Strawberry|Toffee|Banana", "Milkshake", "250 ml|500 ml|1 l", piece, 90},
    {"Brie|Blue|Goat|Red Leicester|Edam", "Cheese Slices", "120 g|200 g|400 g", packet, 175},
};

constexpr ProductLine kProduce[] = {
    {"Red|Green|Cooking|Russet|Crisp|Sweet", "Apples", "loose|6 pack|1 kg bag", kilogram, 55},
    {"White|Baking|Baby|Red|Washed", "Potatoes", "loose|1 kg bag|2.5 kg bag", kilogram, 70},
    {"Cherry|Vine|Plum|Beef|Mixed", "Tomatoes", "loose|250 g|500 g", kilogram, 80},
    {"Red|White|Brown|Spring|Pickling", "Onions", "loose|500 g|1 kg bag", kilogram, 45},
    {"Green|Red|Yellow|Mixed|Long", "Peppers", "single|3 pack|6 pack", piece, 65},
    {"Iceberg|Little Gem|Cos|Round|Red Leaf", "Lettuce", "single|2 pack|3 pack", piece, 70},
    {"White|Red|Green|Savoy|Pointed", "Cabbage", "half|single|large", piece, 60},
    {"Green|Red|Black|Mixed|Seedless", "Grapes", "loose|400 g|1 kg", kilogram, 150},
    {"Closed Cup|Chestnut|Flat|Button|Oyster", "Mushrooms", "loose|250 g|400 g", kilogram, 95},
    {"Young|Bunched|Baby|Diced|Organic", "Carrots", "loose|500 g|1 kg bag", kilogram, 50},
    {"Large|Ripe|Small|Organic|Green", "Bananas", "loose|5 pack|8 pack", kilogram, 60},
};

constexpr ProductLine kGrocery[] = {
    {"Baked|Kidney|Butter|Cannellini|Black|Haricot", "Beans", "200 g tin|400 g tin|800 g tin", piece, 55},
    {"Tomato|Chicken|Mushroom|Vegetable|Lentil", "Soup", "200 g|400 g|600 g", piece, 80},
    {"Spaghetti|Penne|Fusilli|Shells|Linguine", "Pasta", "500 g|1 kg|3 kg", packet, 90},
    {"Long Grain|Basmati|Brown|Risotto|Pudding", "Rice", "500 g|1 kg|5 kg", packet, 120},
    {"Plain|Self-raising|Strong White|Wholemeal|Rye", "Flour", "500 g|1.5 kg|3 kg", packet, 85},
    {"Granulated|Caster|Brown|Icing|Demerara", "Sugar", "500 g|1 kg|2 kg", packet, 90},
    {"Tuna in|Salmon in|Sardines in|Mackerel in|Pilchards in", "Brine", "80 g|145 g|200 g", piece, 105},
    {"Chopped|Plum|Cherry|Sun-dried|Puree of", "Tomatoes in Tin", "200 g|400 g|800 g", piece, 50},
    {"Strawberry|Raspberry|Apricot|Blackcurrant|Plum", "Jam", "220 g|340 g|454 g", piece, 130},
    {"Sunflower|Olive|Rapeseed|Vegetable|Corn", "Oil", "500 ml|1 l|3 l", litre, 210},
    {"Corn|Wheat|Bran|Rice|Oat", "Flakes", "375 g|500 g|750 g", packet, 160},
};

constexpr ProductLine kDrinks[] = {
    {"Still|Sparkling|Lemon|Lime|Peach|Berry", "Water", "500 ml|1 l|2 l", litre, 45},
    {"Orange|Apple|Pineapple|Tomato|Cranberry", "Juice", "200 ml|1 l|1.75 l", litre, 85},
    {"Orange|Blackcurrant|Lemon|Summer Fruit|Apple", "Squash", "500 ml|1 l|1.5 l", litre, 110},
    {"Cola|Lemonade|Ginger Beer|Tonic|Cream Soda", "Bottle", "330 ml|500 ml|2 l", litre, 70},
    {"Breakfast|Earl Grey|Green|Peppermint|Camomile", "Tea Bags", "40 pack|80 pack|160 pack", packet, 125},
    {"Instant|Ground|Decaffeinated|Espresso|Filter", "Coffee", "100 g|200 g|500 g", packet, 290},
    {"Hot|White|Dark|Orange|Mint", "Drinking Chocolate", "200 g|300 g|500 g", packet, 195},
    {"Cola|Lemonade|Orangeade|Limeade|Ginger Ale", "Cans", "single|6 pack|12 pack", piece, 60},
    {"Elderflower|Ginger|Rhubarb|Raspberry|Rose", "Cordial", "250 ml|500 ml|750 ml", piece, 220},
    {"Strawberry|Mango|Green|Berry|Peach", "Smoothie", "250 ml|750 ml|1 l", piece, 140},
    {"Malted|Barley|Oat|Chicory|Rose Hip", "Drink Powder", "200 g|400 g|800 g", packet, 180},
};

constexpr ProductLine kConfectionery[] = {
    {"Milk|Dark|White|Nut|Orange|Mint", "Chocolate Bar", "45 g|100 g|200 g", piece, 70},
    {"Digestive|Ginger|Shortbread|Oat|Rich Tea", "Biscuits", "150 g|300 g|500 g", packet, 85},
    {"Fruit|Mint|Toffee|Aniseed|Pear", "Drops", "100 g|180 g|400 g", packet, 90},
    {"Salted|Cheese and Onion|Vinegar|Paprika|Plain", "Crisps", "25 g|150 g|6 pack", packet, 65},
    {"Salted|Roasted|Mixed|Honey|Chilli", "Peanuts", "50 g|200 g|400 g", packet, 75},
    {"Wine|Cola|Sour|Fruit|Jelly", "Gums", "75 g|150 g|300 g", packet, 80},
    {"Cream|Nut|Salted|Treacle|Vanilla", "Toffees", "100 g|200 g|400 g", packet, 105},
    {"Sweet|Salted|Toffee|Butter|Cheese", "Popcorn", "30 g|90 g|150 g", packet, 85},
    {"Almond|Coffee|Fruit|Hazelnut|Orange", "Chocolates Box", "125 g|250 g|400 g", piece, 320},
    {"Strawberry|Lemon|Cola|Apple|Blackcurrant", "Lollipops", "single|10 pack|50 pack", piece, 20},
    {"Oat|Nut|Date|Seed|Berry", "Snack Bar", "single|3 pack|5 pack", piece, 80},
};

constexpr ProductLine kCleaning[] = {
    {"Lemon|Pine|Lavender|Ocean|Unscented|Orange", "Floor Cleaner", "500 ml|1 l|5 l", piece, 140},
    {"Lemon|Original|Apple|Sensitive|Lime", "Washing-up Liquid", "450 ml|900 ml|5 l", piece, 95},
    {"Colour|White|Sensitive|Wool|Sport", "Laundry Liquid", "750 ml|1.5 l|5 l", piece, 360},
    {"Thick|Thin|Pine|Citrus|Foaming", "Bleach", "500 ml|750 ml|5 l", piece, 80},
    {"Kitchen|Bathroom|Glass|Oven|Limescale", "Spray", "500 ml|750 ml|1 l", piece, 150},
    {"Green|Blue|Heavy Duty|Non-scratch|Copper", "Scourers", "2 pack|5 pack|10 pack", packet, 75},
    {"Pedal Bin|Swing Bin|Black|Garden|Compost", "Refuse Sacks", "20 pack|50 pack|100 pack", packet, 130},
    {"Cotton|Micro Fibre|Dish|Floor|Window", "Cloths", "2 pack|5 pack|10 pack", packet, 110},
    {"Small|Medium|Large|Extra Large|Long", "Rubber Gloves", "pair|3 pairs|6 pairs", packet, 95},
    {"White|Quilted|Printed|Strong|Recycled", "Kitchen Roll", "single|2 pack|4 pack", piece, 90},
    {"Soft|Stiff|Angled|Long|Dustpan", "Brush", "small|medium|large", piece, 180},
};

constexpr ProductLine kToiletries[] = {
    {"Lavender|Lemon|Oatmeal|Rose|Tea Tree|Unscented", "Soap", "single|3 pack|6 pack", piece, 60},
    {"Dry Hair|Fine Hair|Daily|Anti-dandruff|Baby", "Shampoo", "250 ml|400 ml|1 l", piece, 160},
    {"Dry Hair|Fine Hair|Daily|Repair|Moisture", "Conditioner", "250 ml|400 ml|1 l", piece, 170},
    {"Mint|Whitening|Sensitive|Herbal|Children", "Toothpaste", "50 ml|75 ml|125 ml", piece, 110},
    {"Soft|Medium|Firm|Children|Travel", "Toothbrush", "single|2 pack|4 pack", piece, 120},
    {"Rose|Citrus|Sport|Almond|Sea", "Shower Gel", "100 ml|250 ml|500 ml", piece, 95},
    {"Hand|Face|Foot|Body|Baby", "Cream Tube", "50 ml|100 ml|250 ml", piece, 190},
    {"White|Quilted|Recycled|Luxury|Aloe", "Toilet Roll", "4 pack|9 pack|16 pack", packet, 185},
    {"Pocket|Balsam|Large|Extra Soft|Cube", "Tissues", "single|3 pack|8 pack", packet, 65},
    {"Round|Square|Oval|Double|Organic", "Cotton Pads", "50 pack|80 pack|120 pack", packet, 90},
    {"Fresh|Sport|Sensitive|Musk|Powder", "Deodorant", "50 ml|150 ml|250 ml", piece, 150},
};

constexpr ProductLine kStationery[] = {
    {"Black|Blue|Red|Green|Purple|Assorted", "Ball Pens", "single|5 pack|20 pack", piece, 45},
    {"HB|2B|Coloured|Carpenter|Short", "Pencils", "single|6 pack|12 pack", piece, 35},
    {"Ruled|Plain|Squared|Dotted|Margin", "Notebook", "A6|A5|A4", piece, 120},
    {"White|Manila|Padded|Window|Airmail", "Envelopes", "10 pack|25 pack|100 pack", packet, 110},
    {"Lever Arch|Ring|Box|Suspension|Pocket", "File", "A5|A4|foolscap", piece, 165},
    {"Clear|Brown|Masking|Double-sided|Printed", "Tape", "10 m|33 m|66 m", piece, 85},
    {"White|Cream|Yellow|Blue|Pink", "Card", "10 sheets|50 sheets|250 sheets", packet, 130},
    {"Small|Large|Coloured|Plain|Owl", "Paper Clips", "50 pack|100 pack|500 pack", packet, 55},
    {"Yellow|Neon|Pastel|Lined|Recycled", "Sticky Notes", "100 sheets|400 sheets|1200 sheets", packet, 95},
    {"Black|Blue|Red|Green|Mixed", "Markers", "single|4 pack|10 pack", piece, 90},
    {"Birthday|Thank You|Get Well|New Home|Blank", "Cards", "single|5 pack|10 pack", piece, 175},
};

constexpr ProductLine kHardware[] = {
    {"Wood|Drywall|Machine|Self-tapping|Brass|Coach", "Screws", "20 pack|100 pack|500 pack", packet, 150},
    {"Round|Oval|Clout|Panel|Masonry", "Nails", "50 g|250 g|1 kg", packet, 120},
    {"Claw|Ball|Club|Pin|Rubber", "Hammer", "8 oz|16 oz|24 oz", piece, 650},
    {"Flat|Cross|Square|Stubby|Insulated", "Screwdriver", "75 mm|100 mm|150 mm", piece, 280},
    {"Warm|Cool|Daylight|Candle|Reflector", "Lamp", "5 W|9 W|14 W", piece, 240},
    {"Black|White|Brown|Green|Clear", "Cable Ties", "20 pack|100 pack|500 pack", packet, 110},
    {"Polypropylene|Sisal|Nylon|Cotton|Jute", "Rope", "4 mm|8 mm|12 mm", metre, 40},
    {"Two Core|Three Core|Flat|Bell|Speaker", "Cable", "0.5 mm|1 mm|1.5 mm", metre, 60},
    {"White|Magnolia|Grey|Blue|Cream", "Emulsion", "250 ml|1 l|5 l", piece, 395},
    {"Fine|Medium|Coarse|Wet and Dry|Assorted", "Abrasive Paper", "single|5 sheets|25 sheets", packet, 70},
    {"Brass|Chrome|Black|Bronze|Steel", "Cabinet Hinge", "40 mm|50 mm|75 mm", piece, 190},
};

constexpr ProductLine kTrade[] = {
    {"Catering|Jumbo|Blue|White|Absorbent|Lint Free", "Wiper Roll", "150 m|300 m|400 m", piece, 1150},
    {"Neutral|Alkaline|Acidic|Sanitising|Degreasing", "Cleaning Concentrate", "5 l|10 l|20 l", litre, 980},
    {"Black|Clear|Blue|Red|Yellow", "Compactor Sacks", "50 pack|100 pack|200 pack", packet, 1290},
    {"Nitrile|Vinyl|Latex|Polythene|Chilled Store", "Disposable Gloves", "100 pack|200 pack|1000 pack", packet, 640},
    {"White|Printed|Brown|Greaseproof|Foil Lined", "Carrier Bags", "100 pack|500 pack|1000 pack", packet, 890},
    {"Single Ply|Two Ply|Carbonless|Coloured|Long Life", "Till Rolls", "5 pack|20 pack|60 pack", packet, 720},
    {"Price|Shelf Edge|Reduced|Barcode|Allergen", "Labels", "500 roll|1000 roll|5000 roll", piece, 560},
    {"Paper|Double Wall|Ripple|Clear|Compostable", "Cups", "50 pack|500 pack|1000 pack", packet, 830},
    {"Small|Medium|Large|Hinged|Divided", "Food Boxes", "50 pack|250 pack|500 pack", packet, 760},
    {"Stretch|Bubble|Cling|Pallet|Machine", "Film", "100 m|300 m|500 m", metre, 690},
    {"Wire|Folding|Stacking|Lidded|Insulated", "Crate", "20 l|40 l|60 l", piece, 1450},
};

constexpr ProductLine kGarden[] = {
    {"Multi-purpose|Potting|Seed|Ericaceous|Peat Free|Rose", "Compost", "10 l|25 l|50 l", piece, 420},
    {"Tomato|Rose|Lawn|Orchid|General", "Plant Food", "500 ml|1 l|2.5 l", litre, 380},
    {"Carrot|Lettuce|Tomato|Sunflower|Sweet Pea", "Seeds", "packet|3 pack|tape 5 m", packet, 155},
    {"Terracotta|Glazed|Plastic|Fibre|Slate Grey", "Plant Pot", "12 cm|20 cm|35 cm", piece, 210},
    {"Hand|Border|Digging|Weeding|Long Handled", "Fork", "small|medium|large", piece, 890},
    {"Digging|Border|Trenching|Folding|Edging", "Spade", "small|medium|large", piece, 940},
    {"Bypass|Anvil|Long Handled|Hedge|Grass", "Shears", "15 cm|20 cm|25 cm", piece, 1190},
    {"Reinforced|Flat|Soaker|Coiled|Starter", "Hose", "12 mm|15 mm|19 mm", metre, 150},
    {"Lavender|Geranium|Fuchsia|Petunia|Begonia", "Plants", "single|6 pack|tray", piece, 320},
    {"Peanut|Sunflower|Mixed|Suet|Niger", "Bird Food", "500 g|2 kg|12.5 kg", packet, 290},
    {"Bamboo|Steel|Wooden|Spiral|Plastic Coated", "Plant Supports", "60 cm|90 cm|150 cm", piece, 130},
};

constexpr Category kCategories[] = {
    {"Bakery", "BK", kBakery},
    {"Dairy and Eggs", "DY", kDairy},
    {"Fruit and Vegetables", "FV", kProduce},
    {"Tins and Packets", "GR", kGrocery},
    {"Hot and Cold Drinks", "DR", kDrinks},
    {"Sweets and Snacks", "SW", kConfectionery},
    {"Household Cleaning", "HC", kCleaning},
    {"Toiletries", "TO", kToiletries},
    {"Stationery", "ST", kStationery},
    {"Hardware", "HW", kHardware},
    {"Trade Supplies", "TR", kTrade},
    {"Garden", "GD", kGarden},
};

std::vector<std::string> parts(std::string_view text) {
    std::vector<std::string> result;
    for (std::size_t end = text.find('|'); end != std::string_view::npos; end = text.find('|')) {
        result.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    result.emplace_back(text);
    return result;
}

/// A larger size sells for less by the unit, and all prices end in 5 or 9.
int priceOfSize(int pence, std::size_t size, std::size_t kind) {
    const int whole = pence * (10 + 8 * static_cast<int>(size) + static_cast<int>(kind)) / 10;
    return whole / 10 * 10 + (whole % 10 < 5 ? 5 : 9);
}

} // namespace

std::span<const Category> categories() { return kCategories; }

std::vector<Product> productsOf(const Category& category, std::size_t count) {
    std::vector<Product> products;
    for (const ProductLine& line : category.lines) {
        const std::vector<std::string> kinds = parts(line.kinds);
        const std::vector<std::string> sizes = parts(line.sizes);
        for (std::size_t kind = 0; kind < kinds.size(); ++kind)
            for (std::size_t size = 0; size < sizes.size(); ++size)
                products.push_back({kinds[kind] + " " + line.name + " " + sizes[size], line.unit,
                                    priceOfSize(line.pence, size, kind)});
    }
    if (products.size() < count) throw std::logic_error(std::string("too few products in ") + category.name);
    products.resize(count);
    return products;
}

} // namespace sandbox
