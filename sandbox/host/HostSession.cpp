#include "sandbox/host/HostSession.h"

#include "automation/RunTimeError.h"
#include "basic/Calendar.h"
#include "sandbox/database/Company.h"

#include <filesystem>

namespace sandbox {

namespace {

std::filesystem::path pathOf(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

/// Closes the host's own connection at the end, quietly where it is past closing.
class OpenConnection {
public:
    OpenConnection(automation::ObjectPtr object, const std::string& connectionString) : object_(std::move(object)) {
        try {
            object_->call("Open", connectionString);
        } catch (const automation::RunTimeError& error) {
            throw automation::RunTimeError(error.number(), "the connection cannot be opened: " + error.description(),
                                           error.source());
        }
    }
    OpenConnection(const OpenConnection&) = delete;
    OpenConnection& operator=(const OpenConnection&) = delete;
    ~OpenConnection() {
        try {
            object_->call("Close");
        } catch (...) {
            // A transaction that a failed deletion left open ends with the process.
        }
    }
    const automation::ObjectPtr& object() const { return object_; }

private:
    automation::ObjectPtr object_;
};

} // namespace

void makeSampleCompany(const std::string& path, std::string_view schema) {
    const std::string unfinished = path + ".new";
    std::filesystem::remove(pathOf(unfinished));
    {
        const std::shared_ptr<Connection> connection = createCompany(unfinished, schema);
        connection->call("BeginTrans");
        writeSampleCompany([&](const std::string& statement) { connection->call("Execute", statement); });
        connection->call("CommitTrans");
        connection->call("Close");
    }
    std::filesystem::rename(pathOf(unfinished), pathOf(path));
}

bool ensureCompany(const std::string& path) {
    if (std::filesystem::exists(pathOf(path))) return false;
    makeSampleCompany(path);
    return true;
}

std::string connectionString(const HostOptions& options) {
    if (options.connect) return *options.connect;
    std::string text = "Data Source=" + options.database;
    if (!options.trace.empty()) text += ";Trace=" + options.trace;
    return text;
}

void runSession(const HostOptions& options, const automation::ObjectFactory& create) {
    const OpenConnection connection(create("ADODB.Connection"), connectionString(options));
    const automation::ObjectPtr module = create("goodsreq.clsGRtoShop");
    module->putRef("adocon", connection.object());
    module->put("strProjectKey", options.key);
    module->put("strMsgboxCaption", options.caption);
    module->put("intCompanyID", options.company);
    module->put("intUserID", options.user);
    module->put("intShopid", options.shop);
    module->put("interfaceid", options.interfaceId);
    module->put("dtProcessDate", basic::dateOf(options.date.year, options.date.month, options.date.day));
    module->call("Show");
}

} // namespace sandbox
