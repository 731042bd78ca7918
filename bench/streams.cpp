// The rows for streams: raw words and uniform numbers of a generator against those of a
// peer's.
#include "driver.hpp"
#include "peers.hpp"

#include <qorkes/kes.h>

#include <memory>
#include <stdexcept>
#include <string_view>

namespace qorkes::bench {
namespace {

struct Pair {
    const char* ours;
    int brng;
    const char* peer; // a generator of peers.cpp
};

constexpr Pair table[] = {
    {"MCG31M1", KesBrngMCG31M1, "std minstd_rand"},
    {"MCG31M1", KesBrngMCG31M1, "Boost minstd_rand"},
    {"MCG31M1", KesBrngMCG31M1, "GSL minstd"},
    {"MRG32K3A", KesBrngMRG32K3A, "Boost ecuyer1988"},
    {"MT19937", KesBrngMT19937, "std mt19937"},
    {"MT19937", KesBrngMT19937, "Boost mt19937"},
    {"MT19937", KesBrngMT19937, "GSL mt19937"},
    {"MT2203", KesBrngMT2203, "std mt19937"},
    {"MT2203", KesBrngMT2203, "Boost mt19937"},
    {"R250", KesBrngR250, "GSL r250"},
    {"R250", KesBrngR250, "GSL taus88"},
};

/// Whose words are no peer's: four of 24 bits an element.
constexpr Pair realTable[] = {{"WH", KesBrngWH, "Boost ecuyer1988"}};

constexpr Pair pointTable[] = {
    {"Sobol", KesBrngSobol, "GSL sobol"},
    {"Niederreiter", KesBrngNiederr, "GSL niederreiter_2"},
};

// What is drawn, by the type of number.
template <class T> struct Kind;
template <> struct Kind<std::uint32_t> {
    static constexpr const char *name = "words of ", *range = "";
    static constexpr auto peers = &Peers::words;
    static int draw(StreamState* stream, int n, std::uint32_t* r) {
        return _kesiRngUniformBits(0, stream, n, r);
    }
};
template <> struct Kind<double> {
    static constexpr const char *name = "double ", *range = "[0, 1)";
    static constexpr auto peers = &Peers::uniformDoubles;
    static int draw(StreamState* stream, int n, double* r) {
        return _kesdRngUniform(0, stream, n, r, 0, 1);
    }
};
template <> struct Kind<float> {
    static constexpr const char *name = "float ", *range = "[0, 1)";
    static constexpr auto peers = &Peers::uniformSingles;
    static int draw(StreamState* stream, int n, float* r) {
        return _kessRngUniform(0, stream, n, r, 0, 1);
    }
};

template <class T> using PeerList = std::span<const StreamPeer<T>> Peers::*;

template <class T>
const StreamPeer<T>& peerOf(const Peers& peers, PeerList<T> list, const char* name) {
    for (const StreamPeer<T>& peer : peers.*list)
        if (peer.name == std::string_view(name)) return peer;
    throw std::logic_error("a row without a peer: " + std::string(name));
}

/// A stream seeded with one word, and room for n numbers.
template <class T> struct Drawing {
    StreamState* stream = nullptr;
    std::vector<T> numbers;

    Drawing(int brng, std::uint32_t seed, int n)
        : numbers(static_cast<std::size_t>(n)) {
        if (__kesNewStreamEx(&stream, brng, 1, &seed) != KesStatusOk)
            throw std::runtime_error("a stream could not be made");
    }
    ~Drawing() { __kesDeleteStream(&stream); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
};

template <class T>
Contest prepare(const Pair& pair, PeerList<T> list, std::uint32_t seed, int n) {
    const auto drawing = std::make_shared<Drawing<T>>(pair.brng, seed, n);
    const auto fill = [=](const StreamPeer<T>& peer) {
        return [=, f = peer.fill] { f(n, drawing->numbers.data()); };
    };
    const auto ours = [=] {
        Kind<T>::draw(drawing->stream, n, drawing->numbers.data());
    };
    return {ours, fill(peerOf(x87Peers(), list, pair.peer)),
            fill(peerOf(sse2Peers(), list, pair.peer))};
}

template <class T> void addRows(std::vector<Row>& rows, std::span<const Pair> pairs) {
    for (const Pair& pair : pairs)
        rows.push_back(
            {std::string(Kind<T>::name) + pair.ours, Kind<T>::range, pair.peer,
             [&pair](int n) { return prepare<T>(pair, Kind<T>::peers, 1, n); }});
}

void addPoints(std::vector<Row>& rows) {
    for (const Pair& pair : pointTable)
        rows.push_back({std::string("double ") + pair.ours,
                        std::to_string(quasiDimensions) + " dimensions", pair.peer,
                        [&pair](int n) {
                            return prepare<double>(pair, &Peers::points,
                                                   quasiDimensions, n);
                        }});
}

} // namespace

std::vector<Row> streamRows() {
    std::vector<Row> rows;
    addRows<std::uint32_t>(rows, table);
    addRows<double>(rows, table);
    addRows<double>(rows, realTable);
    addPoints(rows);
    addRows<float>(rows, table);
    addRows<float>(rows, realTable);
    return rows;
}

SetUp largestSetUp() {
    static_assert(KesNiederrDimensions == 318);
    return {"A stream of 318 Niederreiter dimensions",
            [] { Drawing<double>(KesBrngNiederr, KesNiederrDimensions, 0); }};
}

} // namespace qorkes::bench
