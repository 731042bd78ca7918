// Random legal draws from the distributions of the catalogue: numbers lie where they
// can, and two calls, the stream saved and loaded between them, give what one does.
#include "fuzz.hpp"

#include <distributions.hpp>
#include <generators.hpp>

#include <qorkes/kes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace qorkes;
using namespace qorkes::fuzz;
using catalogue::Distribution;

namespace {

constexpr unsigned longestCall = 1600; // beyond every block of a distribution
constexpr double infinity = std::numeric_limits<double>::infinity();

// ---- What is drawn ------------------------------------------------------------------

struct Drawing {
    const Distribution& distribution;
    std::vector<double> parameters;
    int method, count;
};

/// A value that a call can be quick with: not so small that rejection is long.
double moderateValue(Choices& choices) {
    const double special[] = {0, 1, 0.5, 0.6, 2, 30, 27, 1000, 300, 0.01};
    switch (choices.below(4)) {
    case 0:
        return special[choices.below(10)];
    case 1:
        return choices.below(1000);
    case 2:
        return (1 + choices.below(1000)) / 1024.0;
    default:
        return (static_cast<int>(choices.below(8192)) - 4096) / 256.0;
    }
}

Drawing chooseDrawing(Choices& choices) {
    const auto rows = catalogue::distributions();
    const Distribution& row = rows[choices.below(static_cast<unsigned>(rows.size()))];
    std::vector<double> parameters;
    for (const auto& parameter : row.parameters) {
        const double value = moderateValue(choices);
        parameters.push_back(parameter.range->holds(value) ? value : parameter.preset);
    }
    if (row.fault && row.fault(parameters.data()))
        for (size_t i = 0; i < parameters.size(); ++i)
            parameters[i] = row.parameters[i].preset;
    const auto methods = static_cast<unsigned>(std::max<size_t>(row.methods.size(), 1));
    const int method = static_cast<int>(choices.below(methods));
    const unsigned longest = choices.below(4) == 0 ? longestCall : 40;
    return {row, parameters, method, 2 + static_cast<int>(choices.below(longest))};
}

bool isNamed(const Distribution& row, std::initializer_list<const char*> names) {
    return std::ranges::find(names, std::string(row.name)) != names.end();
}

struct Support {
    double low, high;
};

Support supportOf(const Distribution& row, const double* p) {
    if (isNamed(row, {"uniform"})) return {p[0], p[1]};
    if (isNamed(row, {"integers"})) return {p[0], p[1] - 1};
    if (isNamed(row, {"beta"})) return {p[2], p[2] + p[3]};
    if (isNamed(row, {"exponential", "rayleigh"})) return {p[0], infinity};
    if (isNamed(row, {"gamma", "weibull"})) return {p[1], infinity};
    if (isNamed(row, {"lognormal"})) return {p[2], infinity};
    if (isNamed(row, {"bernoulli"})) return {0, 1};
    if (isNamed(row, {"binomial"})) return {0, p[0]};
    if (isNamed(row, {"hypergeometric"}))
        return {std::max(0.0, p[1] + p[2] - p[0]), std::min(p[1], p[2])};
    if (isNamed(row, {"geometric", "negbinomial", "poisson", "poissonv"}))
        return {0, infinity};
    return {-infinity, infinity};
}

/// Whether number i may differ in last places when a call ends before number `cut`.
/// Normal numbers come in pairs, and two calls can share one; tangents are divided in
/// groups, which every call begins anew.
bool mayDiffer(const Drawing& drawing, int i, int cut) {
    const Distribution& row = drawing.distribution;
    const bool hasPairs =
        isNamed(row, {"lognormal", "poissonv"}) ||
        (isNamed(row, {"gaussian", "poisson"}) && drawing.method == 1);
    return isNamed(row, {"cauchy"}) || (hasPairs && (i == cut - 1 || i == cut));
}

// ---- Where it is drawn from ---------------------------------------------------------

void saveAndLoad(StreamState*& stream) {
    const MemoryFile file;
    require(__kesSaveStreamF(stream, file.path().c_str(), -1) >= 0, "a saved stream");
    __kesDeleteStream(&stream);
    require(__kesLoadStreamF(&stream, file.path().c_str()) >= 0, "a loaded stream");
}

/// Two streams at the same place: one is drawn from at once, the other in two calls.
struct Streams {
    StreamState *whole = nullptr, *divided = nullptr;

