// Writes the sample company into a file, once for all tests: make_sample FILE.
#include "sandbox/host/HostSession.h"

#include <cstdio>
#include <exception>

int main(int count, char** arguments) {
    if (count != 2) return 2;
    try {
        sandbox::makeSampleCompany(arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
