#include "drawing.hpp"

#include "arguments.hpp"
#include "failure.hpp"
#include "output.hpp"
#include "picture.hpp"
#include "summary.hpp"
#include "text.hpp"
#include "vectors.hpp"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace qorkes {
namespace {

using catalogue::Distribution;

/// The parameters' values in the order of the distribution's row.
std::vector<double> parametersOf(const Distribution& distribution,
                                 const std::vector<std::string>& settings) {
    const auto rows = distribution.parameters;
    std::vector<double> values;
    for (const auto& parameter : rows) values.push_back(parameter.preset);
    for (const std::string& setting : settings) {
        if (rows.empty())
            fail(setting + ": " + distribution.name + " takes no parameters");
        const auto [name, text] = cutAt(setting, '=');
        const auto& row =
            rowNamed(std::string("parameter of ") + distribution.name, name, rows);
        const auto value = parseReal<double>(text.value_or(""));
        if (!value || !row.range->holds(*value))
            fail(setting + ": " + row.name + "=VALUE must give " + row.range->words);
        values[static_cast<size_t>(&row - rows.data())] = *value;
    }
    if (const char* fault =
            distribution.fault ? distribution.fault(values.data()) : nullptr)
        fail(std::string(distribution.name) + ": " + fault);
    return values;
}

/// What one run draws.
struct Job {
    const Drawing& options;
    const Distribution& distribution;
    std::vector<double> parameters;
    int method;
    StreamState* stream;
    int count;
};

/// The sample in words, in a picture, or both.
void describe(const Job& job, std::vector<double> sample) {
    std::ranges::sort(sample);
    const std::string text = summary(sample, job.distribution, job.parameters.data());
    if (!job.options.picture.empty())
        writePicture(job.options.picture,
                     {{"", std::move(sample), job.distribution, job.parameters}});
    if (job.options.summary) writeOut(text);
}

template <class T>
void write(const Job& job, const std::vector<T>& numbers, int perLine) {
    if (isDescribed(job.options))
        describe(job, {numbers.begin(), numbers.end()});
    else
        writeNumbers(numbers, perLine, job.options.binary);
}

template <class T>
std::vector<T> numbersOf(const Job& job, catalogue::Draw<T> draw, int wordsEach = 1) {
    std::vector<T> numbers(static_cast<size_t>(job.count) *
                           static_cast<size_t>(wordsEach));
    if (job.count > 0)
        check(draw(job.method, job.stream, job.count, numbers.data(),
                   job.parameters.data()),
              job.stream, job.distribution.name);
    return numbers;
}

/// Raw words: whole numbers of 32 or 64 bits, else several words a line.
void drawWords(const Job& job) {
    BrngProperties properties;
    __kesGetBrngProperties(__kesGetStreamStateBrng(job.stream), &properties);
    const int wordsEach = properties.WordSize / 4;
    const auto words = numbersOf(job, job.distribution.words, wordsEach);
    if (wordsEach != 2) return write(job, words, wordsEach);
    std::vector<uint64_t> numbers(words.size() / 2);
    for (size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = uint64_t{words[2 * i + 1]} << 32 | words[2 * i];
    write(job, numbers, 1);
}

} // namespace

void addDistribution(CLI::App& command, Drawing& drawing) {
    command.add_option("DISTRIBUTION", drawing.distribution, "see 'qorkes list'")
        ->required()
        ->type_name("");
    command.add_option("PARAMETERS", drawing.parameters, "name=value each")
        ->type_name("");
}

void addDrawingOptions(CLI::App& command, Drawing& drawing) {
    command.add_option("--count", drawing.count, "how many numbers; default: 10")
        ->type_name("N");
    addPrecision(command, drawing.precision, "of real numbers; default: double");
    command
        .add_option("--method", drawing.method,
                    "of a distribution that has several; default: 0")
        ->type_name("N");
    auto* summary =
        command.add_flag("--summary", drawing.summary,
                         "write count, moments, quartiles and a histogram\n"
                         "instead of the numbers; | marks what is expected");
    auto* picture = command
                        .add_option("--picture", drawing.picture,
                                    "draw a histogram against the exact distribution\n"
                                    "instead of writing the numbers; needs gnuplot")
                        ->type_name("FILE.svg");
    addBinary(command, drawing.binary)->excludes(summary)->excludes(picture);
}

int64_t countOf(const Drawing& options, int64_t size) {
    const int64_t least = isDescribed(options) ? 1 : 0;
    return wholeNumber("--count", options.count, least, mostNumbers / size);
}

int methodOf(const Distribution& distribution, const std::string& method) {
    const auto count = static_cast<int64_t>(distribution.methods.size());
    return static_cast<int>(
        wholeNumber("--method", method, 0, std::max<int64_t>(count, 1) - 1));
}

bool isDescribed(const Drawing& options) {
    return options.summary || !options.picture.empty();
}

void writeDrawn(const Drawing& options, const std::function<StreamState*()>& open) {
    if (!options.picture.empty()) checkPicture(options.picture);
    const Distribution& distribution = rowNamed("DISTRIBUTION", options.distribution,
                                                catalogue::distributionsWithVectors());
    if (givesVectors(distribution)) return writeVectors(options, distribution, open);
    const bool real = distribution.doubles != nullptr;
    const bool single = isSingle(options.precision);
    if (single && !real)
        fail(std::string("--precision: ") + distribution.name +
             " gives whole numbers; leave it out");

    auto parameters = parametersOf(distribution, options.parameters);
    const int method = methodOf(distribution, options.method);
    const auto count = static_cast<int>(countOf(options, 1));
    const Job job{options, distribution, std::move(parameters), method, open(), count};
    if (distribution.words)
        drawWords(job);
    else if (!real)
        write(job, numbersOf(job, distribution.integers), 1);
    else if (single)
        write(job, numbersOf(job, distribution.singles), 1);
    else
        write(job, numbersOf(job, distribution.doubles), 1);
}

} // namespace qorkes
