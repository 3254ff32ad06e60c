// Statements with pieces missing, doubled and exchanged: refused or answered, never anything worse.
#include "sandbox/database/Tokenizer.h"
#include "tests/database/Company.h"

#include <random>

namespace {

using namespace database_test;

const char* const kSeeds[] = {
    "select distinct(a.itemid) itemid, isnull(a.part_code,' ')part_code from aitem a inner join vwItemDescription v on "
    "a.ItemId=v.ItemId Where a.active = 1 and a.itemcategoryid in (select ItemCategoryId from aShopItemCategory where "
    "ShopId=1 intersect select ItemCategoryId from aShopItemCategory where ShopId=2) order by itemid desc",
    "Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-3))),0) from mesRequesttoShopHeader where "
    "len(SRHrequestNo)>len('GR/') and isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-3),0)) =1",
    "select case sRHcancelled when 1 then 'Yes' else convert(varchar(9), srhrequestdate, 103) + 'x' end Cancelled, "
    "srdgoodqty + 2.5 - srdbadQty n from mesRequesttoShopHeader inner join mesRequesttoShopDetail on srdrequestid = "
    "srhrequestid where srhrequestdate >= '20240101' or SRHremarks not like '%[a-e]_%'",
    "insert into acity (cityid, CityName, countryid) values (5, 'x', 1), (6, N'y' + 'z', 1.5e0)",
    "update aitem set itemrate = itemrate + 2, part_code = substring(itemcode, 2, 3) where "
    "itemid not in (1, '2', 3.0)",
    "spSellingPriceFetch 1,2,0,3,-4,(select top 1 itemid from aitem),NULL",
};

TEST(Garbage, EndsInAnErrorOfItsOwnOrInRows) {
    auto connection = smallCompany();
    std::mt19937 random(20240331);
    std::vector<std::string> words;
    for (const char* seed : kSeeds)
        for (const auto& token : sandbox::tokenize(seed))
            words.push_back(std::string(seed).substr(token.begin, token.end - token.begin));
    auto pick = [&](std::size_t count) { return random() % count; };
    int answered = 0;
    constexpr int kRounds = 3000;
    for (int round = 0; round < kRounds; ++round) {
        const std::string seed = kSeeds[pick(std::size(kSeeds))];
        std::vector<std::string> pieces;
        for (const auto& token : sandbox::tokenize(seed))
            pieces.push_back(seed.substr(token.begin, token.end - token.begin));
        for (std::size_t changes = pick(3); changes > 0; --changes) {
            const std::size_t at = pick(pieces.size());
            switch (pick(3)) {
            case 0: pieces[at].clear(); break;
            case 1: pieces[at] = words[pick(words.size())]; break;
            default: pieces[at] += " " + words[pick(words.size())]; break;
            }
        }
        std::string statement;
        for (const std::string& piece : pieces) statement += piece + " ";
        SCOPED_TRACE(statement);
        connection->call("BeginTrans");
        try {
            connection->database().execute(statement);
            ++answered;
        } catch (const automation::RunTimeError& error) {
            EXPECT_EQ(error.source(), "Sandbox database");
            // Words of the database below must not come through: what is wrong is found before it gets there.
            for (const char* foreign :
                 {"no such", "near \"", "misuse", "syntax error", "wrong number", "ambiguous column"})
                EXPECT_EQ(error.description().find(foreign), std::string::npos) << error.description();
        }
        connection->call("RollbackTrans");
    }
    EXPECT_GT(answered, kRounds / 4) << "the changes leave hardly a statement whole";
}

TEST(Garbage, DeepNestingIsRefused) {
    auto connection = smallCompany();
    const std::string open(5000, '('), close(5000, ')');
    std::string sum = "select 1";
    for (int i = 0; i < 5000; ++i) sum += "+1";
    std::string negations = "select ";
    for (int i = 0; i < 5000; ++i) negations += "- ";
    for (const std::string& statement :
         {"select " + open + "1" + close, sum, negations + "1", std::string("select ") + "(select " + open})
        EXPECT_EQ(failureOf([&] { connection->call("Execute", statement); }).number, sandbox::kSyntaxError);
}

} // namespace