    explicit Streams(Choices& choices) {
        // Points are not for rejection.
        std::vector<catalogue::Generator> rows;
        for (const auto& row : catalogue::generators())
            if (row.dimensions == 0) rows.push_back(row);
        const auto& row = rows[choices.below(static_cast<unsigned>(rows.size()))];
        const int brng =
            row.identifier +
            static_cast<int>(choices.below(static_cast<unsigned>(row.members)));
        const uint32_t seed = choices.below(65536);
        for (StreamState** stream : {&whole, &divided})
            require(__kesNewStreamEx(stream, brng, 1, &seed) >= 0, "a stream");
    }
    Streams(const Streams&) = delete;
    ~Streams() {
        __kesDeleteStream(&whole);
        __kesDeleteStream(&divided);
    }
};

template <class T>
std::vector<T> drawn(const Drawing& drawing, catalogue::Draw<T> draw,
                     StreamState* stream, int count, int wordsEach) {
    std::vector<T> numbers(static_cast<size_t>(count * wordsEach));
    require(draw(drawing.method, stream, count, numbers.data(),
                 drawing.parameters.data()) >= 0,
            "numbers");
    return numbers;
}

template <class T> double epsilonOf() {
    return std::is_integral_v<T>
               ? 0
               : static_cast<double>(std::numeric_limits<T>::epsilon());
}

/// The least numbers that matter in a result: rounding errors are in units of these.
double sizeOf(const Drawing& drawing) {
    double size = 0;
    for (const double p : drawing.parameters) size += std::fabs(p);
    return size;
}

template <class T>
void expectInSupport(const Drawing& drawing, const std::vector<T>& numbers) {
    const auto [low, high] = supportOf(drawing.distribution, drawing.parameters.data());
    const double rounding = 4 * epsilonOf<T>() * sizeOf(drawing);
    for (const T x : numbers) {
        const auto value = static_cast<double>(x);
        require(value >= low - rounding && value <= high + rounding,
                "a number of the support");
    }
}

/// Roundings that two ways to the same number may be apart. Exp multiplies those of its
/// argument, which a wide lognormal makes large.
double placesApart(const Drawing& drawing) {
    const bool isExponential = isNamed(drawing.distribution, {"lognormal"});
    return 512 + (isExponential ? 32 * sizeOf(drawing) : 0);
}

/// Whether two values agree but for last places.
template <class T> bool areClose(const Drawing& drawing, T a, T b) {
    if (a == b) return true;
    const auto x = static_cast<double>(a), y = static_cast<double>(b);
    const double apart = std::fabs(x - y);
    if (std::is_integral_v<T>) return apart <= 1;
    const double size = sizeOf(drawing) + std::max(std::fabs(x), std::fabs(y));
    return apart <= placesApart(drawing) * epsilonOf<T>() * size;
}

template <class T>
void drawBoth(const Drawing& drawing, catalogue::Draw<T> draw, Streams& streams,
              Choices& choices, int wordsEach = 1) {
    const int n = drawing.count;
    const int cut = 1 + static_cast<int>(choices.below(static_cast<unsigned>(n - 1)));
    const auto whole = drawn(drawing, draw, streams.whole, n, wordsEach);
    auto parts = drawn(drawing, draw, streams.divided, cut, wordsEach);
    if (choices.below(2) == 1) saveAndLoad(streams.divided);
    const auto rest = drawn(drawing, draw, streams.divided, n - cut, wordsEach);
    parts.insert(parts.end(), rest.begin(), rest.end());

    if (!drawing.distribution.words) expectInSupport(drawing, whole);
    for (int i = 0; i < n * wordsEach; ++i) {
        const T a = whole[static_cast<size_t>(i)], b = parts[static_cast<size_t>(i)];
        require(mayDiffer(drawing, i, cut) ? areClose(drawing, a, b) : a == b,
                "two calls like one");
    }
}

void step(Streams& streams, Choices& choices) {
    const Drawing drawing = chooseDrawing(choices);
    const Distribution& row = drawing.distribution;
    if (row.words) {
        BrngProperties generator;
        __kesGetBrngProperties(streams.whole->BrngId, &generator);
        drawBoth(drawing, row.words, streams, choices, generator.WordSize / 4);
    } else if (row.integers) {
        drawBoth(drawing, row.integers, streams, choices);
    } else if (choices.below(2) == 0) {
        drawBoth(drawing, row.doubles, streams, choices);
    } else {
        drawBoth(drawing, row.singles, streams, choices);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Choices choices(Bytes(data, size));
    Streams streams(choices);
    for (int calls = 0; calls < 12 && choices.areLeft(); ++calls)
        step(streams, choices);
    return 0;
}
