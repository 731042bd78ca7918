// qorkes corr: correlation.
#include "commands.hpp"
#include "tasks.hpp"

#include <qorkes/kes.h>

#include <CLI/CLI.hpp>

namespace qorkes {

void addCorr(CLI::App& app) {
    CLI::App* command = app.add_subcommand("corr", "Correlate two arrays");
    addTaskOptions(*command, KesTaskCorrelation);
    command->footer(
        "Prints the sums over i of a[i] b[i + k], for the lags k = 1 - na to nb - 1,\n"
        "one a line; in several dimensions one line for each row.\n\n"
        "Examples, every lag, and the first three from 0 on:\n"
        "  qorkes corr pattern.txt series.txt\n"
        "  qorkes corr series.txt series.txt --start 0 --count 3\n");
}

} // namespace qorkes
