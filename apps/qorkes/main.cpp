#include "commands.hpp"
#include "failure.hpp"

#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
    CLI::App app("Vector mathematics and random numbers, by the Qorkes kernels.",
                 "qorkes");
    app.set_version_flag("--version", "qorkes " QORKES_VERSION);
    app.get_formatter()->column_width(28);
    qorkes::addApply(app);
    qorkes::addConv(app);
    qorkes::addCorr(app);
    qorkes::addDraw(app);
    qorkes::addFft(app);
    qorkes::addList(app);
    qorkes::addStream(app);
    app.footer("Examples:\n"
               "  qorkes list\n"
               "  echo 1 4 9 | qorkes apply Sqrt\n"
               "  qorkes draw uniform a=-1 b=1 --seed 7 --count 5\n");
    return qorkes::runGuarded(app, argc, argv);
}
