// Where the register meets what it cannot help: wrong keys, missing rows, a connection that dies.
#include "tests/register/RegisterTest.h"

#include "tests/basic/ExpectError.h"

namespace {

using namespace goodsreq;
using automation::RunTimeError;
using support::RegisterTest;
using support::Texts;

using RegisterFaults = RegisterTest;
using Starting = RegisterTest;
using EditedRow = RegisterTest;

TEST_F(Starting, AWrongKeyShowsNothing) {
    for (const char* key : {"", "kova/xb/tram/842", "KOVA/XB/TRAM/842 ", "KOVA/XB/TRAM/84"}) {
        till.emplace(company);
        till->component.strProjectKey = key;
        till->opens();
        EXPECT_TRUE(user().ended()) << key;
        EXPECT_EQ(till->desktop.messages.size() + till->statements().size(), 0u);
    }
    // The host's fields become the session all the same.
    till->component.interfaceid = 70000;
    till->opens();
    EXPECT_EQ(session().screenId, 70000);
    EXPECT_EQ(session().connection, till->component.adocon);
}

TEST_F(Starting, IsRefusedWhileTheRegisterLoadsOrIsOpen) {
    till.emplace(company);
    const std::string key = till->component.strProjectKey;
    const auto showsAnother = [&] {
        goodsreq::Component another(till->module);
        another.intShopid = 5;
        for (const auto& [given, wanted] :
             std::initializer_list<std::pair<std::string, long>>{{"a wrong key", 0}, {key, 400}}) {
            another.strProjectKey = given;
            EXPECT_EQ(errorOf([&] { another.show(); }), wanted) << given;
            EXPECT_EQ(session().shopId, 1);
        }
    };
    int loading = 0;
    till->connection->failOn([&](std::string_view s) {
        if (s.find("louserrights") != s.npos && ++loading == 1) showsAnother();
        return false;
    });
    till->opens();
    EXPECT_EQ(loading, 1);
    user().happens(showsAnother);
    till->component.intShopid = 5;
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_TRUE(user().clicks("CmdClose").ended());
    till->opens();
    EXPECT_EQ(session().shopId, 5);
    EXPECT_EQ(user().form(), "frmMaster");
}

// A host may show the module again when it loses its former connection.
TEST_F(Starting, AHostThatIsCalledMeanwhileHasASessionOfItsOwn) {
    till.emplace(company);
    Component other(till->module);
    other.adocon = sandbox::openConnection(company.path());
    other.strProjectKey = till->component.strProjectKey;
    other.intShopid = 4;
    other.interfaceid = 1611;
    session().connection = {other.adocon.get(), [&](auto*) { other.show(); }};
    till->opens();
    for (const Component* host : {&other, &till->component}) {
        EXPECT_EQ(session().shopId, host->intShopid);
        EXPECT_EQ(session().screenId, host->interfaceid);
        EXPECT_EQ(session().connection, host->adocon);
        EXPECT_EQ(user().form(), "frmMaster");
        user().clicks("CmdClose");
    }
    EXPECT_TRUE(user().ended());
}

TEST_F(Starting, WithoutAConnectionTheRegisterReportsAndCanBeClosed) {
    till.emplace(company);
    till->component.adocon = nullptr;
    till->component.interfaceid = 1611;
    till->opens();
    EXPECT_EQ(reports(), (Texts{"frmMaster, Form_Load", "frmMaster, Form_Activate"}));
    EXPECT_EQ(user().caption(), "Inter Division Sales Request");
    ASSERT_TRUE(till->component.adocon);
    EXPECT_EQ(till->component.adocon, session().connection);
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_TRUE(user().clicks("CmdClose").ended());
}

TEST_F(RegisterFaults, AreReportedOnceByTheHandlerThatMeetsThem) {
    const std::string load = "frmMaster, Form_Load", activate = "frmMaster, Form_Activate";
    const std::string populate = "frmMaster, GridPopulate", rights = "frmMaster, USerRights";
    const struct {
        const char* change;  ///< of the company, or
        const char* failing; ///< what no statement may contain
        Texts reports;
        std::size_t rows;  ///< shown all the same; an empty grid keeps one
        bool dies = false; ///< the connection dies of it
    } cases[] = {
        // clang-format off
        {"", "", {}, 2}, {"delete LOsSettings where ShopID = 1", "", {load}, 1},
        {"update LOsSettings set sNoofBackDays = null where ShopID = 1", "", {load}, 1},
        {"update LOsSettings set sNoofBackDays = 32768 where ShopID = 1", "", {load}, 1}, // past 16 bits
        {"", "vwshopCloseDate", {load}, 1}, {"delete aPAckageSettings", "", {}, 2},
        {"", "select alias", {load, activate}, 1}, {"update aPAckageSettings set alias = 1; delete aalias", "", {}, 2},
        {"delete atablecolumns", "", {}, 2}, {"delete atablecolumns where columnno > 4", "", {}, 2},
        {"insert into atablecolumns (tableid,columnno,columnname,ColumnHeader) values (1,10,'more','More')", "",
         {populate}, 2},
        {"delete loUsers", "", {}, 2}, {"", "louserrights", {rights}, 2}, {"", " select sRHrequestID", {populate}, 1},
        {"", " select sRHrequestID", {populate, rights, activate}, 1, true},
        {"", "atablecolumns", {populate, populate, rights, activate}, 2, true},
        {"", "aMasterGridSettings", {populate}, 2},
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.change) + c.failing);
        const support::CompanyFile broken;
        broken.change("delete mesRequesttoShopHeader where srhshopid <> 1 or srhtype <> 'r'");
        broken.change("delete mesRequesttoShopHeader where srhrequestid not in (select top 2 srhrequestid from"
                      " mesRequesttoShopHeader where srhrequestdate > '20260301' order by srhrequestid)");
        broken.change(c.change);
        till.emplace(broken);
        till->connection->failOn([&c, dead = false](std::string_view s) mutable {
            const bool met = *c.failing && s.find(c.failing) != s.npos;
            dead = dead || (c.dies && met);
            return met || dead;
        });
        till->opens();
        EXPECT_EQ(reports(), c.reports);
        EXPECT_EQ(user().rows("flexMaster").size(), c.rows);
        if (c.rows == 1 && c.reports[0] == populate) {
            EXPECT_EQ(grid().cols(), 1);
            EXPECT_EQ(grid().fixedCols(), 0);
        }
        EXPECT_FALSE(!c.reports.empty() && c.reports.front() == load && user().enabled("cmdnew"));
        EXPECT_EQ(till->desktop.pointer, forms::Pointer::normal);
        EXPECT_TRUE(user().clicks("CmdClose").ended());
        till.reset();
    }
}

