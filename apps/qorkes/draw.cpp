// qorkes draw: random numbers of a distribution from a generator.
#include "commands.hpp"
#include "drawing.hpp"

#include <CLI/CLI.hpp>

namespace qorkes {

void addDraw(CLI::App& app) {
    auto drawing = std::make_shared<Drawing>();
    auto source = std::make_shared<StreamSource>();
    CLI::App* command = app.add_subcommand("draw", "Draw random numbers");
    addDistribution(*command, *drawing);
    addSourceOptions(*command, *source);
    addDrawingOptions(*command, *drawing);
    command->footer(
        "Numbers come one a line, vectors one a line with commas, in the shortest\n"
        "form that reads back as the same number. The same command gives the same "
        "numbers for ever.\n"
        "\nExamples:\n"
        "  qorkes draw uniform --seed 7 --count 5\n"
        "  qorkes draw uniform a=-1 b=1 --count 100000 --summary\n"
        "  qorkes draw gaussian a=100 sigma=15 --count 100000 --picture iq.svg\n"
        "  qorkes draw gaussianmv a=1,2 covariance=4,1,1,9 --count 3\n"
        "  qorkes draw bits --generator MCG31M1 --leapfrog 1/3 --skip 1000\n"
        "  qorkes draw uniform --generator Sobol --dimensions 2 | paste - -\n");
    command->callback([drawing, source] {
        Stream stream;
        writeDrawn(*drawing, [&] {
            stream = newStream(*source);
            return stream.get();
        });
    });
}

} // namespace qorkes
