#include "stream_source.hpp"

#include "arguments.hpp"
#include "failure.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

#include <limits>

namespace qorkes {
namespace {

constexpr int64_t int32Max = std::numeric_limits<int32_t>::max();

/// The identifier that NAME or NAME:MEMBER stands for.
int identifierOf(const std::string& text) {
    const auto [name, member] = cutAt(text, ':');
    const auto& row = rowNamed("--generator", name, catalogue::generators());
    if (!member) return row.identifier;
    return row.identifier +
           static_cast<int>(wholeNumber("--generator, member of " + name, *member, 0,
                                        row.members - 1));
}

void leapfrog(StreamState* stream, const std::string& text) {
    const auto [place, stride] = cutAt(text, '/');
    if (!stride) fail("--leapfrog: '" + text + "' is not K/N, as in 0/3");
    const auto n = wholeNumber("--leapfrog, N of K/N", *stride, 1, int32Max);
    const auto k = wholeNumber("--leapfrog, K of K/N", place, 0, n - 1);
    check(__kesLeapfrogStream(stream, static_cast<int>(k), static_cast<int>(n)), stream,
          "--leapfrog " + text);
}

} // namespace

std::pair<std::string, std::optional<std::string>> cutAt(const std::string& text,
                                                         char separator) {
    const size_t place = text.find(separator);
    if (place == std::string::npos) return {text, {}};
    return {text.substr(0, place), text.substr(place + 1)};
}

void addJumpOptions(CLI::App& command, Jumps& jumps) {
    command
        .add_option("--leapfrog", jumps.leapfrog,
                    "from every N elements of the generator take\n"
                    "the one at place K, counted from 0")
        ->type_name("K/N");
    command
        .add_option("--skip", jumps.skip,
                    "pass over the first N elements (after --leapfrog:\n"
                    "of those it takes)")
        ->type_name("N");
}

void addSourceOptions(CLI::App& command, StreamSource& source) {
    command
        .add_option("--generator", source.generator,
                    "the basic generator; default: MCG59")
        ->type_name("NAME[:MEMBER]");
    command.add_option("--seed", source.seed, "seed words below 2^32; default: 1")
        ->type_name("N[,N...]");
    addJumpOptions(command, source.jumps);
}

Stream newStream(const StreamSource& source) {
    const int identifier = identifierOf(source.generator);
    std::vector<uint32_t> seed;
    for (const std::string& word : split(source.seed, ','))
        seed.push_back(static_cast<uint32_t>(
            wholeNumber("--seed", word, 0, std::numeric_limits<uint32_t>::max())));

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
