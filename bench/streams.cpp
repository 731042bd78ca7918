// The rows for streams: raw words and uniform numbers of a generator against those of a
// peer's.
#include "drawing.hpp"

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
Row rowOf(const Pair& pair, const std::string& arguments, PeerList<T> peers,
          std::uint32_t seed) {
    return {std::string(Kind<T>::name) + pair.ours, arguments, pair.peer,
            [&pair, peers, seed](int n) {
                return drawingContest<T>(n, pair.brng, seed, Kind<T>::draw, peers,
                                         pair.peer);
            }};
}

template <class T> void addRows(std::vector<Row>& rows, std::span<const Pair> pairs) {
    for (const Pair& pair : pairs)
        rows.push_back(rowOf<T>(pair, Kind<T>::range, Kind<T>::peers, 1));
}

void addPoints(std::vector<Row>& rows) {
    for (const Pair& pair : pointTable)
        rows.push_back(rowOf<double>(pair,
                                     std::to_string(quasiDimensions) + " dimensions",
                                     &Peers::points, quasiDimensions));
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
