// Proves that no work is lost: faults, kills, several tills at once, hostile texts.
#include "endurance/Endurance.h"

int main(int count, char** arguments) {
    return bench::runProgram("stress", count, arguments, [](const bench::Options& options, bench::Report& report) {
        endurance::strikeStatements(options, report);
        endurance::killSaves(options, report);
        endurance::saveAtOnce(options, report);
        endurance::enterHostileTexts(options, report);
    });
}
