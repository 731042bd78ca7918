// qorkes draw: random numbers of a distribution from a generator.
#include "arguments.hpp"
#include "commands.hpp"
#include "distributions.hpp"
#include "failure.hpp"
#include "generators.hpp"
#include "output.hpp"
#include "summary.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

#include <limits>
#include <memory>
#include <optional>

namespace qorkes {
namespace {

using catalogue::Distribution;

constexpr int64_t int32Max = std::numeric_limits<int32_t>::max();
constexpr int64_t greatestCount = 100'000'000; // 16 bytes each fit the address space

struct Options {
    std::string distribution;
    std::vector<std::string> parameters;
    std::string generator = "MCG59";
    std::string seed = "1";
    std::string count = "10";
    std::string skip;
    std::string leapfrog;
    std::string precision = "double";
    bool summary = false;
    bool binary = false;
};

/// What stands before and behind the first separator; the latter may be missing.
std::pair<std::string, std::optional<std::string>> cutAt(const std::string& text,
                                                         char separator) {
    const size_t place = text.find(separator);
    if (place == std::string::npos) return {text, {}};
    return {text.substr(0, place), text.substr(place + 1)};
}

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

/// The identifier that NAME or NAME:MEMBER stands for.
int identifierOf(const std::string& text) {
    const auto [name, member] = cutAt(text, ':');
    const auto& row = rowNamed("--generator", name, catalogue::generators());
    if (!member) return row.identifier;
    return row.identifier +
           static_cast<int>(wholeNumber("--generator, member of " + name, *member, 0,
                                        row.members - 1));
}

struct DeleteStream {
    void operator()(StreamState* stream) const { __kesDeleteStream(&stream); }
};
using Stream = std::unique_ptr<StreamState, DeleteStream>;

void check(int status, const Options& options, const std::string& what) {
    if (status >= 0) return;
    const std::string refusal = what + ": " + options.generator;
    if (status == KesStatusLeapfrogUnsupported)
        fail(refusal + " cannot leapfrog so; take another generator or leave it out");
    if (status == KesStatusSkipAheadUnsupported)
        fail(refusal + " cannot skip so; take another generator or leave it out");
    fail(refusal + " failed with status " + std::to_string(status));
}

void leapfrog(StreamState* stream, const Options& options) {
    const auto [place, stride] = cutAt(options.leapfrog, '/');
    if (!stride) fail("--leapfrog: '" + options.leapfrog + "' is not K/N, as in 0/3");
    const auto n = wholeNumber("--leapfrog, N of K/N", *stride, 1, int32Max);
    const auto k = wholeNumber("--leapfrog, K of K/N", place, 0, n - 1);
    check(__kesLeapfrogStream(stream, static_cast<int>(k), static_cast<int>(n)),
          options, "--leapfrog " + options.leapfrog);
}

Stream streamOf(const Options& options) {
    const int identifier = identifierOf(options.generator);
    std::vector<uint32_t> seed;
    for (const std::string& word : split(options.seed, ','))
        seed.push_back(static_cast<uint32_t>(
            wholeNumber("--seed", word, 0, std::numeric_limits<uint32_t>::max())));

    StreamState* created = nullptr;
    const int status = __kesNewStreamEx(&created, identifier,
                                        static_cast<int>(seed.size()), seed.data());
    Stream stream(created);
    check(status, options, "--seed " + options.seed);
    if (!options.leapfrog.empty()) leapfrog(stream.get(), options);
    if (!options.skip.empty()) {
        const auto skip = wholeNumber("--skip", options.skip, 0, int32Max);
        check(__kesSkipAheadStream(stream.get(), static_cast<int>(skip)), options,
              "--skip " + options.skip);
    }
    return stream;
}

/// What one run draws.
struct Job {
    const Options& options;
    const Distribution& distribution;
    std::vector<double> parameters;
    Stream stream;
    int count;
};

template <class T>
void write(const Job& job, const std::vector<T>& numbers, int perLine) {
    if (job.options.summary)
        writeOut(summary({numbers.begin(), numbers.end()}, job.distribution,
                         job.parameters.data()));
    else if (job.options.binary)
        writeBinary<T>(numbers);
    else
        writeText<T>(numbers, perLine);
}

template <class T>
std::vector<T> numbersOf(const Job& job, catalogue::Draw<T> draw, int wordsEach = 1) {
    std::vector<T> numbers(static_cast<size_t>(job.count) *
                           static_cast<size_t>(wordsEach));
    if (job.count > 0)
        check(draw(job.stream.get(), job.count, numbers.data(), job.parameters.data()),
              job.options, job.distribution.name);
    return numbers;
}

/// Raw words: whole numbers of 32 or 64 bits, else several words a line.
void drawWords(const Job& job) {
    BrngProperties properties;
    __kesGetBrngProperties(__kesGetStreamStateBrng(job.stream.get()), &properties);
    const int wordsEach = properties.WordSize / 4;
    const auto words = numbersOf(job, job.distribution.words, wordsEach);
    if (wordsEach != 2) return write(job, words, wordsEach);
    std::vector<uint64_t> numbers(words.size() / 2);
    for (size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = uint64_t{words[2 * i + 1]} << 32 | words[2 * i];
    write(job, numbers, 1);
}

void draw(const Options& options) {
    const Distribution& distribution =
        rowNamed("DISTRIBUTION", options.distribution, catalogue::distributions());
    const bool real = distribution.doubles != nullptr;
    const bool single = isSingle(options.precision);
    if (single && !real)
        fail(std::string("--precision: ") + distribution.name +
             " gives whole numbers; leave it out");

    auto parameters = parametersOf(distribution, options.parameters);
    const auto count =
        wholeNumber("--count", options.count, options.summary ? 1 : 0, greatestCount);
    const Job job{options, distribution, std::move(parameters), streamOf(options),
                  static_cast<int>(count)};
    if (distribution.words)
        drawWords(job);
    else if (!real)
        write(job, numbersOf(job, distribution.integers), 1);
    else if (single)
        write(job, numbersOf(job, distribution.singles), 1);
    else
        write(job, numbersOf(job, distribution.doubles), 1);
}

} // namespace

void addDraw(CLI::App& app) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("draw", "Draw random numbers");
    command->add_option("DISTRIBUTION", options->distribution, "see 'qorkes list'")
        ->required()
        ->type_name("");
    command->add_option("PARAMETERS", options->parameters, "name=value each")
        ->type_name("");
    command
        ->add_option("--generator", options->generator,
                     "the basic generator; default: MCG59")
        ->type_name("NAME[:MEMBER]");
    command->add_option("--seed", options->seed, "seed words below 2^32; default: 1")
        ->type_name("N[,N...]");
    command->add_option("--count", options->count, "how many numbers; default: 10")
        ->type_name("N");
    command
        ->add_option("--leapfrog", options->leapfrog,
                     "from every N elements of the generator take\n"
                     "the one at place K, counted from 0")
        ->type_name("K/N");
    command
        ->add_option("--skip", options->skip,
                     "pass over the first N elements (after --leapfrog:\n"
                     "of those it takes)")
        ->type_name("N");
    command
        ->add_option("--precision", options->precision,
                     "of real numbers; default: double")
        ->type_name("double|single");
    auto* summary =
        command->add_flag("--summary", options->summary,
                          "write count, moments, quartiles and a histogram\n"
                          "instead of the numbers; | marks the density");
    command
        ->add_flag("--binary", options->binary,
                   "write raw little-endian numbers instead of text")
        ->excludes(summary);
    command->footer(
        "Numbers come one a line, in the shortest form that reads back as the\n"
        "same number. The same command gives the same numbers for ever.\n"
        "\nExamples:\n"
        "  qorkes draw uniform --seed 7 --count 5\n"
        "  qorkes draw uniform a=-1 b=1 --count 100000 --summary\n"
        "  qorkes draw bits --generator MCG31M1 --leapfrog 1/3 --skip 1000\n");
    command->callback([options] { draw(*options); });
}

} // namespace qorkes
