// qorkes-ulp: the largest error of kernels against MPFR, in ulp, and where it occurs.
#include "measure.hpp"

#include <qorkes/qor.h>
#include <support/document.hpp>

#include <CLI/CLI.hpp>

#include <atomic>
#include <cstdio>
#include <exception>
#include <iostream>
#include <map>
#include <sstream>
#include <thread>

using namespace qorkes;
using namespace qorkes::ulp;

namespace {

struct Options {
    std::string function, precision, accuracy, document;
    std::int64_t samples = 10000000;
    bool all = false;
};

template <class... Args> std::string format(const char* pattern, Args... args) {
    char text[300];
    std::snprintf(text, sizeof text, pattern, args...);
    return text;
}

/// The number by its bits and in decimal digits.
template <class T> std::string number(T x) {
    constexpr int digits = std::numeric_limits<T>::max_digits10;
    return format("0x%0*llX (%.*g)", static_cast<int>(2 * sizeof(T)),
                  static_cast<unsigned long long>(Bits<T>::of(x)), digits, double{x});
}

bool hasTwoArguments(catalogue::Form form) {
    return form == catalogue::Form::twoToOne || form == catalogue::Form::arrayAndScalar;
}

template <class T> std::string place(const Extreme<T>& extreme, catalogue::Form form) {
    return number(extreme.a) + (hasTwoArguments(form) ? ", " + number(extreme.b) : "");
}

/// Reports of special elements would take most of the time.
void withoutReports() { _qorSetMode(QorModeErrIgnore); }

/// Every float, its two halves at the same time.
std::vector<Extreme<float>> measureAll(const catalogue::Function& function,
                                       const catalogue::Kernel<float>& kernel,
                                       int output) {
    constexpr std::uint64_t half = std::uint64_t{1} << 31;
    std::atomic<int> done = 0;
    const auto progress = [&done] {
        const int part = ++done; // of 4096
        if (part % 41 == 0) std::fprintf(stderr, "\r%3d %%", part / 41);
    };
    Measurement<float> positives(function, kernel, output);
    Measurement<float> negatives(function, kernel, output);
    std::exception_ptr failure;
    std::thread other([&] {
        withoutReports();
        try {
            negatives.run(half, 2 * half, progress);
        } catch (...) {
            failure = std::current_exception();
        }
    });
    positives.run(0, half, progress);
    other.join();
    std::fputs("\r", stderr);
    if (failure) std::rethrow_exception(failure);
    return largerOf(positives.extremes(), negatives.extremes());
}

template <class T>
std::vector<Extreme<T>> measure(const catalogue::Function& function,
                                const catalogue::Kernel<T>& kernel, int output,
                                const Options& options) {
    if constexpr (std::is_same_v<T, float>)
        if (options.all) return measureAll(function, kernel, output);
    Measurement<T> measurement(function, kernel, output);
    measurement.sample(options.samples);
    return measurement.extremes();
}

std::string heading() {
    return "| kernel             | arguments                    | ulp     | at |\n"
           "|--------------------|------------------------------|---------|----|\n";
}

template <class T>
std::string tableOf(const std::string& name, catalogue::Form form,
                    const std::vector<Extreme<T>>& extremes) {
    std::string table;
    for (const Extreme<T>& extreme : extremes)
        table +=
            format("| %-18s | %-28s | %7.4f | %s |\n", name.c_str(),
                   extreme.region.c_str(), extreme.ulps, place(extreme, form).c_str());
    return table;
}

template <class T>
void print(const std::string& name, catalogue::Form form,
           const std::vector<Extreme<T>>& extremes) {
    for (const Extreme<T>& extreme : extremes)
        std::cout << format("%-18s %-28s %7.4f ulp at %s: %s, expected %s\n",
                            name.c_str(), extreme.region.c_str(), extreme.ulps,
                            place(extreme, form).c_str(),
                            number(extreme.result).c_str(),
                            number(extreme.expected).c_str())
                  << std::flush;
}

template <class T>
std::string report(const catalogue::Function& function, const Options& options) {
    std::string table;
    for (const catalogue::Kernel<T>& kernel : kernelsOf<T>(function)) {
        const bool isWanted = options.accuracy.empty()
                                  ? isOwnCode(kernel)
                                  : options.accuracy == kernel.accuracy;
        if (!isWanted) continue;
        const int outputs = function.form == catalogue::Form::oneToTwo ? 2 : 1;
        for (int output = 0; output < outputs; ++output) {
            const std::string name = std::string(precisionName<T>) + ' ' +
                                     function.name + '_' + kernel.accuracy +
                                     (output == 1 ? ", cosine" : "");
            const auto extremes = measure<T>(function, kernel, output, options);
            print(name, function.form, extremes);
            table += tableOf(name, function.form, extremes);
        }
    }
    return table;
}

/// Rows by kernel: the fresh ones, and of other kernels those that stand already.
std::string mergedRows(const std::string& standing, const std::string& fresh) {
    std::map<std::string, std::string> rows;
    for (const std::string& table : {standing, fresh}) {
        std::map<std::string, std::string> ofTable;
        std::istringstream lines(table);
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("| double ") || line.starts_with("| float "))
                ofTable[line.substr(0, line.find('|', 1))] += line + '\n';
        for (const auto& [kernel, text] : ofTable) rows[kernel] = text;
    }
    std::string merged;
    for (const auto& [kernel, text] : rows) merged += text;
    return merged;
}

void writeDocument(const Options& options, const std::string& fresh) {
    const std::string section = options.all ? "every float" : "samples";
    const std::string standing = sectionOf(options.document, section);
    replaceSection(options.document, section, heading() + mergedRows(standing, fresh));
}

void run(const Options& options) {
    const catalogue::Function* only = nullptr;
    if (!options.function.empty()) {
        only = catalogue::find(options.function.c_str());
        if (!only)
            throw std::invalid_argument("no function '" + options.function + "'");
        if (options.all && hasTwoArguments(only->form))
            throw std::invalid_argument("--all is for functions of one argument");
    }
    std::string table;
    for (const catalogue::Function& function : catalogue::functions()) {
        if (only && only != &function) continue;
        if (options.precision != "single" && !options.all)
            table += report<double>(function, options);
        if (options.precision != "double" &&
            !(options.all && hasTwoArguments(function.form)))
            table += report<float>(function, options);
    }
    if (!options.document.empty()) writeDocument(options, table);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("The largest error of kernels against MPFR, in ulp.");
    Options options;
    app.add_option("FUNCTION", options.function, "as in `qorkes list`; all by default");
    app.add_option("--precision", options.precision, "both by default")
        ->check(CLI::IsMember({"double", "single"}));
    app.add_option("--accuracy", options.accuracy,
                   "by default every accuracy that has code of its own")
        ->check(CLI::IsMember({"HA", "50", "21", "11"}));
    auto* samples = app.add_option("--samples", options.samples, "for each kernel")
                        ->check(CLI::PositiveNumber)
                        ->capture_default_str();
    app.add_flag("--all", options.all,
                 "every one of the 2^32 arguments of single-precision kernels")
        ->excludes(samples);
    app.add_option("--docs", options.document, "accuracy document to bring up to date")
        ->check(CLI::ExistingFile);
    CLI11_PARSE(app, argc, argv);
    withoutReports();
    try {
        run(options);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "qorkes-ulp: " << error.what() << '\n';
        return 2;
    }
}
