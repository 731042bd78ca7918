// qorkes apply: one function on every number of a file.
#include "arguments.hpp"
#include "catalogue.hpp"
#include "commands.hpp"
#include "failure.hpp"
#include "input.hpp"
#include "output.hpp"
#include "text.hpp"

#include <qorkes/qor.h>

#include <CLI/CLI.hpp>

#include <iostream>

namespace qorkes {
namespace {

using catalogue::Form;

struct Options {
    std::string function;
    Source source;
    std::string with;
    std::string withColumn;
    std::string precision = "double";
    std::string accuracy = "HA";
    bool binary = false;
};

struct Report {
    int status;
    int index;
    double result;
    std::string kernel;
};
std::vector<Report> reports;

int collect(QorErrorRecord* record) {
    reports.push_back(
        {record->status, record->index, record->result1, record->funcName});
    return 0;
}

std::string meaningOf(int status) {
    switch (status) {
    case QOR_STATUS_ERRDOM:
        return "argument is out of domain (ERRDOM)";
    case QOR_STATUS_SING:
        return "argument caused singularity (SING)";
    case QOR_STATUS_OVERFLOW:
        return "argument caused overflow (OVERFLOW)";
    case QOR_STATUS_UNDERFLOW:
        return "argument caused underflow (UNDERFLOW)";
    default:
        return "status " + std::to_string(status);
    }
}

template <class T> void writeReports(const std::vector<int>& lines) {
    for (const Report& report : reports)
        std::cerr << "qorkes: line " << lines[static_cast<size_t>(report.index)] << ": "
                  << report.kernel << ": " << meaningOf(report.status) << ", result "
                  << shortest(static_cast<T>(report.result)) << '\n';
}

template <class T, size_t n>
const catalogue::Kernel<T>& kernelOf(const catalogue::Kernel<T> (&kernels)[n],
                                     const Options& options) {
    std::vector<std::string> tags;
    for (const auto& kernel : kernels) {
        if (options.accuracy == kernel.accuracy) return kernel;
        tags.push_back(kernel.accuracy);
    }
    failChoice("--accuracy in " + options.precision + " precision", options.accuracy,
               tags);
}

/// The second argument: one number for all elements, or as many as there are elements.
template <class T>
std::vector<T> secondArgument(Form form, size_t n, const Options& options) {
    if (const auto value = parseReal<T>(options.with)) return std::vector<T>(n, *value);
    if (form == Form::arrayAndScalar)
        fail("--with: '" + options.with + "' is not a number, the only thing " +
             options.function + " takes");
    const Source source{options.with, options.withColumn};
    auto numbers = readNumbers<T>(source);
    if (numbers.values.size() != n)
        fail("--with: " + nameOf(source) + " holds " +
             std::to_string(numbers.values.size()) + " numbers; " + std::to_string(n) +
             " are needed, as many as " + nameOf(options.source) + " holds");
    return std::move(numbers.values);
}

template <class T>
std::vector<T> results(const catalogue::Kernel<T>& kernel, Form form,
                       const std::vector<T>& a, const Options& options) {
    const auto n = static_cast<int>(a.size());
    std::vector<T> y(a.size());
    switch (form) {
    case Form::oneToOne:
        kernel.entry.oneToOne(n, a.data(), y.data());
        break;
    case Form::twoToOne: {
        const auto b = secondArgument<T>(form, a.size(), options);
        kernel.entry.twoToOne(n, a.data(), b.data(), y.data());
        break;
    }
    case Form::arrayAndScalar:
        kernel.entry.arrayAndScalar(n, a.data(), secondArgument<T>(form, 1, options)[0],
                                    y.data());
        break;
    case Form::oneToTwo: {
        std::vector<T> z(a.size());
        kernel.entry.oneToTwo(n, a.data(), y.data(), z.data());
        std::vector<T> pairs;
        for (size_t i = 0; i < y.size(); ++i) pairs.insert(pairs.end(), {y[i], z[i]});
        return pairs;
    }
    }
    return y;
}

template <class T>
void applyKernel(const catalogue::Kernel<T>& kernel, Form form,
                 const Options& options) {
    const auto numbers = readNumbers<T>(options.source);
    _qorSetErrorCallBack(collect);
    const auto y = results<T>(kernel, form, numbers.values, options);
    writeNumbers(y, form == Form::oneToTwo ? 2 : 1, options.binary);
    writeReports<T>(numbers.lines);
}

void apply(const Options& options) {
    const auto& function =
        rowNamed("FUNCTION", options.function, catalogue::functions());
    const bool takesWith =
        function.form == Form::twoToOne || function.form == Form::arrayAndScalar;
    if (takesWith && options.with.empty())
        fail(std::string("--with: ") + function.name +
             " takes a second argument; give a number or a file");
    if (!takesWith && !options.with.empty())
        fail(std::string("--with: ") + function.name +
             " takes one argument; leave it out");
    if (isSingle(options.precision))
        applyKernel(kernelOf(function.singles, options), function.form, options);
    else
        applyKernel(kernelOf(function.doubles, options), function.form, options);
}

} // namespace

void addApply(CLI::App& app) {
    auto options = std::make_shared<Options>();
    CLI::App* command =
        app.add_subcommand("apply", "Apply a function to every number of a file");
    command->add_option("FUNCTION", options->function, "see 'qorkes list'")
        ->required()
        ->type_name("");
    addInput(*command, options->source);
    command
        ->add_option("--with", options->with, "the second argument of Div and the like")
        ->type_name("FILE|VALUE");
    command
        ->add_option("--with-column", options->withColumn,
                     "the column to read of the file of --with")
        ->needs("--with")
        ->type_name("NAME|N");
    addPrecision(*command, options->precision);
    command
        ->add_option("--accuracy", options->accuracy,
                     "double: HA or 50; single: HA, 21 or 11; default: HA")
        ->type_name("TAG");
    addBinary(*command, options->binary);
    command->footer(
        "Results come one a line, in the shortest form that reads back as the same\n"
        "number. What a kernel reports of an element goes to standard error with the\n"
        "number of its line.\n"
        "\nExamples:\n"
        "  qorkes apply Sqrt examples/nile/nile.csv --column volume\n"
        "  echo 2 3 5 | qorkes apply Inv --precision single --accuracy 11\n"
        "  echo 2 3 5 | qorkes apply Div --with 7\n");
    command->callback([options] { apply(*options); });
}

} // namespace qorkes