TEST_F(RegisterFaults, AreShownAlsoWithoutTheErrorComponent) {
    opensWith({});
    till->breaks("ErrorHandler.ErrorDetails");
    user().happens(
        [this] { trap(till->module, "basGRtoShop ", "Routine", [] { throw RunTimeError(6, "Overflow"); }); });
    ASSERT_TRUE(user().message());
    EXPECT_EQ(user().message()->icon, forms::MessageIcon::critical);
    EXPECT_EQ(user().message()->title, "Retail Back Office");
    user().answers("This could not be done. Try it again; if it fails again, tell support what stands here:\r\n"
                   "Error 6 in goodsreq\r\nOverflow",
                   forms::Answer::ok);
}

// What a provider says of an error, by its own number and the server's.
TEST(Collisions, AreKnownByTheServersNumbersWhateverTheProvidersIs) {
    struct Errors : automation::Object { // the connection, its list and the one error in it
        std::int32_t number, native;
        Errors(std::int32_t n, std::int32_t s) : number(n), native(s) {}
        automation::Value invoke(automation::Access, std::string_view member, automation::Arguments) override {
            if (member == "Count") return std::int32_t{native != 0};
            if (member == "Number") return number;
            if (member == "NativeError") return native;
            return automation::ObjectPtr(automation::ObjectPtr(), this);
        }
        bool has(std::string_view) const override { return true; }
        std::string className() const override { return "Errors"; }
    };
    constexpr std::int32_t kFailure = -2147467259, kViolation = -2147217873, kErrors = -2147217887;
    const std::tuple<std::int32_t, std::int32_t, Collision> cases[] = {
        {kFailure, 1205, Collision::lock},  {kErrors, 1222, Collision::lock}, {kViolation, 2627, Collision::key},
        {kFailure, 2627, Collision::key},   {kErrors, 2601, Collision::key},  {kViolation, 0, Collision::key},
        {kViolation, 515, Collision::none}, // no value where there must be one
        {kViolation, 547, Collision::none}, // no row that it goes with
        {kFailure, 0, Collision::none}};
    for (const auto& [number, native, collision] : cases) {
        const auto errors = std::make_shared<Errors>(number, native);
        EXPECT_EQ(Connection(errors).collision(RunTimeError(number, "")), collision) << number << " " << native;
        EXPECT_EQ(Connection(errors).collision(RunTimeError(5, "")), Collision::none) << "another's error";
    }
}

