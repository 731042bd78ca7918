// qorkes-ulp: the largest error of kernels against MPFR, in ulp, where it occurs, and
// the largest error of their peers on the same arguments.
#include "measure.hpp"

#include <qorkes/qor.h>
#include <support/document.hpp>
#include <support/kernel_peers.hpp>

#include <CLI/CLI.hpp>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <map>
#include <sstream>

using namespace qorkes;
using namespace qorkes::ulp;

namespace {

struct Options {
    std::vector<std::string> functions;
    std::string precision, accuracy, document, plots;
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

template <class T> struct Errors {
    std::vector<Extreme<T>> extremes;
    std::vector<Profile> profiles; // none of every float
};

/// Every float, its two halves at the same time.
Errors<float> measureAll(const catalogue::Function& function, const Loop<float>& loop,
                         int output) {
    constexpr std::uint64_t half = std::uint64_t{1} << 31;
    std::atomic<int> done = 0;
    const auto progress = [&done] {
        const int part = ++done; // of 4096
        if (part % 41 == 0) std::fprintf(stderr, "\r%3d %%", part / 41);
    };
    Measurement<float> positives(function, loop, output);
    Measurement<float> negatives(function, loop, output);
    auto other = std::async(std::launch::async, [&] {
        withoutReports();
        negatives.run(half, 2 * half, progress);
    });
    positives.run(0, half, progress);
    other.get();
    std::fputs("\r", stderr);
    return {largerOf(positives.extremes(), negatives.extremes()), {}};
}

template <class T>
Errors<T> measure(const catalogue::Function& function, const Loop<T>& loop, int output,
                  const Options& options) {
    if constexpr (std::is_same_v<T, float>)
        if (options.all) return measureAll(function, loop, output);
    Measurement<T> measurement(function, loop, output);
    measurement.sample(options.samples);
    return {measurement.extremes(), measurement.profiles()};
}

std::string heading() {
    return "| kernel             | arguments                    | ulp     | peer    | "
           "samples    | at |\n"
           "|--------------------|------------------------------|---------|---------|-"
           "-----------|----|\n";
}

template <class T>
std::string tableOf(const std::string& name, catalogue::Form form,
                    const std::vector<Extreme<T>>& ours,
                    const std::vector<Extreme<T>>& theirs, const Options& options) {
    const long long samples = options.all ? 1LL << 32 : options.samples;
    std::string table;
    for (std::size_t i = 0; i < ours.size(); ++i)
        table += format("| %-18s | %-28s | %7.4f | %7.4f | %10lld | %s |\n",
                        name.c_str(), ours[i].region.c_str(), ours[i].ulps,
                        theirs[i].ulps, samples, place(ours[i], form).c_str());
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

/// What is printed of each loop, and what goes into documents.
struct Report {
    std::string table, plot;
};

/// One block of plot data for each region, two blank lines between them.
template <class T>
std::string plotOf(const std::string& precisionAndOutput, const std::string& curve,
                   const Errors<T>& errors) {
    std::string plot;
    for (std::size_t i = 0; i < errors.profiles.size(); ++i)
        plot += "# " + precisionAndOutput + " | " + errors.extremes[i + 1].region +
                " | " + errors.profiles[i].axis() + " | " + curve + '\n' +
                errors.profiles[i].points() + "\n\n";
    return plot;
}

template <class T>
std::vector<const catalogue::Kernel<T>*> wanted(const catalogue::Function& function,
                                                const Options& options) {
    std::vector<const catalogue::Kernel<T>*> kernels;
    for (const catalogue::Kernel<T>& kernel : kernelsOf<T>(function))
        if (options.accuracy.empty() ? isOwnCode(kernel)
                                     : options.accuracy == kernel.accuracy)
            kernels.push_back(&kernel);
    return kernels;
}

/// The kernels of one precision, each beside the peer.
template <class T>
Report reportOn(const catalogue::Function& function, int output,
                const Options& options) {
    const auto kernels = wanted<T>(function, options);
    if (kernels.empty()) return {};
    const std::string precision = precisionName<T>;
    const std::string suffix = output == 1 ? ", cosine" : "";
    const KernelPeer<T>& peer =
        peerOf(std::span<const KernelPeer<T>>(kernelPeers<T>), function.name);
    const Errors<T> theirs = measure<T>(function, peer.loop, output, options);
    print(precision + ' ' + peer.name + suffix, function.form, theirs.extremes);

    Report report;
    for (const catalogue::Kernel<T>* kernel : kernels) {
        const auto loop = [form = function.form, entry = kernel->entry](
                              int n, const T* a, const T* b, T* y, T* z) {
            call(form, entry, n, a, b, y, z);
        };
        const Errors<T> ours = measure<T>(function, loop, output, options);
        const std::string name =
            precision + ' ' + function.name + '_' + kernel->accuracy + suffix;
        print(name, function.form, ours.extremes);
        report.table +=
            tableOf(name, function.form, ours.extremes, theirs.extremes, options);
        report.plot += plotOf(precision + suffix, kernel->accuracy, ours);
    }
    report.plot += plotOf(precision + suffix, peer.name, theirs);
    return report;
}

template <class T>
void addTo(Report& whole, const catalogue::Function& function, const Options& options) {
    const int outputs = function.form == catalogue::Form::oneToTwo ? 2 : 1;
    for (int output = 0; output < outputs; ++output) {
        const Report report = reportOn<T>(function, output, options);
        whole.table += report.table;
        whole.plot += report.plot;
    }
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

void writePlot(const std::string& directory, const char* function,
               const std::string& plot) {
    const auto path =
        std::filesystem::path(directory) / (std::string(function) + ".txt");
    std::ofstream out(path);
    if (!(out << plot).flush())
        throw std::runtime_error("cannot write " + path.string());
}

/// Those named, or all.
std::vector<const catalogue::Function*> functionsOf(const Options& options) {
    std::vector<const catalogue::Function*> functions;
    for (const std::string& name : options.functions) {
        functions.push_back(catalogue::find(name.c_str()));
        if (!functions.back())
            throw std::invalid_argument("no function '" + name + "'");
        if (options.all && hasTwoArguments(functions.back()->form))
            throw std::invalid_argument("--all is for functions of one argument");
    }
    if (functions.empty())
        for (const catalogue::Function& function : catalogue::functions())
            functions.push_back(&function);
    return functions;
}

void run(const Options& options) {
    std::string table;
    for (const catalogue::Function* function : functionsOf(options)) {
        Report report;
        if (options.precision != "single" && !options.all)
            addTo<double>(report, *function, options);
        if (options.precision != "double" &&
            !(options.all && hasTwoArguments(function->form)))
            addTo<float>(report, *function, options);
        table += report.table;
        if (!options.plots.empty())
            writePlot(options.plots, function->name, report.plot);
    }
    if (!options.document.empty()) writeDocument(options, table);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("The largest error of kernels against MPFR, in ulp.");
    Options options;
    app.add_option("FUNCTION", options.functions,
                   "as in `qorkes list`; all by default");
    app.add_option("--precision", options.precision, "both by default")
        ->check(CLI::IsMember({"double", "single"}));
    app.add_option("--accuracy", options.accuracy,
                   "by default every accuracy that has code of its own")
        ->check(CLI::IsMember({"HA", "50", "21", "11"}));
    auto* samples = app.add_option("--samples", options.samples, "for each kernel")
                        ->check(CLI::PositiveNumber)
                        ->capture_default_str();
    auto* all =
        app.add_flag("--all", options.all,
                     "every one of the 2^32 arguments of single-precision kernels")
            ->excludes(samples);
    app.add_option("--docs", options.document, "accuracy document to bring up to date")
        ->check(CLI::ExistingFile);
    app.add_option("--plots", options.plots,
                   "directory for the largest error by argument, a file a function")
        ->check(CLI::ExistingDirectory)
        ->excludes(all);
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
