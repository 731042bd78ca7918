#include "stream_source.hpp"

#include "arguments.hpp"
#include "failure.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

#include <limits>

namespace qorkes {
namespace {

constexpr int64_t int32Max = std::numeric_limits<int32_t>::max();

/// A generator and the identifier of its member.
struct Chosen {
    const catalogue::Generator& generator;
    int identifier;
};

/// What NAME or NAME:MEMBER stands for.
Chosen chosenBy(const std::string& text) {
    const auto [name, member] = cutAt(text, ':');
    const auto& row = rowNamed("--generator", name, catalogue::generators());
    if (!member) return {row, row.identifier};
    return {row, row.identifier +
                     static_cast<int>(wholeNumber("--generator, member of " + name,
                                                  *member, 0, row.members - 1))};
}

/// The seed words; for points, how many dimensions they have.
std::vector<uint32_t> wordsOf(const StreamSource& source,
                              const catalogue::Generator& generator) {
    const auto word = [](const char* option, const std::string& text, int64_t least,
                         int64_t most) {
        return static_cast<uint32_t>(wholeNumber(option, text, least, most));
    };
    if (generator.dimensions > 0) {
        if (!source.seed.empty())
            fail(std::string("--seed: ") + generator.name +
                 " takes none; --dimensions says what points it gives");
        if (source.dimensions.empty()) return {1};
        return {word("--dimensions", source.dimensions, 1, generator.dimensions)};
    }
    if (!source.dimensions.empty())
        fail(std::string("--dimensions: ") + generator.name +
             " gives single numbers; leave it out");
    if (source.seed.empty()) return {1};
    std::vector<uint32_t> seed;
    for (const std::string& text : split(source.seed, ','))
        seed.push_back(word("--seed", text, 0, std::numeric_limits<uint32_t>::max()));
    return seed;
}

/// Takes every n-th element. Of points that is a component, by the stride that selects
/// one; the number of dimensions is the second word of their state.
void leapfrog(StreamState* stream, const std::string& text) {
    const auto [place, stride] = cutAt(text, '/');
    if (!stride) fail("--leapfrog: '" + text + "' is not K/N, as in 0/3");
    auto n = wholeNumber("--leapfrog, N of K/N", *stride, 1, int32Max);
    const auto k = wholeNumber("--leapfrog, K of K/N", place, 0, n - 1);
    const auto* generator = generatorOf(stream);
    if (generator && generator->dimensions > 0) {
        const auto dimensions = reinterpret_cast<const int32_t*>(stream + 1)[1];
        if (n != dimensions)
            fail("--leapfrog: N of K/N must be " + std::to_string(dimensions) +
                 ", the number of dimensions, not " + *stride);
        n = int32Max;
    }
    check(__kesLeapfrogStream(stream, static_cast<int>(k), static_cast<int>(n)), stream,
          "--leapfrog " + text);
}

} // namespace

void addJumpOptions(CLI::App& command, Jumps& jumps) {
    command
        .add_option("--leapfrog", jumps.leapfrog,
                    "from every N elements of the generator take\n"
                    "the one at place K, counted from 0; of points, with\n"
                    "N the number of dimensions, component K")
        ->type_name("K/N");
    command
        .add_option("--skip", jumps.skip,
                    "pass over the first N elements (after --leapfrog:\n"
                    "of those it takes; of points always all)")
        ->type_name("N");
}

void addSourceOptions(CLI::App& command, StreamSource& source) {
    command
        .add_option("--generator", source.generator,
                    "the basic generator; default: MT19937")
        ->type_name("NAME[:MEMBER]");
    command.add_option("--seed", source.seed, "seed words below 2^32; default: 1")
        ->type_name("N[,N...]");
    command
        .add_option("--dimensions", source.dimensions,
                    "of the points of Sobol and Niederreiter, which come\n"
                    "component by component; default: 1")
        ->type_name("N");
    addJumpOptions(command, source.jumps);
}

Stream newStream(const StreamSource& source) {
    const auto [generator, identifier] = chosenBy(source.generator);
    const std::vector<uint32_t> seed = wordsOf(source, generator);

    StreamState* created = nullptr;
    const int status = __kesNewStreamEx(&created, identifier,
                                        static_cast<int>(seed.size()), seed.data());
    Stream stream(created);
    if (status < 0)
        fail("--generator " + source.generator + " failed with status " +
             std::to_string(status));
    moveOn(stream.get(), source.jumps);
    return stream;
}

void moveOn(StreamState* stream, const Jumps& jumps) {
    if (!jumps.leapfrog.empty()) leapfrog(stream, jumps.leapfrog);
    if (jumps.skip.empty()) return;
    const auto skip = wholeNumber("--skip", jumps.skip, 0, int32Max);
    check(__kesSkipAheadStream(stream, static_cast<int>(skip)), stream,
          "--skip " + jumps.skip);
}

const catalogue::Generator* generatorOf(const StreamState* stream) {
    BrngProperties own, row;
    if (__kesGetBrngProperties(stream->BrngId, &own) < 0) return nullptr;
    for (const auto& generator : catalogue::generators())
        if (__kesGetBrngProperties(generator.identifier, &row) >= 0 &&
            row.InitStream == own.InitStream)
            return &generator;
    return nullptr;
}

void check(int status, const StreamState* stream, const std::string& what) {
    if (status >= 0) return;
    const auto* generator = generatorOf(stream);
    const std::string refusal =
        what + ": " + (generator ? generator->name : "this generator");
    if (status == KesStatusLeapfrogUnsupported)
        fail(refusal + " cannot leapfrog so; take another generator or leave it out");
    if (status == KesStatusSkipAheadUnsupported)
        fail(refusal + " cannot skip so; take another generator or leave it out");
    fail(refusal + " failed with status " + std::to_string(status));
}

} // namespace qorkes
