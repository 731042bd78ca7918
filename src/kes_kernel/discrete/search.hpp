// Inversion: the value of a uniform u is the first whose cumulative probability is
// above u, by a search in a table of these.
#pragma once

#include <kes_kernel/frame.hpp>

#include <algorithm>

namespace qorkes {

/// Cumulative probabilities of 0 to count - 1.
struct Cumulative {
    const double* entry;
    int count;
};

/// Cumulative probabilities from those of 0 on, which are added from the last ones, the
/// smallest, on.
template <int size>
QORKES_INLINE void cumulate(const double (&term)[size], double (&cumulative)[size]) {
    double rest[size + 1];
    rest[size] = 0;
    for (int k = size - 1; k >= 0; --k) rest[k] = round64(ext{rest[k + 1]} + term[k]);
    for (int k = 0; k < size; ++k) cumulative[k] = round64(ext{rest[0]} - rest[k + 1]);
}

/// Cumulative probabilities added from that of 0 on: up(x, term) is the probability of
/// x + 1 when term is that of x.
template <class Up>
QORKES_INLINE void cumulateUpwards(int count, ext first, double* cumulative, Up&& up) {
    ext term = first, sum = 0;
    for (int32_t x = 0; x < count; ++x) {
        sum += term;
        cumulative[x] = round64(sum);
        term = up(x, term);
    }
}

/// Where a search begins, by u: no entry before start[round(u * cells)] is above u,
/// whichever way that was rounded. With no cells a search begins at 0. Chen and Asau,
/// "On generating random variates from an empirical distribution", AIIE Transactions 6,
/// 1974.
struct Guide {
    static constexpr int greatest = 256;
    ext cells;
    uint8_t start[greatest + 1];
};

/// A guide takes a pass over the table: few variates do without.
QORKES_INLINE void prepare(Guide& guide, const Cumulative& table, int n) {
    const int cells = n < Guide::greatest ? 0 : Guide::greatest;
    guide.cells = cells;
    guide.start[0] = 0;
    for (int i = 1, k = 0; i <= cells; ++i) {
        const ext below = ext(i - 1) / Guide::greatest;
        while (k < table.count - 1 && table.entry[k] <= below) ++k;
        guide.start[i] = static_cast<uint8_t>(k);
    }
}

QORKES_INLINE int startOf(const Guide& guide, double u) {
    int32_t cell;
    asm("fistpl %0" : "=m"(cell) : "t"(u * guide.cells) : "st");
    return guide
        .start[std::min<uint32_t>(static_cast<uint32_t>(cell), Guide::greatest)];
}

/// The value of a u that no entry is above: the search goes on by terms, next(x, term)
/// being the probability of x when term is that of x - 1. Rounding may leave the sum of
/// all of them below u: it ends at the last value, or where a term adds nothing.
template <class Next>
QORKES_COLD int32_t searchOn(const Cumulative& table, double u, int32_t last,
                             Next&& next) {
    int32_t x = table.count - 1;
    if (x >= last) return last;
    ext sum = table.entry[x], term = sum - table.entry[x - 1];
    while (x < last && sum <= u) {
        term = next(++x, term);
        if (!(sum + term > sum)) break;
        sum += term;
    }
    return x;
}

/// Fills r, a uniform for each value, in blocks of `size`.
template <int size, class Next>
QORKES_INLINE int searchInto(StreamState* stream, int n, int32_t* r,
                             const Cumulative& table, int32_t last, Next&& next) {
    Guide guide;
    prepare(guide, table, n);
    double u[size];
    int status = KesStatusOk;
    for (int i = 0; i < n;) {
        const int end = i + std::min(n - i, size);
        status = uniforms(stream, end - i, u);
        if (failed(status)) return status;
        for (const double* from = u; i < end; ++i, ++from) {
            int k = startOf(guide, *from);
            while (k < table.count && !(*from < table.entry[k])) ++k;
            r[i] = k < table.count ? k : searchOn(table, *from, last, next);
        }
    }
    return status;
}

} // namespace qorkes
