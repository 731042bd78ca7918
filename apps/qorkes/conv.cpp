// qorkes conv: the linear convolution of two series.
#include "arguments.hpp"
#include "commands.hpp"
#include "failure.hpp"
#include "input.hpp"
#include "output.hpp"

#include <qorkes/zubs.h>

#include <CLI/CLI.hpp>

namespace qorkes {
namespace {

struct Options {
    Source a{"", ""}, b{"", ""};
    std::string precision = "double";
    bool binary = false;
};

int convolve(const double* a, int na, const double* b, int nb, double* y) {
    return zubsConv_64f(a, na, b, nb, y);
}
int convolve(const float* a, int na, const float* b, int nb, float* y) {
    return zubsConv_32f(a, na, b, nb, y);
}

template <class T> std::vector<T> seriesOf(const Source& source) {
    auto values = readNumbers<T>(source).values;
    if (values.empty()) fail(nameOf(source) + " holds no numbers");
    return values;
}

template <class T> void convolveFiles(const Options& options) {
    const auto a = seriesOf<T>(options.a);
    const auto b = seriesOf<T>(options.b);
    std::vector<T> y(a.size() + b.size() - 1);
    if (convolve(a.data(), static_cast<int>(a.size()), b.data(),
                 static_cast<int>(b.size()), y.data()) != ZubStatusOk)
        fail("conv: not enough memory", statusOfOutputTrouble);
    if (options.binary)
        writeBinary<T>(y);
    else
        writeText<T>(y);
}

} // namespace

void addConv(CLI::App& app) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("conv", "Convolve two series");
    command->add_option("A", options->a.path, "the first series; - is standard input")
        ->required()
        ->type_name("");
    command->add_option("B", options->b.path, "the second series")
        ->required()
        ->type_name("");
    command->add_option("--column-a", options->a.column, "the column to read of A")
        ->type_name("NAME|N");
    command->add_option("--column-b", options->b.column, "the column to read of B")
        ->type_name("NAME|N");
    command->add_option("--precision", options->precision, "default: double")
        ->type_name("double|single");
    command->add_flag("--binary", options->binary,
                      "write raw little-endian numbers instead of text");
    command->footer(
        "Prints the sums over i of a[i] b[k - i], for every k, one a line.\n\n"
        "Example, a moving mean of three years:\n"
        "  echo 0.25 0.5 0.25 | qorkes conv - nile.csv --column-b volume\n");
    command->callback([options] {
        if (isSingle(options->precision))
            convolveFiles<float>(*options);
        else
            convolveFiles<double>(*options);
    });
}

} // namespace qorkes
