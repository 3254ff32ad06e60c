#include "sandbox/database/Company.h"

#include "sandbox/database/Errors.h"
#include "sandbox/database/Script.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace sandbox {

std::shared_ptr<Connection> createCompany(const std::string& path, std::string_view schemaText) {
    return std::make_shared<Connection>(Database::create(path, schemaText));
}

std::shared_ptr<Connection> openConnection(const std::string& path) {
    auto connection = std::make_shared<Connection>();
    connection->open(path);
    return connection;
}

void runScript(Connection& connection, std::string_view text) {
    Database& database = connection.database();
    database.atomically([&] {
        for (std::string_view statement : splitScript(text)) {
            try {
                database.executeSilently(statement);
            } catch (const automation::RunTimeError& error) {
                throw automation::RunTimeError(error.number(),
                                               error.description() + " In: " + std::string(statement.substr(0, 200)),
                                               error.source());
            }
        }
    });
}

std::string readTextFile(const std::string& path) {
    std::ifstream file(std::filesystem::path(std::u8string(path.begin(), path.end())), std::ios::binary);
    if (!file) fail(kServerFailure, "The file '" + path + "' cannot be read.");
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace sandbox
