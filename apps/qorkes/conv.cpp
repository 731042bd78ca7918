// qorkes conv: convolution.
#include "commands.hpp"
#include "tasks.hpp"

#include <qorkes/kes.h>

#include <CLI/CLI.hpp>

namespace qorkes {

void addConv(CLI::App& app) {
    CLI::App* command = app.add_subcommand("conv", "Convolve two arrays");
    addTaskOptions(*command, KesTaskConvolution);
    command->footer(
        "Prints the sums over i of a[i] b[k - i], for k = 0 to na + nb - 2, one a\n"
        "line; in several dimensions one line for each row.\n\n"
        "Examples, a moving mean of three years without its ends, and a box filter:\n"
        "  echo 0.25 0.5 0.25 |\n"
        "      qorkes conv - nile.csv --column-b volume --start 2 --count 98\n"
        "  echo 1 1 1 1 | qorkes conv - image.txt --shape-a 2,2 --shape-b 640,480\n");
}

} // namespace qorkes
