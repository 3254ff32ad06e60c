// Proves that no work is lost: faults, kills, several tills at once, hostile texts, random clerks.
#include "endurance/Endurance.h"

int main(int count, char** arguments) {
    return bench::runProgram("stress", count, arguments, [](const bench::Options& options, bench::Report& report) {
        if (options.minutes > 0) return endurance::randomClerks(options, report); // the one part that may go on
        endurance::strikeStatements(options, report);
        endurance::killSaves(options, report);
        endurance::saveAtOnce(options, report);
        endurance::randomClerks(options, report);
    });
}