TEST(RecordsetFaults, AResultThatIsNothingIsAnErrorAndOneLeftOpenIsClosed) {
    Recordset nothing(nullptr);
    for (const auto& act : std::initializer_list<std::function<void()>>{
             [&] { nothing.eof(); }, [&] { nothing.moveNext(); }, [&] { nothing.value(0); },
             [&] { nothing.value("a"); }, [&] { nothing.fields(); }, [&] { nothing.update(); },
             [&] { nothing.close(); }})
        EXPECT_EQ(errorOf(act), automation::kObjectNotSet);
    EXPECT_FALSE(nothing.isOpen());
    // One that nobody closed is closed at its end.
    const support::CompanyFile company;
    const auto connection = sandbox::openConnection(company.path());
    const automation::ObjectPtr rows = connection->call("Execute", "select shopid from aShops").objectPtr();
    EXPECT_TRUE(Recordset(rows).isOpen());
    EXPECT_FALSE(Recordset(rows).isOpen());
}

TEST_F(EditedRow, BringsOneRowOfTheGridUpToDate) {
    const support::Request one{1, ""}, two{2, ""};
    const struct {
        const char* mode;
        std::vector<support::Request> before;
        int row, sought;
        Texts numbers; ///< of the grid afterwards
        int current;
    } cases[] = {{"E", {one, two}, 2, 7, {"GR/1", "GR/7"}, 2},
                 {"N", {one, two}, 1, 7, {"GR/1", "GR/2", "GR/7"}, 3},
                 {"N", {}, 1, 7, {"GR/7"}, 1},
                 {"E", {one, two}, 1, 99, {"GR/1", "GR/2"}, 1}, // not found
                 {"N", {one}, 1, 9, {"GR/1"}, 1}};              // before the period
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(&c - cases) + c.mode);
        opensWith(c.before);
        std::vector<support::Request> after = c.before;
        after.insert(after.end(), {{7, "new", "20260331"}, {9, "old", "20240101"}});
        has(after);
        company.change("update mesRequesttoShopHeader set SRHremarks = null where srhrequestid = 7");
        user().selectsRow("flexMaster", c.row);
        user().happens([&] {
            session().editMode = c.mode;
            till->desktop.userLocale = {basic::DateOrder::monthDayYear, '/', "M/d/yyyy"};
            UpdateEditedRow(till->module, grid(), till->module.master().listQuery,
                            " srhrequestid =" + std::to_string(c.sought));
        });
        EXPECT_EQ(column(kColNumber), c.numbers);
        expectSelected(c.current);
        if (c.sought != 7) continue;
        EXPECT_EQ(current(kColId) + current(kColRemarks) + current(kColDate), "73/31/2026");
    }
    // A list that could not be filled has one column.
    till.emplace(company);
    till->breaks(" select sRHrequestID");
    till->opens();
    EXPECT_EQ(reports(), Texts{"frmMaster, GridPopulate"});
    till->breaks("");
    session().editMode = "N";
    user().happens([&] { UpdateEditedRow(till->module, grid(), till->module.master().listQuery, " srhrequestid =7"); });
    EXPECT_EQ(column(kColNumber), Texts{"GR/7"});
}

} // namespace
