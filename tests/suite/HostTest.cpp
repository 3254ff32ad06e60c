// The host program's options, its company, and the manifests it makes.
#include "sandbox/data/SampleCompany.h"
#include "sandbox/host/HostSession.h"
#include "sandbox/host/SuiteManifest.h"
#include "tests/basic/ExpectError.h"
#include "tests/support/Till.h"

#include <gtest/gtest.h>

#include <sstream>

using sandbox::HostOptions;

namespace {

using Arguments = std::vector<std::string>;

HostOptions read(const Arguments& arguments) { return std::get<HostOptions>(sandbox::parseHostOptions(arguments)); }

std::string complaint(const Arguments& arguments) {
    const auto parsed = sandbox::parseHostOptions(arguments);
    const std::string* wrong = std::get_if<std::string>(&parsed);
    return wrong ? *wrong : "";
}

TEST(HostProgram, ReadsItsOptions) {
    const HostOptions options = read({"--database", "shop one.db", "--interface", "1611", "--user", "-3", "--shop", "2",
                                      "--date", "2024-02-29", "--key", "", "--trace", "sent.sql", "--log", "w.log"});
    EXPECT_EQ(options.database, "shop one.db");
    EXPECT_EQ(options.interfaceId, 1611);
    EXPECT_EQ(options.user, -3);
    EXPECT_EQ(options.shop, 2);
    EXPECT_EQ(options.date, (sandbox::Day{2024, 2, 29}));
    EXPECT_EQ(options.key, "");
    EXPECT_EQ(options.log, "w.log");
    EXPECT_EQ(sandbox::connectionString(options), "Data Source=shop one.db;Trace=sent.sql");
    EXPECT_EQ(read({}).date, sandbox::kSampleProcessDate);
    EXPECT_TRUE(read({"--help"}).help);
}

TEST(HostProgram, ReadsAConnectionStringWhereNobodyElseSeesIt) {
    const std::string secret = "Provider=x;Password=mellow";
    std::istringstream typed(secret + "\r\nsecond line\n");
    const auto environment = [&](const std::string& name) { return name == "SHOP" ? secret : std::string(); };
    for (const char* source : {"-", "env:SHOP", secret.c_str()}) {
        HostOptions options = read({"--connect", source});
        sandbox::readConnection(options, environment, typed);
        EXPECT_EQ(sandbox::connectionString(options), secret) << source;
        EXPECT_EQ(sandbox::withoutSecrets("cannot open \"" + secret + "\": mellow is wrong", options),
                  "cannot open \"...\": ... is wrong");
    }
    const std::tuple<const char*, const char*, const char*> hidden[] = {
        {"Jet OLEDB:Database Password = mellow ;Data Source=x", "mellow is wrong", "... is wrong"},
        {"UID=sa;User Password=\"mel;low\"\"s\"", "'mel;low\"s' or \"mel;low\"\"s\"", "'...' or ..."},
        {"Extended Properties='PWD=mellow';PWD='it''s'", "mellow: it's", "...: ..."},
        {"Password=;Data Source=x", "Data Source=x", "Data Source=x"},
        {"Data Source=mellow;Password", "mellow Password", "mellow Password"},
    };
    for (const auto& [connection, text, shown] : hidden) {
        HostOptions options;
        options.connect = connection;
        EXPECT_EQ(sandbox::withoutSecrets(text, options), shown) << connection;
    }
    HostOptions nothing = read({"--connect", "env:NONE"});
    EXPECT_THROW(sandbox::readConnection(nothing, environment, typed), std::runtime_error);
    EXPECT_EQ(sandbox::withoutSecrets("of no connection", HostOptions()), "of no connection");
}

TEST(HostProgram, SaysWhatIsWrongWithAnOption) {
    // clang-format off
    for (const Arguments& arguments : std::vector<Arguments>{
             {"--user"}, {"--user", "12x"}, {"--user", "40000"}, {"--shop", ""}, {"--date", "today"}, {"--date", "2023-02-29"},
             {"--date", "2024-1-5"}, {"--frobnicate", "1"}, {"company.db"}, {"--interface", "1507.5"},
             {"--connect", "x", "--trace", "y"}}) {
        const std::string text = complaint(arguments);
        EXPECT_NE(text.find(arguments.front()), std::string::npos) << arguments.front() << ": " << text;
        EXPECT_EQ(text.find('\n'), std::string::npos) << "one line";
    }
    // A connection string that is not one argument: none of it is said again.
    for (const Arguments& arguments : std::vector<Arguments>{
             {"--connect=Provider=x;Password=mellow"}, {"--connect", "Provider=x;", "Password=mellow"},
             {"--connect", "Password=my", "mellow", "--user", "1"}}) {
        // clang-format on
        EXPECT_NE(complaint(arguments), "");
        EXPECT_EQ(complaint(arguments).find("mellow"), std::string::npos) << complaint(arguments);
    }
}

TEST(HostProgram, MakesACompanyOnceAndLeavesOneAlone) {
    support::TestFolder folder;
    const std::string path = folder.file("new.db");
    EXPECT_TRUE(sandbox::ensureCompany(path));
    EXPECT_EQ(support::CompanyFile::copyOf(path).value("select count(*) from aitem"), "2000");
    EXPECT_FALSE(sandbox::ensureCompany(path));
    EXPECT_NE(errorOf([&] { sandbox::makeSampleCompany(folder.file("no/such/folder.db")); }), 0);
    const auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "nothing half made is left";
}

TEST(HostProgram, LeavesOutOfTheManifestWhatTheMachineHas) {
    const std::string whole =
        "<?xml version=\"1.0\"?>\n"
        "    <assemblyIdentity type=\"win32\" name=\"goodsreq.sandbox\" version=\"1.0.0.0\"/>\n"
        "    <file name=\"sandbox.dll\">\n"
        "        <comClass clsid=\"{1}\" progid=\"ADODB.Connection\" threadingModel=\"Apartment\"/>\n"
        "        <comClass clsid=\"{2}\" progid=\"Fetch.clsFetch\" threadingModel=\"Apartment\"/>\n"
        "    </file>\n"
        "</assembly>";
    EXPECT_EQ(sandbox::progIdsOf(whole), (std::vector<std::string>{"ADODB.Connection", "Fetch.clsFetch"}));
    EXPECT_EQ(sandbox::manifestWithout(whole, "goodsreq.suite", {"adodb.connection"}),
              "<?xml version=\"1.0\"?>\n"
              "    <assemblyIdentity type=\"win32\" name=\"goodsreq.suite\" version=\"1.0.0.0\"/>\n"
              "    <file name=\"sandbox.dll\">\n"
              "        <comClass clsid=\"{2}\" progid=\"Fetch.clsFetch\" threadingModel=\"Apartment\"/>\n"
              "    </file>\n"
              "</assembly>");
    EXPECT_EQ(sandbox::manifestWithout(whole, "goodsreq.sandbox", {}), whole);
}

} // namespace
