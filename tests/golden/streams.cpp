// A million numbers of every generator and distribution.
#include "digest.hpp"

#include <distributions.hpp>
#include <generators.hpp>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace qorkes {
namespace {

using catalogue::Distribution;
using catalogue::Generator;

constexpr int drawn = 1'000'000;
constexpr uint32_t seed = 7;

/// Distributions whose floats need a square root; Poisson variates may be made of
/// those.
constexpr const char* distributionsOfUnit[] = {"beta", "gamma", "gaussian", "lognormal",
                                               "rayleigh"};

// ---- Streams ------------------------------------------------------------------------

void expect(bool success, const char* what) {
    if (!success) throw std::runtime_error(what);
}

/// A state of zeros, seeded: what a generator never writes goes into files as it
/// stands.
StreamState* newStream(int brng) {
    StreamState* stream;
    BrngProperties row;
    expect(__kesNewStreamEx(&stream, brng, 1, &seed) >= 0, "no stream");
    expect(__kesGetBrngProperties(brng, &row) >= 0, "no generator");
    std::memset(stream + 1, 0,
                static_cast<std::size_t>(row.StateSize) - sizeof *stream);
    expect(row.InitStream(0, stream, 1, &seed) >= 0, "no seed");
    return stream;
}

/// The next numbers, by draw(stream, n, r), as a row has them.
template <class T, class Draw>
std::string next(StreamState* stream, int n, int width, Draw&& draw) {
    std::vector<T> r(static_cast<std::size_t>(n) * static_cast<std::size_t>(width));
    expect(draw(stream, n, r.data()) >= 0, "no numbers");
    return numbersOf(r);
}

template <class T, class Draw> std::string drawnFrom(int brng, int width, Draw&& draw) {
    StreamState* stream = newStream(brng);
    const std::string numbers = next<T>(stream, drawn, width, draw);
    __kesDeleteStream(&stream);
    return numbers;
}

// ---- Files --------------------------------------------------------------------------

constexpr int drawnBefore = 1001; // odd: of pairs one stays in the stream

/// A file of the stream, which then is the file's.
std::string savedAndLoaded(StreamState** stream) {
    const auto path = std::filesystem::temp_directory_path() /
                      ("qorkes-golden-" + std::to_string(getpid()));
    expect(__kesSaveStreamF(*stream, path.c_str(), -1) >= 0, "not saved");
    std::ifstream in(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    __kesDeleteStream(stream);
    const bool isLoaded = __kesLoadStreamF(stream, path.c_str()) >= 0;
    std::filesystem::remove(path);
    expect(isLoaded, "not loaded");
    return bytes;
}

/// A row for the bytes of a stream in use and for the numbers that follow when they are
/// loaded; of streams with chunks only, where that is wanted.
template <class T, class Draw>
void addFile(std::vector<GoldenRow>& rows, const std::string& name, bool usesUnit,
             int brng, int width, bool withChunks, Draw&& draw) {
    StreamState* stream = newStream(brng);
    next<T>(stream, drawnBefore, width, draw);
    if (!withChunks || __kesGetNumChunks(stream) > 0) {
        Digest digest;
        for (const char byte : savedAndLoaded(&stream))
            digest.add(uint32_t{static_cast<unsigned char>(byte)});
        const std::string following = next<T>(stream, drawnBefore, width, draw);
        rows.push_back({name + " file", digest.text() + ' ' + following, usesUnit});
    }
    __kesDeleteStream(&stream);
}

void addMember(std::vector<GoldenRow>& rows, const std::string& name, int brng) {
    BrngProperties row;
    __kesGetBrngProperties(brng, &row);
    const auto words = [](StreamState* stream, int n, uint32_t* r) {
        return _kesiRngUniformBits(0, stream, n, r);
    };
    const auto doubles = [](StreamState* stream, int n, double* r) {
        return _kesdRngUniform(0, stream, n, r, 0, 1);
    };
    const auto singles = [](StreamState* stream, int n, float* r) {
        return _kessRngUniform(0, stream, n, r, 0, 1);
    };
    const int width = row.WordSize / 4;
    rows.push_back({name + " words", drawnFrom<uint32_t>(brng, width, words), false});
    rows.push_back({name + " doubles", drawnFrom<double>(brng, 1, doubles), false});
    rows.push_back({name + " floats", drawnFrom<float>(brng, 1, singles), false});
    addFile<uint32_t>(rows, name, false, brng, width, false, words);
}

void addGenerators(std::vector<GoldenRow>& rows) {
    for (const Generator& generator : catalogue::generators()) {
        addMember(rows, generator.name, generator.identifier);
        if (generator.members == 1) continue;
        const int last = generator.members - 1;
        addMember(rows, std::string(generator.name) + ":" + std::to_string(last),
                  generator.identifier + last);
    }
}

// ---- Distributions ------------------------------------------------------------------

/// Parameters beside the preset ones: one set for every algorithm that a distribution
/// has.
struct Variant {
    std::string distribution;
    std::vector<double> parameters;
};
const Variant variants[] = {
    {"beta", {0.3, 0.3, 0, 1}},  {"beta", {0.7, 0.8, 0, 1}},
    {"beta", {0.5, 2, 0, 1}},    {"beta", {1, 3, 0, 1}},
    {"binomial", {10000, 0.25}}, {"gamma", {0.3, 0, 1}},
    {"gamma", {0.7, 0, 1}},      {"hypergeometric", {1000, 300, 400}},
    {"negbinomial", {0.5, 0.3}}, {"negbinomial", {50, 0.3}},
    {"gaussian", {7, 3}},        {"integers", {-1000000, 999}},
    {"laplace", {7, 3}},         {"poisson", {0.5}},
    {"poisson", {30}},           {"poisson", {1000}},
    {"poissonv", {0.03}},        {"poissonv", {30}},
    {"uniform", {-3, 5}},        {"weibull", {0.7, 1, 3}},
};

template <class T> bool isOfUnit(const std::string& distribution, int method) {
    if constexpr (std::is_same_v<T, float>)
        return isAmong(distribution, distributionsOfUnit);
    else
        return distribution == "poissonv" || (distribution == "poisson" && method == 1);
}

void addDraws(std::vector<GoldenRow>& rows, const Distribution& distribution,
              int method, const std::vector<double>& parameters) {
    std::string name = distribution.name;
    if (!distribution.methods.empty()) name += " by " + std::to_string(method);
    for (const double x : parameters) {
        std::ostringstream text;
        text << ' ' << x;
        name += text.str();
    }
    const auto add = [&]<class T>(const char* kind, catalogue::Draw<T> draw) {
        if (!draw) return;
        const auto one = [&](StreamState* stream, int n, T* r) {
            return draw(method, stream, n, r, parameters.data());
        };
        const bool usesUnit = isOfUnit<T>(distribution.name, method);
        rows.push_back({name + kind, drawnFrom<T>(KesBrngMCG59, 1, one), usesUnit});
        addFile<T>(rows, name + kind, usesUnit, KesBrngMCG59, 1, true, one);
    };
    add(" doubles", distribution.doubles);
    add(" floats", distribution.singles);
    add(" integers", distribution.integers);
}

void addDistributions(std::vector<GoldenRow>& rows) {
    for (const Distribution& distribution : catalogue::distributions()) {
        std::vector<double> presets;
        for (const auto& parameter : distribution.parameters)
            presets.push_back(parameter.preset);
        const auto methods = static_cast<int>(distribution.methods.size());
        for (int method = 0; method < std::max(methods, 1); ++method) {
            addDraws(rows, distribution, method, presets);
            for (const Variant& variant : variants)
                if (variant.distribution == distribution.name)
                    addDraws(rows, distribution, method, variant.parameters);
        }
    }
}

} // namespace

void addStreams(std::vector<GoldenRow>& rows) {
    addGenerators(rows);
    addDistributions(rows);
}

} // namespace qorkes
