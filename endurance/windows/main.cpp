// Proves that the DLL itself gives back what it takes, and that no input brings it down: stress-windows PART
// [OPTION...]. The parts are rounds, scan and fetch: the clumsy user with the one or the other dialog behind F11, which
// a process has to choose before it shows the module.
#include "endurance/Endurance.h"

#include <cstdio>
#include <string>

int main(int count, char** arguments) {
    const std::string part = count > 1 ? arguments[1] : "";
    if (part != "rounds" && part != "scan" && part != "fetch") {
        std::fputs("usage: stress-windows rounds|scan|fetch [OPTION...]\n", stderr);
        return 2;
    }
    return bench::runProgram("stress-windows", count - 1, arguments + 1,
                             [&](const auto& options, bench::Report& report) {
                                 if (part == "rounds")
                                     endurance::goRound(options, report);
                                 else
                                     endurance::actClumsily(options, part, report);
                             });
}
