// Proves that the DLL itself gives back what it takes, and that no input brings it down.
#include "endurance/windows/Windows.h"

int main(int count, char** arguments) {
    return bench::runProgram("stress-windows", count, arguments,
                             [](const bench::Options& options, bench::Report& report) {
                                 endurance::goRound(options, report);
                                 endurance::actClumsily(options, report);
                             });
}
