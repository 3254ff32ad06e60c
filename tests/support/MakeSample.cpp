// Writes the sample company into a file, once for all tests: make_sample FILE.
#include "sandbox/data/SampleCompany.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"

#include <cstdio>
#include <exception>
#include <filesystem>

int main(int count, char** arguments) {
    if (count != 2) return 2;
    try {
        std::filesystem::remove(arguments[1]);
        const auto connection = sandbox::createCompany(arguments[1], sandbox::schemaText());
        connection->call("BeginTrans");
        sandbox::writeSampleCompany([&](const std::string& statement) { connection->call("Execute", statement); });
        connection->call("CommitTrans");
        connection->close();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
